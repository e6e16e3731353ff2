#include "TestMain.h"

#include "platform/Localised.h"
#include "platform/StringTable.h"

#include <QCoreApplication>
#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

namespace {

// Sets or clears QUORVEL_LANG for the life of the guard.
class LanguageVariable
{
public:
    explicit LanguageVariable(const QByteArray &value)
        : had(qEnvironmentVariableIsSet("QUORVEL_LANG")),
          old(qgetenv("QUORVEL_LANG"))
    {
        if (value.isNull())
            qunsetenv("QUORVEL_LANG");
        else
            qputenv("QUORVEL_LANG", value);
    }
    ~LanguageVariable()
    {
        if (had)
            qputenv("QUORVEL_LANG", old);
        else
            qunsetenv("QUORVEL_LANG");
    }

private:
    bool had;
    QByteArray old;
};

QString unescaped(QStringView literal)
{
    QString text;
    for (qsizetype i = 0; i < literal.size(); ++i) {
        QChar c = literal.at(i);
        if (c == QLatin1Char('\\') && i + 1 < literal.size()) {
            c = literal.at(++i);
            if (c == QLatin1Char('n'))
                c = QLatin1Char('\n');
            else if (c == QLatin1Char('t'))
                c = QLatin1Char('\t');
        }
        text.append(c);
    }
    return text;
}

// Every literal text given to localised() in the program's sources, with the
// file it was found in. Adjacent literals ("a" "b") are joined as the
// compiler joins them.
QMap<QString, QString> localisedLiterals()
{
    static const QRegularExpression call(QStringLiteral(
        R"re(\blocalised\(\s*(?:(?:QStringLiteral|QString|QLatin1String)\(\s*)?((?:"(?:[^"\\\n]|\\.)*"\s*)+))re"));
    static const QRegularExpression piece(QStringLiteral(R"re("((?:[^"\\\n]|\\.)*)")re"));
    QMap<QString, QString> found;
    QDirIterator files(QStringLiteral(QUORVEL_SOURCE_DIR "/src"), {QStringLiteral("*.cpp"), QStringLiteral("*.h")},
                       QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const QString source = QString::fromUtf8(file.readAll());
        for (auto match = call.globalMatch(source); match.hasNext();) {
            QString text;
            for (auto part = piece.globalMatch(match.next().captured(1)); part.hasNext();)
                text += unescaped(part.next().captured(1));
            found.insert(text, path.mid(qstrlen(QUORVEL_SOURCE_DIR) + 1));
        }
    }
    return found;
}

QHash<QString, QString> tableOf(const QString &language)
{
    platform::StringTable table;
    if (!table.loadTable(platform::StringTable::tablePath(language), language))
        return {};
    return table.entries();
}

// The format specifiers of a text, in order: %@, %1, %i, %d, %.2f, %%.
QStringList placeholders(const QString &text)
{
    static const QRegularExpression specifier(QStringLiteral(R"(%(?:%|@|[-+ 0#]*\d*(?:\.\d+)?[difsu]|\d+))"));
    QStringList found;
    for (auto match = specifier.globalMatch(text); match.hasNext();)
        found.append(match.next().captured());
    return found;
}

}  // namespace

class StringTableTest : public QObject
{
    Q_OBJECT
private slots:
    void cleanupTestCase();
    void shouldTranslateIntoGerman_data();
    void shouldTranslateIntoGerman();
    void shouldChooseTheLanguage_data();
    void shouldChooseTheLanguage();
    void shouldAnswerATextMissingFromTheTableWithItself();
    void shouldLeaveOtherContextsAlone();
    void shouldRefuseATableThatIsNotADictionaryOfTexts();
    void shouldHaveEveryLocalisedTextInBothTables();
    void shouldTranslateOnlyTextsTheEnglishTableHas();
    void shouldKeepThePlaceholdersOfEveryText();
};

void StringTableTest::cleanupTestCase()
{
    LanguageVariable unset{QByteArray()};
    platform::installStringTable(QStringLiteral("en"));
}

void StringTableTest::shouldTranslateIntoGerman_data()
{
    QTest::addColumn<QString>("english");
    QTest::addColumn<QString>("german");
    QTest::newRow("button") << "Cancel"
                            << "Abbrechen";
    QTest::newRow("menu with mnemonic") << "&File"
                                        << "&Datei";
    QTest::newRow("tab") << "Money In"
                         << "Einnahmen";
    QTest::newRow("alert") << "Do you want to delete the selected item from the database?"
                           << "Möchten Sie den ausgewählten Eintrag aus der Datenbank löschen?";
    QTest::newRow("with a placeholder") << "This leaves %i of these items in stock."
                                        << "Damit sind noch %i Stück dieses Artikels auf Lager.";
}

void StringTableTest::shouldTranslateIntoGerman()
{
    QFETCH(QString, english);
    QFETCH(QString, german);
    QCOMPARE(platform::installStringTable(QStringLiteral("de")), QStringLiteral("de"));
    QCOMPARE(platform::localised(english), german);
    QCOMPARE(platform::localised(english.toUtf8().constData()), german);
}

void StringTableTest::shouldChooseTheLanguage_data()
{
    QTest::addColumn<QString>("given");
    QTest::addColumn<QByteArray>("variable");  // null: QUORVEL_LANG unset
    QTest::addColumn<QString>("installed");
    QTest::addColumn<QString>("deleteReads");
    QTest::newRow("English") << "en" << QByteArray() << "en"
                             << "Delete";
    QTest::newRow("German") << "de" << QByteArray() << "de"
                            << "Löschen";
    QTest::newRow("locale name") << "de_AT.UTF-8" << QByteArray() << "de"
                                 << "Löschen";
    QTest::newRow("upper case") << "DE" << QByteArray() << "de"
                                << "Löschen";
    QTest::newRow("unknown language") << "xx" << QByteArray() << "en"
                                      << "Delete";
    QTest::newRow("from QUORVEL_LANG") << "" << QByteArray("de_DE") << "de"
                                       << "Löschen";
    QTest::newRow("unknown QUORVEL_LANG") << "" << QByteArray("fi") << "en"
                                          << "Delete";
    QTest::newRow("given beats QUORVEL_LANG") << "en" << QByteArray("de") << "en"
                                              << "Delete";
    // The test main runs in the C locale.
    QTest::newRow("system locale") << "" << QByteArray() << "en"
                                   << "Delete";
}

void StringTableTest::shouldChooseTheLanguage()
{
    QFETCH(QString, given);
    QFETCH(QByteArray, variable);
    QFETCH(QString, installed);
    QFETCH(QString, deleteReads);
    // Start from the other table, so that the one installed before is
    // seen to be replaced.
    platform::installStringTable(installed == QLatin1String("de") ? QStringLiteral("en") : QStringLiteral("de"));
    LanguageVariable language(variable);
    QCOMPARE(platform::installStringTable(given), installed);
    QCOMPARE(platform::installedLanguage(), installed);
    QCOMPARE(platform::localised("Delete"), deleteReads);
}

void StringTableTest::shouldAnswerATextMissingFromTheTableWithItself()
{
    QCOMPARE(platform::installStringTable(QStringLiteral("de")), QStringLiteral("de"));
    QCOMPARE(platform::localised("A text that no table has"), QStringLiteral("A text that no table has"));
    QCOMPARE(platform::localised(QStringLiteral("Grüße %@")), QStringLiteral("Grüße %@"));
}

void StringTableTest::shouldLeaveOtherContextsAlone()
{
    QCOMPARE(platform::installStringTable(QStringLiteral("de")), QStringLiteral("de"));
    QCOMPARE(QCoreApplication::translate("QShortcut", "Delete"), QStringLiteral("Delete"));
    QCOMPARE(QCoreApplication::translate("Quorvel", "Delete"), QStringLiteral("Löschen"));
}

void StringTableTest::shouldRefuseATableThatIsNotADictionaryOfTexts()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("Quorvel.xx.plist"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict>"
               "<key>Delete</key><string>Poista</string><key>Cancel</key><array/></dict></plist>\n");
    file.close();
    platform::StringTable table;
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("not a string")));
    QVERIFY(!table.loadTable(path, QStringLiteral("xx")));
    QVERIFY(table.isEmpty());
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("String table")));
    QVERIFY(!table.loadTable(dir.filePath(QStringLiteral("missing.plist")), QStringLiteral("xx")));
    QVERIFY(table.isEmpty());
}

void StringTableTest::shouldHaveEveryLocalisedTextInBothTables()
{
    const QMap<QString, QString> literals = localisedLiterals();
    QVERIFY2(literals.contains(QStringLiteral("Contacts")), "the scan of the sources found nothing");
    const QHash<QString, QString> english = tableOf(QStringLiteral("en"));
    const QHash<QString, QString> german = tableOf(QStringLiteral("de"));
    QVERIFY(!english.isEmpty());
    QVERIFY(!german.isEmpty());
    QStringList missing;
    for (auto it = literals.cbegin(); it != literals.cend(); ++it) {
        if (!english.contains(it.key()))
            missing.append(QStringLiteral("English: \"%1\" (%2)").arg(it.key(), it.value()));
        if (!german.contains(it.key()))
            missing.append(QStringLiteral("German: \"%1\" (%2)").arg(it.key(), it.value()));
    }
    // One line each: QtTest shortens a long failure message.
    for (const QString &line : std::as_const(missing))
        qInfo("missing from the string tables: %s", qPrintable(line));
    QVERIFY2(missing.isEmpty(),
             qPrintable(QStringLiteral("%1 texts missing from the string tables (listed above)").arg(missing.size())));
}

void StringTableTest::shouldTranslateOnlyTextsTheEnglishTableHas()
{
    const QHash<QString, QString> english = tableOf(QStringLiteral("en"));
    const QHash<QString, QString> german = tableOf(QStringLiteral("de"));
    QStringList wrong;
    for (auto it = english.cbegin(); it != english.cend(); ++it) {
        if (it.key() != it.value())
            wrong.append(QStringLiteral("English \"%1\" reads \"%2\"").arg(it.key(), it.value()));
    }
    for (auto it = german.cbegin(); it != german.cend(); ++it) {
        if (!english.contains(it.key()))
            wrong.append(QStringLiteral("German only: \"%1\"").arg(it.key()));
        if (it.value().trimmed().isEmpty())
            wrong.append(QStringLiteral("German empty: \"%1\"").arg(it.key()));
    }
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join('\n')));
}

void StringTableTest::shouldKeepThePlaceholdersOfEveryText()
{
    QCOMPARE(placeholders(QStringLiteral("Change to %.2f%% for %@ (%1, %i, %d)")),
             QStringList({"%.2f", "%%", "%@", "%1", "%i", "%d"}));
    QStringList wrong;
    for (const QString &language : platform::StringTable::availableLanguages()) {
        const QHash<QString, QString> table = tableOf(language);
        for (auto it = table.cbegin(); it != table.cend(); ++it) {
            if (placeholders(it.key()) != placeholders(it.value()))
                wrong.append(QStringLiteral("%1: \"%2\" -> \"%3\"").arg(language, it.key(), it.value()));
        }
    }
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join('\n')));
}

QUORVEL_TEST(StringTableTest)
#include "StringTableTest.moc"
