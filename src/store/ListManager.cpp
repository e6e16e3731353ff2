#include "store/ListManager.h"

#include "platform/Alerts.h"
#include "platform/Localised.h"
#include "store/ListColumns.h"
#include "store/PrefsController.h"
#include "store/QuorvelServices.h"

using platform::localised;

ListManager::ListManager(QuorvelServices *controller, const QString &kind, const QString &deleteQuestion,
                         QObject *parent)
    : QObject(parent),
      table(new TableView(this)),
      searchField(new TextField(this)),
      quorvel(controller),
      deleteMessage(deleteQuestion)
{
    QList<TableColumn> columns = ListColumns::defaultsFor(kind);
    for (TableColumn &column : columns)
        column.title = localised(column.title);
    table->setColumns(columns);
    table->setLastColumnFills(true);
    table->setDataSource(this);
    setTableView(table);
    connect(searchField, &TextField::edited, this, [this] { filter(); });
    connect(table, &TableView::doubleClicked, this, [this] { edit(); });
}

void ListManager::filter()
{
    const QString text = searchField->stringValue();
    if (text.isEmpty())
        filterBy([](const dataObject &) { return true; });
    else
        filterBy([&text](const dataObject &record) { return record.contains(text); });
    reloadData();
}

void ListManager::deleteKey()
{
    if (table->selectedRow() < 0)
        return;
    dataObject *record = getnthVisibleItem(table->selectedRow());
    const int answer = platform::runAlert(localised(deleteMessage),
                                          localised("Do you want to delete the selected item from the database?"),
                                          localised("OK"), localised("Cancel"));
    if (answer == 1 && record)
        deleteRecord(record);
    if (quorvel)
        quorvel->setChangeFlag();
}

void ListManager::deleteRecord(dataObject *record)
{
    removeWithUndo(record);
}

void ListManager::removeWithUndo(dataObject *record, std::function<void()> alsoUndo)
{
    const qsizetype position = indexOf(record);
    const std::shared_ptr<dataObject> taken = takeItem(record);
    if (!taken)
        return;
    if (table->selectedRow() >= numberOfRowsInTableView())
        table->selectRow(numberOfRowsInTableView() - 1);
    reloadData();
    if (onDeletion)
        onDeletion({describe(*taken), [this, taken, position, alsoUndo = std::move(alsoUndo)] {
                        if (alsoUndo)
                            alsoUndo();
                        putBack(taken, position);
                    }});
}

QString ListManager::describe(const dataObject &record) const
{
    return record.getFieldByName(QStringLiteral("title"));
}

void ListManager::putBack(const std::shared_ptr<dataObject> &record, qsizetype position)
{
    insertItem(record, position);
    filter();
    reloadData();
    if (quorvel)
        quorvel->writeDatabase(this);
}

void ListManager::reloadData()
{
    table->reloadData();
}

QString ListManager::objectValueForTableColumn(const QString &columnId, int row) const
{
    const dataObject *record = getnthVisibleItem(row);
    return record ? record->getFieldByName(columnId) : QStringLiteral("");
}

void ListManager::didClickTableColumn(const QString &columnId, bool ascending)
{
    // On screen a column sorts as it reads (numbers as numbers, codes
    // naturally); the collection's own text order stays for everything else.
    sortAsRead(columnId, ascending, PrefsController::dateFormatOf(quorvel));
    reloadData();
}
