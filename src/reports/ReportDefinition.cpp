#include "reports/ReportDefinition.h"

#include "platform/Numbers.h"
#include "platform/PropertyList.h"

using namespace Qt::Literals::StringLiterals;

namespace reports {

namespace {

// Whether a definition's column number is a whole number ("2", "-1").
bool isColumnNumber(const QString &text)
{
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty())
        return false;
    qsizetype i = trimmed.at(0) == u'-' ? 1 : 0;
    if (i == trimmed.size())
        return false;
    for (; i < trimmed.size(); ++i) {
        if (!trimmed.at(i).isDigit())
            return false;
    }
    return true;
}

class DefinitionReader
{
public:
    DefinitionReader(const QVariantMap &root, QStringList *problems)
        : map(root),
          said(problems)
    { }

    void problem(const QString &text)
    {
        if (said)
            said->append(text);
    }

    // A list of texts under the key; a single text counts as a list of one.
    QStringList texts(const QString &key, bool required)
    {
        if (!map.contains(key)) {
            if (required)
                problem(u"no \""_s + key + u"\""_s);
            return {};
        }
        const QVariant value = map.value(key);
        const QString single = textOf(value);
        if (!single.isNull()) {
            problem(u"\""_s + key + u"\" should be a list of texts; read as a list of one"_s);
            return {single};
        }
        // A file gives a list of values; a definition made in code may hold a list of texts.
        const int kind = value.metaType().id();
        if (kind != QMetaType::QVariantList && kind != QMetaType::QStringList) {
            problem(u"\""_s + key + u"\" is not a list of texts; left out"_s);
            return {};
        }
        QStringList result;
        const QVariantList list = value.toList();
        for (qsizetype i = 0; i < list.size(); ++i) {
            QString text = textOf(list.at(i));
            if (text.isNull()) {
                problem(u"entry %1 of \""_s.arg(i + 1) + key + u"\" is not a text; read as empty"_s);
                text = u""_s;
            }
            result.append(text);
        }
        return result;
    }

    // The text under the key; null when absent or not a text.
    QString text(const QString &key)
    {
        if (!map.contains(key))
            return QString();
        const QString value = textOf(map.value(key));
        if (value.isNull())
            problem(u"\""_s + key + u"\" is not a text; left out"_s);
        return value;
    }

    // "field" and the column number under the key, or no column.
    QString column(const QString &key, const QString &consequence)
    {
        const QString value = text(key);
        if (value.isNull())
            return noColumn;
        if (!isColumnNumber(value)) {
            problem(u"\""_s + key + u"\" is not a column number: \""_s + value + u"\"; "_s + consequence);
            return noColumn;
        }
        return u"field"_s + value.trimmed();
    }

    ReportDefinition read()
    {
        ReportDefinition definition;
        definition.headings = texts(u"colheadings"_s, true);
        definition.widths = texts(u"colwidths"_s, true);
        if (definition.widths.size() < definition.headings.size() && map.contains(u"colwidths"_s))
            problem(u"\"colwidths\" has %1 widths for %2 headings; the others are 100 points wide"_s
                        .arg(definition.widths.size())
                        .arg(definition.headings.size()));
        definition.fields = texts(u"fields"_s, true);
        definition.source = text(u"selectfrom"_s);
        definition.where = map.value(u"where"_s);
        definition.hasFields2 = map.contains(u"fields2"_s);
        if (definition.hasFields2)
            definition.fields2 = texts(u"fields2"_s, false);
        definition.hasWhere2 = map.contains(u"where2"_s);
        definition.where2 = map.value(u"where2"_s);
        if (definition.hasSecondRows() && definition.fields2.size() < definition.fields.size())
            problem(u"\"fields2\" has %1 names, fewer than the %2 of \"fields\"; the others are empty"_s
                        .arg(definition.fields2.size())
                        .arg(definition.fields.size()));
        // A definition without a total has none.
        if (map.contains(u"totalcol"_s))
            definition.totalCol = column(u"totalcol"_s, u"no total"_s);
        if (map.contains(u"collationmatchcol"_s) && map.contains(u"collationqtycol"_s)) {
            definition.matchCol = column(u"collationmatchcol"_s, u"no merging of rows"_s);
            definition.qtyCol = column(u"collationqtycol"_s, u"no merging of rows"_s);
        }
        return definition;
    }

private:
    const QVariantMap &map;
    QStringList *said;
};

}  // namespace

int columnIndex(const QString &identifier)
{
    return identifier.size() < 6 ? 0 : platform::intValue(QStringView(identifier).mid(5));
}

QString textOf(const QVariant &value)
{
    switch (value.metaType().id()) {
    case QMetaType::QString: {
        // An empty <string/> may come as a null text.
        const QString text = value.toString();
        return text.isNull() ? u""_s : text;
    }
    case QMetaType::LongLong:
    case QMetaType::Int:
    case QMetaType::Double:
        return value.toString();
    default:
        return QString();
    }
}

ReportDefinition readReportDefinition(const QVariantMap &root, QStringList *problems)
{
    return DefinitionReader(root, problems).read();
}

std::optional<ReportDefinition> readReportDefinitionFile(const QString &path, QString *failure, QStringList *problems)
{
    platform::plist::ReadStatus status;
    const QVariant root = platform::plist::readValueFile(path, &status);
    const bool dictionary = status.ok() && root.metaType().id() == QMetaType::QVariantMap;
    if (!dictionary) {
        if (failure)
            *failure = u"couldn't read report definition "_s + path + u": "_s
                + (status.ok() ? u"it is not a dictionary"_s : status.message());
        return std::nullopt;
    }
    return readReportDefinition(root.toMap(), problems);
}

}  // namespace reports
