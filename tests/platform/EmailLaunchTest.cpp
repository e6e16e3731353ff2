// How a message with a file attached reaches the user's mail program: the
// mail helper with an argument list (never a shell), or a "mailto:" link and
// the attachment's folder shown when there is no helper.
#include "TestMain.h"

#include "platform/Workspace.h"

#include <QTest>

class EmailLaunchTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void shouldStartTheMailHelperWithItsArguments_data()
    {
        QTest::addColumn<QString>("to");
        QTest::addColumn<QString>("subject");
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("everything") << QStringLiteral("ann@example.org") << QStringLiteral("Invoice INV12")
                                    << QStringList{"--subject", "Invoice INV12", "--attach", "/data/INV12 2.pdf",
                                                   "ann@example.org"};
        QTest::newRow("no address") << QString() << QStringLiteral("Invoice INV12")
                                    << QStringList{"--subject", "Invoice INV12", "--attach", "/data/INV12 2.pdf"};
        // An address typed as "--utf8" must not become one of the helper's options;
        // a quote or a semicolon is only text, as no shell reads it.
        QTest::newRow("an address like an option") << QStringLiteral("--help") << QStringLiteral("x")
                                                   << QStringList{"--subject", "x", "--attach", "/data/INV12 2.pdf"};
        QTest::newRow("shell characters")
            << QStringLiteral("a@b.c") << QStringLiteral("it's; rm -rf ~")
            << QStringList{"--subject", "it's; rm -rf ~", "--attach", "/data/INV12 2.pdf", "a@b.c"};
    }
    void shouldStartTheMailHelperWithItsArguments()
    {
        QFETCH(QString, to);
        QFETCH(QString, subject);
        QFETCH(QStringList, arguments);
        const platform::EmailLaunch launch = platform::emailLaunchFor(
            {to, subject, QStringLiteral("/data/INV12 2.pdf")}, QStringLiteral("/usr/bin/xdg-email"));
        QCOMPARE(launch.program, QStringLiteral("/usr/bin/xdg-email"));
        QCOMPARE(launch.arguments, arguments);
        QVERIFY(launch.mailtoUrl.isEmpty());
    }

    void shouldFallBackToALinkAndShowTheFile()
    {
        const platform::EmailLaunch launch
            = platform::emailLaunchFor({QStringLiteral("ann@example.org"), QStringLiteral("Invoice INV12 & more"),
                                        QStringLiteral("/data/INV12.pdf")},
                                       QString());
        QVERIFY(launch.program.isEmpty());
        QCOMPARE(launch.mailtoUrl, QStringLiteral("mailto:ann@example.org?subject=Invoice%20INV12%20%26%20more"));
        QCOMPARE(launch.folderToShow, QStringLiteral("/data"));
    }
};

QUORVEL_TEST(EmailLaunchTest)
#include "EmailLaunchTest.moc"
