// SPDX-License-Identifier: GPL-3.0-or-later
#include "MainWindowHarness.h"
#include "MessageBoxScript.h"
#include "ModalWindows.h"
#include "TestStore.h"
#include "account/frmAGBs.h"
#include "account/frmFirstTime.h"
#include "settings/cOptionen.h"
#include "toolkit/FieldColors.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QTest>

class TestFirstTime : public QObject
{
    Q_OBJECT

    MainWindowHarness m_harness;
    std::unique_ptr<frmFirstTime> m_wizard;

    static bool marked(QLineEdit* field, const QColor& colour = FieldColors::LightRed)
    {
        return field->styleSheet().contains(
            QStringLiteral("rgb(%1, %2, %3)").arg(colour.red()).arg(colour.green()).arg(colour.blue()));
    }

    void newAccount(const QString& email, const QString& repeat)
    {
        m_wizard->optNew->setChecked(true);
        m_wizard->txtFirstName->setText(QStringLiteral("Eva"));
        m_wizard->txtName->setText(QStringLiteral("Müller"));
        m_wizard->txtStrasse->setText(QStringLiteral("Hauptstr. 1"));
        m_wizard->txtPLZ->setText(QStringLiteral("10115"));
        m_wizard->txtOrt->setText(QStringLiteral("Berlin"));
        m_wizard->txtEmail->setText(email);
        m_wizard->txtEmailRepeat->setText(repeat);
    }

    int requests(const char* path) const
    {
        return int(m_harness.service()->requests(QString::fromLatin1(path)).size());
    }

private slots:
    void init()
    {
        TestStore::reset();
        reloadOptionsForTesting();
        QVERIFY(m_harness.startService());
        m_wizard = std::make_unique<frmFirstTime>();
        m_wizard->show();
        m_wizard->cmdNext->click();
    }

    void cleanup()
    {
        m_wizard.reset();
        m_harness.reset();
    }

    void existingAccount()
    {
        MessageBoxScript boxes;
        QSignalSpy unloaded(m_wizard.get(), &frmFirstTime::unloaded);
        m_wizard->cmdDoIt->click();
        QVERIFY(marked(m_wizard->txtOldEmail) && marked(m_wizard->txtPassword));
        QCOMPARE(requests("/sms/checkUser.php"), 0);

        m_wizard->txtOldEmail->setText(QStringLiteral("demo@quellbote.test"));
        m_wizard->txtPassword->setText(QStringLiteral("falsch"));
        boxes.answer(MessageBox::Answer::Ok);
        m_wizard->cmdDoIt->click();
        QCOMPARE(boxes.last().title, QStringLiteral("Unbekanntes Benutzerkonto"));
        QVERIFY(Options().Username().isEmpty());
        QVERIFY(m_wizard->isEnabled());

        // Without "Kennwort speichern" only the address is kept.
        m_wizard->txtPassword->setText(QStringLiteral("demo"));
        m_wizard->cmdDoIt->click();
        QCOMPARE(unloaded.count(), 1);
        reloadOptionsForTesting();
        QCOMPARE(Options().Username(), QStringLiteral("demo@quellbote.test"));
        QVERIFY(Options().kennwort().isEmpty());
        QVERIFY(Options().FirstStartHasRun());
    }

    void newAccountWithTheMailedPassword()
    {
        MessageBoxScript boxes;
        newAccount(QString(), QString());
        m_wizard->txtName->clear();
        m_wizard->cmdDoIt->click();
        QVERIFY(marked(m_wizard->txtName) && marked(m_wizard->txtEmail) && !marked(m_wizard->txtOrt));
        QVERIFY(m_wizard->boxWarn->isVisible());

        newAccount(QStringLiteral("eva@example.com"), QStringLiteral("Eva@example.com"));
        m_wizard->cmdDoIt->click();
        QVERIFY(marked(m_wizard->txtEmail, FieldColors::LightYellow));

        // Terms refused: nothing applied for, everything typed stays.
        newAccount(QStringLiteral("eva@example.com"), QStringLiteral("eva@example.com"));
        onNextModal([](QWidget* dialog) { static_cast<frmAGBs*>(dialog)->cmdCancel->click(); });
        boxes.answer(MessageBox::Answer::Ok);
        m_wizard->cmdDoIt->click();
        QVERIFY(boxes.last().text.endsWith(QStringLiteral(" nutzen zu können, müssen Sie die AGBs akzeptieren.")));
        QCOMPARE(requests("/sms/createUser.php"), 0);
        QCOMPARE(m_wizard->txtFirstName->text(), QStringLiteral("Eva"));

        onNextModal([](QWidget* dialog) { static_cast<frmAGBs*>(dialog)->cmdAccept->click(); });
        m_wizard->cmdDoIt->click();
        QCOMPARE(m_wizard->pages->currentWidget(), m_wizard->boxCompleteNewCustomer);
        QVERIFY(Options().WaitingForPassword());

        // The password the service mailed, from its journal.
        QString password;
        for (const QJsonObject& entry : m_harness.service()->journal()) {
            if (entry.contains(QStringLiteral("mail")))
                password = entry.value(QStringLiteral("password")).toString();
        }
        QVERIFY(!password.isEmpty());
        QVERIFY(!m_wizard->cmdCompleteNewCustomer->isEnabled());
        m_wizard->txtPasswordNew->setText(password);
        m_wizard->chkRememberPasswordNew->setChecked(true);
        boxes.answer(MessageBox::Answer::Ok);
        m_wizard->cmdCompleteNewCustomer->click();
        QCOMPARE(boxes.last().text, QStringLiteral("Ihr Konto ist jetzt freigeschaltet."));
        reloadOptionsForTesting();
        QCOMPARE(Options().kennwort(), password);
        QVERIFY(!Options().WaitingForPassword() && Options().FirstStartHasRun());
    }

    void aStartWhileWaitingForThePassword()
    {
        TestStore::put(QStringLiteral("eMail"), QStringLiteral("eva@example.com"));
        TestStore::put(QStringLiteral("waitingForPassword"), QStringLiteral("true"));
        reloadOptionsForTesting();
        frmFirstTime wizard;
        wizard.show();
        QCOMPARE(wizard.pages->currentWidget(), wizard.boxCompleteNewCustomer);
        QVERIFY(!wizard.cmdBack->isVisible());
        QVERIFY(wizard.lblEmailIsReady->text().contains(QStringLiteral("'eva@example.com'")));
        // Straight to the program: the wizard won't come back, the password is asked at a send.
        wizard.cmdCancel->click();
        reloadOptionsForTesting();
        QVERIFY(Options().FirstStartHasRun() && Options().WaitingForPassword());
    }
};

QTEST_MAIN(TestFirstTime)
#include "tst_firsttime.moc"
