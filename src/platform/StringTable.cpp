#include "platform/StringTable.h"

#include "platform/PropertyList.h"
#include "platform/Resources.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QLocale>
#include <QRegularExpression>
#include <QVariantMap>

#include <memory>

namespace platform {

namespace {

constexpr char Context[] = "Quorvel";
const QString English = QStringLiteral("en");

// "de_DE.UTF-8", "DE", " de " all come to "de"; anything that does not start
// with two letters is "".
QString twoLetterCode(const QString &name)
{
    const QString code = name.trimmed().left(2).toLower();
    static const QRegularExpression twoLetters(QStringLiteral("^[a-z]{2}$"));
    return twoLetters.match(code).hasMatch() ? code : QString();
}

std::unique_ptr<StringTable> &installedTable()
{
    static std::unique_ptr<StringTable> table;
    return table;
}

}  // namespace

StringTable::StringTable(QObject *parent)
    : QTranslator(parent)
{ }

bool StringTable::loadTable(const QString &path, const QString &language)
{
    table.clear();
    tableLanguage.clear();
    plist::ReadStatus status;
    const QVariant value = plist::readValueFile(path, &status);
    if (!status.ok()) {
        qWarning("String table %s: %s", qPrintable(path), qPrintable(status.message()));
        return false;
    }
    if (value.typeId() != QMetaType::QVariantMap) {
        qWarning("String table %s: not a dictionary", qPrintable(path));
        return false;
    }
    const QVariantMap map = value.toMap();
    QHash<QString, QString> read;
    read.reserve(map.size());
    for (auto it = map.cbegin(); it != map.cend(); ++it) {
        if (it.value().typeId() != QMetaType::QString) {
            qWarning("String table %s: the entry \"%s\" is not a string", qPrintable(path), qPrintable(it.key()));
            return false;
        }
        read.insert(it.key(), it.value().toString());
    }
    table = std::move(read);
    tableLanguage = language;
    return true;
}

QString StringTable::tablePath(const QString &language)
{
    return QStringLiteral(":/core/strings/Quorvel.%1.plist").arg(language);
}

QStringList StringTable::availableLanguages()
{
    initResources();
    QStringList languages;
    const QStringList files = QDir(QStringLiteral(":/core/strings")).entryList({QStringLiteral("Quorvel.*.plist")});
    for (const QString &file : files) {
        const QString language = file.section(QLatin1Char('.'), 1, 1);
        if (!language.isEmpty() && language != English)
            languages.append(language);
    }
    languages.sort();
    languages.prepend(English);
    return languages;
}

QString StringTable::translate(const char *context, const char *sourceText, const char *disambiguation, int n) const
{
    Q_UNUSED(disambiguation);
    Q_UNUSED(n);
    if (!context || !sourceText || qstrcmp(context, Context) != 0)
        return QString();
    // A null answer lets Qt fall back to the English text.
    return table.value(QString::fromUtf8(sourceText));
}

QString installStringTable(const QString &language)
{
    initResources();
    auto *application = QCoreApplication::instance();
    if (!application)
        return QString();

    QString wanted = twoLetterCode(language);
    if (wanted.isEmpty())
        wanted = twoLetterCode(qEnvironmentVariable("QUORVEL_LANG"));
    if (wanted.isEmpty())
        wanted = twoLetterCode(QLocale::system().name());
    if (wanted.isEmpty() || !QFile::exists(StringTable::tablePath(wanted)))
        wanted = English;

    auto table = std::make_unique<StringTable>();
    if (!table->loadTable(StringTable::tablePath(wanted), wanted))
        return QString();

    std::unique_ptr<StringTable> &installed = installedTable();
    if (installed)
        QCoreApplication::removeTranslator(installed.get());
    installed = std::move(table);
    QCoreApplication::installTranslator(installed.get());
    return wanted;
}

QString installedLanguage()
{
    const std::unique_ptr<StringTable> &installed = installedTable();
    return installed && !installed->languageCode().isEmpty() ? installed->languageCode() : English;
}

}  // namespace platform
