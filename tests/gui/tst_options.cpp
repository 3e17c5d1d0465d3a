// SPDX-License-Identifier: GPL-3.0-or-later
#include "MainWindowHarness.h"
#include "MessageBoxScript.h"
#include "ModalWindows.h"
#include "TestStore.h"
#include "sending/SendRecord.h"
#include "sending/StopList.h"
#include "settings/OptionsAccountPane.h"
#include "settings/OptionsSendingPane.h"
#include "settings/OptionsWebPane.h"
#include "settings/cOptionen.h"
#include "settings/frmOptionen.h"
#include "toolkit/FileChooser.h"
#include "toolkit/SmsTextEdit.h"
#include "toolkit/ToolbarButton.h"
#include "toolkit/WebEngineLoader.h"
#include "toolkit/WebView.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QUrlQuery>

using namespace Qt::StringLiterals;

namespace {
QStringList itemsOf(const QListWidget* list)
{
    QStringList items;
    for (int i = 0; i < list->count(); ++i)
        items.append(list->item(i)->text());
    return items;
}
} // namespace

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

    void cleanup()
    {
        FileChooser::setHandler({});
        m_harness.reset();
    }

    void savedSettingsReachTheStoreAndThePrice()
    {
        frmOptionen dialog(m_harness.main());
        dialog.show();
        QVERIFY(!dialog.cmdApply->isEnabled());
        in<ToolbarButton>(&dialog, "tbVersandoperationen")->click();
        // Off, the sender's field stands greyed in the button face; on, it has a field's colour.
        auto* txtAbsender = in<QLineEdit>(&dialog, "txtAbsender");
        const auto background = [txtAbsender] {
            return txtAbsender->grab().toImage().pixelColor(txtAbsender->width() / 2, txtAbsender->height() / 2);
        };
        QCOMPARE(background(), QApplication::palette().color(QPalette::Button));
        in<QCheckBox>(&dialog, "cbVarAbsender")->click();
        QCOMPARE(background(), QApplication::palette().color(QPalette::Base));
        txtAbsender->setText(u"Tarnholt"_s);
        QVERIFY(!in<QCheckBox>(&dialog, "chkSmsAntwort")->isEnabled());
        QCOMPARE(in<QLabel>(&dialog, "lblKosten")->text(), u"14 Credits"_s);
        // A name over eleven characters, pasted, stops OK and Apply; a long number doesn't.
        txtAbsender->setText(u"Tarnholt GmbH"_s);
        QVERIFY(!dialog.cmdSave->isEnabled() && in<QWidget>(&dialog, "warnboxAbs")->isVisible());
        txtAbsender->setText(u"004917112345678"_s);
        QVERIFY(dialog.cmdSave->isEnabled());
        // The send record's keeping, 90 days unless chosen, kept in the store.
        auto* keeping = in<QComboBox>(&dialog, "cmbProtokoll");
        QCOMPARE(keeping->currentText(), u"90 Tage"_s);
        keeping->setCurrentIndex(keeping->findText(u"kein Protokoll führen"_s));
        dialog.cmdSave->click();
        QCOMPARE(SendRecord::storedRetentionDays(), SendRecord::NoRecord);
        QVERIFY(!dialog.isVisible());
        reloadOptionsForTesting();
        QCOMPARE(Options().Absenderkennung(), u"004917112345678"_s);
        QCOMPARE(m_harness.child<QLineEdit>("txtKostenProSMS")->text(), u"14"_s);

        // Cancel keeps the store as it was.
        frmOptionen again(m_harness.main());
        again.show();
        in<QLineEdit>(&again, "txtEmail")->setText(u"jemand@example.com"_s);
        QVERIFY(again.cmdApply->isEnabled());
        again.cmdCancel->click();
        reloadOptionsForTesting();
        QCOMPARE(Options().Username(), u"demo@quellbote.test"_s);
    }

    // The user's stop list is kept by OK: numbers typed in any form, one already there refused in
    // another form, a file imported, one removed; the administrator's list beside it is shown only.
    void stopListPane()
    {
        QFile oem(m_harness.folder() + u"/oem.inf"_s);
        QVERIFY(oem.open(QIODevice::Append));
        oem.write("[Files]\r\nSperrliste=sperr.txt\r\n");
        oem.close();
        QFile shared(m_harness.folder() + u"/sperr.txt"_s);
        QVERIFY(shared.open(QIODevice::WriteOnly));
        shared.write("# Widerspruch vom 3. November\r\n0160 5555555\r\n");
        shared.close();
        const QString csv = m_harness.folder() + u"/abmeldungen.csv"_s;
        QFile file(csv);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("Name;Mobil\r\nAnna;+49 171 1234567\r\nBen;0172 7654321\r\nCarla;\r\n");
        file.close();
        FileChooser::setHandler([&csv](const FileChooser::Dialog&) { return csv; });

        frmOptionen dialog(m_harness.main());
        dialog.show();
        in<ToolbarButton>(&dialog, "tbSperrliste")->click();
        QVERIFY(in<QWidget>(&dialog, "boxSperrliste")->isVisible());
        QCOMPARE(itemsOf(in<QListWidget>(&dialog, "lstGemeinsam")), QStringList { u"0160 5555555"_s });
        auto* number = in<QLineEdit>(&dialog, "txtSperrNummer");
        MessageBoxScript boxes;
        for (const QString& typed : { u"0171 1234567"_s, u"0049 171 1234567"_s, u"kein Anschluss"_s }) {
            boxes.answer(MessageBox::Answer::Ok);
            number->setText(typed);
            QTest::keyClick(number, Qt::Key_Return);
        }
        QCOMPARE(boxes.count(), 2);
        QCOMPARE(boxes.shown().at(0).text, u"0049 171 1234567 steht schon auf der Sperrliste."_s);
        QCOMPARE(boxes.shown().at(1).text, u"„kein Anschluss“ ist keine Rufnummer."_s);
        QVERIFY(dialog.cmdApply->isEnabled());
        boxes.answer(MessageBox::Answer::Ok);
        in<QPushButton>(&dialog, "cmdSperrImport")->click();
        QCOMPARE(boxes.last().text,
                 u"1 Nummern wurden der Sperrliste hinzugefügt. 1 standen schon darauf. 1 Zeilen enthielten keine "
                 "Rufnummer."_s);
        auto* list = in<QListWidget>(&dialog, "lstSperrliste");
        QCOMPARE(list->count(), 2);
        list->setCurrentRow(0);
        in<QPushButton>(&dialog, "cmdSperrEntfernen")->click();
        dialog.cmdSave->click();
        const StopList stops = StopList::load();
        QCOMPARE(stops.userEntries(), QStringList { u"00491727654321"_s });
        QVERIFY(stops.contains(u"+49 172 7654321"_s) && stops.contains(u"01605555555"_s));
        QVERIFY(!stops.contains(u"01711234567"_s));
    }

    void webPanesAskTheServiceWithTheirOwnKeys()
    {
        Options().setKennwort(u"Käse & 1€"_s);
        frmOptionen dialog(m_harness.main());
        dialog.show();
        in<ToolbarButton>(&dialog, "tbCreditsKaufen")->click();
        QVERIFY(!dialog.cmdSave->isVisible() && !dialog.cmdCancel->isVisible() && !dialog.cmdApply->isVisible());
        const auto query = [this](const QString& path) {
            const auto asked = m_harness.service()->requests(path);
            return asked.isEmpty() ? QString() : asked.first().value(u"query"_s).toString();
        };
        QTRY_VERIFY(!query(u"/sms/buyCredits.php"_s).isEmpty());
        in<ToolbarButton>(&dialog, "tbTerminversand")->click();
        QVERIFY(dialog.cmdSave->isVisible());
        QTRY_VERIFY(!query(u"/terminversand/deleteSMS.php"_s).isEmpty());
        const QString shop = query(u"/sms/buyCredits.php"_s);
        const QString colour = QUrlQuery(shop).queryItemValue(u"backcolor"_s);
        QCOMPARE(colour.size(), 6);
        QCOMPARE(shop, u"email=demo@quellbote.test&passwort=K%E4se%20%26%201%80&backcolor="_s + colour);
        QCOMPARE(query(u"/terminversand/deleteSMS.php"_s),
                 u"email=demo@quellbote.test&kennwort=K%E4se%20%26%201%80&backcolor="_s + colour);
    }

    // One dialog at a time: a second way in shows the open one on its own pane, so that OK in an
    // older one never writes back what a newer one changed.
    void oneDialogAtATime()
    {
        frmOptionen::showOptionen(m_harness.main());
        QPointer<frmOptionen> first = m_harness.main()->window()->findChild<frmOptionen*>();
        QVERIFY(first && first->isVisible() && !first->isModal());
        QVERIFY(first->boxVersandoptionen->isVisible());
        const QWidget* const firstWindow = first;
        QWidget* shown = nullptr;
        bool accountPane = false;
        onNextModal([&](QWidget* modal) {
            shown = modal;
            accountPane = first->boxKontodaten->isVisible();
            first->cmdCancel->click();
        });
        m_harness.child<ToolbarButton>("tbOptions")->click();
        QCOMPARE(shown, firstWindow);
        QVERIFY(accountPane);
        QTRY_VERIFY(!first);
        QCOMPARE(m_harness.main()->findChildren<frmOptionen*>().size(), 0);
    }

    // Without the web engine module the shop and the job list say so instead of loading forever.
    void webPanesSayWhenTheEngineIsMissing()
    {
        WebEngineLoader::setFoldersForTesting(QStringList { m_harness.folder() });
        frmOptionen dialog(m_harness.main());
        dialog.show();
        for (const auto& [button, pane] : { std::pair { "tbCreditsKaufen", dialog.boxBuySMS },
                                            std::pair { "tbTerminversand", dialog.boxTerminversand } }) {
            in<ToolbarButton>(&dialog, button)->click();
            auto* missing = pane->findChild<QLabel*>(u"lblWebViewMissing"_s);
            QVERIFY(missing && missing->isVisible());
            QVERIFY(missing->text().startsWith(u"Die Webseite kann nicht angezeigt werden"_s));
            QVERIFY(!pane->loadingLabel->isVisible() && !pane->ani->isVisible());
        }
        WebEngineLoader::setFoldersForTesting({});
    }

    // The first hand-off of a session: the box that it went, or only the message that it didn't.
    void handOffWritesJobFiles_data()
    {
        QTest::addColumn<bool>("folderThere");
        QTest::newRow("written") << true;
        QTest::newRow("folder missing") << false;
    }

    void handOffWritesJobFiles()
    {
        QFETCH(bool, folderThere);
        MessageBoxScript boxes;
        const QTemporaryDir server;
        Options().setXmlIsServerUsed(true);
        Options().setXmlSingleUser(u"True"_s);
        Options().setXmlUser(u"U1"_s);
        Options().setXmlPfad(server.path() + (folderThere ? u""_s : u"/fehlt"_s));
        m_harness.fill(u"G171"_s, u"1234567"_s, u"Hallo"_s);
        boxes.answer(MessageBox::Answer::Ok);
        m_harness.child<ToolbarButton>("tbSend")->click();
        QCOMPARE(boxes.count(), 1);
        if (folderThere) {
            QCOMPARE(boxes.last().text,
                     u"Die SMS wurde unter Berücksichtigung der angegebenen Kontodaten an den Quellbote Server "
                     "weitergeleitet."_s);
        } else {
            // The user learns it, and the message stays in its field.
            QVERIFY(boxes.last().text.startsWith(u"Die SMS an 00491711234567 konnte nicht"_s));
            QCOMPARE(m_harness.child<SmsTextEdit>("txtSMS")->text(), u"Hallo"_s);
        }
        QCOMPARE(QDir(server.path()).entryList(QDir::Files).size(), folderThere ? 1 : 0);
        QVERIFY(m_harness.bodies(u"/smsv3/smsv3.php"_s).isEmpty());
    }
};

QTEST_MAIN(TestOptions)
#include "tst_options.moc"
