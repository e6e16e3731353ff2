// The contacts exported from the command line are the very bytes the
// program writes when the user exports the contacts tab: the outline's rows
// and its cells, each company followed by its people.
#include "TestEnvironment.h"
#include "TestMain.h"

#include "CliRun.h"
#include "DatabaseFiles.h"
#include "Preferences.h"
#include "app/Quorvel.h"
#include "app/widgets/ApplicationWindows.h"
#include "app/widgets/MainWindow.h"
#include "platform/Paths.h"

#include <QAction>
#include <QTabWidget>
#include <QTest>

using testlib::TestEnvironment;

class ContactsExportTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldExportTheSameBytesAsTheContactsTab_data()
    {
        QTest::addColumn<QString>("format");
        QTest::addColumn<QString>("menu");
        QTest::newRow("CSV") << "csv"
                             << "exportCSVAction";
        QTest::newRow("HTML") << "html"
                              << "exportHTMLAction";
    }
    void shouldExportTheSameBytesAsTheContactsTab()
    {
        QFETCH(QString, format);
        QFETCH(QString, menu);
        testlib::preferences().setValue(QStringLiteral("QuorvelWelcome"), QStringLiteral("YES"));
        // A person listed before her company, a type shown blank, an address
        // shown with its leading space, and a person whose company is gone.
        QVERIFY(testlib::writeFile(
            platform::paths::bundleFile(QStringLiteral("contacts.xml")),
            testlib::plistOf("contacts",
                             {{{"id", "3"},
                               {"company", "2"},
                               {"name", "Dee Fox"},
                               {"kind", "Company Contact"},
                               {"add1", "Mill Lane"},
                               {"type", "Customer"}},
                              {{"id", "1"},
                               {"company", "0"},
                               {"name", "Ann Lee"},
                               {"add1", "High St"},
                               {"type", "Other"},
                               {"kind", "Individual"}},
                              {{"id", "2"},
                               {"company", "0"},
                               {"name", "Acme"},
                               {"kind", "Company"},
                               {"add1", "Mill Lane"},
                               {"type", "Supplier"}},
                              {{"id", "4"}, {"company", "9"}, {"name", "Cy Dunn"}, {"kind", "Company Contact"}}})));

        const QString saved = TestEnvironment::current().root() + QStringLiteral("/contacts.") + format;
        {
            Quorvel quorvel;
            ApplicationWindows windows(quorvel);
            windows.start();
            MainWindow *window = windows.mainWindow();
            window->tabs()->setCurrentWidget(window->tabWithIdentifier(QStringLiteral("1")));
            TestEnvironment::current().scriptFilePanelAnswers({saved});
            window->findChild<QAction *>(menu)->trigger();
        }
        const QByteArray program = testlib::readFile(saved);
        QVERIFY(program.size() > 0);

        const testlib::CliResult cli = testlib::runCli(
            {QStringLiteral("--data-dir"), TestEnvironment::current().supportDir(), QStringLiteral("export"),
             QStringLiteral("contacts"), QStringLiteral("--format"), format},
            TestEnvironment::current().homeDir());
        QCOMPARE(cli.code, 0);
        QCOMPARE(cli.out, program);
    }
};

QUORVEL_TEST(ContactsExportTest)
#include "ContactsExportTest.moc"
