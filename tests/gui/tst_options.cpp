// SPDX-License-Identifier: GPL-3.0-or-later
#include "MainWindowHarness.h"
#include "MessageBoxScript.h"
#include "TestStore.h"
#include "settings/OptionsSendingPane.h"
#include "settings/cOptionen.h"
#include "settings/frmOptionen.h"
#include "toolkit/ToolbarButton.h"

#include <QCheckBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QUrlQuery>

class TestOptions : public QObject
{
    Q_OBJECT

    MainWindowHarness m_harness;

private slots:
    void init()
    {
        m_harness.resetStore();
        QVERIFY(m_harness.startService());
        m_harness.loadMain();
    }

    void cleanup() { m_harness.reset(); }

    void savedSettingsReachTheStoreAndThePrice()
    {
        frmOptionen dialog(m_harness.main());
        dialog.show();
        QVERIFY(!dialog.cmdApply->isEnabled());
        in<ToolbarButton>(&dialog, "tbVersandoperationen")->click();
        in<QCheckBox>(&dialog, "cbVarAbsender")->click();
        in<QLineEdit>(&dialog, "txtAbsender")->setText(QStringLiteral("Tarnholt"));
        QVERIFY(!in<QCheckBox>(&dialog, "chkSmsAntwort")->isEnabled());
        QCOMPARE(in<QLabel>(&dialog, "lblKosten")->text(), QStringLiteral("14 Credits"));
        // A name over eleven characters, pasted, stops OK and Apply; a long number doesn't.
        in<QLineEdit>(&dialog, "txtAbsender")->setText(QStringLiteral("Tarnholt GmbH"));
        QVERIFY(!dialog.cmdSave->isEnabled() && in<QWidget>(&dialog, "warnboxAbs")->isVisible());
        in<QLineEdit>(&dialog, "txtAbsender")->setText(QStringLiteral("004917112345678"));
        QVERIFY(dialog.cmdSave->isEnabled());
        dialog.cmdSave->click();
        QVERIFY(!dialog.isVisible());
        QVERIFY(Options().isAbsenderkennung());
        reloadOptionsForTesting();
        QCOMPARE(Options().Absenderkennung(), QStringLiteral("004917112345678"));
        QCOMPARE(m_harness.child<QLineEdit>("txtKostenProSMS")->text(), QStringLiteral("14"));

        // Cancel keeps the store as it was.
        frmOptionen again(m_harness.main());
        again.show();
        in<QLineEdit>(&again, "txtEmail")->setText(QStringLiteral("jemand@example.com"));
        QVERIFY(again.cmdApply->isEnabled());
        again.cmdCancel->click();
        reloadOptionsForTesting();
        QCOMPARE(Options().Username(), QStringLiteral("demo@quellbote.test"));
    }

    void webPanesAskTheServiceWithTheirOwnKeys()
    {
        Options().setKennwort(QStringLiteral("Käse & 1€"));
        frmOptionen dialog(m_harness.main());
        dialog.show();
        in<ToolbarButton>(&dialog, "tbCreditsKaufen")->click();
        QVERIFY(!dialog.cmdSave->isVisible() && !dialog.cmdCancel->isVisible() && !dialog.cmdApply->isVisible());
        QTRY_VERIFY(!m_harness.service()->requests(QStringLiteral("/sms/buyCredits.php")).isEmpty());
        in<ToolbarButton>(&dialog, "tbTerminversand")->click();
        QVERIFY(dialog.cmdSave->isVisible());
        QTRY_VERIFY(!m_harness.service()->requests(QStringLiteral("/terminversand/deleteSMS.php")).isEmpty());
        const QString shop = m_harness.service()
                                 ->requests(QStringLiteral("/sms/buyCredits.php"))
                                 .first()
                                 .value(QStringLiteral("query"))
                                 .toString();
        const QString jobs = m_harness.service()
                                 ->requests(QStringLiteral("/terminversand/deleteSMS.php"))
                                 .first()
                                 .value(QStringLiteral("query"))
                                 .toString();
        const QString colour = QUrlQuery(shop).queryItemValue(QStringLiteral("backcolor"));
        QCOMPARE(colour.size(), 6);
        QCOMPARE(shop, QStringLiteral("email=demo@quellbote.test&passwort=K%E4se%20%26%201%80&backcolor=") + colour);
        QCOMPARE(jobs, QStringLiteral("email=demo@quellbote.test&kennwort=K%E4se%20%26%201%80&backcolor=") + colour);
    }

    void handOffWritesJobFiles()
    {
        MessageBoxScript boxes;
        const QString folder = m_harness.folder() + QStringLiteral("/server");
        QVERIFY(QDir().mkpath(folder));
        Options().setXmlIsServerUsed(true);
        Options().setXmlSingleUser(QStringLiteral("True"));
        Options().setXmlUser(QStringLiteral("U1"));
        Options().setXmlPfad(folder);
        m_harness.fill(QStringLiteral("G171"), QStringLiteral("1234567"), QStringLiteral("Hallo"));
        boxes.answer(MessageBox::Answer::Ok);
        m_harness.child<ToolbarButton>("tbSend")->click();
        QCOMPARE(boxes.last().text,
                 QStringLiteral("Die SMS wurde unter Berücksichtigung der angegebenen Kontodaten an "
                                "den Quellbote Server weitergeleitet."));
        QCOMPARE(QDir(folder).entryList(QDir::Files).size(), 1);
        QVERIFY(m_harness.bodies(QStringLiteral("/smsv3/smsv3.php")).isEmpty());

        // A folder that isn't there: the user learns it, and the message stays in its field.
        Options().setXmlPfad(folder + QStringLiteral("/fehlt"));
        boxes.answer(MessageBox::Answer::Ok);
        m_harness.child<ToolbarButton>("tbSend")->click();
        QVERIFY(boxes.shown().at(1).text.startsWith(QStringLiteral("Die SMS an 00491711234567 konnte nicht")));
        QCOMPARE(boxes.count(), 2);
    }
};

QTEST_MAIN(TestOptions)
#include "tst_options.moc"
