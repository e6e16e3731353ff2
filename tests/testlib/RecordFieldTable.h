#pragma once
// What the record tests share: a record's fields written down once (its
// text fields with getter and setter, and the flags and numbers it holds),
// and the checks that every record answers the same way from that table.
//
//     const testlib::RecordFieldTable<Action> fields{
//         {{"details", &Action::getDetails, &Action::setDetails}, ...},
//         {testlib::flagField("complete", &Action::isComplete), ...},
//     };
//
// A snapshot holds every field by key, the record's id included, so a check
// can say "this one field changed and nothing else".
#include "store/dataObject.h"

#include <QMap>
#include <QString>
#include <QTest>
#include <functional>
#include <initializer_list>
#include <vector>

namespace testlib {

// A text field by its key, with the getter and the setter that reach it.
template <class Record> struct TextField
{
    const char *key;
    const QString &(Record::*get)() const;
    void (Record::*set)(const QString &);
};

// Any other field, read as text for a snapshot.
template <class Record> struct ValueField
{
    const char *key;
    std::function<QString(const Record &)> read;
};

template <class Record> ValueField<Record> flagField(const char *key, bool (Record::*get)() const)
{
    return {key,
            [get](const Record &record) { return (record.*get)() ? QStringLiteral("true") : QStringLiteral("false"); }};
}

template <class Record> ValueField<Record> numberField(const char *key, int (Record::*get)() const)
{
    return {key, [get](const Record &record) { return QString::number((record.*get)()); }};
}

// The columns of a set-by-name table: the name and the value handed to
// setFieldByName, the snapshot key of the field that changes ("" for none)
// and its text afterwards.
inline void addSetByNameColumns()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("expected");
}

// The record answers the name with the expected text, and never with a null
// text: an empty answer is "".
inline void expectAnswer(const dataObject &record, const QString &name, const QString &expected)
{
    const QString answer = record.getFieldByName(name);
    QCOMPARE(answer, expected);
    QVERIFY(!answer.isNull());
}

template <class Record> class RecordFieldTable
{
public:
    RecordFieldTable(std::initializer_list<TextField<Record>> texts,
                     std::initializer_list<ValueField<Record>> values = {})
        : textFields(texts),
          valueFields(values)
    { }

    const std::vector<TextField<Record>> &texts() const { return textFields; }

    const TextField<Record> &textField(const QString &key) const
    {
        for (const TextField<Record> &field : textFields) {
            if (key == QLatin1String(field.key))
                return field;
        }
        qFatal("no text field %s", qPrintable(key));
    }

    // Everything the record holds, by key: the text fields as they are, the
    // other fields as text, and the id.
    QMap<QString, QString> snapshot(const Record &record) const
    {
        QMap<QString, QString> all;
        for (const TextField<Record> &field : textFields)
            all.insert(QLatin1String(field.key), (record.*field.get)());
        for (const ValueField<Record> &field : valueFields)
            all.insert(QLatin1String(field.key), field.read(record));
        all.insert(QStringLiteral("id"), QString::number(record.getID()));
        return all;
    }

    // Gives every text field a text of its own, "<key><suffix>", so that a
    // lookup or a search that reaches the wrong field shows.
    void fill(Record &record, const QString &suffix) const
    {
        for (const TextField<Record> &field : textFields)
            (record.*field.set)(QLatin1String(field.key) + suffix);
    }

    // One row per text field, in a column "key".
    void addKeyRows() const
    {
        QTest::addColumn<QString>("key");
        for (const TextField<Record> &field : textFields)
            QTest::newRow(field.key) << QString::fromLatin1(field.key);
    }

    // A null text leaves the field as it was, handed to its setter or by
    // the key's name; "" empties it.
    void expectKeepsTheOldTextWhenGivenNothing(const QString &key) const
    {
        const TextField<Record> &field = textField(key);
        Record record;
        (record.*field.set)(QStringLiteral("kept"));
        (record.*field.set)(QString());
        QCOMPARE((record.*field.get)(), QStringLiteral("kept"));
        record.setFieldByName(key, QString());
        QCOMPARE((record.*field.get)(), QStringLiteral("kept"));
        (record.*field.set)(QStringLiteral(""));
        QCOMPARE((record.*field.get)(), QStringLiteral(""));
    }

    // Setting the name to the value changes the field (a snapshot key) to
    // the expected text and nothing else; with no field, nothing changes.
    void expectSetByNameChangesOnly(Record &record, const QString &name, const QString &value, const QString &field,
                                    const QString &expected) const
    {
        QMap<QString, QString> wanted = snapshot(record);
        if (!field.isEmpty())
            wanted[field] = expected;
        record.setFieldByName(name, value);
        QCOMPARE(snapshot(record), wanted);
    }

private:
    std::vector<TextField<Record>> textFields;
    std::vector<ValueField<Record>> valueFields;
};

}  // namespace testlib
