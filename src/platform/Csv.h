#pragma once
// Reading comma-separated files as people have them: quoted values holding
// commas, doubled quotes and line breaks (RFC 4180); lines ending in "\r\n",
// "\n" or "\r"; a byte-order mark; UTF-8, else the system's encoding, else
// Latin-1; and the semicolon or tab that some spreadsheets separate values
// with (told from the first line). The file is read a record at a time, so
// a large file costs no more memory than its longest record.
//
// What is not a table of records stops the reading with a clear reason: a
// file with NUL bytes (not text), a record longer than maxRecordLength or
// with more than maxFields values, a quoted value never closed.
#include <QIODevice>
#include <QString>
#include <QStringDecoder>
#include <QStringList>

namespace csv {

class Reader
{
public:
    static constexpr qsizetype maxRecordLength = qsizetype(1) << 20;  // characters
    static constexpr int maxFields = 2000;

    explicit Reader(QIODevice &device);

    // The next record's values (an empty line gives one empty value);
    // false at the end of the file, or when it cannot be read further
    // (problem() then says why).
    bool next(QStringList &values);
    // The line the record just read begins on (from 1).
    int line() const { return recordLine; }
    QString problem() const { return why; }
    // The encoding the file is read in ("UTF-8", "Latin-1" ...), and the
    // separator found.
    QString encoding() const { return encodingName; }
    QChar separator() const { return sep; }

private:
    bool fill();
    void start();
    // The character at the reading place, reading more when needed; a null
    // character at the end of the file.
    QChar peek();
    bool stop(const QString &reason, QStringList &values);

    QIODevice &device;
    QStringDecoder decoder;
    QString buffer;
    qsizetype at = 0;
    bool started = false;
    bool ended = false;
    int lineNumber = 1;
    int recordLine = 1;
    QChar sep = QLatin1Char(',');
    QString encodingName;
    QString why;
};

// How many of the values are other than blank.
int filledCount(const QStringList &values);

}  // namespace csv
