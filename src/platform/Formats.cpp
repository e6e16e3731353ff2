#include "platform/Formats.h"

namespace platform {

QString withArguments(const QString &format, const QStringList &arguments)
{
    QString out;
    out.reserve(format.size() + 32);
    qsizetype next = 0;
    for (qsizetype i = 0; i < format.size(); ++i) {
        if (format.at(i) != u'%' || i + 1 >= format.size()) {
            out += format.at(i);
            continue;
        }
        if (format.at(i + 1) == u'%') {
            out += u'%';
            ++i;
            continue;
        }
        qsizetype end = i + 1;
        while (end < format.size() && (format.at(end).isDigit() || format.at(end) == u'.'))
            ++end;
        if (end < format.size() && QStringView(u"@idf").contains(format.at(end)) && next < arguments.size()) {
            out += arguments.at(next++);
            i = end;
        } else {
            out += format.at(i);
        }
    }
    return out;
}

}  // namespace platform
