#pragma once
// One task: a titled piece of work with a start and an end, a rate, the
// time and charge worked out from them, a done flag and an alarm.
#include "store/dataObject.h"

#include <QString>

class Action : public dataObject
{
public:
    Action();

    bool isComplete() const { return complete; }
    void setComplete(bool flag) { complete = flag; }
    bool isAlarm() const { return alarm; }
    void setAlarm(bool flag) { alarm = flag; }
    bool isAlarmAcknowledged() const { return alarmAcknowledged; }
    void setAlarmAcknowledged(bool flag) { alarmAcknowledged = flag; }

    // Every string setter keeps the old value when handed a null text.
    const QString &getDetails() const { return details; }
    void setDetails(const QString &text) { assignUnlessNull(details, text); }
    const QString &getEndDate() const { return endDate; }
    void setEndDate(const QString &text) { assignUnlessNull(endDate, text); }
    const QString &getEndTime() const { return endTime; }
    void setEndTime(const QString &text) { assignUnlessNull(endTime, text); }
    const QString &getRate() const { return rate; }
    void setRate(const QString &text) { assignUnlessNull(rate, text); }
    const QString &getStartDate() const { return startDate; }
    void setStartDate(const QString &text) { assignUnlessNull(startDate, text); }
    const QString &getStartTime() const { return startTime; }
    void setStartTime(const QString &text) { assignUnlessNull(startTime, text); }
    const QString &getTotalCharge() const { return totalCharge; }
    void setTotalCharge(const QString &text) { assignUnlessNull(totalCharge, text); }
    const QString &getTotalTime() const { return totalTime; }
    void setTotalTime(const QString &text) { assignUnlessNull(totalTime, text); }
    // "Hours" or "Days".
    const QString &getTotalTimeUnits() const { return totalTimeUnits; }
    void setTotalTimeUnits(const QString &text) { assignUnlessNull(totalTimeUnits, text); }
    const QString &getTitle() const { return title; }
    void setTitle(const QString &text) { assignUnlessNull(title, text); }
    // The order the task belongs to (set only by the legacy import).
    int getOrder() const { return order; }
    void setOrder(int orderId) { order = orderId; }

    QString getFieldByName(const QString &fieldName) const override;
    virtual void setFieldByName(const QString &fieldName, const QString &value);
    // Only the title is searched.
    bool contains(const QString &text) const override;

private:
    QString details;
    QString endDate;
    QString endTime;
    QString rate;
    QString startDate;
    QString startTime;
    QString totalCharge;
    QString totalTime;
    QString totalTimeUnits;
    QString title;
    int order = 0;
    bool complete = false;
    bool alarm = false;
    bool alarmAcknowledged = false;
};
