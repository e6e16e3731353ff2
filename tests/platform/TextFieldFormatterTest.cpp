// A text field's formatter: a date field shows what it is given as a date
// in its format, a money field shows two decimals, and neither loses text
// it cannot read. The test environment's clock stands at 15 January 2026.
#include "TestMain.h"

#include "platform/StringTable.h"
#include "platform/outlets/TextField.h"

#include <QSignalSpy>
#include <QTest>

namespace {

const QString dayFirst = QStringLiteral("%d/%m/%y");
const QString monthFirst = QStringLiteral("%m/%d/%y");

}  // namespace

class TextFieldFormatterTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void cleanup() { platform::installStringTable(QStringLiteral("en")); }

    void shouldShowWhatTheProgramSetsAsTheFormatterMakesIt_data()
    {
        QTest::addColumn<QString>("dateFormat");
        QTest::addColumn<bool>("money");
        QTest::addColumn<QString>("given");
        QTest::addColumn<QString>("shown");
        QTest::newRow("today, day first") << dayFirst << false << "today"
                                          << "15/01/26";
        QTest::newRow("today, month first") << monthFirst << false << "today"
                                            << "01/15/26";
        QTest::newRow("next week") << dayFirst << false << "next week"
                                   << "22/01/26";
        QTest::newRow("a short date") << dayFirst << false << "3/4/26"
                                      << "03/04/26";
        QTest::newRow("a date as stored") << monthFirst << false << "12/31/25"
                                          << "12/31/25";
        QTest::newRow("a date of the other order") << monthFirst << false << "31/12/25"
                                                   << "31/12/25";
        QTest::newRow("words that are no date") << dayFirst << false << "paid by cheque"
                                                << "paid by cheque";
        QTest::newRow("empty date") << dayFirst << false << ""
                                    << "";
        QTest::newRow("no format") << "" << false << "today"
                                   << "today";
        QTest::newRow("a time format") << "%H:%M" << false << "today"
                                       << "today";
        QTest::newRow("whole money") << "" << true << "100"
                                     << "100.00";
        QTest::newRow("money of single precision") << "" << true << "452.78003"
                                                   << "452.78";
        QTest::newRow("six decimals") << "" << true << "465.000000"
                                      << "465.00";
        QTest::newRow("rounded half up") << "" << true << "2.675"
                                         << "2.68";
        QTest::newRow("thousands") << "" << true << "1,000,000"
                                   << "1000000.00";
        QTest::newRow("negative") << "" << true << "-20"
                                  << "-20.00";
        QTest::newRow("money words") << "" << true << "on account"
                                     << "on account";
        QTest::newRow("a number and words") << "" << true << "12 boxes"
                                            << "12 boxes";
        QTest::newRow("empty money") << "" << true << ""
                                     << "";
        QTest::newRow("a plain field keeps figures") << "" << false << "100"
                                                     << "100";
    }
    void shouldShowWhatTheProgramSetsAsTheFormatterMakesIt()
    {
        QFETCH(QString, dateFormat);
        QFETCH(bool, money);
        QFETCH(QString, given);
        QFETCH(QString, shown);
        TextField field;
        field.setDateFormat(dateFormat);
        field.setMoney(money);
        field.setStringValue(given);
        QCOMPARE(field.stringValue(), shown);
    }

    void shouldShowAFloatWithTheFieldsDecimals_data()
    {
        QTest::addColumn<bool>("money");
        QTest::addColumn<float>("number");
        QTest::addColumn<QString>("shown");
        // A balance worked out in single precision.
        QTest::newRow("money") << true << 452.78003f << "452.78";
        QTest::newRow("whole money") << true << 107.5f << "107.50";
        QTest::newRow("a million") << true << 1000000.0f << "1000000.00";
        QTest::newRow("plain") << false << 107.5f << "107.5";
        QTest::newRow("plain fraction") << false << 8.5f / 24.0f << "0.35416666";
    }
    void shouldShowAFloatWithTheFieldsDecimals()
    {
        QFETCH(bool, money);
        QFETCH(float, number);
        QFETCH(QString, shown);
        TextField field;
        field.setMoney(money);
        field.setFloatValue(number);
        QCOMPARE(field.stringValue(), shown);
    }

    void shouldLeaveTypingAloneUntilTheUserIsDone_data()
    {
        QTest::addColumn<QString>("dateFormat");
        QTest::addColumn<bool>("money");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("committed");
        QTest::newRow("tomorrow") << dayFirst << false << "tomorrow"
                                  << "16/01/26";
        QTest::newRow("a month-first date") << monthFirst << false << "1/2"
                                            << "01/02/26";
        QTest::newRow("a deposit") << "" << true << "100"
                                   << "100.00";
        QTest::newRow("money words") << "" << true << "ask Tom"
                                     << "ask Tom";
        QTest::newRow("date words") << dayFirst << false << "someday"
                                    << "someday";
    }
    void shouldLeaveTypingAloneUntilTheUserIsDone()
    {
        QFETCH(QString, dateFormat);
        QFETCH(bool, money);
        QFETCH(QString, typed);
        QFETCH(QString, committed);
        TextField field;
        field.setDateFormat(dateFormat);
        field.setMoney(money);
        QSignalSpy edited(&field, &TextField::edited);
        QSignalSpy changed(&field, &TextField::changed);
        field.userSetStringValue(typed);
        QCOMPARE(field.stringValue(), typed);
        QCOMPARE(edited.size(), 1);
        QCOMPARE(changed.size(), 0);

        field.commitEditing();
        QCOMPARE(field.stringValue(), committed);
        const int reshaped = committed == typed ? 0 : 1;
        QCOMPARE(edited.size(), 1 + reshaped);
        QCOMPARE(changed.size(), reshaped);
        field.commitEditing();
        QCOMPARE(edited.size(), 1 + reshaped);
    }

    void shouldReadTheDateTheTextStandsFor()
    {
        TextField field;
        field.setDateFormat(monthFirst);
        field.userSetStringValue(QStringLiteral("yesterday"));
        QCOMPARE(field.dateValue(), std::optional<QDate>(QDate(2026, 1, 14)));
        field.userSetStringValue(QStringLiteral("02/03/26"));
        QCOMPARE(field.dateValue(), std::optional<QDate>(QDate(2026, 2, 3)));
        field.userSetStringValue(QStringLiteral("soon"));
        QCOMPARE(field.dateValue(), std::optional<QDate>());
    }

    void shouldReadGermanWordsOnlyWhenTheProgramSpeaksGerman_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("shown");
        QTest::newRow("German") << "de"
                                << "16/01/26";
        QTest::newRow("English") << "en"
                                 << "morgen";
    }
    void shouldReadGermanWordsOnlyWhenTheProgramSpeaksGerman()
    {
        QFETCH(QString, language);
        QFETCH(QString, shown);
        QCOMPARE(platform::installStringTable(language), language);
        TextField field;
        field.setDateFormat(dayFirst);
        field.setStringValue(QStringLiteral("morgen"));
        QCOMPARE(field.stringValue(), shown);
    }
};

QUORVEL_TEST(TextFieldFormatterTest)
#include "TextFieldFormatterTest.moc"
