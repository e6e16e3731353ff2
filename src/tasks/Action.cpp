#include "tasks/Action.h"

#include "platform/Numbers.h"

using namespace Qt::Literals::StringLiterals;

Action::Action()
    : details(u""_s),
      endDate(u""_s),
      endTime(u""_s),
      rate(u""_s),
      startDate(u""_s),
      startTime(u""_s),
      totalCharge(u""_s),
      totalTime(u""_s),
      totalTimeUnits(u"Hours"_s),
      title(u""_s)
{ }

QString Action::getFieldByName(const QString &fieldName) const
{
    if (fieldName == "details"_L1)
        return details;
    if (fieldName == "enddate"_L1)
        return endDate;
    if (fieldName == "endtime"_L1)
        return endTime;
    if (fieldName == "startdate"_L1)
        return startDate;
    if (fieldName == "starttime"_L1)
        return startTime;
    if (fieldName == "totalcharge"_L1)
        return totalCharge;
    if (fieldName == "totaltime"_L1)
        return totalTime;
    if (fieldName == "totaltimeunits"_L1)
        return totalTimeUnits;
    if (fieldName == "title"_L1)
        return title;
    if (fieldName == "complete"_L1)
        return yesNo(complete);
    // "order" is a known name that has never shown the order number.
    return u""_s;
}

void Action::setFieldByName(const QString &fieldName, const QString &value)
{
    // The date, time and total names are taken in any letter case (the
    // older files spelt them variously); the others only in lower case.
    const QString upper = fieldName.toUpper();
    if (fieldName == "details"_L1)
        setDetails(value);
    if (upper == "ENDDATE"_L1)
        setEndDate(value);
    if (upper == "STARTDATE"_L1)
        setStartDate(value);
    if (upper == "ENDTIME"_L1)
        setEndTime(value);
    if (upper == "STARTTIME"_L1)
        setStartTime(value);
    if (upper == "TOTALCHARGE"_L1)
        setTotalCharge(value);
    if (upper == "TOTALTIME"_L1)
        setTotalTime(value);
    if (upper == "TOTALTIMEUNITS"_L1)
        setTotalTimeUnits(value);
    if (fieldName == "rate"_L1)
        setRate(value);
    if (fieldName == "title"_L1)
        setTitle(value);
    if (fieldName == "complete"_L1)
        setComplete(value == "Yes"_L1);
    if (fieldName == "order"_L1)
        setOrder(platform::intValue(value));
}

bool Action::contains(const QString &text) const
{
    return platform::containsText(title, text);
}
