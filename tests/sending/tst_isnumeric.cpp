// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/tools.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestIsNumeric : public QObject
{
    Q_OBJECT

private slots:
    // IsNumeric and NumericValue accept the same texts; a refused text has the value 0.
    void numeric_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("numeric");
        QTest::addColumn<double>("value");

        QTest::newRow("leading zeros") << u"0049171"_s << true << 49171.0;
        QTest::newRow("sign, blanks, tab and line break around") << u" \t-5\r\n"_s << true << -5.0;
        QTest::newRow("single point is decimal") << u"1.5"_s << true << 1.5;
        QTest::newRow("points as thousands") << u"1.234.567"_s << true << 1234567.0;
        QTest::newRow("comma wins over point") << u"1.234,5"_s << true << 1234.5;
        QTest::newRow("the last of several commas is decimal") << u"1,,2"_s << true << 1.2;
        QTest::newRow("leading separator") << u"-,5"_s << true << -0.5;
        QTest::newRow("trailing separator") << u"5."_s << true << 5.0;
        QTest::newRow("exponent upper case with sign") << u"1E-5"_s << true << 1e-5;
        QTest::newRow("d exponent") << u" 2d3 "_s << true << 2000.0;
        QTest::newRow("largest double range") << u"1e308"_s << true << 1e308;

        QTest::newRow("empty") << QString() << false << 0.0;
        QTest::newRow("blank after sign") << u"+ 1"_s << false << 0.0;
        QTest::newRow("dash inside") << u"0171-123"_s << false << 0.0;
        QTest::newRow("sign at the end") << u"1-"_s << false << 0.0;
        QTest::newRow("exponent without digits") << u"1e"_s << false << 0.0;
        QTest::newRow("second exponent") << u"1e5e5"_s << false << 0.0;
        QTest::newRow("separator in exponent") << u"1e2.5"_s << false << 0.0;
        QTest::newRow("too large for a double") << u"1e309"_s << false << 0.0;
        QTest::newRow("hexadecimal") << u"&H1F"_s << false << 0.0;
        QTest::newRow("currency") << u"5€"_s << false << 0.0;
        QTest::newRow("brackets") << u"(5)"_s << false << 0.0;
        QTest::newRow("infinity word") << u"inf"_s << false << 0.0;
        QTest::newRow("arabic-indic digits") << u"\u0661\u0662"_s << false << 0.0;
    }

    void numeric()
    {
        QFETCH(QString, text);
        QFETCH(bool, numeric);
        QFETCH(double, value);
        QCOMPARE(tools::IsNumeric(text), numeric);
        bool converted = !numeric;
        QCOMPARE(tools::NumericValue(text, &converted), value);
        QCOMPARE(converted, numeric);
    }

    void numericToInt16_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("ok");
        QTest::addColumn<int>("value");
        QTest::newRow("largest") << u"32767"_s << true << 32767;
        QTest::newRow("one too large") << u"32768"_s << false << 0;
        QTest::newRow("smallest") << u"-32768"_s << true << -32768;
        QTest::newRow("one too small") << u"-32769"_s << false << 0;
        QTest::newRow("half rounds to even, down") << u"2,5"_s << true << 2;
        QTest::newRow("half rounds to even, up") << u"3,5"_s << true << 4;
        QTest::newRow("not numeric") << u"9x"_s << false << 0;
    }

    void numericToInt16()
    {
        QFETCH(QString, text);
        QFETCH(bool, ok);
        QFETCH(int, value);
        bool converted = !ok;
        QCOMPARE(int(tools::NumericToInt16(text, &converted)), value);
        QCOMPARE(converted, ok);
    }
};

QTEST_GUILESS_MAIN(TestIsNumeric)
#include "tst_isnumeric.moc"
