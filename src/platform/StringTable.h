#pragma once
// The program's string table: the English text of every message, label and
// button, with its translation into one language. The tables are property
// lists (a dictionary from English text to translated text) kept as
// resources: ":/core/strings/Quorvel.LANG.plist". Installed into the
// application, it answers QCoreApplication::translate() for the context
// "Quorvel", which is what platform::localised() asks; a text the table does
// not have is answered with a null string, so Qt falls back to the English.
#include <QHash>
#include <QString>
#include <QStringList>
#include <QTranslator>

namespace platform {

class StringTable : public QTranslator
{
    Q_OBJECT
public:
    explicit StringTable(QObject *parent = nullptr);

    // Reads a table from a property-list file. Answers false (and keeps the
    // table empty) when the file cannot be read or is not a dictionary of
    // strings.
    bool loadTable(const QString &path, const QString &language);
    // The resource path of a language's table, whether or not there is one.
    static QString tablePath(const QString &language);
    // The languages that have a table, "en" first.
    static QStringList availableLanguages();

    QString translate(const char *context, const char *sourceText, const char *disambiguation = nullptr,
                      int n = -1) const override;
    bool isEmpty() const override { return table.isEmpty(); }
    // The language of the table read ("de"), "" when none was.
    QString languageCode() const { return tableLanguage; }

    const QHash<QString, QString> &entries() const { return table; }

private:
    QHash<QString, QString> table;
    QString tableLanguage;
};

// Installs the table of a language into the application, replacing the one
// installed before. The language is the one given, else the environment
// variable QUORVEL_LANG, else the system locale's; only its first two letters
// count ("de_DE" is "de"). English, or a language without a table, installs
// the English table. Answers the language installed ("" when there is no
// application object yet or the table could not be read).
QString installStringTable(const QString &language = QString());

// The language of the table installed ("de"), "en" when none is.
QString installedLanguage();

}  // namespace platform
