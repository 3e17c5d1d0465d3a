// SPDX-License-Identifier: GPL-3.0-or-later
// Every window that talks to the service, against every way the service can fail: slow (but in
// time), the connection dropped, HTTP 500, an HTML page instead of an answer, an empty answer,
// the service gone, and HTTPS with a certificate the system doesn't trust and with one it trusts.
// Whatever happens, the window comes back, says what went wrong or ends as the program does on
// that answer, and what the user typed is still there.
#include "MainWindowHarness.h"
#include "MessageBoxScript.h"
#include "ModalWindows.h"
#include "TestCertificates.h"
#include "TestStore.h"
#include "account/frmFirstTime.h"
#include "account/frmNews.h"
#include "bulk/frmMultiSMS.h"
#include "bulk/frmMultiSMSLog.h"
#include "settings/cOptionen.h"
#include "toolkit/Inet.h"
#include "toolkit/LogView.h"
#include "toolkit/SmsTextEdit.h"
#include "toolkit/ToolbarButton.h"
#include "toolkit/WebView.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {
enum class Window { Send, Schedule, Bulk, Balance, Version, News, Wizard, WebGroup, Phonebook, Shop };

const QString Gone = u"gone"_s;
const QString Untrusted = u"tls-untrusted"_s;
const QString Trusted = u"tls-trusted"_s;
const QString CertificateText = u"Das Zertifikat des Servers 127.0.0.1 ist nicht vertrauenswürdig: es ist "
                                "von keiner vertrauenswürdigen Stelle ausgestellt."_s;

// A fault that still brings an answer the program reads (an empty or an HTML one), as against one
// that brings none. A send takes the words of an HTTP error page as the gateway's answer; a
// download doesn't take an error page for what it asked.
bool answers(const QString& fault, bool send = false)
{
    return fault.startsWith(u"slow") || fault == Trusted || fault == u"garbage" || fault == u"empty"
        || (send && fault == u"http500");
}

// A fault the program gets through as if there were none.
bool good(const QString& fault)
{
    return fault.startsWith(u"slow") || fault == Trusted;
}

// Why a request that brought no answer didn't go, as the bulk log says it.
QString expectedReason(const QString& fault)
{
    if (fault == Gone)
        return u"Keine Verbindung zum Server"_s;
    return fault == Untrusted ? CertificateText : u"Der Server hat die Verbindung ohne Antwort geschlossen."_s;
}
} // namespace

class TestFaults : public QObject
{
    Q_OBJECT

    MainWindowHarness m_harness;
    std::unique_ptr<TestCertificates> m_certificates;

    frmMain* main() const { return m_harness.main(); }
    template<typename T> T* child(const char* name) const { return m_harness.child<T>(name); }
    void typeMessage() { m_harness.fill(u"G171"_s, u"1234567"_s, u"Hallo"_s); }

    void typedStays()
    {
        QCOMPARE(child<SmsTextEdit>("txtSMS")->text(), u"Hallo"_s);
        QCOMPARE(child<QLineEdit>("txtNummer")->text(), u"1234567"_s);
    }

    void breakService(const QString& path, const QString& fault)
    {
        if (fault == Gone) {
            m_harness.service()->stop();
        } else if (fault == Untrusted || fault == Trusted) {
            const auto kind = fault == Trusted ? TestCertificates::Trusted : TestCertificates::SelfSigned;
            QVERIFY(m_harness.startService({ u"--info-answer"_s, u"7"_s, u"--tls"_s,
                                             m_certificates->certificateFile(kind), m_certificates->keyFile() }));
        } else {
            QVERIFY(m_harness.service()->setFault(path, fault));
        }
    }

    // A single or scheduled send: the answer's box, or, without an answer, nothing until the
    // guard timer tells the user. The message stays unless the gateway took it.
    void checkSend(const QString& fault, MessageBoxScript& boxes, const QString& acceptedText)
    {
        auto* tm = main()->findChild<QTimer*>(u"tm"_s);
        if (fault == Untrusted) {
            // Nothing went, and the user learns why at once, not from the guard timer.
            QTRY_COMPARE(boxes.count(), 1);
            QCOMPARE(boxes.last().text, u"Die SMS wurde nicht versendet.\r\n"_s + CertificateText);
            QVERIFY(!tm->isActive());
        } else if (answers(fault, true)) {
            QTRY_COMPARE_WITH_TIMEOUT(boxes.count(), 1, 10000);
            QCOMPARE(boxes.last().title, u"Antwort des SMS Gateways"_s);
            if (good(fault)) {
                QVERIFY2(boxes.last().text.contains(acceptedText), qPrintable(boxes.last().text));
                QCOMPARE(child<SmsTextEdit>("txtSMS")->text(), QString());
                return;
            }
        } else {
            const auto busy = [this] {
                for (Inet* transfer : main()->findChildren<Inet*>())
                    if (transfer->StillExecuting())
                        return true;
                return false;
            };
            QTRY_VERIFY(!busy());
            QCOMPARE(boxes.count(), 0);
            QVERIFY(tm->isActive());
            main()->tm_Timer();
            QCOMPARE(boxes.count(), 1);
            QCOMPARE(boxes.last().text,
                     u"Das SMS Gateway hat auf die Anfrage nicht reagiert.\r\n"
                     "Mit hoher Wahrscheinlichkeit wurde die Nachricht NICHT versendet."_s);
        }
        typedStays();
    }

private slots:
    // The certificates of the HTTPS rows; the system trusts their CA as an administrator would
    // have it trusted, before the program's first transfer.
    void initTestCase()
    {
        m_certificates = std::make_unique<TestCertificates>();
        QVERIFY2(m_certificates->error().isEmpty(), qPrintable(m_certificates->error()));
        qputenv("SSL_CERT_FILE", m_certificates->caFile().toLocal8Bit());
    }

    void init()
    {
        m_harness.resetStore();
        // The news are read; only the news row wants them again.
        TestStore::put(u"infoVersion"_s, u"32767"_s);
        reloadOptionsForTesting();
        QVERIFY(m_harness.startService({ u"--info-answer"_s, u"7"_s }));
    }

    void cleanup()
    {
        QTest::qWait(0);
        m_harness.reset();
    }

    void everyWindowSurvivesEveryFault_data()
    {
        QTest::addColumn<Window>("window");
        QTest::addColumn<QString>("fault");
        // Named in the order of Window.
        const char* windows[] = { "single send", "scheduled send", "bulk run",  "balance",   "version",
                                  "news",        "wizard",         "web group", "phonebook", "shop pane" };
        for (int window = 0; window < int(std::size(windows)); ++window) {
            for (const char* fault :
                 { "slow:300", "drop", "http500", "garbage", "empty", "gone", "tls-untrusted", "tls-trusted" })
                QTest::addRow("%s, %s", windows[window], fault) << Window(window) << QString::fromLatin1(fault);
        }
    }

    void everyWindowSurvivesEveryFault()
    {
        QFETCH(Window, window);
        QFETCH(QString, fault);
        MessageBoxScript boxes;
        if (window == Window::Bulk)
            boxes.answer(MessageBox::Answer::Yes); // "send to all?"
        boxes.answer(MessageBox::Answer::Ok);
        // The version check, the news and the wizard are met while the program starts.
        if (window != Window::Version && window != Window::News && window != Window::Wizard)
            m_harness.loadMain();

        switch (window) {
        case Window::Send:
        case Window::Schedule: {
            const bool scheduled = window == Window::Schedule;
            breakService(scheduled ? u"/cronjob/send_repeat.php"_s : u"/smsv3/smsv3.php"_s, fault);
            typeMessage();
            if (scheduled)
                onNextModal([](QWidget* dialog) { in<QPushButton>(dialog, "cbSend")->click(); });
            scheduled ? main()->tbTerminversand_Click() : main()->tbSend_Click();
            checkSend(fault, boxes, scheduled ? u"wurde angelegt."_s : u"erfolgreich"_s);
            break;
        }

        case Window::Bulk: {
            child<ToolbarButton>("tbMultiSMS")->click();
            RecipientTable& table = frmMultiSMS::loaded()->table();
            table.addRow(u"Anna"_s, u"01711234567"_s, {}, {});
            table.addRow(u"Ben"_s, u"01711234568"_s, {}, {});
            frmMultiSMS::loaded()->recalcMaxSizes();
            child<SmsTextEdit>("txtSMS")->setText(u"Hallo %name%"_s);
            breakService(u"/smsv3/smsv3.php"_s, fault);
            child<ToolbarButton>("tbSend")->click();
            // The run ends whatever came back; an answer that was read stands in the log. A row
            // whose request never left says why; one that left without an answer says it may have
            // gone out. The closing figures count each apart.
            frmMultiSMSLog* log = frmMultiSMSLog::loaded();
            QVERIFY(log);
            const bool read = answers(fault, true);
            const bool unknown = fault == u"drop";
            const QString closing = good(fault) ? u"Vorgang abgeschlossen"_s
                : unknown
                ? u"Vorgang abgeschlossen – 0 von 2 SMS versendet, 2 ohne Antwort (möglicherweise versendet)."_s
                : u"Vorgang abgeschlossen – 0 von 2 SMS versendet, 2 nicht versendet."_s;
            QTRY_COMPARE_WITH_TIMEOUT(in<QLabel>(log, "lblSend")->text(), closing, 15000);
            QTRY_VERIFY(!log->txtLog->toPlainText().isEmpty());
            log->showNow();
            const QString text = in<QPlainTextEdit>(log, "txtLog")->toPlainText();
            QCOMPARE(text.contains(u"Internal Server Error"_s), fault == u"garbage" || fault == u"http500");
            QCOMPARE(text.count(u"!!!! Nicht versendet an "_s), read || unknown ? 0 : 2);
            QCOMPARE(text.count(u"???? Keine Antwort zur SMS an "_s), unknown ? 2 : 0);
            if (!read)
                QVERIFY2(text.contains(u"Ben (00491711234568): "_s + expectedReason(fault)), qPrintable(text));
            QCOMPARE(in<QPushButton>(log, "cmdResend")->isVisible(), !good(fault));
            QCOMPARE(table.rowCount(), 2);
            QCOMPARE(child<SmsTextEdit>("txtSMS")->text(), u"Hallo %name%"_s);
            break;
        }

        case Window::Balance:
            breakService(u"/sms/count.php"_s, fault);
            main()->refreshCredits();
            QCOMPARE(child<QLabel>("lblCredits")->text(),
                     good(fault)              ? u"500 Credits"_s
                         : fault == Untrusted ? u"Zertifikat nicht vertrauenswürdig"_s
                                              : u"kein Internet"_s);
            QCOMPARE(main()->credits, good(fault) ? 500 : -1);
            break;

        case Window::Version: {
            // A failed check shows "no internet" once and the start goes on; an empty answer asks
            // again until one comes. A server that isn't trusted is named, and the start goes on.
            breakService(u"/update/version"_s, fault);
            int noInternet = 0;
            if (!good(fault) && fault != Untrusted) {
                onNextModal([&](QWidget* modal) {
                    ++noInternet;
                    if (fault == u"empty")
                        m_harness.service()->setFault(u"/update/version"_s, u"none"_s);
                    modal->close();
                });
            }
            m_harness.loadMain();
            QCOMPARE(noInternet, good(fault) || fault == Untrusted ? 0 : 1);
            QCOMPARE(boxes.count(), fault == Untrusted ? 1 : 0);
            QCOMPARE(boxes.last().text, fault == Untrusted ? CertificateText : QString());
            QVERIFY(main()->isVisible());
            break;
        }

        case Window::News:
            TestStore::put(u"firstStartHasRun"_s, u"true"_s);
            TestStore::put(u"infoVersion"_s, u"6"_s);
            reloadOptionsForTesting();
            breakService(u"/update/infoVersion"_s, fault);
            if (fault == Gone)
                onNextModal([](QWidget* modal) { modal->close(); }); // the version check's window
            m_harness.loadMain();
            QVERIFY(main()->isVisible());
            if (good(fault))
                QTRY_VERIFY(frmNews::loaded() && frmNews::loaded()->isVisible());
            else
                QVERIFY(!frmNews::loaded() || !frmNews::loaded()->isVisible());
            QCOMPARE(Options().InfoVersion(), good(fault) ? 7 : 6);
            break;

        case Window::Wizard: {
            TestStore::reset();
            reloadOptionsForTesting();
            frmFirstTime wizard;
            wizard.show();
            wizard.cmdNext->click();
            wizard.txtOldEmail->setText(u"demo@quellbote.test"_s);
            wizard.txtPassword->setText(u"demo"_s);
            QSignalSpy unloaded(&wizard, &frmFirstTime::unloaded);
            breakService(u"/sms/checkUser.php"_s, fault);
            wizard.cmdDoIt->click();
            QCOMPARE(unloaded.count(), good(fault) ? 1 : 0);
            if (good(fault))
                break;
            QCOMPARE(boxes.count(), 1);
            QCOMPARE(boxes.last().text,
                     fault == Untrusted ? CertificateText
                                        : u"Der Server ist zurzeit nicht erreichbar oder hat nicht wie erwartet "
                                          "geantwortet.\r\nBitte überprüfen Sie Ihre Internetverbindung und "
                                          "versuchen Sie es erneut."_s);
            QVERIFY(wizard.isEnabled());
            QCOMPARE(wizard.txtOldEmail->text(), u"demo@quellbote.test"_s);
            QVERIFY(Options().Username().isEmpty());
            break;
        }

        case Window::WebGroup: {
            child<ToolbarButton>("tbMultiSMS")->click();
            frmMultiSMS* multi = frmMultiSMS::loaded();
            multi->table().addRow(u"Anna"_s, u"01711234567"_s, {}, {});
            breakService(u"/sms/gruppenv2/jaeger.txt"_s, fault);
            onNextModal([](QWidget* dialog) { in<WebView>(dialog, "web")->navigate(u"http://gruppe//jaeger.txt"_s); });
            in<QAction>(multi, "openWeb")->trigger();
            // A group without members is a group; what came as none leaves the table as it was.
            const bool group = good(fault) || fault == u"empty";
            QCOMPARE(boxes.count(), group ? 0 : 1);
            if (group) {
                QCOMPARE(multi->table().rowCount(), good(fault) ? 2 : 0);
                break;
            }
            QVERIFY(boxes.last().text.startsWith(answers(fault)
                                                     ? u"Die geladenen Daten sind keine gültige Gruppe."_s
                                                     : u"Die Gruppe konnte nicht aus dem Internet geladen werden."_s));
            QCOMPARE(boxes.last().text.contains(CertificateText), fault == Untrusted);
            QCOMPARE(multi->table().rowCount(), 1);
            QCOMPARE(multi->table().rows().at(0).Name, u"Anna"_s);
            break;
        }

        case Window::Phonebook:
        case Window::Shop:
            // The page shows what the browser makes of it; the window around it works on.
            breakService(window == Window::Phonebook ? u"/telefonbuch/telefonbuch.php"_s : u"/sms/buyCredits.php"_s,
                         fault);
            typeMessage();
            if (window == Window::Phonebook) {
                main()->tbPhonebook_Click();
                QTRY_VERIFY(main()->isPhonebookOpen);
                main()->tbPhonebook_Click();
                QVERIFY(!main()->isPhonebookOpen);
            } else {
                bool shown = false;
                onNextModal([&shown](QWidget* dialog) {
                    shown = dialog->isVisible();
                    QTest::qWait(300);
                    dialog->close();
                });
                child<QLabel>("lblBuyCredits")->linkActivated(QString());
                QVERIFY(shown);
            }
            typedStays();
            break;
        }
    }
};

QTEST_MAIN(TestFaults)
#include "tst_faults.moc"
