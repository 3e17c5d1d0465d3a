// SPDX-License-Identifier: GPL-3.0-or-later
#include "MainWindowHarness.h"
#include "MessageBoxScript.h"
#include "TestStore.h"
#include "account/frmNews.h"
#include "account/frmPhonebook.h"
#include "settings/cOptionen.h"
#include "toolkit/ToolbarButton.h"
#include "toolkit/WebView.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QTest>

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
        QTest::addColumn<QString>("box"); // empty: none
        QTest::addColumn<bool>("stays");
        QTest::newRow("a blank in the name") << "telefon://Max%20Muster@00491711234567"
                                             << "Max Muster"
                                             << "G171"
                                             << "1234567"
                                             << "" << false;
        // Cut before the "/" go: "A/66" is no prefix of the list.
        QTest::newRow("an Austrian number written with /")
            << "telefon://Sepp%20Gruber@0043/664/1234567"
            << "Sepp Gruber"
            << "W"
            << "00436641234567"
            << "Dies ist keine Mobilfunkvorwahl für Österreich." << false;
        QTest::newRow("no number at all") << "telefon://Kaputter%20Eintrag"
                                          << ""
                                          << ""
                                          << ""
                                          << "Es trat ein Fehler beim Auswerten der Telefonnummer auf." << true;
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
        if (!box.isEmpty())
            boxes.answer(MessageBox::Answer::Ok);
        phonebook()->web->navigate(address);
        QTRY_COMPARE(boxes.count(), box.isEmpty() ? 0 : 1);
        if (!box.isEmpty())
            QCOMPARE(boxes.last().text, box);
        QTRY_COMPARE(main->isPhonebookOpen, stays);
        QCOMPARE(m_harness.child<QComboBox>("cmbName")->currentText(), name);
        QCOMPARE(m_harness.child<QLineEdit>("txtNummer")->text(), number);
        if (!key.isEmpty())
            QCOMPARE(main->selectedPrefixKey(), key);
    }

    void newsOncePerNumber()
    {
        for (const int seen : { 5, 6 }) {
            m_harness.resetStore();
            TestStore::put(QStringLiteral("firstStartHasRun"), QStringLiteral("true"));
            TestStore::put(QStringLiteral("infoVersion"), QString::number(seen));
            reloadOptionsForTesting();
            QVERIFY(m_harness.startService({ QStringLiteral("--info-answer"), QStringLiteral("6") }));
            m_harness.loadMain();
            if (seen == 5) {
                // Shown, and counted as seen before the user has read it.
                QVERIFY(frmNews::loaded());
                QTRY_VERIFY(frmNews::loaded()->isVisible());
                QCOMPARE(Options().InfoVersion(), 6);
            } else {
                QTRY_VERIFY(!frmNews::loaded());
            }
            m_harness.reset();
        }
    }
};

QTEST_MAIN(TestPhonebook)
#include "tst_phonebook.moc"
