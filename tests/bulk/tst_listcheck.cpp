// SPDX-License-Identifier: GPL-3.0-or-later
// A list looked over before its run: which rows would not go out as the user expects, and what
// each recipient gets.
#include "bulk/ListCheck.h"

#include <QTest>

using namespace Qt::StringLiterals;
using Kind = ListCheck::Kind;

namespace {
RecipientRow row(const QString& name, const QString& number, const QString& frei1 = {})
{
    RecipientRow r;
    r.Name = name;
    r.Nummer = number;
    r.Freitext1 = frei1;
    return r;
}

// Findings as "row:kind", rows counted from 1 as the report shows them.
QStringList findingsOf(const QList<ListCheck::Finding>& findings)
{
    QStringList out;
    for (const ListCheck::Finding& f : findings)
        out.append(u"%1:%2"_s.arg(f.row + 1).arg(int(f.kind)));
    return out;
}
} // namespace

class TestListCheck : public QObject
{
    Q_OBJECT

private slots:
    void numberProblem_data()
    {
        QTest::addColumn<QString>("number");
        QTest::addColumn<QString>("problem"); // a part of the reason; empty: none
        QTest::newRow("international") << u"00491711234567"_s << QString();
        QTest::newRow("national, given 0049 by the run") << u"01711234567"_s << QString();
        QTest::newRow("empty ends the run") << QString() << u"der Versand endet"_s;
        QTest::newRow("a plus and blanks") << u"+49 171 1234567"_s << u"keine Ziffern"_s;
        QTest::newRow("Excel's exponent") << u"4,91711E+11"_s << u"keine Ziffern"_s;
        QTest::newRow("no leading 0 goes elsewhere") << u"1711234567"_s << u"ginge an 0049711234567"_s;
        QTest::newRow("000 has no country") << u"0001711234567"_s << u"keine Ländervorwahl"_s;
        QTest::newRow("too short") << u"0049171"_s << u"zu kurz"_s;
        QTest::newRow("too long") << u"0049171123456789012"_s << u"mehr als 15"_s;
    }

    void numberProblem()
    {
        QFETCH(QString, number);
        QFETCH(QString, problem);
        const QString found = ListCheck::numberProblem(number);
        if (problem.isEmpty())
            QCOMPARE(found, QString());
        else
            QVERIFY2(found.contains(problem), qPrintable(found));
    }

    void check_data()
    {
        QTest::addColumn<QString>("txtSMS");
        QTest::addColumn<bool>("longSms");
        QTest::addColumn<int>("expectedParts");
        QTest::addColumn<QStringList>("findings");
        const QString dup = u"%1"_s.arg(int(Kind::Duplicate));
        const QString stopped = u"%1"_s.arg(int(Kind::Stopped));
        QTest::newRow("numbers: missing, bad, the same twice in two forms, stopped")
            << u"Hallo"_s << false << 1
            << QStringList { u"2:%1"_s.arg(int(Kind::NoNumber)), u"3:%1"_s.arg(int(Kind::BadNumber)), u"4:"_s + dup,
                             u"5:"_s + stopped };
        QTest::newRow("a name that can't go out")
            << u"Hallo %name%"_s << false << 1
            << QStringList { u"2:%1"_s.arg(int(Kind::NoNumber)), u"3:%1"_s.arg(int(Kind::BadNumber)), u"4:"_s + dup,
                             u"5:"_s + stopped, u"6:%1"_s.arg(int(Kind::LosesCharacters)) };
        // 150 characters and a free text of 20: the row with the long value needs two parts.
        const QString longText = QString(150, u'x') + u"%frei1%"_s;
        QTest::newRow("a free text that adds a part")
            << longText << false << 1
            << QStringList { u"2:%1"_s.arg(int(Kind::NoNumber)), u"3:%1"_s.arg(int(Kind::BadNumber)), u"4:"_s + dup,
                             u"5:"_s + stopped, u"6:%1"_s.arg(int(Kind::MoreParts)) };
        QTest::newRow("expected two parts: none grows")
            << longText << false << 2
            << QStringList { u"2:%1"_s.arg(int(Kind::NoNumber)), u"3:%1"_s.arg(int(Kind::BadNumber)), u"4:"_s + dup,
                             u"5:"_s + stopped };
    }

    void check()
    {
        QFETCH(QString, txtSMS);
        QFETCH(bool, longSms);
        QFETCH(int, expectedParts);
        QFETCH(QStringList, findings);
        const QList<RecipientRow> rows {
            row(u"Anna"_s, u"01711234567"_s),    row(u"Ben"_s, QString()),
            row(u"Carla"_s, u"+49 172"_s),       row(u"Anna privat"_s, u"00491711234567"_s),
            row(u"Dora"_s, u"00491729999999"_s), row(u"Łukasz"_s, u"00486011234567"_s, QString(20, u'y'))
        };
        ListCheck::Context context;
        context.txtSMS = txtSMS;
        context.options.isLongSmsEnabled = longSms;
        context.expectedParts = expectedParts;
        context.stopped = [](const QString& number) {
            return number == u"00491729999999"_s;
        };
        QCOMPARE(findingsOf(ListCheck::check(rows, context)), findings);
    }

    void preview()
    {
        ListCheck::Context context;
        context.txtSMS = u"Hallo %name%, Ihr Termin: %frei1%"_s;
        context.pricePerSms = 14;
        const ListCheck::Preview p = ListCheck::preview(row(u"Łukasz"_s, u"0171555"_s, QString(160, u'z')), context);
        QCOMPARE(p.number, u"0049171555"_s);
        QCOMPARE(p.text, u"Hallo Łukasz, Ihr Termin: "_s + QString(160, u'z'));
        QCOMPARE(p.size, 186);
        QCOMPARE(p.parts, 2);
        QCOMPARE(p.credits, 28);
        QCOMPARE(p.lost, QStringList { u"Ł"_s });
        QVERIFY(ListCheck::previewLine(p).startsWith(u"186 Zeichen, 2 SMS, 28 Credits. "_s));
    }
};

QTEST_GUILESS_MAIN(TestListCheck)
#include "tst_listcheck.moc"
