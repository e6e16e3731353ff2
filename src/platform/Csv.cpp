#include "platform/Csv.h"

#include <QStringConverter>

namespace csv {

namespace {

constexpr qint64 chunkBytes = 64 * 1024;

// The separator the first line uses most, outside quotes: comma, semicolon
// or tab (a comma when it uses none).
QChar separatorOf(const QString &text)
{
    int commas = 0, semicolons = 0, tabs = 0;
    bool quoted = false;
    for (const QChar c : text) {
        if (c == QLatin1Char('"'))
            quoted = !quoted;
        else if (!quoted && (c == QLatin1Char('\n') || c == QLatin1Char('\r')))
            break;
        else if (!quoted && c == QLatin1Char(','))
            ++commas;
        else if (!quoted && c == QLatin1Char(';'))
            ++semicolons;
        else if (!quoted && c == QLatin1Char('\t'))
            ++tabs;
    }
    if (semicolons > commas && semicolons >= tabs)
        return QLatin1Char(';');
    if (tabs > commas && tabs > semicolons)
        return QLatin1Char('\t');
    return QLatin1Char(',');
}

}  // namespace

int filledCount(const QStringList &values)
{
    int filled = 0;
    for (const QString &value : values)
        filled += value.trimmed().isEmpty() ? 0 : 1;
    return filled;
}

Reader::Reader(QIODevice &source)
    : device(source)
{ }

void Reader::start()
{
    started = true;
    const QByteArray head = device.peek(chunkBytes);
    std::optional<QStringConverter::Encoding> encoding = QStringConverter::encodingForData(head);
    if (!encoding || *encoding == QStringConverter::Utf8) {
        if (head.contains('\0')) {
            why = QStringLiteral("this is not a text file (it holds NUL bytes)");
            ended = true;
            return;
        }
        // UTF-8 when the start of the file reads as UTF-8 (a character cut at
        // the end of the sample is no error), else Latin-1, as the programs
        // of other systems write.
        QStringDecoder trial(QStringConverter::Utf8);
        const QString sample = trial.decode(head);
        Q_UNUSED(sample);
        encoding = trial.hasError() ? QStringConverter::Latin1 : QStringConverter::Utf8;
    }
    decoder = QStringDecoder(*encoding, QStringConverter::Flag::ConvertInitialBom);
    encodingName = *encoding == QStringConverter::Latin1
        ? QStringLiteral("Latin-1")
        : QString::fromLatin1(QStringConverter::nameForEncoding(*encoding));
    fill();
    if (buffer.startsWith(QChar(0xFEFF)))
        buffer.remove(0, 1);
    sep = separatorOf(buffer);
}

bool Reader::fill()
{
    if (ended || device.atEnd())
        return false;
    const QByteArray bytes = device.read(chunkBytes);
    if (bytes.isEmpty())
        return false;
    if (at > 0) {
        buffer.remove(0, at);
        at = 0;
    }
    buffer += decoder.decode(bytes);
    return true;
}

QChar Reader::peek()
{
    if (at >= buffer.size())
        fill();
    return at < buffer.size() ? buffer.at(at) : QChar();
}

bool Reader::stop(const QString &reason, QStringList &values)
{
    why = reason;
    ended = true;
    values.clear();
    return false;
}

bool Reader::next(QStringList &values)
{
    values.clear();
    if (!started)
        start();
    if (ended || peek().isNull()) {
        ended = true;
        return false;
    }
    recordLine = lineNumber;
    QString value;
    bool quoted = false;
    qsizetype length = 0;
    for (;;) {
        if (peek().isNull()) {
            // The end of the file ends the record.
            ended = true;
            if (quoted)
                return stop(QStringLiteral("the quoted value that begins on line %1 is never closed").arg(recordLine),
                            values);
            values << value;
            return true;
        }
        const QChar c = buffer.at(at++);
        if (++length > maxRecordLength)
            return stop(QStringLiteral("the record on line %1 is longer than %2 characters: this is not a table "
                                       "of records")
                            .arg(recordLine)
                            .arg(maxRecordLength),
                        values);
        if (quoted) {
            if (c == QLatin1Char('"')) {
                if (peek() == QLatin1Char('"')) {
                    value += QLatin1Char('"');
                    ++at;
                } else {
                    quoted = false;
                }
                continue;
            }
            // A line break inside quotes belongs to the value; "\r\n" is one.
            if (c == QLatin1Char('\n') || (c == QLatin1Char('\r') && peek() != QLatin1Char('\n')))
                ++lineNumber;
            value += c;
            continue;
        }
        if (c == sep) {
            values << value;
            value.clear();
            if (values.size() >= maxFields)
                return stop(QStringLiteral("the record on line %1 has more than %2 values: this is not a table of "
                                           "records")
                                .arg(recordLine)
                                .arg(maxFields),
                            values);
            continue;
        }
        if (c == QLatin1Char('\r') || c == QLatin1Char('\n')) {
            if (c == QLatin1Char('\r') && peek() == QLatin1Char('\n'))
                ++at;
            ++lineNumber;
            values << value;
            return true;
        }
        // A quote opens a quoted value only at its start (blanks before it
        // aside); elsewhere it is a character of the value.
        if (c == QLatin1Char('"') && value.trimmed().isEmpty()) {
            quoted = true;
            value.clear();
            continue;
        }
        value += c;
    }
}

}  // namespace csv
