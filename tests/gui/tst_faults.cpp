// SPDX-License-Identifier: GPL-3.0-or-later
// Every window that talks to the service, against every way the service can fail: slow (but in
// time), the connection dropped, HTTP 500, an HTML page instead of an answer, an empty answer,
// and the service gone altogether. Whatever happens, the window comes back, says what went wrong
// or ends as the program does on that answer, and what the user typed is still there.
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

namespace {
enum class Window { Send, Schedule, Bulk, Balance, Version, News, Wizard, WebGroup, Phonebook, Shop };

const QString Gone = QStringLiteral("gone");
// The service on HTTPS with a certificate the system doesn't trust, and with one it trusts.
const QString Untrusted = QStringLiteral("tls-untrusted");
const QString Trusted = QStringLiteral("tls-trusted");
const QString CertificateText
    = QStringLiteral("Das Zertifikat des Servers 127.0.0.1 ist nicht vertrauenswürdig: es ist "
                     "von keiner vertrauenswürdigen Stelle ausgestellt.");
const QString GuardText = QStringLiteral("Das SMS Gateway hat auf die Anfrage nicht reagiert.\r\n"
                                         "Mit hoher Wahrscheinlichkeit wurde die Nachricht NICHT versendet.");

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
        return QStringLiteral("Keine Verbindung zum Server");
    if (fault == Untrusted)
        return CertificateText;
    return QStringLiteral("Der Server hat die Verbindung ohne Antwort geschlossen.");
}
} // namespace

class TestFaults : public QObject
{
    Q_OBJECT

    MainWindowHarness m_harness;
    std::unique_ptr<TestCertificates> m_certificates;

    void breakService(const QString& path, const QString& fault)
    {
        if (fault == Gone) {
            m_harness.service()->stop();
        } else if (fault == Untrusted || fault == Trusted) {
            const auto kind = fault == Trusted ? TestCertificates::Trusted : TestCertificates::SelfSigned;
            QVERIFY(
                m_harness.startService({ QStringLiteral("--info-answer"), QStringLiteral("7"), QStringLiteral("--tls"),
                                         m_certificates->certificateFile(kind), m_certificates->keyFile() }));
        } else {
            QVERIFY(m_harness.service()->setFault(path, fault));
        }
    }

    template<typename T> T* child(const char* name) const { return m_harness.child<T>(name); }

    // A single or scheduled send: the answer's box, or, without an answer, nothing until the
    // guard timer tells the user. The message stays unless the gateway took it.
    void checkSend(const QString& fault, MessageBoxScript& boxes, const QString& acceptedText)
    {
        frmMain* main = m_harness.main();
        auto* tm = main->findChild<QTimer*>(QStringLiteral("tm"));
        if (fault == Untrusted) {
            // Nothing went, and the user learns why at once, not from the guard timer.
            QTRY_COMPARE(boxes.count(), 1);
            QCOMPARE(boxes.last().text, QStringLiteral("Die SMS wurde nicht versendet.\r\n") + CertificateText);
            QVERIFY(!tm->isActive());
            QCOMPARE(child<SmsTextEdit>("txtSMS")->text(), QStringLiteral("Hallo"));
            return;
        }
        if (answers(fault, true)) {
            QTRY_COMPARE_WITH_TIMEOUT(boxes.count(), 1, 10000);
            QCOMPARE(boxes.last().title, QStringLiteral("Antwort des SMS Gateways"));
            const bool accepted = good(fault);
            if (accepted)
                QVERIFY2(boxes.last().text.contains(acceptedText), qPrintable(boxes.last().text));
            QCOMPARE(child<SmsTextEdit>("txtSMS")->text(), accepted ? QString() : QStringLiteral("Hallo"));
            return;
        }
        const auto busy = [main] {
            for (Inet* transfer : main->findChildren<Inet*>())
                if (transfer->StillExecuting())
                    return true;
            return false;
        };
        QTRY_VERIFY(!busy());
        QCOMPARE(boxes.count(), 0);
        QVERIFY(tm->isActive());
        main->tm_Timer();
        QCOMPARE(boxes.count(), 1);
        QCOMPARE(boxes.last().text, GuardText);
        QCOMPARE(child<SmsTextEdit>("txtSMS")->text(), QStringLiteral("Hallo"));
        QCOMPARE(child<QLineEdit>("txtNummer")->text(), QStringLiteral("1234567"));
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
        TestStore::put(QStringLiteral("infoVersion"), QStringLiteral("32767"));
        reloadOptionsForTesting();
        QVERIFY(m_harness.startService({ QStringLiteral("--info-answer"), QStringLiteral("7") }));
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
        const QList<std::pair<Window, const char*>> windows = {
            { Window::Send, "single send" }, { Window::Schedule, "scheduled send" }, { Window::Bulk, "bulk run" },
            { Window::Balance, "balance" },  { Window::Version, "version" },         { Window::News, "news" },
            { Window::Wizard, "wizard" },    { Window::WebGroup, "web group" },      { Window::Phonebook, "phonebook" },
            { Window::Shop, "shop pane" },
        };
        for (const auto& [window, name] : windows) {
            for (const char* fault :
                 { "slow:300", "drop", "http500", "garbage", "empty", "gone", "tls-untrusted", "tls-trusted" })
                QTest::addRow("%s, %s", name, fault) << window << QString::fromLatin1(fault);
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
        const bool failed = !answers(fault);

        switch (window) {
        case Window::Send:
            m_harness.loadMain();
            breakService(QStringLiteral("/smsv3/smsv3.php"), fault);
            m_harness.fill(QStringLiteral("G171"), QStringLiteral("1234567"), QStringLiteral("Hallo"));
            m_harness.main()->tbSend_Click();
            checkSend(fault, boxes, QStringLiteral("erfolgreich"));
            break;

        case Window::Schedule:
            m_harness.loadMain();
            breakService(QStringLiteral("/cronjob/send_repeat.php"), fault);
            m_harness.fill(QStringLiteral("G171"), QStringLiteral("1234567"), QStringLiteral("Hallo"));
            onNextModal([](QWidget* dialog) { in<QPushButton>(dialog, "cbSend")->click(); });
            m_harness.main()->tbTerminversand_Click();
            checkSend(fault, boxes, QStringLiteral("wurde angelegt."));
            break;

        case Window::Bulk: {
            m_harness.loadMain();
            child<ToolbarButton>("tbMultiSMS")->click();
            RecipientTable& table = frmMultiSMS::loaded()->table();
            table.addRow(QStringLiteral("Anna"), QStringLiteral("01711234567"), {}, {});
            table.addRow(QStringLiteral("Ben"), QStringLiteral("01711234568"), {}, {});
            frmMultiSMS::loaded()->recalcMaxSizes();
            child<SmsTextEdit>("txtSMS")->setText(QStringLiteral("Hallo %name%"));
            breakService(QStringLiteral("/smsv3/smsv3.php"), fault);
            child<ToolbarButton>("tbSend")->click();
            // The run ends whatever came back; an answer that was read stands in the log.
            frmMultiSMSLog* log = frmMultiSMSLog::loaded();
            QVERIFY(log);
            // A row whose request brought no answer says so in the log, and isn't counted as sent.
            auto* lblSend = log->findChild<QLabel*>(QStringLiteral("lblSend"));
            QTRY_COMPARE_WITH_TIMEOUT(
                lblSend->text(),
                answers(fault, true) ? QStringLiteral("Vorgang abgeschlossen")
                                     : QStringLiteral("Vorgang abgeschlossen – 2 von 2 SMS wurden nicht versendet."),
                15000);
            const QString text = log->findChild<QPlainTextEdit*>(QStringLiteral("txtLog"))->toPlainText();
            QCOMPARE(text.contains(QStringLiteral("Internal Server Error")),
                     fault == u"garbage" || fault == u"http500");
            QCOMPARE(text.count(QStringLiteral("!!!! Nicht versendet an ")), answers(fault, true) ? 0 : 2);
            if (!answers(fault, true))
                QVERIFY2(text.contains(QStringLiteral("Ben (00491711234568): ") + expectedReason(fault)),
                         qPrintable(text));
            QCOMPARE(table.rowCount(), 2);
            QCOMPARE(child<SmsTextEdit>("txtSMS")->text(), QStringLiteral("Hallo %name%"));
            break;
        }

        case Window::Balance:
            m_harness.loadMain();
            breakService(QStringLiteral("/sms/count.php"), fault);
            m_harness.main()->refreshCredits();
            QCOMPARE(child<QLabel>("lblCredits")->text(),
                     good(fault)              ? QStringLiteral("500 Credits")
                         : fault == Untrusted ? QStringLiteral("Zertifikat nicht vertrauenswürdig")
                                              : QStringLiteral("kein Internet"));
            QCOMPARE(m_harness.main()->credits, good(fault) ? 500 : -1);
            break;

        case Window::Version: {
            // A failed check shows "no internet" once and the start goes on; an empty answer asks
            // again until one comes. A server that isn't trusted is named, and the start goes on.
            breakService(QStringLiteral("/update/version"), fault);
            int noInternet = 0;
            const std::function<void(QWidget*)> closeIt = [&](QWidget* modal) {
                ++noInternet;
                if (fault == u"empty")
                    m_harness.service()->setFault(QStringLiteral("/update/version"), QStringLiteral("none"));
                modal->close();
            };
            if (!good(fault) && fault != Untrusted)
                onNextModal(closeIt);
            m_harness.loadMain();
            QCOMPARE(noInternet, good(fault) || fault == Untrusted ? 0 : 1);
            QCOMPARE(boxes.count(), fault == Untrusted ? 1 : 0);
            QCOMPARE(boxes.last().text, fault == Untrusted ? CertificateText : QString());
            QVERIFY(m_harness.main()->isVisible());
            break;
        }

        case Window::News:
            TestStore::put(QStringLiteral("firstStartHasRun"), QStringLiteral("true"));
            TestStore::put(QStringLiteral("infoVersion"), QStringLiteral("6"));
            reloadOptionsForTesting();
            breakService(QStringLiteral("/update/infoVersion"), fault);
            if (fault == Gone)
                onNextModal([](QWidget* modal) { modal->close(); }); // the version check's window
            m_harness.loadMain();
            QVERIFY(m_harness.main()->isVisible());
            if (good(fault)) {
                QTRY_VERIFY(frmNews::loaded() && frmNews::loaded()->isVisible());
                QCOMPARE(Options().InfoVersion(), 7);
            } else {
                QVERIFY(!frmNews::loaded() || !frmNews::loaded()->isVisible());
                QCOMPARE(Options().InfoVersion(), 6);
            }
            break;

        case Window::Wizard: {
            TestStore::reset();
            reloadOptionsForTesting();
            frmFirstTime wizard;
            wizard.show();
            wizard.cmdNext->click();
            wizard.txtOldEmail->setText(QStringLiteral("demo@quellbote.test"));
            wizard.txtPassword->setText(QStringLiteral("demo"));
            QSignalSpy unloaded(&wizard, &frmFirstTime::unloaded);
            breakService(QStringLiteral("/sms/checkUser.php"), fault);
            boxes.clear();
            wizard.cmdDoIt->click();
            if (good(fault)) {
                QCOMPARE(unloaded.count(), 1);
                break;
            }
            QCOMPARE(boxes.count(), 1);
            QCOMPARE(boxes.last().text,
                     fault == Untrusted ? CertificateText
                                        : QStringLiteral("Der Server ist zurzeit nicht erreichbar oder hat nicht wie "
                                                         "erwartet geantwortet.\r\nBitte überprüfen Sie Ihre "
                                                         "Internetverbindung und versuchen Sie es erneut."));
            QCOMPARE(unloaded.count(), 0);
            QVERIFY(wizard.isEnabled());
            QCOMPARE(wizard.txtOldEmail->text(), QStringLiteral("demo@quellbote.test"));
            QVERIFY(Options().Username().isEmpty());
            break;
        }

        case Window::WebGroup: {
            m_harness.loadMain();
            child<ToolbarButton>("tbMultiSMS")->click();
            frmMultiSMS* multi = frmMultiSMS::loaded();
            multi->table().addRow(QStringLiteral("Anna"), QStringLiteral("01711234567"), {}, {});
            breakService(QStringLiteral("/sms/gruppenv2/jaeger.txt"), fault);
            boxes.clear();
            onNextModal([](QWidget* dialog) {
                in<WebView>(dialog, "web")->navigate(QStringLiteral("http://gruppe//jaeger.txt"));
            });
            in<QAction>(multi, "openWeb")->trigger();
            if (good(fault)) {
                QCOMPARE(multi->table().rowCount(), 2);
                QCOMPARE(boxes.count(), 0);
            } else if (fault == u"empty") {
                // A group without members is a group.
                QCOMPARE(multi->table().rowCount(), 0);
                QCOMPARE(boxes.count(), 0);
            } else {
                QCOMPARE(boxes.count(), 1);
                QVERIFY(boxes.last().text.startsWith(
                    failed ? QStringLiteral("Die Gruppe konnte nicht aus dem Internet geladen werden.")
                           : QStringLiteral("Die geladenen Daten sind keine gültige Gruppe.")));
                QCOMPARE(boxes.last().text.contains(CertificateText), fault == Untrusted);
                QCOMPARE(multi->table().rowCount(), 1);
                QCOMPARE(multi->table().rows().at(0).Name, QStringLiteral("Anna"));
            }
            break;
        }

        case Window::Phonebook:
        case Window::Shop: {
            // The page shows what the browser makes of it; the window around it works on.
            m_harness.loadMain();
            const bool phonebook = window == Window::Phonebook;
            breakService(phonebook ? QStringLiteral("/telefonbuch/telefonbuch.php")
                                   : QStringLiteral("/sms/buyCredits.php"),
                         fault);
            m_harness.fill(QStringLiteral("G171"), QStringLiteral("1234567"), QStringLiteral("Hallo"));
            if (phonebook) {
                m_harness.main()->tbPhonebook_Click();
                QTRY_VERIFY(m_harness.main()->isPhonebookOpen);
                m_harness.main()->tbPhonebook_Click();
                QVERIFY(!m_harness.main()->isPhonebookOpen);
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
            QCOMPARE(child<SmsTextEdit>("txtSMS")->text(), QStringLiteral("Hallo"));
            QCOMPARE(child<QLineEdit>("txtNummer")->text(), QStringLiteral("1234567"));
            break;
        }
        }
    }
};

QTEST_MAIN(TestFaults)
#include "tst_faults.moc"
