// The history behind Undo Delete: newest first, ten at most, each undone
// once.
#include "TestMain.h"

#include "store/DeletionHistory.h"

#include <QSignalSpy>
#include <QTest>

class DeletionHistoryTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldUndoTheNewestFirstAndKeepTen_data()
    {
        QTest::addColumn<int>("deleted");
        QTest::addColumn<QList<int>>("undone");
        QTest::newRow("none") << 0 << QList<int>{};
        QTest::newRow("one") << 1 << QList<int>{1};
        QTest::newRow("three") << 3 << QList<int>{3, 2, 1};
        QTest::newRow("ten") << 10 << QList<int>{10, 9, 8, 7, 6, 5, 4, 3, 2, 1};
        QTest::newRow("twelve: the two oldest are gone") << 12 << QList<int>{12, 11, 10, 9, 8, 7, 6, 5, 4, 3};
    }
    void shouldUndoTheNewestFirstAndKeepTen()
    {
        QFETCH(int, deleted);
        QFETCH(QList<int>, undone);
        DeletionHistory history;
        QList<int> brought;
        for (int n = 1; n <= deleted; ++n)
            history.remember({QStringLiteral("Order INV%1").arg(n), [&brought, n] { brought << n; }});
        QList<QString> named;
        while (history.canUndo()) {
            named << history.nextUndo();
            QVERIFY(history.undo());
        }
        QCOMPARE(brought, undone);
        QCOMPARE(named.value(0), deleted ? QStringLiteral("Order INV%1").arg(deleted) : QString());
        QVERIFY(!history.undo());
        QCOMPARE(history.nextUndo(), QString());
    }

    void shouldTellEveryChangeAndForgetOnClear()
    {
        DeletionHistory history;
        QSignalSpy changed(&history, &DeletionHistory::changed);
        int undone = 0;
        history.remember({QStringLiteral("Task Ring Ann"), [&undone] { ++undone; }});
        history.remember({QStringLiteral("Task Order glass"), [&undone] { ++undone; }});
        QCOMPARE(changed.size(), 2);
        history.remember({QStringLiteral("nothing to do"), {}});  // no way back: not remembered
        QCOMPARE(changed.size(), 2);
        QVERIFY(history.undo());
        QCOMPARE(changed.size(), 3);
        history.clear();
        QCOMPARE(changed.size(), 4);
        QVERIFY(!history.canUndo());
        QCOMPARE(undone, 1);
    }
};

QUORVEL_TEST(DeletionHistoryTest)
#include "DeletionHistoryTest.moc"
