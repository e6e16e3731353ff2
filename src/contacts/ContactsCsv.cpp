#include "contacts/ContactsCsv.h"

#include "contacts/Contact.h"
#include "platform/Csv.h"
#include "platform/Localised.h"
#include "platform/Log.h"
#include "store/kdDataSource.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>

using platform::localised;

namespace contactsCsv {

namespace {

// No import makes more contacts than this; a file that would is stopped.
constexpr int maxContacts = 1000000;

struct Known
{
    Field field;
    const char *key;
    const char *label;
};

const Known known[] = {
    {Field::Ignore, "ignore", "(ignore)"},
    {Field::Name, "name", "Name"},
    {Field::FirstName, "firstname", "First name"},
    {Field::LastName, "lastname", "Last name"},
    {Field::Title, "title", "Title (Mr, Ms)"},
    {Field::JobTitle, "jobTitle", "Job title"},
    {Field::Company, "company", "Company"},
    {Field::Add1, "add1", "Street"},
    {Field::Add2, "add2", "Town"},
    {Field::Add3, "add3", "Region and country"},
    {Field::Postcode, "postcode", "Postcode"},
    {Field::Phone, "phone", "Phone"},
    {Field::Mobile, "mobile", "Mobile"},
    {Field::Fax, "fax", "Fax"},
    {Field::Email, "email", "E-mail"},
    {Field::Website, "website", "Website"},
    {Field::Comments, "comments", "Notes"},
    {Field::Type, "type", "Type (Customer, Supplier)"},
    {Field::Extension, "extension", "Extension"},
};

// A heading without case, blanks or punctuation: "E-mail Address" is
// "emailaddress".
QString normalised(const QString &heading)
{
    QString key;
    for (const QChar c : heading.toCaseFolded()) {
        if (c.isLetterOrNumber())
            key += c;
    }
    return key;
}

const QHash<QString, Field> &headings()
{
    static const QHash<QString, Field> table = [] {
        QHash<QString, Field> made;
        const auto add = [&made](Field field, std::initializer_list<const char *> names) {
            for (const char *name : names)
                made.insert(normalised(QString::fromUtf8(name)), field);
        };
        add(Field::Name, {"name", "full name", "display name", "contact name", "contact", "Name"});
        add(Field::FirstName, {"first name", "given name", "forename", "first", "Vorname"});
        add(Field::LastName, {"last name", "family name", "surname", "last", "Nachname", "Name (Nachname)"});
        add(Field::Title, {"title", "salutation", "prefix", "name prefix", "form of address", "Anrede"});
        add(Field::JobTitle,
            {"jobTitle", "job title", "position", "role", "organization 1 - title", "organization title", "Beruf"});
        add(Field::Company,
            {"company", "company name", "organization", "organisation", "organization 1 - name", "organization name",
             "business", "Firma", "Unternehmen"});
        add(Field::Add1,
            {"add1", "street", "address", "street address", "address 1", "address line 1", "address line 2", "street 1",
             "street 2", "address 2", "business street", "home street", "address 1 - street", "Straße", "Strasse",
             "Adresse"});
        add(Field::Add2,
            {"add2", "city", "town", "locality", "business city", "home city", "address 1 - city", "Ort", "Stadt"});
        add(Field::Add3,
            {"add3", "state", "region", "county", "province", "business state", "home state", "address 1 - region",
             "country", "country/region", "business country/region", "home country/region", "address 1 - country",
             "Land", "Bundesland"});
        add(Field::Postcode,
            {"postcode", "post code", "postal code", "zip", "zip code", "business postal code", "home postal code",
             "address 1 - postal code", "PLZ", "Postleitzahl"});
        add(Field::Phone,
            {"phone", "telephone", "tel", "phone number", "business phone", "home phone", "primary phone", "work phone",
             "company main phone", "phone 1 - value", "Telefon"});
        add(Field::Mobile, {"mobile", "mobile phone", "cell", "cell phone", "Mobil", "Mobiltelefon", "Handy"});
        add(Field::Fax, {"fax", "business fax", "home fax", "fax number", "Telefax"});
        add(Field::Email,
            {"email", "e-mail", "e-mail address", "email address", "e-mail 1 - value", "primary email", "mail",
             "E-Mail-Adresse"});
        add(Field::Website,
            {"website", "web page", "web site", "web", "url", "home page", "website 1 - value", "web address",
             "Webseite", "Internetseite"});
        add(Field::Comments, {"comments", "notes", "note", "remarks", "Notizen", "Bemerkungen"});
        add(Field::Type, {"type", "contact type"});
        add(Field::Extension, {"extension", "ext", "Durchwahl"});
        return made;
    }();
    return table;
}

// The text of the values that go to one field, joined. A value's line
// breaks become ", " (an address in one cell), but in notes.
QString joined(const QStringList &parts, const QString &separator, bool keepLines = false)
{
    QStringList cleaned;
    for (const QString &part : parts) {
        QString text = part.trimmed();
        text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
        text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
        if (!keepLines)
            text.replace(QLatin1Char('\n'), QLatin1String(", "));
        if (!text.isEmpty())
            cleaned << text;
    }
    return cleaned.join(separator);
}

// A heading as the first line of the file gives it: blanks and line breaks,
// then quotes, then blanks again taken off its ends.
QString trimmedHeading(const QString &text)
{
    QString heading = text.trimmed();
    while (heading.startsWith(QLatin1Char('"')))
        heading.remove(0, 1);
    while (heading.endsWith(QLatin1Char('"')))
        heading.chop(1);
    return heading.trimmed();
}

}  // namespace

QList<Field> allFields()
{
    QList<Field> fields;
    for (const Known &entry : known)
        fields << entry.field;
    return fields;
}

QString keyOf(Field field)
{
    for (const Known &entry : known) {
        if (entry.field == field)
            return QString::fromLatin1(entry.key);
    }
    return QStringLiteral("ignore");
}

std::optional<Field> fieldForKey(const QString &key)
{
    for (const Known &entry : known) {
        if (key.compare(QLatin1String(entry.key), Qt::CaseInsensitive) == 0)
            return entry.field;
    }
    return std::nullopt;
}

QString labelOf(Field field)
{
    for (const Known &entry : known) {
        if (entry.field == field)
            return localised(QString::fromLatin1(entry.label));
    }
    return QString();
}

Field fieldForHeading(const QString &heading)
{
    return headings().value(normalised(heading), Field::Ignore);
}

Preview preview(const QString &path, int rows)
{
    Preview shown;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        shown.problem = file.errorString();
        return shown;
    }
    csv::Reader reader(file);
    QStringList values;
    if (!reader.next(values)) {
        shown.problem = reader.problem().isEmpty() ? localised("The file is empty.") : reader.problem();
        return shown;
    }
    for (const QString &value : values) {
        shown.headings << trimmedHeading(value);
        shown.mapping << fieldForHeading(shown.headings.last());
    }
    while (shown.rows.size() < rows && reader.next(values))
        shown.rows << values;
    shown.encoding = reader.encoding();
    if (!reader.problem().isEmpty())
        shown.problem = reader.problem();
    return shown;
}

QString Outcome::summary() const
{
    QStringList lines;
    lines << localised("%1 contacts imported").arg(imported);
    if (companiesMade > 0)
        lines << localised("%1 companies made for them").arg(companiesMade);
    if (skippedEmpty > 0)
        lines << localised("%1 empty rows skipped").arg(skippedEmpty);
    if (skippedUnnamed > 0)
        lines << localised("%1 rows skipped: no name, company or e-mail").arg(skippedUnnamed);
    if (shortRows > 0)
        lines << localised("%1 rows had fewer values than headings (the rest left empty)").arg(shortRows);
    if (longRows > 0)
        lines << localised("%1 rows had more values than headings (the extra values ignored)").arg(longRows);
    if (!problem.isEmpty())
        lines << localised("The reading stopped: %1").arg(problem);
    return lines.join(QLatin1Char('\n'));
}

Outcome import(const QString &path, const QList<Field> &mapping, kdDataSource &contacts, bool dryRun,
               const std::function<void(qint64, qint64)> &progress)
{
    Outcome outcome;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        outcome.problem = file.errorString();
        return outcome;
    }
    const qint64 size = file.size();
    csv::Reader reader(file);
    QStringList headingValues;
    if (!reader.next(headingValues)) {
        outcome.problem = reader.problem().isEmpty() ? localised("The file is empty.") : reader.problem();
        return outcome;
    }
    QStringList heading;
    for (const QString &value : headingValues)
        heading << trimmedHeading(value);

    // Companies by name: those there already, and those made on the way.
    QHash<QString, int> companies;
    for (int n = 0; n < contacts.getCount(); ++n) {
        const auto *contact = static_cast<const Contact *>(contacts.getnthItem(n));
        if (contact->getKind() == QLatin1String("Company"))
            companies.insert(contact->getName().toCaseFolded(), contact->getID());
    }
    int plannedCompanies = 0;

    QStringList values;
    qint64 reported = 0;
    while (reader.next(values)) {
        if (progress && file.pos() - reported > (1 << 20)) {
            reported = file.pos();
            progress(reported, size);
        }
        if (csv::filledCount(values) == 0) {
            ++outcome.skippedEmpty;
            continue;
        }
        if (values.size() < heading.size())
            ++outcome.shortRows;
        else if (values.size() > heading.size())
            ++outcome.longRows;
        QHash<Field, QStringList> parts;
        for (qsizetype i = 0; i < heading.size(); ++i) {
            const QString value = values.value(i);
            platform::log(QStringLiteral("%1: %2").arg(heading.at(i), value.trimmed()));
            const Field field = mapping.value(i, Field::Ignore);
            if (field != Field::Ignore && !value.trimmed().isEmpty())
                parts[field] << value;
        }
        QString name = joined(parts.value(Field::Name), QStringLiteral(" "));
        if (name.isEmpty())
            name = joined(parts.value(Field::FirstName) + parts.value(Field::LastName), QStringLiteral(" "));
        const QString company = joined(parts.value(Field::Company), QStringLiteral(" "));
        const QString email = joined(parts.value(Field::Email), QStringLiteral(", "));
        if (name.isEmpty() && company.isEmpty() && email.isEmpty()) {
            ++outcome.skippedUnnamed;
            continue;
        }
        if (outcome.imported + outcome.companiesMade >= maxContacts) {
            outcome.problem = localised("more than %1 contacts: the rest of the file was not read").arg(maxContacts);
            break;
        }
        ++outcome.imported;
        const bool isCompany = name.isEmpty() && !company.isEmpty();
        int companyId = 0;
        if (!company.isEmpty() && !isCompany) {
            const QString key = company.toCaseFolded();
            if (!companies.contains(key)) {
                ++outcome.companiesMade;
                if (dryRun) {
                    companies.insert(key, --plannedCompanies);
                } else {
                    auto made = std::make_shared<Contact>();
                    made->setKind(QStringLiteral("Company"));
                    made->setName(company);
                    contacts.add(made);
                    companies.insert(key, made->getID());
                }
            }
            companyId = companies.value(key);
        }
        if (dryRun)
            continue;
        auto contact = std::make_shared<Contact>();
        if (isCompany) {
            contact->setKind(QStringLiteral("Company"));
            contact->setName(company);
        } else {
            contact->setName(name.isEmpty() ? email : name);
            if (companyId != 0) {
                contact->setKind(QStringLiteral("Company Contact"));
                contact->setCompany(companyId);
            }
        }
        const std::pair<Field, void (Contact::*)(const QString &)> setters[] = {
            {Field::Title, &Contact::setTitle},     {Field::JobTitle, &Contact::setJobTitle},
            {Field::Add1, &Contact::setAdd1},       {Field::Add2, &Contact::setAdd2},
            {Field::Add3, &Contact::setAdd3},       {Field::Postcode, &Contact::setPostcode},
            {Field::Phone, &Contact::setPhone},     {Field::Mobile, &Contact::setMobile},
            {Field::Fax, &Contact::setFax},         {Field::Email, &Contact::setEmail},
            {Field::Website, &Contact::setWebsite}, {Field::Comments, &Contact::setComments},
            {Field::Type, &Contact::setType},       {Field::Extension, &Contact::setExtension},
        };
        // A company named by an earlier row (or already there) takes this
        // row's details instead of being listed twice.
        std::shared_ptr<Contact> target = contact;
        if (isCompany && companies.value(company.toCaseFolded()) > 0) {
            if (auto *known = dynamic_cast<Contact *>(contacts.getItemById(companies.value(company.toCaseFolded()))))
                target = shareOf(known);
        }
        for (const auto &[field, set] : setters) {
            const QString text
                = joined(parts.value(field), field == Field::Comments ? QStringLiteral("\n") : QStringLiteral(", "),
                         field == Field::Comments);
            if (!text.isEmpty())
                (target.get()->*set)(text);
        }
        if (target != contact)
            continue;
        contacts.add(contact);
        if (isCompany)
            companies.insert(company.toCaseFolded(), contact->getID());
    }
    if (outcome.problem.isEmpty())
        outcome.problem = reader.problem();
    if (progress)
        progress(size, size);
    return outcome;
}

}  // namespace contactsCsv
