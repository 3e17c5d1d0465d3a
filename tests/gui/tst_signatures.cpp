// SPDX-License-Identifier: GPL-3.0-or-later
#include "MessageBoxScript.h"
#include "ModalWindows.h"
#include "ServiceProcess.h"
#include "TestStore.h"
#include "sending/frmMain.h"
#include "settings/CUrlStore.h"
#include "settings/ProgramFolder.h"
#include "settings/cOptionen.h"
#include "settings/mSignaturen.h"
#include "toolkit/Pause.h"
#include "toolkit/SmsTextEdit.h"
#include "toolkit/ToolbarButton.h"

#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

class TestSignatures : public QObject
{
    Q_OBJECT

    QTemporaryDir m_folder;
    std::unique_ptr<ServiceProcess> m_service;
    std::unique_ptr<frmMain> m_main;

    QListWidget* list() const { return m_main->findChild<QListWidget*>(QStringLiteral("lvSignaturen")); }

    void loadMain()
    {
        m_main = std::make_unique<frmMain>();
        m_main->load(nullptr);
    }

    // Types the text into the next frmSignaturen and saves it.
    static void typeIntoNextWindow(const QString& text, QString* countShown = nullptr)
    {
        onNextModal([text, countShown](QWidget* window) {
            window->findChild<SmsTextEdit*>(QStringLiteral("txtSignatur"))->setText(text);
            if (countShown)
                *countShown = window->findChild<QLineEdit*>(QStringLiteral("txtZeichen"))->text();
            window->findChild<QPushButton*>(QStringLiteral("cmdSave"))->click();
        });
    }

private slots:
    void initTestCase()
    {
        Pause::setLengthForTesting(0);
        ProgramFolder::setPathForTesting(m_folder.path());
        m_service = std::make_unique<ServiceProcess>();
        QVERIFY(m_service->isRunning());
        m_service->pointProgramAt(m_folder.path());
    }

    void init()
    {
        TestStore::reset();
        TestStore::put(QStringLiteral("eMail"), QStringLiteral("demo@quellbote.test"));
        reloadOptionsForTesting();
    }

    void cleanup() { m_main.reset(); }

    void storeWithGapsLoadsByCount()
    {
        TestStore::put(QStringLiteral("count"), QStringLiteral("3"), QStringLiteral("Signaturen"));
        TestStore::put(QStringLiteral("1"), QStringLiteral("Gruß"), QStringLiteral("Signaturen"));
        TestStore::put(QStringLiteral("3"), QStringLiteral("Ende"), QStringLiteral("Signaturen"));
        QCOMPARE(mSignaturen::LoadSignaturen(),
                 (QStringList { QStringLiteral("Gruß"), QString(), QStringLiteral("Ende") }));
        TestStore::put(QStringLiteral("count"), QStringLiteral("abc"), QStringLiteral("Signaturen"));
        QVERIFY(mSignaturen::LoadSignaturen().isEmpty());
    }

    void deleteRenumbersAndLeavesTheStaleValue()
    {
        mSignaturen::SaveSignaturen({ QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c") });
        loadMain();
        QCOMPARE(list()->count(), 3);
        // Nothing selected: nothing happens.
        list()->setCurrentRow(-1);
        m_main->findChild<ToolbarButton*>(QStringLiteral("tbDeleteSignature"))->click();
        QCOMPARE(list()->count(), 3);
        list()->setCurrentRow(1);
        m_main->findChild<ToolbarButton*>(QStringLiteral("tbDeleteSignature"))->click();
        QCOMPARE(TestStore::raw(QStringLiteral("count"), QStringLiteral("Signaturen")), QStringLiteral("2"));
        QCOMPARE(TestStore::raw(QStringLiteral("2"), QStringLiteral("Signaturen")), QStringLiteral("c"));
        QCOMPARE(TestStore::raw(QStringLiteral("3"), QStringLiteral("Signaturen")), QStringLiteral("c"));
    }

    void newEditAndInsert()
    {
        loadMain();
        QString count;
        typeIntoNextWindow(QStringLiteral("Viele Grüße\r\nMax"), &count);
        m_main->findChild<ToolbarButton*>(QStringLiteral("tbAddSignature"))->click();
        QCOMPARE(count, QStringLiteral("16"));
        QCOMPARE(list()->count(), 1);
        QCOMPARE(TestStore::raw(QStringLiteral("1"), QStringLiteral("Signaturen")),
                 QStringLiteral("Viele Grüße\r\nMax"));
        list()->setCurrentRow(0);
        typeIntoNextWindow(QString());
        m_main->findChild<ToolbarButton*>(QStringLiteral("tbEditSignature"))->click();
        // An empty text removes the value; the place stays by the count.
        QVERIFY(!TestStore::has(QStringLiteral("1"), QStringLiteral("Signaturen")));
        QCOMPARE(TestStore::raw(QStringLiteral("count"), QStringLiteral("Signaturen")), QStringLiteral("1"));
        list()->item(0)->setText(QStringLiteral("MfG"));
        auto* txtSMS = m_main->findChild<SmsTextEdit*>(QStringLiteral("txtSMS"));
        txtSMS->setText(QStringLiteral("Hallo "));
        emit list()->itemDoubleClicked(list()->item(0));
        QCOMPARE(txtSMS->text(), QStringLiteral("Hallo MfG"));
    }
};

QTEST_MAIN(TestSignatures)
#include "tst_signatures.moc"
