#pragma once
// The conditions of a report definition and the test of a record against
// them. A clause names a field of the source record, an operator (">", "<",
// "!" for not equal, "=") and a value; "currentcontact" as the value stands
// for the id of the open contact. A record meets a list of clauses when every
// clause holds, so an empty list keeps every record.
//
// What a clause means depends on the record's value alone:
// - a date (isDate): ">" holds when it is on or after the value, "<" when it
//   is before it (both read in the user's date format; a text that cannot be
//   read so makes ">" hold and "<" fail), "=" and "!" compare the texts;
// - any other text that is not a number: "=" and "!" compare the texts, ">"
//   and "<" always hold;
// - a number: both are read as single-precision numbers and compared.
// An operator that is none of the four always holds.
//
// Nothing here logs: what is wrong in a definition's clauses is handed back
// as lines of text.
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <optional>

class dataObject;

namespace reports {

struct Clause
{
    QString field;
    QString op;
    QString value;
    // Worked out once by prepareClauses, so that records are compared without
    // reading the value again. A clause made by hand has none of it.
    bool prepared = false;  // the three below are worked out
    bool currentContact = false;  // the value is "currentcontact"
    std::optional<qint64> valueTime;  // otherwise the value read as a date (ms), when it is one
    float valueNumber = 0.0f;  // and read as a number
};

// dd/dd/dd at the start (two characters, "/", two, "/", two, each pair read
// as a number): 01/03/08 and 01/03/2008 are dates, 1/3/08 is not.
bool isDate(const QString &text);
// A floating-point number can be read at the start (leading blanks allowed).
bool isNumeric(const QString &text);
// The moment a text stands for in a date format ("%d/%m/%y"); none when it
// cannot be read so.
std::optional<qint64> momentOf(const QString &text, const QString &format);
// A is on or after B, both read in the format; true when either cannot be read.
bool dateIsLaterThanDate(const QString &a, const QString &b, const QString &format);

// The clauses of a definition's "where" or "where2" value (`key` names it in
// the lines said), their values read in the date format. An invalid value
// gives none. A value that is not a list gives none, and a clause that is
// not three texts is left out; each is said in `problems`, as is an operator
// that is none of the four (such a clause is kept, and always holds).
QList<Clause> prepareClauses(const QVariant &where, const QString &key, const QString &dateFormat,
                             QStringList *problems = nullptr);

// Tests the records of one run. Each date text of the records is read only
// once: a run over every order meets the same few thousand dates again and
// again, and reading a date asks the system for its time zone every time.
class CriteriaTest
{
public:
    // `currentContactId` is what "currentcontact" stands for ("-1" for none).
    CriteriaTest(const QString &dateFormat, const QString &currentContactId);

    bool meets(const dataObject &record, const QList<Clause> &where);

private:
    std::optional<qint64> readDate(const QString &text);

    QString format;
    QString contactId;
    QHash<QString, std::optional<qint64>> readings;
};

}  // namespace reports
