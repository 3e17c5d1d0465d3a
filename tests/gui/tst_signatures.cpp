// SPDX-License-Identifier: GPL-3.0-or-later
#include "MainWindowHarness.h"
#include "ModalWindows.h"
#include "TestStore.h"
#include "settings/mSignaturen.h"
#include "toolkit/SmsTextEdit.h"
#include "toolkit/ToolbarButton.h"

#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
const QString Key = u"Signaturen"_s;
} // namespace

class TestSignatures : public QObject
{
    Q_OBJECT

    MainWindowHarness m_harness;

    QListWidget* list() const { return m_harness.child<QListWidget>("lvSignaturen"); }
    void click(const char* button) { m_harness.child<ToolbarButton>(button)->click(); }

    // Types the text into the next frmSignaturen and saves it; gives the count it showed.
    static void typeIntoNextWindow(const QString& text, QString* countShown = nullptr)
    {
        onNextModal([text, countShown](QWidget* window) {
            in<SmsTextEdit>(window, "txtSignatur")->setText(text);
            if (countShown)
                *countShown = in<QLineEdit>(window, "txtZeichen")->text();
            in<QPushButton>(window, "cmdSave")->click();
        });
    }

private slots:
    void init()
    {
        m_harness.resetStore(false);
        QVERIFY(m_harness.startService());
    }

    void cleanup() { m_harness.reset(); }

    void storeWithGapsLoadsByCount()
    {
        TestStore::put(u"count"_s, u"3"_s, Key);
        TestStore::put(u"1"_s, u"Gruß"_s, Key);
        TestStore::put(u"3"_s, u"Ende"_s, Key);
        QCOMPARE(mSignaturen::LoadSignaturen(), (QStringList { u"Gruß"_s, QString(), u"Ende"_s }));
        TestStore::put(u"count"_s, u"abc"_s, Key);
        QVERIFY(mSignaturen::LoadSignaturen().isEmpty());
    }

    void deleteRenumbersAndLeavesTheStaleValue()
    {
        mSignaturen::SaveSignaturen({ u"a"_s, u"b"_s, u"c"_s });
        m_harness.loadMain();
        QCOMPARE(list()->count(), 3);
        // Nothing selected: nothing happens.
        list()->setCurrentRow(-1);
        click("tbDeleteSignature");
        QCOMPARE(list()->count(), 3);
        list()->setCurrentRow(1);
        click("tbDeleteSignature");
        QCOMPARE(TestStore::raw(u"count"_s, Key), u"2"_s);
        QCOMPARE(TestStore::raw(u"2"_s, Key), u"c"_s);
        QCOMPARE(TestStore::raw(u"3"_s, Key), u"c"_s);
    }

    void newEditAndInsert()
    {
        m_harness.loadMain();
        QString count;
        typeIntoNextWindow(u"Viele Grüße\r\nMax"_s, &count);
        click("tbAddSignature");
        QCOMPARE(count, u"16"_s);
        QCOMPARE(list()->count(), 1);
        QCOMPARE(TestStore::raw(u"1"_s, Key), u"Viele Grüße\r\nMax"_s);
        list()->setCurrentRow(0);
        typeIntoNextWindow(QString());
        click("tbEditSignature");
        // An empty text removes the value; the place stays by the count.
        QVERIFY(!TestStore::has(u"1"_s, Key));
        QCOMPARE(TestStore::raw(u"count"_s, Key), u"1"_s);
        list()->item(0)->setText(u"MfG"_s);
        auto* txtSMS = m_harness.child<SmsTextEdit>("txtSMS");
        txtSMS->setText(u"Hallo "_s);
        emit list()->itemDoubleClicked(list()->item(0));
        QCOMPARE(txtSMS->text(), u"Hallo MfG"_s);

        // Esc discards what was typed, as the frame's close box does.
        bool closed = false;
        onNextModal([&closed](QWidget* window) {
            auto* text = in<SmsTextEdit>(window, "txtSignatur");
            text->setFocus();
            QTest::keyClicks(text, u" verworfen"_s);
            QTest::keyClick(text, Qt::Key_Escape);
            closed = !window->isVisible();
        });
        click("tbEditSignature");
        QVERIFY(closed);
        QCOMPARE(list()->item(0)->text(), u"MfG"_s);
    }
};

QTEST_MAIN(TestSignatures)
#include "tst_signatures.moc"
