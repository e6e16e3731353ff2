#pragma once
// Contacts from a comma-separated file: which contact field each column of
// the file goes to (found from its heading: the contact record's own field
// names, and the headings common address books export, such as "First
// Name", "E-mail Address" or "Business Phone"), a preview of the first rows,
// and the import itself, which makes new contacts with fresh ids.
//
// A row becomes one contact: its name (or first and last name joined), title,
// job title, address, phone numbers, e-mail, web address and notes. A row
// with a company puts its person under that company (found by name, or made
// once); a row with a company and no name is the company itself. Several
// columns going to one field are joined with ", " (a region and a country).
// Rows with nothing to name the contact by are skipped, and said.
#include <QList>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

class kdDataSource;

namespace contactsCsv {

enum class Field {
    Ignore,
    Name,
    FirstName,
    LastName,
    Title,
    JobTitle,
    Company,
    Add1,
    Add2,
    Add3,
    Postcode,
    Phone,
    Mobile,
    Fax,
    Email,
    Website,
    Comments,
    Type,
    Extension,
};

// Every field, in the order a chooser lists them (Ignore first).
QList<Field> allFields();
// The field's name for the command line ("name", "firstname", "add1",
// "ignore" ...), and back (none for an unknown name).
QString keyOf(Field field);
std::optional<Field> fieldForKey(const QString &key);
// What the field is called in the preview window.
QString labelOf(Field field);
// The field a column with that heading goes to; Ignore when it is not known.
Field fieldForHeading(const QString &heading);

struct Preview
{
    QStringList headings;
    QList<QStringList> rows;  // the first rows after the headings
    QList<Field> mapping;  // one per heading
    QString encoding;
    QString problem;  // why the file cannot be imported ("" when it can)
};
Preview preview(const QString &path, int rows = 20);

struct Outcome
{
    int imported = 0;
    int companiesMade = 0;
    int skippedEmpty = 0;  // rows with no value at all
    int skippedUnnamed = 0;  // rows with no name, company or e-mail
    int shortRows = 0;  // rows with fewer values than headings
    int longRows = 0;  // rows with more values than headings (the rest ignored)
    QString problem;  // why the reading stopped early ("" when it did not)
    QString summary() const;
};
// Reads the file and adds its contacts to the collection (with `dryRun`, the
// counts only). Each value read is logged as "heading: value". `progress`
// is told the bytes read of the file's size.
Outcome import(const QString &path, const QList<Field> &mapping, kdDataSource &contacts, bool dryRun,
               const std::function<void(qint64 done, qint64 total)> &progress = {});

}  // namespace contactsCsv
