// SPDX-License-Identifier: GPL-3.0-or-later
#include "sending/NumberRules.h"
#include "sending/Prefixes.h"
#include "settings/tools.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestNumberRules : public QObject
{
    Q_OBJECT

private slots:
    // Every key but "W" shows its prefix with the leading zero, forms the number of a send, and
    // taking that number apart again gives the key back.
    void prefixTable()
    {
        for (const PrefixEntry& e : Prefixes::table()) {
            if (e.key == u"W")
                continue;
            QCOMPARE(e.text, u'0' + e.key.mid(1));
            const NumberRules::SendNumber n = NumberRules::sendNumber(e.key, u"1"_s);
            QVERIFY2(n.ok, qPrintable(e.key));
            QCOMPARE(n.number, NumberRules::countryCode(e.key) + e.key.mid(1) + u'1');
            QCOMPARE(NumberRules::splitPhonebookNumber(n.number + u"234567"_s).key, e.key);
        }
    }

    // The number of a send as the gateway takes it, and as the server folder's job file holds it.
    void sendNumber_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("txtNummer");
        QTest::addColumn<bool>("ok");
        QTest::addColumn<QString>("number");
        QTest::addColumn<QString>("server");
        QTest::newRow("only the first 00 becomes +")
            << u"S76"_s << u"0012"_s << true << u"0041760012"_s << u"+41760012"_s;
        QTest::newRow("Weltweit, first 00 further in") << u"W"_s << u"1700123"_s << true << u"1700123"_s << u"17+123"_s;
        QTest::newRow("German key with V of old entries is unknown")
            << u"V171"_s << u"1"_s << false << QString() << QString();
        QTest::newRow("no prefix selected") << QString() << u"1"_s << false << QString() << QString();
    }

    void sendNumber()
    {
        QFETCH(QString, key);
        QFETCH(QString, txtNummer);
        QFETCH(bool, ok);
        QFETCH(QString, number);
        QFETCH(QString, server);
        const NumberRules::SendNumber n = NumberRules::sendNumber(key, txtNummer);
        QCOMPARE(n.ok, ok);
        if (!ok)
            return;
        QCOMPARE(n.number, number);
        QCOMPARE(NumberRules::serverNumber(n.number), server);
    }

    void phonebookNumber_data()
    {
        QTest::addColumn<QString>("number");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("rest");
        QTest::addColumn<QString>("countryWord");
        QTest::newRow("five-digit prefix") << u"004915201234567"_s << u"G1520"_s << u"1234567"_s << u"Deutschland"_s;
        QTest::newRow("0049152 but not 1520") << u"00491521234567"_s << u"G152"_s << u"1234567"_s << u"Deutschland"_s;
        QTest::newRow("Austrian") << u"00436641/2/3"_s << u"A664"_s << u"123"_s << QString::fromUtf16(u"Österreich");
        QTest::newRow("Swiss prefix of six characters")
            << u"0041761234567"_s << u"S76"_s << u"1234567"_s << u"die Schweiz"_s;
        QTest::newRow("country code twice in the prefix") << u"00410041"_s << u"S00"_s << u"41"_s << u"die Schweiz"_s;
        QTest::newRow("slash stays in the prefix") << u"0049/171/12"_s << u"G/17"_s << u"112"_s << u"Deutschland"_s;
        QTest::newRow("shorter than the prefix") << u"0049"_s << u"G"_s << QString() << u"Deutschland"_s;
        QTest::newRow("other country") << u"0033/612345"_s << u"W"_s << u"0033612345"_s << QString();
    }

    void phonebookNumber()
    {
        QFETCH(QString, number);
        QFETCH(QString, key);
        QFETCH(QString, rest);
        QFETCH(QString, countryWord);
        const NumberRules::PhonebookNumber p = NumberRules::splitPhonebookNumber(number);
        QCOMPARE(p.key, key);
        QCOMPARE(p.rest, rest);
        QCOMPARE(p.countryWord, countryWord);
    }

    void usedNumberTag_data()
    {
        QTest::addColumn<QString>("tag");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("number");
        QTest::newRow("current entry") << u"G171-1234567"_s << u"G171"_s << u"1234567"_s;
        QTest::newRow("old German key") << u"V171-1234567"_s << u"G171"_s << u"1234567"_s;
        QTest::newRow("second dash ends the number") << u"W-0033-123"_s << u"W"_s << u"0033"_s;
        QTest::newRow("empty number") << u"S76-"_s << u"S76"_s << QString();
    }

    void usedNumberTag()
    {
        QFETCH(QString, tag);
        QFETCH(QString, key);
        QFETCH(QString, number);
        const NumberRules::UsedNumber u = NumberRules::splitUsedNumberTag(tag);
        QCOMPARE(u.key, key);
        QCOMPARE(u.number, number);
    }

    void checkNumber_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("txtNummer");
        QTest::addColumn<bool>("marked");
        QTest::addColumn<QString>("warning");
        const QString need00 = u"Die Nummer muss mit der internationalen Vorwahl '00' beginnen."_s;
        const QString digitsOnly = u"Die Rufnummer darf nur aus Ziffern bestehen."_s;
        QTest::newRow("German rest") << u"G171"_s << u"1234567"_s << false << QString();
        QTest::newRow("W with one character") << u"W"_s << u"1"_s << false << QString();
        QTest::newRow("W with 41") << u"W"_s << u"41"_s << true << need00;
        QTest::newRow("W with 00") << u"W"_s << u"0041"_s << false << QString();
        QTest::newRow("W with plus: numeric, so the 00 warning stays") << u"W"_s << u"+4917"_s << true << need00;
        QTest::newRow("W with letters: digits warning wins") << u"W"_s << u"4x"_s << true << digitsOnly;
        QTest::newRow("emptied field") << u"G171"_s << QString() << true << digitsOnly;
        QTest::newRow("no prefix selected") << QString() << u"41"_s << false << QString();
    }

    void checkNumber()
    {
        QFETCH(QString, key);
        QFETCH(QString, txtNummer);
        QFETCH(bool, marked);
        QFETCH(QString, warning);
        const NumberRules::NumberCheck c = NumberRules::checkNumber(key, txtNummer);
        QCOMPARE(c.marked, marked);
        QCOMPARE(c.warningText, warning);
        QCOMPARE(NumberRules::keepsFocus(txtNummer), warning == u"Die Rufnummer darf nur aus Ziffern bestehen.");
    }

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

QTEST_GUILESS_MAIN(TestNumberRules)
#include "tst_numberrules.moc"
