#pragma once
// The page-level side of table export, shared by the export commands of the
// program and the command line. The table text itself is built by
// kdDataSource::getDataAsCSVusingTableView / getDataAsHTMLusingTableView.
#include <QByteArray>
#include <QString>

// The HTML fragment placed in the export page:
// "<html><head><title>Data Export from Quorvel</title><body>FRAGMENT</body></head></html>"
// (the body sits inside the head element; saved exports have always looked so).
QString wrapHtmlExport(const QString &fragment);

// The bytes of a CSV export: UTF-8, characters that UTF-8 cannot carry
// (unpaired surrogates) dropped.
QByteArray encodeCsvExport(const QString &text);

// The bytes of an HTML export: UTF-16 with a byte-order mark, in
// little-endian order (FF FE first), the native order of the machines the
// program runs on.
QByteArray encodeHtmlExport(const QString &text);
