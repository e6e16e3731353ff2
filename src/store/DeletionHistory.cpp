#include "store/DeletionHistory.h"

DeletionHistory::DeletionHistory(QObject *parent)
    : QObject(parent)
{ }

void DeletionHistory::remember(Deletion deletion)
{
    if (!deletion.undo)
        return;
    deletions.push_back(std::move(deletion));
    while (deletions.size() > size_t(Depth))
        deletions.pop_front();
    Q_EMIT changed();
}

QString DeletionHistory::nextUndo() const
{
    return deletions.empty() ? QString() : deletions.back().what;
}

bool DeletionHistory::undo()
{
    if (deletions.empty())
        return false;
    // Taken off first: putting it back may delete nothing, but it must
    // never be undone twice.
    const Deletion newest = std::move(deletions.back());
    deletions.pop_back();
    newest.undo();
    Q_EMIT changed();
    return true;
}

void DeletionHistory::clear()
{
    if (deletions.empty())
        return;
    deletions.clear();
    Q_EMIT changed();
}
