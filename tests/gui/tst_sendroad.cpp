// SPDX-License-Identifier: GPL-3.0-or-later
#include "MessageBoxScript.h"
#include "ModalWindows.h"
#include "ServiceProcess.h"
#include "TestStore.h"
#include "sending/frmMain.h"
#include "settings/CUrlStore.h"
#include "settings/ProductName.h"
#include "settings/ProgramFolder.h"
#include "settings/cOptionen.h"
#include "toolkit/CTooltip.h"
#include "toolkit/Pause.h"
#include "toolkit/SmsTextEdit.h"
#include "toolkit/ToolbarButton.h"

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolButton>

class TestSendRoad : public QObject
{
    Q_OBJECT

    QTemporaryDir m_folder;
    std::unique_ptr<ServiceProcess> m_service;
    std::unique_ptr<frmMain> m_main;

    template<typename T> T* child(const char* name) { return m_main->findChild<T*>(QString::fromLatin1(name)); }

    void startService(const QStringList& arguments = {})
    {
        m_service = std::make_unique<ServiceProcess>(arguments);
        QVERIFY(m_service->isRunning());
        m_service->pointProgramAt(m_folder.path());
    }

    void loadMain()
    {
        m_main = std::make_unique<frmMain>();
        m_main->load(nullptr);
    }

    void fill(const QString& key, const QString& number, const QString& text)
    {
        m_main->selectPrefixKey(key);
        child<QLineEdit>("txtNummer")->setText(number);
        child<SmsTextEdit>("txtSMS")->setText(text);
    }

    QString lastBody() const
    {
        const auto sent = m_service->requests(QStringLiteral("/smsv3/smsv3.php"));
        return sent.isEmpty() ? QString() : sent.last().value(QStringLiteral("body")).toString();
    }

private slots:
    void initTestCase()
    {
        Pause::setLengthForTesting(0);
        ProgramFolder::setPathForTesting(m_folder.path());
    }

    void init()
    {
        TestStore::reset();
        TestStore::put(QStringLiteral("eMail"), QStringLiteral("demo@quellbote.test"));
        TestStore::put(QStringLiteral("Password"), QStringLiteral("demo"));
        reloadOptionsForTesting();
    }

    void cleanup()
    {
        m_main.reset();
        m_service.reset();
    }

    void acceptedSmsClearsTheFieldsAndOffersTheText()
    {
        startService();
        loadMain();
        QCOMPARE(child<QLabel>("lblCredits")->text(), QStringLiteral("500 Credits"));
        MessageBoxScript boxes;
        boxes.answer(MessageBox::Answer::Ok);
        child<QComboBox>("cmbName")->setEditText(QStringLiteral("Max"));
        fill(QStringLiteral("G171"), QStringLiteral("1234567"), QStringLiteral("100% & 1+1"));
        QTest::mouseClick(child<ToolbarButton>("tbSend"), Qt::LeftButton);
        QTRY_COMPARE(boxes.count(), 1);
        QCOMPARE(boxes.last().title, QStringLiteral("Antwort des SMS Gateways"));
        QVERIFY(boxes.last().text.contains(QStringLiteral("wurde erfolgreich an das Gateway übermittelt.")));
        QCOMPARE(lastBody(),
                 QStringLiteral("email=demo@quellbote.test&kennwort=demo&firma=%20&empfaenger=00491711234567"
                                "&empfaengername=Max&private=true&public=false&version=2.4.92"
                                "&text=100%25%20%26%201%2B1&absenderkennung=false&absender=&statusmeldung=false"
                                "&antwort=false&einlieferung=false&referer=Quellbote&long=false"));
        QCOMPARE(child<SmsTextEdit>("txtSMS")->text(), QString());
        QCOMPARE(child<QLineEdit>("txtNummer")->text(), QString());
        QCOMPARE(child<QComboBox>("cmbName")->currentText(), QString());
        QVERIFY(child<QWidget>("boxReuseLastSMS")->isVisibleTo(m_main.get()));
        QCOMPARE(child<QLabel>("lblReuseText")->toolTip(), QStringLiteral("100% & 1+1"));
        // The next balance query shows the SMS charged.
        m_main->refreshCredits();
        QCOMPARE(child<QLabel>("lblCredits")->text(), QStringLiteral("490 Credits"));
        QVERIFY(child<QLabel>("lblBuyCredits")->isVisibleTo(m_main.get()));
        QMetaObject::invokeMethod(child<QLabel>("lblReuseText"), "linkActivated", Q_ARG(QString, QString()));
        QCOMPARE(child<SmsTextEdit>("txtSMS")->text(), QStringLiteral("100% & 1+1"));
        // The recipient is remembered whatever the gateway answered.
        QCOMPARE(TestStore::raw(QStringLiteral("1"), QStringLiteral("MRU")), QStringLiteral("Max;G171-1234567"));
        QCOMPARE(child<QComboBox>("cmbName")->itemText(0), QStringLiteral("Max"));
    }

    void refusedSmsKeepsTheFields()
    {
        startService();
        TestStore::put(QStringLiteral("Password"), QStringLiteral("falsch"));
        reloadOptionsForTesting();
        loadMain();
        MessageBoxScript boxes;
        boxes.answer(MessageBox::Answer::Ok);
        fill(QStringLiteral("S79"), QStringLiteral("1234567"), QStringLiteral("Hallo"));
        m_main->tbSend_Click();
        QTRY_COMPARE(boxes.count(), 1);
        QVERIFY(boxes.last().text.contains(QStringLiteral("Die Anmeldung ist fehlgeschlagen.\r\n")));
        QVERIFY(lastBody().contains(QStringLiteral("&empfaenger=0041791234567&")));
        QCOMPARE(child<SmsTextEdit>("txtSMS")->text(), QStringLiteral("Hallo"));
        QCOMPARE(child<QLineEdit>("txtNummer")->text(), QStringLiteral("1234567"));
        QVERIFY(!child<QWidget>("boxReuseLastSMS")->isVisibleTo(m_main.get()));
    }

    void longTextGoesInTwoPartsAnsweredTwice()
    {
        startService();
        loadMain();
        MessageBoxScript boxes;
        boxes.answer(MessageBox::Answer::Ok);
        boxes.answer(MessageBox::Answer::Ok);
        fill(QStringLiteral("G171"), QStringLiteral("1234567"), QString(160, QLatin1Char('a')) + QLatin1Char('b'));
        QCOMPARE(child<QLineEdit>("txtAnzahlSMS")->text(), QStringLiteral("2"));
        m_main->tbSend_Click();
        QTRY_COMPARE(boxes.count(), 2);
        const auto sent = m_service->requests(QStringLiteral("/smsv3/smsv3.php"));
        QCOMPARE(sent.size(), 2);
        QVERIFY(sent.at(0).value(QStringLiteral("body")).toString().contains(u"&text=" + QString(160, u'a') + u'&'));
        QVERIFY(sent.at(1).value(QStringLiteral("body")).toString().contains(QStringLiteral("&text=b&")));
        // The second accepted part finds the text box already empty.
        QCOMPARE(m_main->lastSmsText, QString());
    }

    void invalidInputIsMarkedAndTold()
    {
        startService();
        loadMain();
        MessageBoxScript boxes;
        boxes.answer(MessageBox::Answer::Ok);
        m_main->tbSend_Click();
        QCOMPARE(boxes.count(), 1);
        QCOMPARE(boxes.last().title, QStringLiteral("Quellbote"));
        QCOMPARE(boxes.last().text,
                 QStringLiteral("Bitte korrigieren Sie die rot markierten Felder.\r\n\r\n"
                                "  - Bitte wählen Sie eine Vorwahl aus.\r\n"
                                "  - Bitte geben Sie eine Rufnummer an.\r\n"
                                "  - Bitte geben Sie eine Nachricht ein.\r\n"));
        QVERIFY(child<QComboBox>("cmbVorwahl")->styleSheet().contains(QStringLiteral("255, 192, 192")));
        QVERIFY(m_service->requests(QStringLiteral("/smsv3/smsv3.php")).isEmpty());
    }

    void passwordPrompt_data()
    {
        QTest::addColumn<bool>("answered");
        QTest::addColumn<QString>("expected");
        QTest::newRow("answered") << true << "&kennwort=demo&firma=%20";
        QTest::newRow("cancelled") << false << "&kennwort=&firma=%20";
    }

    void passwordPrompt()
    {
        QFETCH(bool, answered);
        QFETCH(QString, expected);
        TestStore::reset();
        TestStore::put(QStringLiteral("eMail"), QStringLiteral("demo@quellbote.test"));
        reloadOptionsForTesting();
        startService();
        loadMain();
        MessageBoxScript boxes;
        boxes.answer(MessageBox::Answer::Ok);
        fill(QStringLiteral("G171"), QStringLiteral("1234567"), QStringLiteral("Hallo"));
        QString shownEmail;
        onNextModal([&](QWidget* dialog) {
            QCOMPARE(dialog->windowTitle(), QStringLiteral("Kennwort eingeben"));
            shownEmail = dialog->findChild<QLineEdit*>(QStringLiteral("txtEmail"))->text();
            dialog->findChild<QLineEdit*>(QStringLiteral("txtPassword"))->setText(QStringLiteral("demo"));
            dialog->findChild<QPushButton*>(answered ? QStringLiteral("cmdOK") : QStringLiteral("cmdCancel"))->click();
        });
        m_main->tbSend_Click();
        QTRY_COMPARE(boxes.count(), 1);
        QCOMPARE(shownEmail, QStringLiteral("demo@quellbote.test"));
        QVERIFY2(lastBody().contains(expected), qPrintable(lastBody()));
        QCOMPARE(m_main->sessionPassword, QString());
        QVERIFY(!TestStore::has(QStringLiteral("Password")));
    }

    void timeOutBoxComesWhenNoAnswerCame()
    {
        startService({ QStringLiteral("--fault"), QStringLiteral("/smsv3/smsv3.php=drop") });
        loadMain();
        MessageBoxScript boxes;
        fill(QStringLiteral("G171"), QStringLiteral("1234567"), QStringLiteral("Hallo"));
        m_main->tbSend_Click();
        auto* tm = m_main->findChild<QTimer*>(QStringLiteral("tm"));
        QVERIFY(tm->isActive());
        QTRY_VERIFY(!m_service->requests(QStringLiteral("/smsv3/smsv3.php")).isEmpty());
        QTest::qWait(100);
        QCOMPARE(boxes.count(), 0); // a failed transfer shows nothing by itself
        boxes.answer(MessageBox::Answer::Ok);
        m_main->tm_Timer();
        QCOMPARE(boxes.count(), 1);
        QCOMPARE(boxes.last().text,
                 QStringLiteral("Das SMS Gateway hat auf die Anfrage nicht reagiert.\r\n"
                                "Mit hoher Wahrscheinlichkeit wurde die Nachricht NICHT "
                                "versendet."));
        QVERIFY(!tm->isActive());
        QCOMPARE(child<SmsTextEdit>("txtSMS")->text(), QStringLiteral("Hallo"));
    }

    void windowStaysResponsiveWhileARequestHangs()
    {
        startService({ QStringLiteral("--fault"), QStringLiteral("/smsv3/smsv3.php=slow:1500") });
        loadMain();
        MessageBoxScript boxes;
        boxes.answer(MessageBox::Answer::Ok);
        boxes.answer(MessageBox::Answer::Ok);
        fill(QStringLiteral("G171"), QStringLiteral("1234567"), QString(165, QLatin1Char('x')));
        bool clickedDuringWait = false;
        QTimer::singleShot(300, [&] {
            QTest::mouseClick(child<QCheckBox>("chkPublic"), Qt::LeftButton);
            clickedDuringWait = boxes.count() == 0;
        });
        // The second part waits for the first; the click is taken meanwhile.
        m_main->tbSend_Click();
        QVERIFY(clickedDuringWait);
        QVERIFY(child<QCheckBox>("chkPublic")->isChecked());
        QCOMPARE(child<QCheckBox>("chkPrivat")->checkState(), Qt::PartiallyChecked);
        QTRY_COMPARE_WITH_TIMEOUT(boxes.count(), 2, 10000);
    }

    void balanceStates_data()
    {
        QTest::addColumn<QString>("email");
        QTest::addColumn<QString>("fault");
        QTest::addColumn<QString>("caption");
        QTest::addColumn<bool>("enabled");
        QTest::addColumn<bool>("buyShown");
        QTest::addColumn<int>("credits");
        QTest::newRow("500 is low") << "demo@quellbote.test"
                                    << "none"
                                    << "500 Credits" << true << true << 500;
        QTest::newRow("unknown user") << "nobody@example.com"
                                      << "none"
                                      << "nicht angemeldet" << false << false << -1;
        QTest::newRow("garbage") << "demo@quellbote.test"
                                 << "garbage"
                                 << "kein Internet" << true << false << -1;
        QTest::newRow("drop") << "demo@quellbote.test"
                              << "drop"
                              << "kein Internet" << true << false << -1;
        QTest::newRow("empty") << "demo@quellbote.test"
                               << "empty"
                               << "kein Internet" << true << false << -1;
    }

    void balanceStates()
    {
        QFETCH(QString, email);
        QFETCH(QString, fault);
        QFETCH(QString, caption);
        QFETCH(bool, enabled);
        QFETCH(bool, buyShown);
        QFETCH(int, credits);
        TestStore::put(QStringLiteral("eMail"), email);
        reloadOptionsForTesting();
        startService();
        loadMain();
        QVERIFY(m_service->setFault(QStringLiteral("/sms/count.php"), fault));
        m_main->refreshCredits();
        auto* lblCredits = child<QLabel>("lblCredits");
        QCOMPARE(lblCredits->text(), caption);
        QCOMPARE(lblCredits->isEnabled(), enabled);
        QCOMPARE(child<QLabel>("lblBuyCredits")->isVisibleTo(m_main.get()), buyShown);
        QCOMPARE(m_main->credits, credits);
        QCOMPARE(lblCredits->palette().color(QPalette::WindowText) == QColor(192, 0, 0), buyShown);
    }

    void balanceTimerAsksEveryEleventhTick()
    {
        startService();
        loadMain();
        const qsizetype before = m_service->requests(QStringLiteral("/sms/count.php")).size();
        for (int i = 0; i < 10; ++i)
            m_main->tmCredits_Timer();
        QCOMPARE(m_service->requests(QStringLiteral("/sms/count.php")).size(), before);
        m_main->tmCredits_Timer();
        QCOMPARE(m_service->requests(QStringLiteral("/sms/count.php")).size(), before + 1);
        QCOMPARE(m_main->creditsTicks, qint16(0));
    }

    void tooLowBalanceStopsTheSend()
    {
        startService();
        loadMain();
        m_main->credits = 9;
        MessageBoxScript boxes;
        boxes.answer(MessageBox::Answer::Ok);
        fill(QStringLiteral("G171"), QStringLiteral("1234567"), QStringLiteral("Hallo"));
        m_main->tbSend_Click();
        QCOMPARE(boxes.last().text,
                 QStringLiteral("Sie verfügen nicht mehr über ein ausreichendes Guthaben um diese "
                                "Nachricht zu verschicken."));
        QVERIFY(m_service->requests(QStringLiteral("/smsv3/smsv3.php")).isEmpty());
    }

    void versionCheck_data()
    {
        QTest::addColumn<QString>("answer");
        QTest::addColumn<bool>("updateShown");
        QTest::addColumn<bool>("noInternet");
        QTest::newRow("newer version") << "2.5.0" << true << false;
        QTest::newRow("newer revision") << "2.4.93" << true << false;
        QTest::newRow("equal version") << "2.4.92" << false << false;
        QTest::newRow("older version") << "2.4.9" << false << false;
        QTest::newRow("one item only") << "3" << false << true;
        QTest::newRow("no number") << "abc.def.ghi" << false << true;
    }

    void versionCheck()
    {
        QFETCH(QString, answer);
        QFETCH(bool, updateShown);
        QFETCH(bool, noInternet);
        startService({ QStringLiteral("--version-answer"), answer });
        int noInternetShown = 0;
        if (noInternet) {
            onNextModal([&](QWidget* window) {
                QCOMPARE(window->windowTitle(), QStringLiteral("Kein Internet"));
                ++noInternetShown;
                window->findChild<QPushButton*>(QStringLiteral("cmdRetry"))->click();
            });
        }
        loadMain();
        QCOMPARE(noInternetShown, noInternet ? 1 : 0);
        QCOMPARE(child<QLabel>("lblUpdate")->isVisibleTo(m_main.get()), updateShown);
        QCOMPARE(child<QLabel>("picUpdate")->isVisibleTo(m_main.get()), updateShown);
    }

    void optionPanels_data()
    {
        QTest::addColumn<QString>("stored"); // options on before the click: a = absender, r = antwort, e = einlieferung
        QTest::addColumn<QString>("sender");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("after");
        QTest::addColumn<int>("price");
        QTest::addColumn<bool>("warned");
        QTest::newRow("replies switch the sender identity off") << "a"
                                                                << "Firma"
                                                                << "antwort"
                                                                << "r" << 11 << false;
        QTest::newRow("sender identity switches replies off") << "r"
                                                              << "Firma"
                                                              << "absender"
                                                              << "a" << 14 << false;
        QTest::newRow("sender identity without a sender warns and stays on") << ""
                                                                             << ""
                                                                             << "absender"
                                                                             << "a" << 14 << true;
        QTest::newRow("sender identity off again") << "a"
                                                   << ""
                                                   << "absender"
                                                   << "" << 10 << false;
        QTest::newRow("confirmation is free") << "a"
                                              << "Firma"
                                              << "einlieferung"
                                              << "ae" << 14 << false;
    }

    void optionPanels()
    {
        QFETCH(QString, stored);
        QFETCH(QString, sender);
        QFETCH(QString, key);
        QFETCH(QString, after);
        QFETCH(int, price);
        QFETCH(bool, warned);
        Options().setIsAbsenderkennung(stored.contains(u'a'));
        Options().setIsAntwortEnabled(stored.contains(u'r'));
        Options().setIsControlEmail(stored.contains(u'e'));
        Options().setAbsenderkennung(sender);
        startService();
        loadMain();
        MessageBoxScript boxes;
        if (warned)
            boxes.answer(MessageBox::Answer::Ok);
        QTest::mouseClick(m_main->findChild<QToolButton*>(key), Qt::LeftButton);
        QCOMPARE(boxes.count(), warned ? 1 : 0);
        if (warned)
            QCOMPARE(boxes.last().text, QStringLiteral("Sie haben keine Absenderkennung eingegeben."));
        QCOMPARE(Options().isAbsenderkennung(), after.contains(u'a'));
        QCOMPARE(Options().isAntwortEnabled(), after.contains(u'r'));
        QCOMPARE(Options().isControlEmail(), after.contains(u'e'));
        QCOMPARE(m_main->findChild<QToolButton*>(QStringLiteral("absender"))->isChecked(), after.contains(u'a'));
        QCOMPARE(m_main->findChild<QToolButton*>(QStringLiteral("antwort"))->isChecked(), after.contains(u'r'));
        QCOMPARE(child<QLineEdit>("txtKostenProSMS")->text(), QString::number(price));
        QCOMPARE(TestStore::raw(QStringLiteral("isAbsenderkennung")),
                 QString::fromLatin1(after.contains(u'a') ? "true" : "false"));
    }

    // A screen reader toggles a panel through its accessibility interface; the rule runs as for a
    // click.
    void optionPanelsAnswerAssistiveTechnology()
    {
        startService();
        loadMain();
        QToolButton* antwort = m_main->findChild<QToolButton*>(QStringLiteral("antwort"));
        QAccessibleInterface* iface = QAccessible::queryAccessibleInterface(antwort);
        QVERIFY(iface && iface->actionInterface());
        QCOMPARE(iface->text(QAccessible::Name), QStringLiteral("Antwort"));
        QVERIFY(iface->actionInterface()->actionNames().contains(QAccessibleActionInterface::toggleAction()));
        iface->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
        QTRY_VERIFY(Options().isAntwortEnabled());
        QCOMPARE(child<QLineEdit>("txtKostenProSMS")->text(), QStringLiteral("11"));
        QVERIFY(antwort->isChecked());
    }

    void typedQuotesAreDroppedPastedOnesCount()
    {
        startService();
        loadMain();
        auto* txtSMS = child<SmsTextEdit>("txtSMS");
        txtSMS->setFocus();
        QTest::keyClicks(txtSMS, QStringLiteral("a'\"`´\\b"));
        QCOMPARE(txtSMS->text(), QStringLiteral("ab"));
        QApplication::clipboard()->setText(QStringLiteral("\""));
        txtSMS->paste();
        QCOMPARE(txtSMS->text(), QStringLiteral("ab\""));
        QCOMPARE(child<QLineEdit>("txtZeichen")->text(), QStringLiteral("4"));
    }

    void hoverHintsComeOnceAndGo()
    {
        startService();
        loadMain();
        auto* lblCredits = child<QLabel>("lblCredits");
        QMouseEvent move(QEvent::MouseMove, QPointF(2, 2), lblCredits->mapToGlobal(QPointF(2, 2)), Qt::NoButton,
                         Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(lblCredits, &move);
        QVERIFY(m_main->tooltipShown);
        const QWidget* balloon = m_main->findChild<CTooltip*>()->tipWindow();
        QVERIFY(balloon);
        QCOMPARE(balloon->findChildren<QLabel*>().at(1)->text(), QStringLiteral("Guthaben"));
        // A second move over a control keeps the balloon it has.
        QApplication::sendEvent(child<QCheckBox>("chkPrivat"), &move);
        QCOMPARE(m_main->findChild<CTooltip*>()->tipWindow(), balloon);
        QMouseEvent overWindow(QEvent::MouseMove, QPointF(1, 1), m_main->mapToGlobal(QPointF(1, 1)), Qt::NoButton,
                               Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(m_main.get(), &overWindow);
        QVERIFY(!m_main->tooltipShown);
        QVERIFY(!m_main->findChild<CTooltip*>()->tipWindow());
    }

    void placeholderButtonsReplaceTheSelection()
    {
        startService();
        loadMain();
        QVERIFY(!child<QWidget>("boxVariablesToolbar")->isVisibleTo(m_main.get()));
        auto* txtSMS = child<SmsTextEdit>("txtSMS");
        txtSMS->setText(QStringLiteral("Hallo Welt"));
        QTextCursor cursor = txtSMS->textCursor();
        cursor.setPosition(6);
        cursor.setPosition(10, QTextCursor::KeepAnchor);
        txtSMS->setTextCursor(cursor);
        child<ToolbarButton>("tbReplaceName")->click();
        QCOMPARE(txtSMS->text(), QStringLiteral("Hallo %name% "));
        child<ToolbarButton>("tbReplaceFrei2")->click();
        QCOMPARE(txtSMS->text(), QStringLiteral("Hallo %name% %frei2% "));
    }

    void updateLinkStartsTheUpdaterFromTheProgramFolder()
    {
        const QString marker = m_folder.filePath(QStringLiteral("updater-ran"));
        QFile script(m_folder.filePath(QStringLiteral("updater.sh")));
        QVERIFY(script.open(QIODevice::WriteOnly));
        script.write("#!/bin/sh\ntouch \"" + marker.toUtf8() + "\"\n");
        script.close();
        script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        startService({ QStringLiteral("--version-answer"), QStringLiteral("9.0.0") });
        m_service->pointProgramAt(m_folder.path(), "[Files]\r\nUpdater=updater.sh\r\n");
        loadMain();
        auto* lblUpdate = child<QLabel>("lblUpdate");
        QVERIFY(lblUpdate->isVisibleTo(m_main.get()));
        emit lblUpdate->linkActivated(QStringLiteral("update"));
        QTRY_VERIFY(QFile::exists(marker));
        QVERIFY(m_main->isVisible());
    }

    void emptyVersionAnswerAsksAgainAfterRetry()
    {
        startService({ QStringLiteral("--fault"), QStringLiteral("/update/version=empty") });
        int shown = 0;
        std::function<void(QWidget*)> retry = [&](QWidget* window) {
            ++shown;
            // The second time the service answers again.
            if (shown == 2)
                QVERIFY(m_service->setFault(QStringLiteral("/update/version"), QStringLiteral("none")));
            else
                onNextModal(retry);
            window->findChild<QPushButton*>(QStringLiteral("cmdRetry"))->click();
        };
        onNextModal(retry);
        loadMain();
        QCOMPARE(shown, 2);
        QCOMPARE(m_service->requests(QStringLiteral("/update/version")).size(), 3);
        QVERIFY(m_main->isVisible());
    }
};

QTEST_MAIN(TestSendRoad)
#include "tst_sendroad.moc"
