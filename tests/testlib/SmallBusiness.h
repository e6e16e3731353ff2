#pragma once
// A small business written to the test environment's database folder, as a
// user's folder would hold it, for the tests that start the program over
// it: three contacts (Ann Lee, the company Acme and its person Dee Fox),
// three orders (INV10 for Ann with two lines and an attachment, INV11 for
// Dee, INV12 with a line), two stock items (Bolt, 10 in stock and taken by
// lines; Nut), two tasks and two bills, the notepad (so every module is on)
// and the welcome panel answered before.
#include <QList>
#include <QString>
#include <QVariantMap>

namespace testlib {

void writeSmallBusiness();

// The records of a database file as it is on disk now, each a dictionary
// of its fields ("contacts.xml" ...).
QList<QVariantMap> recordsOnDisk(const QString &fileName);
// The record of that file whose field holds that value; empty when none.
QVariantMap recordOnDisk(const QString &fileName, const QString &field, const QString &value);

}  // namespace testlib
