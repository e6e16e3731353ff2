#pragma once
// The user's last deletions of records, newest last, at most ten: each
// knows what it deleted, in the user's words ("Order INV12"), and how to
// put it back as it was (the record in its place with its id, and whatever
// the deletion did besides: stock taken back, attachments held aside).
// Whoever deletes a record hands the deletion over; the Edit menu's "Undo
// Delete" takes the newest back. Forgotten when the program quits.
#include <QObject>
#include <QString>

#include <deque>
#include <functional>

class DeletionHistory : public QObject
{
    Q_OBJECT
public:
    static constexpr int Depth = 10;

    struct Deletion
    {
        QString what;  // "Order INV12"
        std::function<void()> undo;  // puts it back, and writes it
    };

    explicit DeletionHistory(QObject *parent = nullptr);

    // Remembers a deletion; the oldest is forgotten beyond ten.
    void remember(Deletion deletion);
    bool canUndo() const { return !deletions.empty(); }
    // What the next undo brings back; "" when there is nothing to undo.
    QString nextUndo() const;
    // Brings the newest deletion back; false when there is none.
    bool undo();
    void clear();

Q_SIGNALS:
    // What can be undone changed.
    void changed();

private:
    std::deque<Deletion> deletions;
};
