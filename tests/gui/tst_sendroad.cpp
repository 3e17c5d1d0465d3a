// SPDX-License-Identifier: GPL-3.0-or-later
#include "MainWindowHarness.h"
#include "MessageBoxScript.h"
#include "ModalWindows.h"
#include "TestStore.h"
#include "sending/StopList.h"
#include "sending/frmSentSms.h"
#include "settings/cOptionen.h"
#include "toolkit/CTooltip.h"
#include "toolkit/FileChooser.h"
#include "toolkit/SmsTextEdit.h"
#include "toolkit/ToolbarButton.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QInputMethodEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace {
const QString SendPath = u"/smsv3/smsv3.php"_s;
} // namespace

class TestSendRoad : public QObject
{
    Q_OBJECT

    MainWindowHarness m_harness;

    frmMain* main() const { return m_harness.main(); }
    template<typename T> T* child(const char* name) const { return m_harness.child<T>(name); }
    bool shown(const char* name) const { return child<QWidget>(name)->isVisibleTo(main()); }

    // A service of the test's own, started with these arguments, and the main window on it.
    void open(const QStringList& arguments = {})
    {
        QVERIFY(m_harness.startService(arguments));
        m_harness.loadMain();
    }

    QString lastBody() const
    {
        const QStringList sent = m_harness.bodies(SendPath);
        return sent.isEmpty() ? QString() : sent.last();
    }

private slots:
    void init() { m_harness.resetStore(); }

    void cleanup() { m_harness.reset(); }

    // A send as the gateway answers it. Without a stored password the window asks for one, which
    // it keeps for nothing; cancelled, the send goes with an empty one.
    void gatewayAnswer_data()
    {
        QTest::addColumn<QString>("stored"); // null: none, asked for
        QTest::addColumn<bool>("answered"); // the question, with "demo"
        QTest::addColumn<QString>("password"); // as it goes
        const QString refused = u"falsch"_s;
        QTest::newRow("accepted") << u"demo"_s << false << u"demo"_s;
        QTest::newRow("refused") << refused << false << refused;
        QTest::newRow("asked for") << QString() << true << u"demo"_s;
        QTest::newRow("asked for, cancelled") << QString() << false << QString();
    }

    void gatewayAnswer()
    {
        QFETCH(QString, stored);
        QFETCH(bool, answered);
        QFETCH(QString, password);
        const bool accepted = password == u"demo";
        if (stored.isNull())
            m_harness.resetStore(false);
        else
            TestStore::put(u"Password"_s, stored);
        reloadOptionsForTesting();
        open();
        MessageBoxScript boxes;
        boxes.answer(MessageBox::Answer::Ok);
        child<QComboBox>("cmbName")->setEditText(u"Max"_s);
        m_harness.fill(u"G171"_s, u"1234567"_s, u"100% & 1+1"_s);
        QString asked; // the question's title and the address it showed
        if (stored.isNull()) {
            onNextModal([&](QWidget* dialog) {
                asked = dialog->windowTitle() + u' ' + in<QLineEdit>(dialog, "txtEmail")->text();
                in<QLineEdit>(dialog, "txtPassword")->setText(u"demo"_s);
                in<QPushButton>(dialog, answered ? "cmdOK" : "cmdCancel")->click();
            });
        }
        QTest::mouseClick(child<ToolbarButton>("tbSend"), Qt::LeftButton);
        QTRY_COMPARE(boxes.count(), 1);
        QCOMPARE(asked, stored.isNull() ? u"Kennwort eingeben demo@quellbote.test"_s : QString());
        QVERIFY2(boxes.last().text.contains(accepted ? u"wurde erfolgreich an das Gateway übermittelt."_s
                                                     : u"Die Anmeldung ist fehlgeschlagen.\r\n"_s),
                 qPrintable(boxes.last().text));
        // What the window puts in; the body as a whole is the request's own test.
        QVERIFY2(lastBody().startsWith(u"email=demo@quellbote.test&kennwort="_s + password
                                       + u"&firma=%20&empfaenger=00491711234567&empfaengername=Max&"_s),
                 qPrintable(lastBody()));
        QCOMPARE(main()->sessionPassword, QString());
        QCOMPARE(TestStore::has(u"Password"_s), !stored.isNull());
        // A sent message leaves the fields and is offered again; a refused one stays.
        QCOMPARE(child<SmsTextEdit>("txtSMS")->text(), accepted ? QString() : u"100% & 1+1"_s);
        QCOMPARE(child<QLineEdit>("txtNummer")->text(), accepted ? QString() : u"1234567"_s);
        QCOMPARE(shown("boxReuseLastSMS"), accepted);
        // The recipient is remembered whatever the gateway answered.
        QCOMPARE(TestStore::raw(u"1"_s, u"MRU"_s), u"Max;G171-1234567"_s);
        QCOMPARE(child<QComboBox>("cmbName")->itemText(0), u"Max"_s);
        if (!accepted)
            return;
        QCOMPARE(child<QComboBox>("cmbName")->currentText(), QString());
        QCOMPARE(child<QLabel>("lblReuseText")->toolTip(), u"100% & 1+1"_s);
        emit child<QLabel>("lblReuseText")->linkActivated(QString());
        QCOMPARE(child<SmsTextEdit>("txtSMS")->text(), u"100% & 1+1"_s);
    }

    // "Gesendete SMS": what went out is found by a part of its text, shown whole with the
    // gateway's answer, exported as Excel opens it, and taken back into the fields, unsent.
    void sentSmsAreFoundAndTakenBack()
    {
        open();
        const QString text = u"Erinnerung an Frau Berger %1"_s.arg(QDateTime::currentMSecsSinceEpoch());
        MessageBoxScript boxes;
        boxes.answer(MessageBox::Answer::Ok);
        child<QComboBox>("cmbName")->setEditText(u"Berger"_s);
        m_harness.fill(u"G171"_s, u"1234567"_s, text);
        child<ToolbarButton>("tbSend")->click();
        QTRY_COMPARE(boxes.count(), 1);
        QTest::keyClick(main(), Qt::Key_G, Qt::ControlModifier);
        frmSentSms* window = nullptr;
        for (QWidget* w : QApplication::topLevelWidgets())
            if (!window)
                window = qobject_cast<frmSentSms*>(w);
        QVERIFY(window && window->isVisible());
        window->txtSuche->setText(text.right(20));
        window->search();
        QCOMPARE(window->lvGesendet->model()->rowCount(), 1);
        QCOMPARE(window->lvGesendet->model()->index(0, 3).data().toString(), u"00491711234567"_s);
        QCOMPARE(window->lvGesendet->model()->index(0, 7).data().toString(), u"versendet"_s);
        QVERIFY(window->txtDetails->toPlainText().contains(u"wurde erfolgreich an das Gateway übermittelt."_s));
        const QString exported = m_harness.folder() + u"/gesendet.csv"_s;
        FileChooser::setHandler([&exported](const FileChooser::Dialog&) { return exported; });
        window->cmdExport->click();
        FileChooser::setHandler({});
        QFile file(exported);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        QVERIFY(bytes.startsWith("\xEF\xBB\xBFZeit;Weg;Name;Nummer;Text;"));
        QVERIFY(QString::fromUtf8(bytes).contains(text));
        window->cmdResend->click();
        QCOMPARE(child<SmsTextEdit>("txtSMS")->text(), text);
        QCOMPARE(child<QComboBox>("cmbName")->currentText(), u"Berger"_s);
        QCOMPARE(main()->selectedPrefixKey(), u"G171"_s);
        QCOMPARE(child<QLineEdit>("txtNummer")->text(), u"1234567"_s);
        QCOMPARE(m_harness.bodies(u"/smsv3/smsv3.php"_s).size(), 1);
        window->close();
    }

    // A remembered recipient picked from the list as a user picks one: prefix and number come back.
    void rememberedRecipientIsPicked_data()
    {
        QTest::addColumn<QString>("how");
        QTest::newRow("arrow keys in the field") << u"keys"_s;
        QTest::newRow("list opened with F4, Enter") << u"list, Enter"_s;
        QTest::newRow("list opened and clicked with the mouse") << u"mouse"_s;
    }

    void rememberedRecipientIsPicked()
    {
        QFETCH(QString, how);
        TestStore::put(u"1"_s, u"Max;G171-1234567"_s, u"MRU"_s);
        TestStore::put(u"2"_s, u"Anna;A664-7654321"_s, u"MRU"_s);
        open();
        auto* cmbName = child<QComboBox>("cmbName");
        QCOMPARE(cmbName->count(), 2);
        main()->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(main()));
        cmbName->setFocus();
        QVERIFY(QApplication::focusWidget());
        if (how == u"keys") {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
        } else if (how == u"list, Enter") {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_F4);
            QTRY_VERIFY(cmbName->view()->isVisible());
            QTest::keyClick(cmbName->view(), Qt::Key_Down);
            QTest::keyClick(cmbName->view(), Qt::Key_Down);
            QTest::keyClick(cmbName->view(), Qt::Key_Return);
        } else {
            QStyleOptionComboBox option;
            option.initFrom(cmbName);
            option.editable = true;
            const QRect arrow
                = cmbName->style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxArrow, cmbName);
            QTest::mouseClick(cmbName, Qt::LeftButton, {}, arrow.center());
            QTRY_VERIFY(cmbName->view()->isVisible());
            QAbstractItemView* list = cmbName->view();
            const QPoint item = list->visualRect(list->model()->index(1, 0)).center();
            QTest::mouseMove(list->viewport(), item);
            QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, item);
        }
        QTRY_VERIFY(!cmbName->view()->isVisible());
        QCOMPARE(cmbName->currentText(), u"Anna"_s);
        QCOMPARE(main()->selectedPrefixKey(), u"A664"_s);
        QCOMPARE(child<QLineEdit>("txtNummer")->text(), u"7654321"_s);
    }

    // The second part goes once the first came back; the window takes clicks meanwhile.
    void longTextGoesInTwoPartsWhileTheWindowWorksOn()
    {
        open({ u"--fault"_s, SendPath + u"=slow:1500"_s });
        MessageBoxScript boxes;
        boxes.answer(MessageBox::Answer::Ok);
        boxes.answer(MessageBox::Answer::Ok);
        m_harness.fill(u"G171"_s, u"1234567"_s, QString(160, u'a') + u'b');
        QCOMPARE(child<QLineEdit>("txtAnzahlSMS")->text(), u"2"_s);
        bool clickedDuringWait = false;
        QTimer::singleShot(300, [&] {
            QTest::mouseClick(child<QCheckBox>("chkPublic"), Qt::LeftButton);
            clickedDuringWait = boxes.count() == 0;
        });
        main()->tbSend_Click();
        QVERIFY(clickedDuringWait);
        QVERIFY(child<QCheckBox>("chkPublic")->isChecked());
        QCOMPARE(child<QCheckBox>("chkPrivat")->checkState(), Qt::PartiallyChecked);
        QTRY_COMPARE_WITH_TIMEOUT(boxes.count(), 2, 10000);
        const QStringList sent = m_harness.bodies(SendPath);
        QCOMPARE(sent.size(), 2);
        QVERIFY(sent.at(0).contains(u"&text="_s + QString(160, u'a') + u'&'));
        QVERIFY(sent.at(1).contains(u"&text=b&"_s));
        // The second accepted part finds the text box already empty.
        QCOMPARE(main()->lastSmsText, QString());
    }

    // Refused before anything leaves: nothing goes to the gateway or the server folder, and
    // nothing is remembered. The stop list comes after the window's own checks.
    void refusedBeforeSending_data()
    {
        QTest::addColumn<bool>("filled"); // with 9 Credits, one short
        QTest::addColumn<QString>("stopped"); // an entry of the user's stop list
        QTest::addColumn<QByteArray>("shared"); // [Files] of oem.inf, naming a shared stop list
        QTest::addColumn<bool>("handOff"); // to the server folder
        QTest::addColumn<QString>("text");
        const QString stoppedText = u"Die Nummer 00491711234567 steht auf der Sperrliste und erhält keine SMS."_s;
        QTest::newRow("empty fields") << false << QString() << QByteArray() << false
                                      << "Bitte korrigieren Sie die rot markierten Felder.\r\n\r\n"
                                         "  - Bitte wählen Sie eine Vorwahl aus.\r\n"
                                         "  - Bitte geben Sie eine Rufnummer an.\r\n"
                                         "  - Bitte geben Sie eine Nachricht ein.\r\n";
        QTest::newRow("balance too low") << true << QString() << QByteArray() << false
                                         << "Sie verfügen nicht mehr über ein ausreichendes Guthaben um diese "
                                            "Nachricht zu verschicken.";
        QTest::newRow("on the user's stop list")
            << true << u"+49 171 1234567"_s << QByteArray() << false << stoppedText;
        QTest::newRow("on the shared stop list, hand-off")
            << true << QString() << QByteArray("Sperrliste=sperr.txt\r\n") << true << stoppedText;
        QTest::newRow("shared stop list missing")
            << true << QString() << QByteArray("Sperrliste=fehlt.txt\r\n") << false
            << u"Die Sperrliste %1 (in oem.inf unter [Files] Sperrliste genannt) gibt es nicht.\r\n\r\n"
               "Es wird keine SMS versendet, solange die Sperrliste nicht gelesen werden kann."_s;
    }

    void refusedBeforeSending()
    {
        QFETCH(bool, filled);
        QFETCH(QString, stopped);
        QFETCH(QByteArray, shared);
        QFETCH(bool, handOff);
        QFETCH(QString, text);
        open();
        QTemporaryDir server;
        if (handOff) {
            Options().setXmlIsServerUsed(true);
            Options().setXmlSingleUser(u"True"_s);
            Options().setXmlUser(u"U1"_s);
            Options().setXmlPfad(server.path());
        }
        if (!stopped.isEmpty())
            QVERIFY(StopList::saveUserEntries({ u"0160 5555555"_s, stopped }));
        if (!shared.isEmpty()) {
            QFile oem(m_harness.folder() + u"/oem.inf"_s);
            QVERIFY(oem.open(QIODevice::Append));
            oem.write("[Files]\r\n" + shared);
            QFile list(m_harness.folder() + u"/sperr.txt"_s);
            QVERIFY(list.open(QIODevice::WriteOnly));
            list.write("# Widerspruch\r\n0171/1234567\r\n");
        }
        if (filled) {
            main()->credits = stopped.isEmpty() && shared.isEmpty() ? 9 : -1;
            m_harness.fill(u"G171"_s, u"1234567"_s, u"Hallo"_s);
        }
        MessageBoxScript boxes;
        boxes.answer(MessageBox::Answer::Ok);
        main()->tbSend_Click();
        QCOMPARE(boxes.count(), 1);
        QCOMPARE(boxes.last().title, u"Quellbote"_s);
        if (text.contains(u"%1"))
            text = text.arg(QDir::toNativeSeparators(m_harness.folder() + u"/fehlt.txt"_s));
        QCOMPARE(boxes.last().text, text);
        QVERIFY(m_harness.bodies(SendPath).isEmpty());
        QVERIFY(QDir(server.path()).isEmpty());
        QVERIFY(!TestStore::has(u"1"_s, u"MRU"_s));
        QCOMPARE(child<SmsTextEdit>("txtSMS")->text(), filled ? u"Hallo"_s : QString());
        // Off the list, the same number goes out.
        if (stopped.isEmpty())
            return;
        QVERIFY(StopList::saveUserEntries({ u"0160 5555555"_s }));
        boxes.answer(MessageBox::Answer::Ok);
        main()->tbSend_Click();
        QTRY_COMPARE(boxes.count(), 2);
        QCOMPARE(m_harness.bodies(SendPath).size(), 1);
    }

    void balanceStates_data()
    {
        QTest::addColumn<QString>("email");
        QTest::addColumn<QString>("fault");
        QTest::addColumn<QString>("caption");
        QTest::addColumn<bool>("enabled");
        QTest::addColumn<bool>("buyShown"); // and the caption dark red
        QTest::newRow("500 is low") << u"demo@quellbote.test"_s << u"none"_s << u"500 Credits"_s << true << true;
        QTest::newRow("unknown user") << u"nobody@example.com"_s << u"none"_s << u"nicht angemeldet"_s << false
                                      << false;
        QTest::newRow("no answer") << u"demo@quellbote.test"_s << u"drop"_s << u"kein Internet"_s << true << false;
    }

    void balanceStates()
    {
        QFETCH(QString, email);
        QFETCH(QString, fault);
        QFETCH(QString, caption);
        QFETCH(bool, enabled);
        QFETCH(bool, buyShown);
        TestStore::put(u"eMail"_s, email);
        reloadOptionsForTesting();
        open();
        QVERIFY(m_harness.service()->setFault(u"/sms/count.php"_s, fault));
        main()->refreshCredits();
        auto* lblCredits = child<QLabel>("lblCredits");
        QCOMPARE(lblCredits->text(), caption);
        QCOMPARE(lblCredits->isEnabled(), enabled);
        QCOMPARE(shown("lblBuyCredits"), buyShown);
        QCOMPARE(main()->credits, buyShown ? 500 : -1);
        QCOMPARE(lblCredits->palette().color(QPalette::WindowText) == QColor(192, 0, 0), buyShown);
        // Disabled, the caption is drawn greyed, as any disabled label.
        QCOMPARE(lblCredits->palette().color(QPalette::Disabled, QPalette::WindowText),
                 QApplication::palette().color(QPalette::Disabled, QPalette::WindowText));
    }

    void balanceTimerAsksEveryEleventhTick()
    {
        open();
        const auto asked = [this] {
            return m_harness.service()->requests(u"/sms/count.php"_s).size();
        };
        const qsizetype before = asked();
        for (int i = 0; i < 10; ++i)
            main()->tmCredits_Timer();
        QCOMPARE(asked(), before);
        main()->tmCredits_Timer();
        QCOMPARE(asked(), before + 1);
        QCOMPARE(main()->creditsTicks, qint16(0));
    }

    void versionCheck_data()
    {
        // The comparison is the answer's own test, a failed check the fault test's.
        QTest::addColumn<QString>("answer"); // null: empty answers until the last "Kein Internet"
        QTest::addColumn<bool>("updateShown");
        QTest::addColumn<int>("noInternet"); // windows shown, each left with "Wiederholen"
        QTest::newRow("newer version") << "2.5.0" << true << 0;
        QTest::newRow("equal version") << "2.4.92" << false << 0;
        QTest::newRow("empty answer asks again") << QString() << false << 2;
    }

    void versionCheck()
    {
        QFETCH(QString, answer);
        QFETCH(bool, updateShown);
        QFETCH(int, noInternet);
        int shownCount = 0;
        std::function<void(QWidget*)> retry = [&](QWidget* window) {
            QCOMPARE(window->windowTitle(), u"Kein Internet"_s);
            if (++shownCount < noInternet)
                onNextModal(retry);
            else if (answer.isNull())
                QVERIFY(m_harness.service()->setFault(u"/update/version"_s, u"none"_s));
            in<QPushButton>(window, "cmdRetry")->click();
        };
        if (noInternet)
            onNextModal(retry);
        open(answer.isNull() ? QStringList { u"--fault"_s, u"/update/version=empty"_s }
                             : QStringList { u"--version-answer"_s, answer });
        QCOMPARE(shownCount, noInternet);
        QCOMPARE(shown("lblUpdate"), updateShown);
        QCOMPARE(shown("picUpdate"), updateShown);
        QVERIFY(main()->isVisible());
    }

    // With the sender identity on and no sender given, each part asks before it goes; No sends
    // nothing of that part, and a send of which nothing went keeps its guard timer.
    void missingSenderIsAskedForEachPart_data()
    {
        QTest::addColumn<bool>("first");
        QTest::addColumn<bool>("second");
        QTest::newRow("No, No") << false << false;
        QTest::newRow("Yes, No") << true << false;
        QTest::newRow("Yes, Yes") << true << true;
    }

    void missingSenderIsAskedForEachPart()
    {
        QFETCH(bool, first);
        QFETCH(bool, second);
        Options().setIsAbsenderkennung(true);
        Options().setAbsenderkennung(QString());
        open();
        MessageBoxScript boxes;
        for (const bool yes : { first, second })
            boxes.answer(yes ? MessageBox::Answer::Yes : MessageBox::Answer::No);
        const int sent = int(first) + int(second);
        for (int i = 0; i < sent; ++i)
            boxes.answer(MessageBox::Answer::Ok);
        m_harness.fill(u"G171"_s, u"1234567"_s, QString(160, u'a') + u'b');
        main()->tbSend_Click();
        QTRY_COMPARE(boxes.count(), 2 + sent);
        for (int i = 0; i < 2; ++i) {
            QCOMPARE(boxes.shown().at(i).title, u"Kein Absendername vorhanden"_s);
            QCOMPARE(boxes.shown().at(i).text,
                     u"Sie haben keinen Absender eingegeben, soll die Nachricht\r\ndennoch versendet werden?"_s);
        }
        const QStringList bodies = m_harness.bodies(SendPath);
        QCOMPARE(bodies.size(), sent);
        if (first)
            QVERIFY(bodies.at(0).contains(u"&text="_s + QString(160, u'a') + u'&'));
        QCOMPARE(main()->findChild<QTimer*>(u"tm"_s)->isActive(), sent == 0);
    }

    // With the sender identity on, replies switch it off, and so does its own panel.
    void senderIdentityGoesOff_data()
    {
        QTest::addColumn<QString>("sender");
        QTest::addColumn<QString>("panel");
        QTest::newRow("replies") << u"Firma"_s << u"antwort"_s;
        QTest::newRow("its own panel, no sender given") << u""_s << u"absender"_s;
    }

    void senderIdentityGoesOff()
    {
        QFETCH(QString, sender);
        QFETCH(QString, panel);
        Options().setIsAbsenderkennung(true);
        Options().setAbsenderkennung(sender);
        open();
        QTest::mouseClick(main()->findChild<QToolButton*>(panel), Qt::LeftButton);
        const bool replies = panel == u"antwort";
        QVERIFY(!Options().isAbsenderkennung());
        QCOMPARE(Options().isAntwortEnabled(), replies);
        QVERIFY(!child<QToolButton>("absender")->isChecked());
        QCOMPARE(child<QToolButton>("antwort")->isChecked(), replies);
        QCOMPARE(TestStore::raw(u"isAbsenderkennung"_s), u"false"_s);
    }

    void textBox()
    {
        open();
        auto* txtSMS = child<SmsTextEdit>("txtSMS");
        // Typed quotes are dropped, pasted ones count.
        txtSMS->setFocus();
        QTest::keyClicks(txtSMS, u"a'\"`´\\b"_s);
        QCOMPARE(txtSMS->text(), u"ab"_s);
        // Composed by the input method (a dead key, then a blank), they are dropped too.
        for (const QString& composed : { u"´"_s, u"`"_s, u"é"_s }) {
            QInputMethodEvent event;
            event.setCommitString(composed);
            QApplication::sendEvent(txtSMS, &event);
        }
        QCOMPARE(txtSMS->text(), u"abé"_s);
        QApplication::clipboard()->setText(u"\""_s);
        txtSMS->paste();
        QCOMPARE(txtSMS->text(), u"abé\""_s);
        QCOMPARE(child<QLineEdit>("txtZeichen")->text(), u"5"_s);
        // Text dropped anywhere on the box replaces its selection.
        txtSMS->selectAll();
        QMimeData dragged;
        dragged.setText(u"Über'"_s);
        const QPoint at(txtSMS->viewport()->width() - 2, 2);
        QDragEnterEvent enter(at, Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(txtSMS->viewport(), &enter);
        QDropEvent drop(at, Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(txtSMS->viewport(), &drop);
        QCOMPARE(txtSMS->text(), u"Über'"_s);
        // The placeholder buttons, hidden in single mode, replace the selection.
        QVERIFY(!shown("boxVariablesToolbar"));
        txtSMS->setText(u"Hallo Welt"_s);
        QTextCursor cursor = txtSMS->textCursor();
        cursor.setPosition(6);
        cursor.setPosition(10, QTextCursor::KeepAnchor);
        txtSMS->setTextCursor(cursor);
        child<ToolbarButton>("tbReplaceName")->click();
        QCOMPARE(txtSMS->text(), u"Hallo %name% "_s);
        child<ToolbarButton>("tbReplaceFrei2")->click();
        QCOMPARE(txtSMS->text(), u"Hallo %name% %frei2% "_s);
        // What can't go out is named by the counters, counted as it goes, and replaced on request.
        QApplication::clipboard()->setText(u"Grüße aus Łódź 😀"_s);
        txtSMS->selectAll();
        txtSMS->paste();
        QVERIFY(shown("unsendableChars"));
        QVERIFY(child<QLabel>("lblUnsendable")->text().endsWith(u"Ł, ź, 😀"_s));
        QCOMPARE(child<QLineEdit>("txtZeichen")->text(), u"16"_s);
        child<ToolbarButton>("tbTransliterate")->click();
        QCOMPARE(txtSMS->text(), u"Grüße aus Lódz "_s);
        QVERIFY(!shown("unsendableChars"));
    }

    void hoverHintsComeOnceAndGo()
    {
        open();
        auto* lblCredits = child<QLabel>("lblCredits");
        const auto move = [](QWidget* target, QPointF at) {
            QMouseEvent event(QEvent::MouseMove, at, target->mapToGlobal(at), Qt::NoButton, Qt::NoButton,
                              Qt::NoModifier);
            QApplication::sendEvent(target, &event);
        };
        move(lblCredits, QPointF(2, 2));
        QVERIFY(main()->tooltipShown);
        const QWidget* balloon = main()->findChild<CTooltip*>()->tipWindow();
        QVERIFY(balloon);
        QCOMPARE(balloon->findChildren<QLabel*>().at(1)->text(), u"Guthaben"_s);
        // A second move over a control keeps the balloon it has.
        move(child<QCheckBox>("chkPrivat"), QPointF(2, 2));
        QCOMPARE(main()->findChild<CTooltip*>()->tipWindow(), balloon);
        move(main(), QPointF(1, 1));
        QVERIFY(!main()->tooltipShown);
        QVERIFY(!main()->findChild<CTooltip*>()->tipWindow());
    }

    void updateLinkStartsTheUpdaterFromTheProgramFolder()
    {
        const QString marker = m_harness.folder() + u"/updater-ran"_s;
        QFile script(m_harness.folder() + u"/updater.sh"_s);
        QVERIFY(script.open(QIODevice::WriteOnly));
        script.write("#!/bin/sh\ntouch \"" + marker.toUtf8() + "\"\n");
        script.close();
        script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        QVERIFY(m_harness.startService({ u"--version-answer"_s, u"9.0.0"_s }));
        m_harness.service()->pointProgramAt(m_harness.folder(), "[Files]\r\nUpdater=updater.sh\r\n");
        m_harness.loadMain();
        QVERIFY(shown("lblUpdate"));
        emit child<QLabel>("lblUpdate")->linkActivated(u"update"_s);
        QTRY_VERIFY(QFile::exists(marker));
        QVERIFY(main()->isVisible());
    }
};

QTEST_MAIN(TestSendRoad)
#include "tst_sendroad.moc"
