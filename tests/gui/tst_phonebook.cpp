// SPDX-License-Identifier: GPL-3.0-or-later
#include "MainWindowHarness.h"
#include "MessageBoxScript.h"
#include "ModalWindows.h"
#include "PageLinks.h"
#include "TestCertificates.h"
#include "TestStore.h"
#include "account/frmNews.h"
#include "account/frmPhonebook.h"
#include "bulk/frmMultiSMS.h"
#include "settings/cOptionen.h"
#include "toolkit/SmsTextEdit.h"
#include "toolkit/ToolbarButton.h"
#include "toolkit/WebView.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPointer>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
frmPhonebook* phonebook()
{
    for (QWidget* w : QApplication::topLevelWidgets()) {
        if (auto* book = qobject_cast<frmPhonebook*>(w))
            return book;
    }
    return nullptr;
}
} // namespace

class TestPhonebook : public QObject
{
    Q_OBJECT

    MainWindowHarness m_harness;

private slots:
    void cleanup() { m_harness.reset(); }

    void entriesLandInTheFields_data()
    {
        QTest::addColumn<QString>("address");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("number");
        QTest::addColumn<QString>("box");
        QTest::addColumn<bool>("stays");
        // Cut before the "/" go: "A/66" is no prefix of the list.
        QTest::newRow("an Austrian number written with /")
            << u"telefon://Sepp%20Gruber@0043/664/1234567"_s << u"Sepp Gruber"_s << u"W"_s << u"00436641234567"_s
            << u"Dies ist keine Mobilfunkvorwahl für Österreich."_s << false;
        // The prefix box goes back to its first entry.
        QTest::newRow("no number at all") << u"telefon://Kaputter%20Eintrag"_s << QString() << u"G150"_s << QString()
                                          << u"Es trat ein Fehler beim Auswerten der Telefonnummer auf."_s << true;
    }

    void entriesLandInTheFields()
    {
        QFETCH(QString, address);
        QFETCH(QString, name);
        QFETCH(QString, key);
        QFETCH(QString, number);
        QFETCH(QString, box);
        QFETCH(bool, stays);
        m_harness.resetStore();
        QVERIFY(m_harness.startService());
        frmMain* main = m_harness.loadMain();
        MessageBoxScript boxes;
        m_harness.child<ToolbarButton>("tbPhonebook")->click();
        QVERIFY(main->isPhonebookOpen && phonebook());
        QCOMPARE(phonebook()->pos(), QPoint(main->frameGeometry().right() + 1, main->frameGeometry().top()));
        boxes.answer(MessageBox::Answer::Ok);
        phonebook()->web->navigate(address);
        QTRY_COMPARE(boxes.count(), 1);
        QCOMPARE(boxes.last().text, box);
        QTRY_COMPARE(main->isPhonebookOpen, stays);
        QCOMPARE(m_harness.child<QComboBox>("cmbName")->currentText(), name);
        QCOMPARE(m_harness.child<QLineEdit>("txtNummer")->text(), number);
        QCOMPARE(main->selectedPrefixKey(), key);
    }

    // Links of the pages as the engine shows them, clicked with the mouse: the page's own script and
    // the engine's idea of an address lie on this road, and not on that of WebView::navigate.
    void linksClickedInTheLoadedPage_data()
    {
        QTest::addColumn<QString>("window");
        QTest::addColumn<QString>("link");
        QTest::addColumn<QString>("box"); // empty: none
        QTest::newRow("phonebook entry") << u"phonebook"_s << u"Max Mustermann"_s << QString();
        QTest::newRow("phonebook's close link") << u"phonebook"_s << u"Telefonbuch schließen"_s << QString();
        QTest::newRow("news' close link") << u"news"_s << u"Schließen"_s << QString();
        QTest::newRow("group, http://gruppe//") << u"group"_s << u"Familie Jäger"_s << QString();
        // Passed on unchanged, so the download fails and the table stays.
        QTest::newRow("group, http://gruppe://")
            << u"group"_s << u"Vertrieb (http://gruppe://)"_s
            << u"Die Gruppe konnte nicht aus dem Internet geladen werden.\r\nDie bisherigen Einträge bleiben "
               "unverändert."_s;
    }

    void linksClickedInTheLoadedPage()
    {
        QFETCH(QString, window);
        QFETCH(QString, link);
        QFETCH(QString, box);
        m_harness.resetStore();
        TestStore::put(u"firstStartHasRun"_s, u"true"_s);
        reloadOptionsForTesting();
        QVERIFY(m_harness.startService({ u"--info-answer"_s, window == u"news" ? u"-1"_s : u"0"_s }));
        frmMain* main = m_harness.loadMain();
        MessageBoxScript boxes;
        if (!box.isEmpty())
            boxes.answer(MessageBox::Answer::Ok);

        if (window == u"phonebook") {
            m_harness.child<ToolbarButton>("tbPhonebook")->click();
            QVERIFY(PageLinks::waitForLink(phonebook()->web, link));
            QVERIFY(PageLinks::click(phonebook()->web, link));
            QTRY_VERIFY(!main->isPhonebookOpen);
            QTRY_VERIFY(!phonebook());
            QCOMPARE(QApplication::focusWidget(), m_harness.child<SmsTextEdit>("txtSMS"));
            if (link == u"Max Mustermann") {
                QCOMPARE(m_harness.child<QComboBox>("cmbName")->currentText(), link);
                QCOMPARE(main->selectedPrefixKey(), u"G171"_s);
                QCOMPARE(m_harness.child<QLineEdit>("txtNummer")->text(), u"1234567"_s);
            }
        } else if (window == u"news") {
            QTRY_VERIFY(frmNews::loaded() && frmNews::loaded()->isVisible());
            QPointer<WebView> web = frmNews::loaded()->findChild<WebView*>();
            QVERIFY(PageLinks::waitForLink(web, link));
            // The engine now and then lets a click on a page just drawn pass; a user clicks again.
            const auto closed = [] {
                return !frmNews::loaded() || !frmNews::loaded()->isVisible();
            };
            for (int attempt = 0; attempt < 3 && web && !closed(); ++attempt) {
                QVERIFY(PageLinks::click(web, link));
                if (QTest::qWaitFor(closed, 5000))
                    break;
            }
            QVERIFY(closed());
        } else {
            m_harness.child<ToolbarButton>("tbMultiSMS")->click();
            RecipientTable& table = frmMultiSMS::loaded()->table();
            table.addRow(u"Anna"_s, u"00491711234567"_s, {}, {});
            bool clicked = false;
            onNextModal([&](QWidget* dialog) {
                auto* web = in<WebView>(dialog, "web");
                clicked = PageLinks::waitForLink(web, link) && PageLinks::click(web, link);
                if (!clicked)
                    dialog->close();
            });
            in<QAction>(frmMultiSMS::loaded(), "openWeb")->trigger();
            QVERIFY(clicked);
            QCOMPARE(table.rowCount(), box.isEmpty() ? 2 : 1);
            QCOMPARE(table.rows().at(0).Name, box.isEmpty() ? u"Jürgen Jäger"_s : u"Anna"_s);
        }
        QCOMPARE(boxes.count(), box.isEmpty() ? 0 : 1);
        QCOMPARE(boxes.last().text, box);
    }

    // A page of a server whose certificate isn't trusted gives way to the reason, in German.
    void pageOfAnUntrustedServerSaysWhy()
    {
        const TestCertificates certificates;
        QVERIFY2(certificates.error().isEmpty(), qPrintable(certificates.error()));
        m_harness.resetStore();
        QVERIFY(m_harness.startService(
            { u"--tls"_s, certificates.certificateFile(TestCertificates::SelfSigned), certificates.keyFile() }));
        MessageBoxScript boxes;
        boxes.answer(MessageBox::Answer::Ok); // the version check names the certificate too
        m_harness.loadMain();
        m_harness.child<ToolbarButton>("tbPhonebook")->click();
        const QString text = PageLinks::waitForText(phonebook()->web, u"nicht vertrauenswürdig"_s);
        QVERIFY2(text.contains(u"Die Seite kann nicht angezeigt werden."_s), qPrintable(text));
        QVERIFY(text.contains(u"Das Zertifikat des Servers 127.0.0.1 ist nicht vertrauenswürdig: es ist von keiner "
                              "vertrauenswürdigen Stelle ausgestellt."_s));
        // Nothing reached the service, the password neither.
        QVERIFY(m_harness.service()->requests(u"/telefonbuch/telefonbuch.php"_s).isEmpty());
    }

    // The news come once for each number; shown ones are counted in the fault test.
    void seenNewsStayAway()
    {
        m_harness.resetStore();
        TestStore::put(u"firstStartHasRun"_s, u"true"_s);
        TestStore::put(u"infoVersion"_s, u"6"_s);
        reloadOptionsForTesting();
        QVERIFY(m_harness.startService({ u"--info-answer"_s, u"6"_s }));
        m_harness.loadMain();
        QTRY_VERIFY(!frmNews::loaded());
        QCOMPARE(Options().InfoVersion(), 6);
    }
};

QTEST_MAIN(TestPhonebook)
#include "tst_phonebook.moc"
