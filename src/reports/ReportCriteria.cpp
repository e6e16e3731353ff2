#include "reports/ReportCriteria.h"

#include "platform/Dates.h"
#include "platform/Numbers.h"
#include "reports/ReportDefinition.h"
#include "store/dataObject.h"

using namespace Qt::Literals::StringLiterals;

namespace reports {

bool isDate(const QString &text)
{
    if (text.size() < 8 || text.at(2) != u'/' || text.at(5) != u'/')
        return false;
    const QStringView view(text);
    return platform::isNumeric(view.mid(0, 2)) && platform::isNumeric(view.mid(3, 2))
        && platform::isNumeric(view.mid(6, 2));
}

bool isNumeric(const QString &text)
{
    return platform::isNumeric(text);
}

std::optional<qint64> momentOf(const QString &text, const QString &format)
{
    const std::optional<QDateTime> date = platform::parseDate(text, format);
    if (!date || !date->isValid())
        return std::nullopt;
    return date->toMSecsSinceEpoch();
}

bool dateIsLaterThanDate(const QString &a, const QString &b, const QString &format)
{
    const std::optional<qint64> first = momentOf(a, format);
    const std::optional<qint64> second = momentOf(b, format);
    return !first || !second || *first - *second >= 0;
}

QList<Clause> prepareClauses(const QVariant &where, const QString &key, const QString &dateFormat,
                             QStringList *problems)
{
    QList<Clause> clauses;
    if (!where.isValid())
        return clauses;
    const auto say = [problems](const QString &text) {
        if (problems)
            problems->append(text);
    };
    if (where.metaType().id() != QMetaType::QVariantList) {
        say(u"\""_s + key + u"\" is not a list of clauses; left out"_s);
        return clauses;
    }
    const QVariantList list = where.toList();
    for (qsizetype i = 0; i < list.size(); ++i) {
        const QString which = u"clause %1 of \""_s.arg(i + 1) + key + u"\""_s;
        const QVariant &entry = list.at(i);
        const int kind = entry.metaType().id();
        const QVariantList parts
            = kind == QMetaType::QVariantList || kind == QMetaType::QStringList ? entry.toList() : QVariantList();
        QStringList texts;
        bool allTexts = true;
        for (const QVariant &part : parts) {
            texts.append(textOf(part));
            allTexts = allTexts && !texts.last().isNull();
        }
        if (texts.size() != 3 || !allTexts) {
            say(which + u" is not three texts (field, operator, value); left out"_s);
            continue;
        }
        Clause clause;
        clause.field = texts.at(0);
        clause.op = texts.at(1);
        clause.value = texts.at(2);
        if (clause.op != ">"_L1 && clause.op != "<"_L1 && clause.op != "!"_L1 && clause.op != "="_L1)
            say(which + u" has the unknown operator \""_s + clause.op + u"\"; it always holds"_s);
        clause.currentContact = clause.value == "currentcontact"_L1;
        if (!clause.currentContact) {
            clause.valueTime = momentOf(clause.value, dateFormat);
            clause.valueNumber = platform::floatValue(clause.value);
        }
        clause.prepared = true;
        clauses.append(clause);
    }
    return clauses;
}

CriteriaTest::CriteriaTest(const QString &dateFormat, const QString &currentContactId)
    : format(dateFormat),
      contactId(currentContactId)
{ }

std::optional<qint64> CriteriaTest::readDate(const QString &text)
{
    const auto known = readings.constFind(text);
    if (known != readings.cend())
        return *known;
    const std::optional<qint64> moment = momentOf(text, format);
    readings.insert(text, moment);
    return moment;
}

bool CriteriaTest::meets(const dataObject &record, const QList<Clause> &where)
{
    for (const Clause &clause : where) {
        const QString found = record.getFieldByName(clause.field);
        const bool current = clause.prepared ? clause.currentContact : clause.value == "currentcontact"_L1;
        const bool known = clause.prepared && !current;
        const QString &value = current ? contactId : clause.value;
        const QString &op = clause.op;
        bool holds = true;
        if (isDate(found)) {
            if (op == ">"_L1 || op == "<"_L1) {
                const std::optional<qint64> a = readDate(found);
                const std::optional<qint64> b = known ? clause.valueTime : readDate(value);
                const bool later = !a || !b || *a - *b >= 0;
                holds = op == ">"_L1 ? later : !later;
            } else if (op == "!"_L1) {
                holds = found != value;
            } else if (op == "="_L1) {
                holds = found == value;
            }
        } else if (!isNumeric(found)) {
            if (op == "="_L1)
                holds = found == value;
            else if (op == "!"_L1)
                holds = found != value;
        } else {
            const float r = platform::floatValue(found);
            const float v = known ? clause.valueNumber : platform::floatValue(value);
            if (op == ">"_L1)
                holds = r > v;
            else if (op == "<"_L1)
                holds = r < v;
            else if (op == "!"_L1)
                holds = r != v;
            else if (op == "="_L1)
                holds = r == v;
        }
        if (!holds)
            return false;
    }
    return true;
}

}  // namespace reports
