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

using namespace Qt::StringLiterals;

class TestFirstTime : public QObject
{
    Q_OBJECT

    MainWindowHarness m_harness;
    std::unique_ptr<frmFirstTime> m_wizard;

    static bool marked(QLineEdit* field, const QColor& colour = FieldColors::LightRed)
    {
        return field->styleSheet().contains(
            u"rgb(%1, %2, %3)"_s.arg(colour.red()).arg(colour.green()).arg(colour.blue()));
    }

    void newAccount(const QString& email, const QString& repeat)
    {
        m_wizard->optNew->setChecked(true);
        m_wizard->txtFirstName->setText(u"Eva"_s);
        m_wizard->txtName->setText(u"Müller"_s);
        m_wizard->txtStrasse->setText(u"Hauptstr. 1"_s);
        m_wizard->txtPLZ->setText(u"10115"_s);
        m_wizard->txtOrt->setText(u"Berlin"_s);
        m_wizard->txtEmail->setText(email);
        m_wizard->txtEmailRepeat->setText(repeat);
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
        QVERIFY(m_harness.bodies(u"/sms/checkUser.php"_s).isEmpty());
        // The red is colour only: the first marked field takes the focus and carries the warning.
        QVERIFY(m_wizard->txtOldEmail->hasFocus() || !m_wizard->isActiveWindow());
        QCOMPARE(m_wizard->txtPassword->accessibleDescription(), u"Bitte füllen Sie alle rot markierten Felder aus."_s);

        m_wizard->txtOldEmail->setText(u"demo@quellbote.test"_s);
        m_wizard->txtPassword->setText(u"falsch"_s);
        boxes.answer(MessageBox::Answer::Ok);
        m_wizard->cmdDoIt->click();
        QCOMPARE(boxes.last().title, u"Unbekanntes Benutzerkonto"_s);
        QVERIFY(Options().Username().isEmpty());
        QVERIFY(m_wizard->isEnabled());

        // Without "Kennwort speichern" only the address is kept.
        m_wizard->txtPassword->setText(u"demo"_s);
        m_wizard->cmdDoIt->click();
        QCOMPARE(unloaded.count(), 1);
        reloadOptionsForTesting();
        QCOMPARE(Options().Username(), u"demo@quellbote.test"_s);
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

        newAccount(u"eva@example.com"_s, u"Eva@example.com"_s);
        m_wizard->cmdDoIt->click();
        QVERIFY(marked(m_wizard->txtEmail, FieldColors::LightYellow));

        // Terms refused: nothing applied for, everything typed stays.
        newAccount(u"eva@example.com"_s, u"eva@example.com"_s);
        onNextModal([](QWidget* dialog) { static_cast<frmAGBs*>(dialog)->cmdCancel->click(); });
        boxes.answer(MessageBox::Answer::Ok);
        m_wizard->cmdDoIt->click();
        QVERIFY(boxes.last().text.endsWith(u" nutzen zu können, müssen Sie die AGBs akzeptieren."_s));
        QVERIFY(m_harness.bodies(u"/sms/createUser.php"_s).isEmpty());
        QCOMPARE(m_wizard->txtFirstName->text(), u"Eva"_s);

        onNextModal([](QWidget* dialog) { static_cast<frmAGBs*>(dialog)->cmdAccept->click(); });
        m_wizard->cmdDoIt->click();
        QCOMPARE(m_wizard->pages->currentWidget(), m_wizard->boxCompleteNewCustomer);
        QVERIFY(Options().WaitingForPassword());

        // The password the service mailed, from its journal.
        QString password;
        for (const QJsonObject& entry : m_harness.service()->journal()) {
            if (entry.contains(u"mail"_s))
                password = entry.value(u"password"_s).toString();
        }
        QVERIFY(!password.isEmpty());
        QVERIFY(!m_wizard->cmdCompleteNewCustomer->isEnabled());
        m_wizard->txtPasswordNew->setText(password);
        m_wizard->chkRememberPasswordNew->setChecked(true);
        boxes.answer(MessageBox::Answer::Ok);
        m_wizard->cmdCompleteNewCustomer->click();
        QCOMPARE(boxes.last().text, u"Ihr Konto ist jetzt freigeschaltet."_s);
        reloadOptionsForTesting();
        QCOMPARE(Options().kennwort(), password);
        QVERIFY(!Options().WaitingForPassword() && Options().FirstStartHasRun());
    }

    void aStartWhileWaitingForThePassword()
    {
        TestStore::put(u"eMail"_s, u"eva@example.com"_s);
        TestStore::put(u"waitingForPassword"_s, u"true"_s);
        reloadOptionsForTesting();
        frmFirstTime wizard;
        wizard.show();
        QCOMPARE(wizard.pages->currentWidget(), wizard.boxCompleteNewCustomer);
        QVERIFY(!wizard.cmdBack->isVisible());
        QVERIFY(wizard.lblEmailIsReady->text().contains(u"'eva@example.com'"_s));
        // Straight to the program: the wizard won't come back, the password is asked at a send.
        wizard.cmdCancel->click();
        reloadOptionsForTesting();
        QVERIFY(Options().FirstStartHasRun() && Options().WaitingForPassword());
    }
};

QTEST_MAIN(TestFirstTime)
#include "tst_firsttime.moc"
