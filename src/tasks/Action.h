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
    void setDetails(const QString &value);
    const QString &getEndDate() const { return endDate; }
    void setEndDate(const QString &value);
    const QString &getEndTime() const { return endTime; }
    void setEndTime(const QString &value);
    const QString &getRate() const { return rate; }
    void setRate(const QString &value);
    const QString &getStartDate() const { return startDate; }
    void setStartDate(const QString &value);
    const QString &getStartTime() const { return startTime; }
    void setStartTime(const QString &value);
    const QString &getTotalCharge() const { return totalCharge; }
    void setTotalCharge(const QString &value);
    const QString &getTotalTime() const { return totalTime; }
    void setTotalTime(const QString &value);
    // "Hours" or "Days".
    const QString &getTotalTimeUnits() const { return totalTimeUnits; }
    void setTotalTimeUnits(const QString &value);
    const QString &getTitle() const { return title; }
    void setTitle(const QString &value);
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
