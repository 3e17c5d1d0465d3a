// SPDX-License-Identifier: GPL-3.0-or-later
#include "sending/MessageSize.h"

#include <QTest>

using namespace MessageSize;
using namespace Qt::StringLiterals;

namespace {
enum Option { Sender = 1, Replies = 2, Status = 4, Long = 8 };

// n emoji: 2n UTF-16 units, n characters on the wire.
QString emoji(int n)
{
    return u"😀"_s.repeated(n);
}

SmsOptions options(int flags)
{
    SmsOptions o;
    o.isAbsenderkennung = flags & Sender;
    o.isAntwortEnabled = flags & Replies;
    o.isStatusberichtEnabled = flags & Status;
    o.isLongSmsEnabled = flags & Long;
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
        QTest::addColumn<int>("flags");
        QTest::addColumn<int>("size");
        QTest::addColumn<int>("count");
        QTest::newRow("160") << QString(160, u'a') << 0 << 160 << 1;
        QTest::newRow("161") << QString(161, u'a') << 0 << 161 << 2;
        QTest::newRow("160, long SMS: still one") << QString(160, u'a') << Sender + Long << 160 << 1;
        QTest::newRow("161, long SMS") << QString(161, u'a') << Sender + Long << 161 << 2;
        QTest::newRow("306, long SMS") << QString(306, u'a') << Sender + Long << 306 << 2;
        QTest::newRow("307, long SMS") << QString(307, u'a') << Sender + Long << 307 << 3;
        QTest::newRow("long SMS without sender identity") << QString(307, u'a') << int(Long) << 307 << 2;
        QTest::newRow("1500") << QString(1500, u'a') << 0 << 1500 << 10;
        QTest::newRow("1501") << QString(1501, u'a') << 0 << 1501 << 10;
        QTest::newRow("1499 with two euro signs") << QString(1497, u'a') + u"€€"_s << 0 << 1501 << 10;
        QTest::newRow("80 double quotes") << QString(80, u'"') << 0 << 160 << 1;
        QTest::newRow("CR LF counts two") << u"a\r\nb"_s << 0 << 4 << 1;
        QTest::newRow("160 emoji are one SMS") << emoji(160) << 0 << 160 << 1;
        QTest::newRow("1500 emoji are within the limit") << emoji(1500) << 0 << 1500 << 10;
        QTest::newRow("letters beyond the code page count one") << u"Łódź"_s.repeated(40) << 0 << 160 << 1;
    }

    void singleMode()
    {
        QFETCH(QString, text);
        QFETCH(int, flags);
        QFETCH(int, size);
        QFETCH(int, count);
        const SmsSizeFigures f = recalcSmsSize(text, false, options(flags));
        const bool over = size > 1500;
        QCOMPARE(f.txtZeichen, size);
        QCOMPARE(f.txtAnzahlSMS, count);
        QCOMPARE(f.sendEnabled, !over);
        QCOMPARE(f.overLimit, over);
        QCOMPARE(f.warningText, over ? u"Eine SMS darf maximal 1500 Zeichen groß sein!"_s : QString());
    }

    // A part of a split message counts the specials of the whole text box, on purpose.
    void sizeOfAPartCountsTheSpecialsOfTheWholeBox()
    {
        QCOMPARE(calcSmsSize(u"abc"_s, QString(159, u'a') + u"€"_s), qint16(4));
        QCOMPARE(calcSmsSize(u"€"_s, u"x"_s), qint16(1));
    }

    void multiMode_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("flags");
        QTest::addColumn<int>("maxName");
        QTest::addColumn<int>("rows");
        QTest::addColumn<int>("size");
        QTest::addColumn<int>("perMessage");
        QTest::addColumn<int>("total");
        QTest::addColumn<bool>("sendEnabled");
        QTest::newRow("empty text is one SMS a row") << QString() << 0 << 0 << 3 << 0 << 1 << 3 << true;
        QTest::newRow("name placeholder and four characters")
            << u"%name%abcd"_s << 0 << 20 << 2 << 24 << 1 << 2 << true;
        QTest::newRow("155 with long SMS makes two a row")
            << QString(155, u'a') << Sender + Long << 0 << 4 << 155 << 2 << 8 << true;
        QTest::newRow("emoji beside a placeholder")
            << u"%name%"_s + emoji(150) << Sender + Long << 3 << 1 << 153 << 1 << 1 << true;
        QTest::newRow("two name placeholders") << u"%name% %name%"_s << 0 << 100 << 1 << 201 << 2 << 2 << true;
        // The limit goes by the text as typed, placeholders with their own length.
        QTest::newRow("limit with the placeholder's length")
            << QString(1494, u'a') + u"%name%b"_s << 0 << 1 << 1 << 1496 << 10 << 10 << false;
    }

    void multiMode()
    {
        QFETCH(QString, text);
        QFETCH(int, flags);
        QFETCH(int, maxName);
        QFETCH(int, rows);
        QFETCH(int, size);
        QFETCH(int, perMessage);
        QFETCH(int, total);
        QFETCH(bool, sendEnabled);
        PlaceholderSizes placeholders;
        placeholders.maxNameSize = maxName;
        placeholders.rowCount = rows;
        const SmsSizeFigures f = recalcSmsSize(text, true, options(flags), placeholders);
        QCOMPARE(f.txtZeichenMultiSMS, size);
        QCOMPARE(f.txtAnzahlProNachricht, perMessage);
        QCOMPARE(f.txtAnzahlMultiSMS, total);
        QCOMPARE(f.sendEnabled, sendEnabled);
    }

    // The three prices stay apart on purpose: the main window's figure, the balance test's and the
    // options dialog's line, which has no box for the status report and knows nothing of "W".
    void prices_data()
    {
        QTest::addColumn<int>("flags");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("number");
        QTest::addColumn<int>("shown");
        QTest::addColumn<int>("balanceTest"); // also the options dialog's price
        QTest::addColumn<QString>("details"); // the options dialog's
        const QString normal = u"Kosten der SMS mit den gewählten Optionen:"_s;
        const QString g171 = u"G171"_s, n123 = u"123"_s;
        QTest::newRow("base") << 0 << g171 << n123 << 10 << 10 << normal;
        QTest::newRow("long SMS alone") << int(Long) << g171 << n123 << 10 << 10 << normal;
        QTest::newRow("sender identity") << int(Sender) << g171 << n123 << 14 << 14 << normal;
        QTest::newRow("sender identity and long SMS")
            << Sender + Long << g171 << n123 << 14 << 14 << u"Kosten je 153 Zeichen:"_s;
        QTest::newRow("status report not in the balance test") << int(Status) << g171 << n123 << 11 << 10 << normal;
        QTest::newRow("all three") << Sender + Replies + Status << g171 << n123 << 16 << 15 << normal;
        QTest::newRow("Weltweit to Germany, plain") << 0 << u"W"_s << u"0049"_s << 19 << 10 << normal;
        QTest::newRow("Weltweit to Austria")
            << Sender + Replies + Status << u"W"_s << u"0043664"_s << 16 << 15 << normal;
    }

    void prices()
    {
        QFETCH(int, flags);
        QFETCH(QString, key);
        QFETCH(QString, number);
        QFETCH(int, shown);
        QFETCH(int, balanceTest);
        QFETCH(QString, details);
        const SmsOptions o = options(flags);
        QCOMPARE(updateCost(o, key, number), shown);
        QCOMPARE(balanceTestPrice(o), balanceTest);
        const OptionsPriceLine line = optionsPriceLine(o.isAbsenderkennung, o.isLongSmsEnabled, o.isAntwortEnabled);
        QCOMPARE(line.lblKosten, u"%1 Credits"_s.arg(balanceTest));
        QCOMPARE(line.lblKostenDetails, details);
    }

    void balanceTest()
    {
        QVERIFY(!isBalanceTooLow(-1, 1000, 14)); // an unknown balance never blocks
        QVERIFY(!isBalanceTooLow(20, 2, 10));
        QVERIFY(isBalanceTooLow(19, 2, 10));
    }
};

QTEST_GUILESS_MAIN(TestMessageSize)
#include "tst_messagesize.moc"
