// SPDX-License-Identifier: GPL-3.0-or-later
#include "sending/MessageSize.h"

#include <QTest>

using namespace MessageSize;

Q_DECLARE_METATYPE(MessageSize::SmsOptions)

namespace {
SmsOptions options(bool absender, bool antwort = false, bool status = false, bool longSms = false)
{
    SmsOptions o;
    o.isAbsenderkennung = absender;
    o.isAntwortEnabled = antwort;
    o.isStatusberichtEnabled = status;
    o.isLongSmsEnabled = longSms;
    return o;
}
} // namespace

class TestMessageSize : public QObject
{
    Q_OBJECT

private slots:
    void singleMode_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<SmsOptions>("opts");
        QTest::addColumn<int>("size");
        QTest::addColumn<int>("count");
        QTest::addColumn<bool>("sendEnabled");
        const SmsOptions plain = options(false);
        const SmsOptions longSms = options(true, false, false, true);
        QTest::newRow("empty") << QString() << plain << 0 << 1 << true;
        QTest::newRow("1") << QStringLiteral("a") << plain << 1 << 1 << true;
        QTest::newRow("159") << QString(159, u'a') << plain << 159 << 1 << true;
        QTest::newRow("160") << QString(160, u'a') << plain << 160 << 1 << true;
        QTest::newRow("161") << QString(161, u'a') << plain << 161 << 2 << true;
        QTest::newRow("320") << QString(320, u'a') << plain << 320 << 2 << true;
        QTest::newRow("321") << QString(321, u'a') << plain << 321 << 3 << true;
        QTest::newRow("155, long SMS: still one") << QString(155, u'a') << longSms << 155 << 1 << true;
        QTest::newRow("161, long SMS") << QString(161, u'a') << longSms << 161 << 2 << true;
        QTest::newRow("306, long SMS") << QString(306, u'a') << longSms << 306 << 2 << true;
        QTest::newRow("307, long SMS") << QString(307, u'a') << longSms << 307 << 3 << true;
        QTest::newRow("long SMS without sender identity")
            << QString(307, u'a') << options(false, false, false, true) << 307 << 2 << true;
        QTest::newRow("1499") << QString(1499, u'a') << plain << 1499 << 10 << true;
        QTest::newRow("1500") << QString(1500, u'a') << plain << 1500 << 10 << true;
        QTest::newRow("1501") << QString(1501, u'a') << plain << 1501 << 10 << false;
        QTest::newRow("1499 with two euro signs")
            << QString(1497, u'a') + QStringLiteral("€€") << plain << 1501 << 10 << false;
        QTest::newRow("only a euro sign") << QStringLiteral("€") << plain << 2 << 1 << true;
        QTest::newRow("80 double quotes") << QString(80, u'"') << plain << 160 << 1 << true;
        QTest::newRow("1500 double quotes") << QString(1500, u'"') << plain << 3000 << 19 << false;
        QTest::newRow("CR LF counts two") << QStringLiteral("a\r\nb") << plain << 4 << 1 << true;
    }

    void singleMode()
    {
        QFETCH(QString, text);
        QFETCH(SmsOptions, opts);
        QFETCH(int, size);
        QFETCH(int, count);
        QFETCH(bool, sendEnabled);
        const SmsSizeFigures f = recalcSmsSize(text, false, opts);
        QCOMPARE(f.txtZeichen, size);
        QCOMPARE(f.txtAnzahlSMS, count);
        QCOMPARE(f.sendEnabled, sendEnabled);
        QCOMPARE(f.overLimit, !sendEnabled);
        QCOMPARE(f.warningText,
                 sendEnabled ? QString() : QStringLiteral("Eine SMS darf maximal 1500 Zeichen groß sein!"));
    }

    void sizeOfAPartCountsTheSpecialsOfTheWholeBox()
    {
        const QString box = QString(159, u'a') + QStringLiteral("€");
        QCOMPARE(calcSmsSize(QStringLiteral("abc"), box), qint16(4));
        QCOMPARE(calcSmsSize(QStringLiteral("€"), QStringLiteral("x")), qint16(1));
    }

    void multiMode_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<SmsOptions>("opts");
        QTest::addColumn<int>("maxName");
        QTest::addColumn<int>("rows");
        QTest::addColumn<int>("size");
        QTest::addColumn<int>("perMessage");
        QTest::addColumn<int>("total");
        QTest::newRow("empty text is one SMS a row") << QString() << options(false) << 0 << 3 << 0 << 1 << 3;
        QTest::newRow("name placeholder and four characters")
            << QStringLiteral("%name%abcd") << options(false) << 20 << 2 << 24 << 1 << 2;
        QTest::newRow("155 with long SMS makes two a row")
            << QString(155, u'a') << options(true, false, false, true) << 0 << 4 << 155 << 2 << 8;
        QTest::newRow("two name placeholders")
            << QStringLiteral("%name% %name%") << options(false) << 100 << 1 << 201 << 2 << 2;
    }

    void multiMode()
    {
        QFETCH(QString, text);
        QFETCH(SmsOptions, opts);
        QFETCH(int, maxName);
        QFETCH(int, rows);
        QFETCH(int, size);
        QFETCH(int, perMessage);
        QFETCH(int, total);
        PlaceholderSizes placeholders;
        placeholders.maxNameSize = maxName;
        placeholders.rowCount = rows;
        const SmsSizeFigures f = recalcSmsSize(text, true, opts, placeholders);
        QCOMPARE(f.txtZeichenMultiSMS, size);
        QCOMPARE(f.txtAnzahlProNachricht, perMessage);
        QCOMPARE(f.txtAnzahlMultiSMS, total);
    }

    void placeholdersCountWithTheirOwnLengthForTheLimit()
    {
        PlaceholderSizes placeholders;
        placeholders.maxNameSize = 1;
        placeholders.rowCount = 1;
        const QString text = QString(1494, u'a') + QStringLiteral("%name%") + u'b';
        const SmsSizeFigures f = recalcSmsSize(text, true, options(false), placeholders);
        QVERIFY(!f.sendEnabled);
        QCOMPARE(f.txtZeichenMultiSMS, 1496);
    }

    void prices_data()
    {
        QTest::addColumn<SmsOptions>("opts");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("number");
        QTest::addColumn<int>("shown");
        QTest::addColumn<int>("balanceTest");
        QTest::newRow("base") << options(false) << "G171"
                              << "123" << 10 << 10;
        QTest::newRow("sender identity") << options(true) << "G171"
                                         << "123" << 14 << 14;
        QTest::newRow("replies") << options(false, true) << "G171"
                                 << "123" << 11 << 11;
        QTest::newRow("status report not in the balance test") << options(false, false, true) << "G171"
                                                               << "123" << 11 << 10;
        QTest::newRow("all three") << options(true, true, true) << "G171"
                                   << "123" << 16 << 15;
        QTest::newRow("Weltweit to Germany") << options(true, true, true) << "W"
                                             << "0049171" << 19 << 15;
        QTest::newRow("Weltweit to Germany, plain") << options(false) << "W"
                                                    << "0049" << 19 << 10;
        QTest::newRow("Weltweit to Austria") << options(true, true, true) << "W"
                                             << "0043664" << 16 << 15;
        QTest::newRow("no prefix selected") << options(false) << ""
                                            << "0049171" << 10 << 10;
    }

    void prices()
    {
        QFETCH(SmsOptions, opts);
        QFETCH(QString, key);
        QFETCH(QString, number);
        QFETCH(int, shown);
        QFETCH(int, balanceTest);
        QCOMPARE(updateCost(opts, key, number), shown);
        QCOMPARE(balanceTestPrice(opts), balanceTest);
    }

    void optionsDialogPriceLine_data()
    {
        QTest::addColumn<bool>("absender");
        QTest::addColumn<bool>("longSms");
        QTest::addColumn<bool>("antwort");
        QTest::addColumn<QString>("details");
        QTest::addColumn<QString>("price");
        const QString normal = QStringLiteral("Kosten der SMS mit den gewählten Optionen:");
        QTest::newRow("nothing") << false << false << false << normal << "10 Credits";
        QTest::newRow("long SMS alone") << false << true << false << normal << "10 Credits";
        QTest::newRow("sender identity") << true << false << false << normal << "14 Credits";
        QTest::newRow("sender identity and long SMS") << true << true << false << "Kosten je 153 Zeichen:"
                                                      << "14 Credits";
        QTest::newRow("replies") << false << false << true << normal << "11 Credits";
    }

    void optionsDialogPriceLine()
    {
        QFETCH(bool, absender);
        QFETCH(bool, longSms);
        QFETCH(bool, antwort);
        QFETCH(QString, details);
        QFETCH(QString, price);
        const OptionsPriceLine line = optionsPriceLine(absender, longSms, antwort);
        QCOMPARE(line.lblKostenDetails, details);
        QCOMPARE(line.lblKosten, price);
    }

    void balanceTest_data()
    {
        QTest::addColumn<int>("credits");
        QTest::addColumn<double>("anzahl");
        QTest::addColumn<int>("price");
        QTest::addColumn<bool>("tooLow");
        QTest::newRow("unknown never blocks") << -1 << 1000.0 << 14 << false;
        QTest::newRow("equal passes") << 20 << 2.0 << 10 << false;
        QTest::newRow("one less stops") << 19 << 2.0 << 10 << true;
        QTest::newRow("zero stops") << 0 << 1.0 << 10 << true;
    }

    void balanceTest()
    {
        QFETCH(int, credits);
        QFETCH(double, anzahl);
        QFETCH(int, price);
        QFETCH(bool, tooLow);
        QCOMPARE(isBalanceTooLow(credits, anzahl, price), tooLow);
    }
};

QTEST_GUILESS_MAIN(TestMessageSize)
#include "tst_messagesize.moc"
