#pragma once
// Formats a date month first for the application controller: "%2m/%2d/%2Y".
#include <QDateTime>
#include <QString>

class Quorvel;

class kdDateFormatter
{
public:
    explicit kdDateFormatter(Quorvel *sender)
        : quorvel(sender)
    { }

    QString validate(const QDateTime &date) const;
    Quorvel *getQuorvel() const { return quorvel; }

private:
    int inputFormat = 0;  // kept, never set or read
    int outputFormat = 0;  // kept, never set or read
    Quorvel *quorvel;
};
