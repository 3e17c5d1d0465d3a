// SPDX-License-Identifier: GPL-3.0-or-later
#include "sending/GatewayAnswer.h"

#include <QTest>

using namespace GatewayAnswer;

class TestGatewayAnswer : public QObject
{
    Q_OBJECT

private slots:
    void answers_data()
    {
        QTest::addColumn<QString>("body");
        QTest::addColumn<QString>("message");
        QTest::addColumn<bool>("accepted");
        QTest::newRow("one item") << "Falsches Kennwort"
                                  << "Falsches Kennwort\r\n"
                                  << false;
        QTest::newRow("accepted") << "Die SMS wurde erfolgreich an das Gateway übermittelt.;Kosten 10"
                                  << "Die SMS wurde erfolgreich an das Gateway übermittelt.\r\nKosten 10\r\n"
                                  << true;
        QTest::newRow("trailing ; gives an empty last line") << "Auftrag 1;Der Auftrag wurde angelegt.;"
                                                             << "Auftrag 1\r\nDer Auftrag wurde angelegt.\r\n\r\n"
                                                             << true;
        QTest::newRow("capitals count") << "DER AUFTRAG WURDE ANGELEGT."
                                        << "DER AUFTRAG WURDE ANGELEGT.\r\n"
                                        << true;
        QTest::newRow("empty body") << ""
                                    << "\r\n"
                                    << false;
        QTest::newRow("blanks and line feeds go") << "  a\nb ;\r\nc"
                                                  << "ab\r\n\rc\r\n"
                                                  << false;
        QTest::newRow("phrase without its full stop") << "wurde angelegt"
                                                      << "wurde angelegt\r\n"
                                                      << false;
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

    void logPutsTheNewestOnTop()
    {
        const QDateTime now(QDate(2026, 11, 22), QTime(10, 5));
        const QString log = prependToLog(QStringLiteral("alt\r\n"), QStringLiteral("eins;zwei;drei"), now);
        const QStringList lines = log.split(QStringLiteral("\r\n"));
        QVERIFY(lines.at(0).endsWith(QStringLiteral(" - drei")));
        QVERIFY(lines.at(1).endsWith(QStringLiteral(" - zwei")));
        QVERIFY(lines.at(2).endsWith(QStringLiteral(" - eins")));
        QCOMPARE(lines.at(3), QStringLiteral("alt"));
    }

    void balance_data()
    {
        QTest::addColumn<QString>("answer");
        QTest::addColumn<QString>("caption");
        QTest::addColumn<int>("credits");
        QTest::addColumn<bool>("enabled");
        QTest::addColumn<bool>("red");
        QTest::addColumn<bool>("buy");
        QTest::newRow("499 with blanks") << " 499 "
                                         << "499 Credits" << 499 << true << true << true;
        QTest::newRow("500") << "500"
                             << "500 Credits" << 500 << true << true << true;
        QTest::newRow("501") << "501"
                             << "501 Credits" << 501 << true << false << false;
        QTest::newRow("unknown user") << "-1"
                                      << "nicht angemeldet" << -1 << false << false << false;
        QTest::newRow("abc") << "abc"
                             << "kein Internet" << -1 << true << false << false;
        QTest::newRow("empty") << ""
                               << "kein Internet" << -1 << true << false << false;
        QTest::newRow("zero") << "0"
                              << "0 Credits" << 0 << true << true << true;
    }

    void balance()
    {
        QFETCH(QString, answer);
        QFETCH(QString, caption);
        QFETCH(int, credits);
        QFETCH(bool, enabled);
        QFETCH(bool, red);
        QFETCH(bool, buy);
        const CreditsState state = readBalance(answer);
        QCOMPARE(state.caption, caption);
        QCOMPARE(state.credits, credits);
        QCOMPARE(state.enabled, enabled);
        QCOMPARE(state.colour == CreditsColour::DarkRed, red);
        QCOMPARE(state.buyCreditsVisible, buy);
    }

    void version_data()
    {
        QTest::addColumn<QString>("answer");
        QTest::addColumn<int>("check");
        QTest::newRow("equal") << "2.4.92" << int(VersionCheck::UpdateHidden);
        QTest::newRow("higher revision") << "2.4.93" << int(VersionCheck::UpdateShown);
        QTest::newRow("higher minor") << "2.5.0" << int(VersionCheck::UpdateShown);
        QTest::newRow("lower") << "2.4.91" << int(VersionCheck::UpdateHidden);
        QTest::newRow("four items") << "2.4.92.7" << int(VersionCheck::UpdateHidden);
        QTest::newRow("one item") << "3" << int(VersionCheck::Failure);
        QTest::newRow("no number") << "2.x.1" << int(VersionCheck::Failure);
        QTest::newRow("empty") << "" << int(VersionCheck::NoAnswer);
    }

    void version()
    {
        QFETCH(QString, answer);
        QFETCH(int, check);
        QCOMPARE(versionNumber(2, 4, 92), qint64(2004092));
        QCOMPARE(int(readVersionAnswer(answer, versionNumber(2, 4, 92))), check);
    }

    void creditsTimerAsksOnTheEleventhTick()
    {
        qint16 ticks = 0;
        int refreshes = 0;
        for (int i = 1; i <= 22; ++i) {
            const CreditsTick tick = tmCreditsTick(ticks);
            ticks = tick.creditsTicks;
            if (tick.refresh) {
                ++refreshes;
                QVERIFY(i == 11 || i == 22);
            }
        }
        QCOMPARE(refreshes, 2);
    }
};

QTEST_GUILESS_MAIN(TestGatewayAnswer)
#include "tst_gatewayanswer.moc"
