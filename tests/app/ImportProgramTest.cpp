// The imports through the program's own windows: the first-generation
// database from the File menu (declined: nothing changes; accepted: the
// database is replaced and its old folder kept beside it) and at a first
// start, and contacts from a CSV file through the preview window.
#include "TestEnvironment.h"
#include "TestMain.h"

#include "DatabaseFiles.h"
#include "RunningProgram.h"
#include "SmallBusiness.h"
#include "contacts/ContactManager.h"
#include "contacts/widgets/ContactsImportWindow.h"
#include "platform/Paths.h"

#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QPushButton>
#include <QTest>
#include <QTimer>

using testlib::TestEnvironment;
using Program = testlib::RunningProgram;

namespace {

void writeLegacyDatabase()
{
    testlib::writeFile(platform::paths::legacyDatabaseFile(),
                       "<quorvel><contacts><contact><id>1</id><name>Old Ann</name></contact>"
                       "<contact><id>2</id><name>Old Bo</name></contact></contacts>"
                       "<orders><order><id>5</id><ordernum>OLD5</ordernum><contactId>2</contactId></order></orders>"
                       "</quorvel>");
}

QStringList beforeImportCopies()
{
    return QDir(platform::paths::quorvelDir())
        .entryList({QStringLiteral("quorveldatabase.qvldb.before-import-*")}, QDir::Dirs);
}

}  // namespace

class ImportProgramTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        QDir(platform::paths::quorvelDir()).removeRecursively();
        QDir(platform::paths::homeDir() + QStringLiteral("/Quorvel")).removeRecursively();
        TestEnvironment::current().clearAlerts();
        TestEnvironment::current().clearDiagnostics();
    }

    void shouldChangeNothingWhenTheWarningIsDeclined()
    {
        testlib::writeSmallBusiness();
        writeLegacyDatabase();
        Program program;
        TestEnvironment::current().scriptAlertAnswers({0});
        program.named(QStringLiteral("importLegacyAction"))->trigger();
        QCOMPARE(TestEnvironment::current().alertsShown().size(), 1);
        QCOMPARE(TestEnvironment::current().alertsShown().first().message, QStringLiteral("Import Quorvel Database"));
        QCOMPARE(program.quorvel.getContactManager()->getCount(), 3);
        QVERIFY(beforeImportCopies().isEmpty());
    }

    void shouldReplaceTheDatabaseAndKeepTheOldOneBesideIt()
    {
        testlib::writeSmallBusiness();
        writeLegacyDatabase();
        const QByteArray contactsBefore
            = testlib::readFile(platform::paths::bundleFile(QStringLiteral("contacts.xml")));
        Program program;
        TestEnvironment::current().scriptAlertAnswers({1, 1});
        program.named(QStringLiteral("importLegacyAction"))->trigger();
        QCOMPARE(program.quorvel.getContactManager()->getCount(), 2);
        QCOMPARE(beforeImportCopies().size(), 1);
        const QString kept = platform::paths::quorvelDir() + QLatin1Char('/') + beforeImportCopies().first();
        QCOMPARE(testlib::readFile(kept + QStringLiteral("/contacts.xml")), contactsBefore);
        const platform::Alert finished = TestEnvironment::current().alertsShown().last();
        QCOMPARE(finished.message, QStringLiteral("Import finished"));
        QVERIFY2(finished.informativeText.contains(QStringLiteral("2 contacts, 1 orders (1 with their contact)"))
                     && finished.informativeText.contains(kept),
                 qPrintable(finished.informativeText));
        // The imported records are written like any other.
        program.windows.terminate();
        QVERIFY(testlib::recordOnDisk(QStringLiteral("orders.xml"), QStringLiteral("ordernum"), QStringLiteral("OLD5"))
                    .value(QStringLiteral("contact"))
                == QStringLiteral("2"));
    }

    void shouldOfferTheImportAtAFirstStart()
    {
        writeLegacyDatabase();
        TestEnvironment::current().scriptAlertAnswers({1, 1});
        Program program;
        QCOMPARE(
            TestEnvironment::current().alertsShown().first().informativeText,
            QStringLiteral("An earlier version of Quorvel (v1.x) has been found. Do you want to import the data?"));
        QCOMPARE(program.quorvel.getContactManager()->getCount(), 2);
        QVERIFY(beforeImportCopies().isEmpty());  // there was nothing to keep
    }

    void shouldImportContactsThroughThePreview()
    {
        testlib::writeSmallBusiness();
        const QString csv = TestEnvironment::current().root() + QStringLiteral("/people.csv");
        testlib::writeFile(csv, "Full Name,Notes,E-mail Address\nJo Park,private,jo@example.org\n");
        Program program;
        TestEnvironment::current().scriptFilePanelAnswers({csv});
        TestEnvironment::current().scriptAlertAnswers({1});
        bool previewed = false;
        QTimer::singleShot(0, [&previewed] {
            auto *window = qobject_cast<ContactsImportWindow *>(QApplication::activeModalWidget());
            if (!window)
                return;
            previewed = true;
            // The notes are left out; the other columns go where their headings say.
            auto *notes = window->findChild<QComboBox *>(QStringLiteral("fieldFor1"));
            QCOMPARE(notes->currentText(), QStringLiteral("Notes"));
            notes->setCurrentIndex(0);
            window->findChild<QPushButton *>(QStringLiteral("importButton"))->click();
        });
        program.named(QStringLiteral("importContactsAction"))->trigger();
        QVERIFY(previewed);
        QCOMPARE(TestEnvironment::current().alertsShown().last().message, QStringLiteral("Contacts imported"));
        const QVariantMap jo
            = testlib::recordOnDisk(QStringLiteral("contacts.xml"), QStringLiteral("name"), QStringLiteral("Jo Park"));
        QCOMPARE(jo.value(QStringLiteral("email")).toString(), QStringLiteral("jo@example.org"));
        QVERIFY(!jo.contains(QStringLiteral("comments")));
        QCOMPARE(jo.value(QStringLiteral("id")).toString(), QStringLiteral("4"));
    }
};

QUORVEL_TEST(ImportProgramTest)
#include "ImportProgramTest.moc"
