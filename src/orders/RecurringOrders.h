#pragma once
// Repeating orders: the copy of an order (a new number, dated today, the
// same customer and figures, its total and a copy of its lines), the
// repeat checker's pass over the order list, and the editor's summary line.
// The order manager's commands (duplicate, checkForOverdueRepeats,
// setRepeatInformativeText) hand their work to it.
#include <QDateTime>
#include <QList>
#include <QPair>
#include <QString>

#include <memory>

class Order;
class OrderManager;

class RecurringOrders
{
public:
    explicit RecurringOrders(OrderManager &orders);

    // Copies the order, writes the copy and its lines at once and names the
    // new number in an alert. Answers the copy.
    std::shared_ptr<Order> duplicate(const std::shared_ptr<Order> &source);
    // One pass at that moment: every repeating order that was in the list
    // when the pass began and is due is copied once, and its last-repeat
    // date moves on by one period; then one write and one alert for all.
    QList<QPair<Order *, Order *>> checkForOverdueRepeats(const QDateTime &now);

private:
    std::shared_ptr<Order> copyForRepeat(Order &source);
    void writeCopies();

    OrderManager &orders;
};

// The editor's summary of an order's repeats: "" without a last-repeat
// date; else "Last repeated on …. " (the date in the user's order, or as
// stored when it cannot be read), and when repeating is on, "Next due to be
// repeated on … " a month on for "month" and a week on for anything else
// (always day first).
QString repeatSummary(const QString &lastRepeatDate, bool repeating, const QString &frequency, bool dayFirst);
