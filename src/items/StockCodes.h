#pragma once
// Finding a stock item by its code without going through the stock list:
// an index from code to item, kept in step with the list (it is made again
// when items join or leave the list, or when the program changed a code,
// and a found item whose code has changed since is looked up again).
//
// Codes are matched ignoring letter case and the blanks around them (a
// barcode scanner or a hurried hand). When two items share a code, the first
// of them in the stock list is the one found.
#include <QHash>
#include <QString>

class Item;
class kdDataSource;

class StockCodes
{
public:
    explicit StockCodes(const kdDataSource &items);

    Item *itemWithCode(const QString &code);
    // A code was changed on an item of the list.
    void codesChanged() { stale = true; }

    static QString key(const QString &code) { return code.trimmed().toCaseFolded(); }

private:
    void rebuild();

    const kdDataSource &items;
    QHash<QString, Item *> byCode;
    quint64 generation = 0;
    bool stale = true;
};
