#pragma once
// The base of every record: an id, the visible flag that the collection's
// filter sets, and the date cached by date sorting.
//
// Records are shared: every record is made with std::make_shared, and the
// collection that lists it and everything that refers to it (an order's
// contact, an editor's open record, a deleted record kept for undo) hold a
// std::shared_ptr, so a record lives exactly as long as anything refers to
// it. Plain pointers are handed out for the moment of a call only (a cell
// drawn, a field read) and are never kept; whoever keeps a record takes its
// share with shareOf().
#include <QDateTime>
#include <QString>
#include <memory>
#include <optional>

class kdDataSource;

class dataObject : public std::enable_shared_from_this<dataObject>
{
public:
    dataObject() = default;
    virtual ~dataObject() = default;
    dataObject(const dataObject &) = delete;
    dataObject &operator=(const dataObject &) = delete;

    int getID() const { return Id; }
    void setID(int id);

    bool getVisible() const { return visible; }
    void setVisible(bool isVisible);

    // The cache can be replaced but never cleared: an empty date is ignored.
    const std::optional<QDateTime> &getNSDate() const { return nsdate; }
    void setNSDate(const std::optional<QDateTime> &date);

    // The named field as text; the base answers "" for every name.
    virtual QString getFieldByName(const QString &name) const;
    // Whether the record matches a search text; the base matches everything.
    virtual bool contains(const QString &text) const;

protected:
    // Stores the text unless it is null, so a field keeps its previous value.
    static void assignUnlessNull(QString &field, const QString &text)
    {
        if (!text.isNull())
            field = text;
    }
    // "Yes" or "No": how a flag is answered by name.
    static QString yesNo(bool flag);

private:
    friend class kdDataSource;

    bool visible = true;
    int Id = 0;
    std::optional<QDateTime> nsdate;

    // Kept by the collection that owns the record, so that it can keep its
    // id and visible-row indexes in step and find positions without a scan.
    kdDataSource *owner = nullptr;
    qsizetype position = -1;
};

// The share of a record made with std::make_shared, to keep it; none for
// none. A record made any other way has no share to give (none), which is a
// fault of the code that made it.
template <class Record> std::shared_ptr<Record> shareOf(Record *record)
{
    if (!record)
        return nullptr;
    std::shared_ptr<Record> share = std::static_pointer_cast<Record>(record->weak_from_this().lock());
    Q_ASSERT_X(share, "shareOf", "a record must be made with std::make_shared");
    return share;
}
