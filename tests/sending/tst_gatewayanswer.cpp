// SPDX-License-Identifier: GPL-3.0-or-later
#include "sending/GatewayAnswer.h"

#include <QTest>

using namespace GatewayAnswer;
using namespace Qt::StringLiterals;

class TestGatewayAnswer : public QObject
{
    Q_OBJECT

private slots:
    void answers_data()
    {
        QTest::addColumn<QString>("body");
        QTest::addColumn<QString>("message");
        QTest::addColumn<bool>("accepted");
        QTest::newRow("accepted") << u"Die SMS wurde erfolgreich an das Gateway übermittelt.;Kosten 10"_s
                                  << u"Die SMS wurde erfolgreich an das Gateway übermittelt.\r\nKosten 10\r\n"_s
                                  << true;
        QTest::newRow("trailing ; gives an empty last line")
            << u"Auftrag 1;Der Auftrag wurde angelegt.;"_s << u"Auftrag 1\r\nDer Auftrag wurde angelegt.\r\n\r\n"_s
            << true;
        QTest::newRow("capitals count") << u"DER AUFTRAG WURDE ANGELEGT."_s << u"DER AUFTRAG WURDE ANGELEGT.\r\n"_s
                                        << true;
        QTest::newRow("empty body") << QString() << u"\r\n"_s << false;
        QTest::newRow("blanks and line feeds go") << u"  a\nb ;\r\nc"_s << u"ab\r\n\rc\r\n"_s << false;
        QTest::newRow("phrase without its full stop") << u"wurde angelegt"_s << u"wurde angelegt\r\n"_s << false;
    }

    void answers()
    {
        QFETCH(QString, body);
        QFETCH(QString, message);
        QFETCH(bool, accepted);
        const Answer answer = readAnswer(body);
        QCOMPARE(answer.message, message);
        QCOMPARE(answer.accepted, accepted);
    }

    void balance_data()
    {
        QTest::addColumn<QString>("answer");
        QTest::addColumn<QString>("caption");
        QTest::addColumn<int>("credits");
        QTest::addColumn<bool>("low"); // dark red, and the link to buy credits shows
        QTest::newRow("500 with blanks is still low") << u" 500 "_s << u"500 Credits"_s << 500 << true;
        QTest::newRow("501") << u"501"_s << u"501 Credits"_s << 501 << false;
        QTest::newRow("not a number") << u"12a"_s << u"kein Internet"_s << -1 << false;
    }

    void balance()
    {
        QFETCH(QString, answer);
        QFETCH(QString, caption);
        QFETCH(int, credits);
        QFETCH(bool, low);
        const CreditsState state = readBalance(answer);
        QCOMPARE(state.caption, caption);
        QCOMPARE(state.credits, credits);
        QVERIFY(state.enabled);
        QCOMPARE(state.colour == CreditsColour::DarkRed, low);
        QCOMPARE(state.buyCreditsVisible, low);
    }

    void versionAnswers()
    {
        QCOMPARE(readVersionAnswer(u"2.4.93"_s, versionNumber(2, 4, 92)), VersionCheck::UpdateShown);
        QCOMPARE(readVersionAnswer(u"2.4.92"_s, versionNumber(2, 4, 92)), VersionCheck::UpdateHidden);
        QCOMPARE(readVersionAnswer(QString(), versionNumber(2, 4, 92)), VersionCheck::NoAnswer);
        QCOMPARE(readVersionAnswer(u"2.4.92.7"_s, versionNumber(2, 4, 92)), VersionCheck::UpdateHidden);
        QCOMPARE(readVersionAnswer(u"2.x.1"_s, versionNumber(2, 4, 92)), VersionCheck::Failure);
        QCOMPARE(readVersionAnswer(u"2.4.100"_s, versionNumber(2, 5, 0)), VersionCheck::UpdateHidden);
    }
};

QTEST_GUILESS_MAIN(TestGatewayAnswer)
#include "tst_gatewayanswer.moc"
