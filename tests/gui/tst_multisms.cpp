// SPDX-License-Identifier: GPL-3.0-or-later
#include "MainWindowHarness.h"
#include "MessageBoxScript.h"
#include "ModalWindows.h"
#include "bulk/frmMultiSMS.h"
#include "bulk/frmMultiSMSLog.h"
#include "settings/cOptionen.h"
#include "settings/frmAddressBookPicker.h"
#include "toolkit/FileChooser.h"
#include "toolkit/SmsTextEdit.h"
#include "toolkit/ToolbarButton.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QSet>
#include <QTableView>
#include <QTest>
#include <QToolButton>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

class TestMultiSMS : public QObject
{
    Q_OBJECT

    MainWindowHarness m_harness;
    frmMultiSMS* m_window = nullptr;

    void press(const char* key) { in<QAction>(m_window, key)->trigger(); }

    void type(const QString& name, const QString& number, const QString& frei1 = {}, const QString& frei2 = {})
    {
        in<QLineEdit>(m_window, "txtName")->setText(name);
        in<QLineEdit>(m_window, "txtNummer")->setText(number);
        in<QLineEdit>(m_window, "txtFrei1")->setText(frei1);
        in<QLineEdit>(m_window, "txtFrei2")->setText(frei2);
    }

    void select(int row) { in<QTableView>(m_window, "lvData")->selectRow(row); }

    QStringList names() const
    {
        QStringList list;
        for (const RecipientRow& row : m_window->table().rows())
            list.append(row.Name);
        return list;
    }

private slots:
    void init()
    {
        m_harness.resetStore();
        QVERIFY(m_harness.startService());
        m_harness.loadMain();
        m_harness.child<ToolbarButton>("tbMultiSMS")->click();
        m_window = frmMultiSMS::loaded();
        QVERIFY(m_window);
    }

    void cleanup()
    {
        FileChooser::setHandler({});
        m_harness.reset();
        QVERIFY(!frmMultiSMS::loaded());
    }

    // Lists from tables open in the editor: columns found from the header, or chosen by the user
    // and remembered for that header; a file that is no list leaves the table as it was; rows
    // that can't be sent to are named.
    void listsFromTables_data()
    {
        QTest::addColumn<QByteArray>("csv");
        QTest::addColumn<int>("choose"); // the number column chosen in the dialog; -1: no dialog; -2: cancelled
        QTest::addColumn<QStringList>("rows"); // name and number
        QTest::addColumn<QString>("box"); // the start of the box shown, if one is
        QTest::addColumn<QStringList>("leftOut"); // rows of the file the report names as not taken
        QTest::newRow("Google Contacts") << QByteArray(
            "Name,Given Name,Family Name,Phone 1 - Type,Phone 1 - Value,Phone 2 - Type,Phone 2 - Value\r\n"
            "Anna Berg,Anna,Berg,Work,030 1234567,Mobile,+49 171 1234567\r\n")
                                         << -1 << QStringList { u"Anna Berg 00491711234567"_s } << QString()
                                         << QStringList {};
        QTest::newRow("columns chosen") << QByteArray(
            "Kunde;Rufnummer A;Rufnummer B\r\nAnna;0301234567;+49 171 1234567\r\n")
                                        << 3 << QStringList { u"Anna 00491711234567"_s } << QString() << QStringList {};
        QTest::newRow("choice cancelled")
            << QByteArray("Kunde;Rufnummer A;Rufnummer B\r\nAnna;0301234567;+49 171 1234567\r\n") << -2
            << QStringList { u"Alt 0049170"_s } << QString() << QStringList {};
        QTest::newRow("no list") << QByteArray("Name;Nummer\r\n\"Anna;0171 1234567\r\n") << -1
                                 << QStringList { u"Alt 0049170"_s }
                                 << u"Die Datei kann nicht als Liste gelesen werden: "_s << QStringList {};
        QTest::newRow("a number Excel broke")
            << QByteArray("Name;Mobil\r\nAnna;+49 171 1234567\r\nBen;4,91711E+11\r\n") << -1
            << QStringList { u"Anna 00491711234567"_s } << QString() << QStringList { u"3:4,91711E+11"_s };
    }

    void listsFromTables()
    {
        QFETCH(QByteArray, csv);
        QFETCH(int, choose);
        QFETCH(QStringList, rows);
        QFETCH(QString, box);
        QFETCH(QStringList, leftOut);
        m_window->table().addRow(u"Alt"_s, u"0049170"_s, {}, {});
        const QString path = m_harness.folder() + u"/liste.csv"_s;
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(csv);
        file.close();
        FileChooser::setHandler([&path](const FileChooser::Dialog&) { return path; });
        MessageBoxScript boxes;
        if (!box.isEmpty())
            boxes.answer(MessageBox::Answer::Ok);
        bool dialogShown = false;
        if (choose != -1) {
            onNextModal([&dialogShown, choose](QWidget* dialog) {
                dialogShown = dialog->objectName() == u"frmCsvColumns"_s;
                if (choose < 0) {
                    dialog->close();
                    return;
                }
                auto* number = dialog->findChild<QComboBox*>(u"cmbNummer"_s);
                number->setCurrentIndex(number->findData(choose - 1));
                dialog->findChild<QPushButton*>(u"cmdOk"_s)->click();
            });
        }
        QStringList reported;
        if (!leftOut.isEmpty()) {
            onNextModal([&reported](QWidget* report) {
                auto* list = report->findChild<QTreeWidget*>(u"lvNichtUebernommen"_s);
                for (int i = 0; list && i < list->topLevelItemCount(); ++i)
                    reported.append(list->topLevelItem(i)->text(0) + u':' + list->topLevelItem(i)->text(2));
                report->close();
            });
        }
        m_window->findChild<QAction*>(u"open"_s)->trigger();
        QCOMPARE(reported, leftOut);
        QCOMPARE(dialogShown, choose != -1);
        QStringList loaded;
        for (const RecipientRow& row : m_window->table().rows())
            loaded.append(row.Name + u' ' + row.Nummer);
        QCOMPARE(loaded, rows);
        QCOMPARE(boxes.count(), box.isEmpty() ? 0 : 1);
        if (!box.isEmpty())
            QVERIFY2(boxes.last().text.startsWith(box), qPrintable(boxes.last().text));
        if (choose > 0) {
            // Remembered for a list with the same header: no question the next time.
            m_window->findChild<QAction*>(u"open"_s)->trigger();
            QCOMPARE(m_window->table().rowCount(), 1);
        }
    }

    // A loaded list is looked over: the rows that would not go out as shown are reported, and the
    // user removes one, keeps one and goes to one; the preview shows the chosen row's SMS.
    void reportAndPreview()
    {
        m_harness.child<SmsTextEdit>("txtSMS")->setText(u"Hallo %name%"_s);
        const QString path = m_harness.folder() + u"/kunden.msms"_s;
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("Anna;01711234567;;\r\nBen;0049171;;\r\nCarla;+49 172 555;;\r\nAnna privat;00491711234567;;\r\n"
                   "Dora;00491725555555;;\r\n");
        file.close();
        FileChooser::setHandler([&path](const FileChooser::Dialog&) { return path; });
        MessageBoxScript boxes;
        boxes.answer(MessageBox::Answer::Ok); // the German prefix made up for "0171..."
        QStringList before;
        QStringList after;
        onNextModal([&before, &after](QWidget* report) {
            QCOMPARE(report->objectName(), u"frmListCheck"_s);
            auto* list = report->findChild<QTreeWidget*>(u"lvBefunde"_s);
            const auto rows = [list] {
                QStringList out;
                for (int i = 0; i < list->topLevelItemCount(); ++i)
                    out.append(list->topLevelItem(i)->text(0) + u' ' + list->topLevelItem(i)->text(1));
                return out;
            };
            before = rows();
            list->setCurrentItem(list->topLevelItem(0)); // Ben: removed
            report->findChild<QPushButton*>(u"cmdEntfernen"_s)->click();
            list->setCurrentItem(list->topLevelItem(0)); // Carla: kept
            report->findChild<QPushButton*>(u"cmdBehalten"_s)->click();
            after = rows();
            QTest::keyClick(list, Qt::Key_Return); // Anna privat: gone to
        });
        press("open");
        QCOMPARE(before, (QStringList { u"2 Ben"_s, u"3 Carla"_s, u"4 Anna privat"_s }));
        QCOMPARE(after, QStringList { u"3 Anna privat"_s });
        QCOMPARE(names(), (QStringList { u"Anna"_s, u"Carla"_s, u"Anna privat"_s, u"Dora"_s }));
        QCOMPARE(in<QLineEdit>(m_window, "txtAnzahl")->text(), u"4"_s);
        QVERIFY(in<QTableView>(m_window, "lvData")->hasFocus() || !QApplication::focusWidget());
        QCOMPARE(in<QPlainTextEdit>(m_window, "txtVorschau")->toPlainText(), u"Hallo Anna privat"_s);
        QCOMPARE(in<QLabel>(m_window, "lblVorschau")->text(), u"an 00491711234567: 17 Zeichen, 1 SMS, 10 Credits"_s);
        // The preview follows the text.
        m_harness.child<SmsTextEdit>("txtSMS")->setText(u"Guten Tag, %name%!"_s);
        QCOMPARE(in<QPlainTextEdit>(m_window, "txtVorschau")->toPlainText(), u"Guten Tag, Anna privat!"_s);
    }

    // Which fields of the main window the mode turns off, empties, hides and shows, and back.
    void modeOnAndOff_data()
    {
        QTest::addColumn<QString>("control");
        QTest::addColumn<bool>("enabledInMode");
        QTest::addColumn<bool>("shownInMode");
        for (const char* off :
             { "cmbName", "cmbVorwahl", "txtNummer", "chkPrivat", "chkPublic", "tbPhonebook", "tbAddressBook" })
            QTest::newRow(off) << QString::fromLatin1(off) << false << true;
        for (const char* hidden : { "txtZeichen", "txtAnzahlSMS" })
            QTest::newRow(hidden) << QString::fromLatin1(hidden) << true << false;
        for (const char* shown : { "boxPlatzhalter", "boxVariablesToolbar", "txtKostenProSMS", "tbSend" })
            QTest::newRow(shown) << QString::fromLatin1(shown) << true << true;
    }

    void modeOnAndOff()
    {
        QFETCH(QString, control);
        QFETCH(bool, enabledInMode);
        QFETCH(bool, shownInMode);
        auto* widget = m_harness.main()->findChild<QWidget*>(control);
        QVERIFY(widget);
        QCOMPARE(widget->isEnabled(), enabledInMode);
        QCOMPARE(widget->isVisible(), shownInMode);
        QCOMPARE(m_harness.child<QComboBox>("cmbName")->currentText(), u"MultiSMS"_s);
        QCOMPARE(m_harness.main()->selectedPrefixKey(), QString());
        QCOMPARE(m_harness.child<QLineEdit>("txtNummer")->text(), QString());
        m_harness.child<ToolbarButton>("tbMultiSMS")->click();
        const bool placeholders = control.startsWith(u"box");
        QCOMPARE(widget->isEnabled(), true);
        QCOMPARE(widget->isVisible(), !placeholders);
        QCOMPARE(m_harness.child<QComboBox>("cmbName")->currentText(), QString());
    }

    // Everything the keys do can be done from the keyboard alone: Tab reaches every key, Enter in
    // a field adds or takes over, Entf in the list deletes, Ctrl+N starts anew.
    void keyboardAlone()
    {
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window));
        auto* txtName = in<QLineEdit>(m_window, "txtName");
        txtName->setFocus();
        QSet<QString> reached;
        for (int i = 0; i < 40; ++i) {
            if (auto* button = qobject_cast<QToolButton*>(QApplication::focusWidget()))
                reached.insert(button->defaultAction()->objectName());
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        for (const char* name : { "new", "open", "openWeb", "save", "add", "delete", "addressbook" })
            QVERIFY2(reached.contains(QString::fromLatin1(name)), name);

        QTest::keyClicks(txtName, u"Anna"_s);
        QTest::keyClicks(in<QLineEdit>(m_window, "txtNummer"), u"00491711"_s);
        QTest::keyClick(in<QLineEdit>(m_window, "txtNummer"), Qt::Key_Return);
        QCOMPARE(names(), QStringList { u"Anna"_s });
        auto* list = in<QTableView>(m_window, "lvData");
        list->setFocus();
        select(0);
        QTest::keyClick(list, Qt::Key_Return); // the row into the fields, as a double click
        QTest::keyClicks(txtName, u"-Maria"_s);
        QTest::keyClick(txtName, Qt::Key_Enter);
        QCOMPARE(names(), QStringList { u"Anna-Maria"_s });
        QTest::keyClick(txtName, Qt::Key_Delete); // in a field it stays a key of the field
        QCOMPARE(names(), QStringList { u"Anna-Maria"_s });
        select(0);
        QTest::keyClick(list, Qt::Key_Delete);
        QVERIFY(names().isEmpty());
        MessageBoxScript boxes;
        boxes.answer(MessageBox::Answer::No);
        QTest::keyClick(list, Qt::Key_N, Qt::ControlModifier);
        QCOMPARE(boxes.count(), 1);
        QVERIFY(in<QAction>(m_window, "new")->toolTip().endsWith(u"(Ctrl+N)"_s));
    }

    // Adding, editing and deleting as such are pressed through in the accessibility test.
    void editingTheTable()
    {
        MessageBoxScript boxes;
        RecipientTable& table = m_window->table();
        type(u"Anna"_s, QString());
        boxes.answer(MessageBox::Answer::Ok);
        press("add");
        QCOMPARE(boxes.last().title, u"MultiSMS - Rufnummer fehlt"_s);
        type(u"Anna"_s, u"00491711"_s, u"Gruß"_s, u"00491799"_s);
        press("add");
        type(u"Bernhard"_s, u"00491722"_s);
        press("add");
        // The free texts are searched for the number too; No keeps what was typed.
        type(u"Carla"_s, u"00491799"_s);
        boxes.answer(MessageBox::Answer::No);
        press("add");
        QCOMPARE(boxes.last().text,
                 u"Ein Eintrag mit dieser Nummer existiert schon.\r\nMöchten Sie diesen trotzdem hinzufügen?"_s);
        QCOMPARE(in<QLineEdit>(m_window, "txtName")->text(), u"Carla"_s);
        QCOMPARE(names(), (QStringList { u"Anna"_s, u"Bernhard"_s }));
        // The list marks a value with characters that can't go out, before any run.
        const QAbstractItemModel* shown = in<QTableView>(m_window, "lvData")->model();
        QVERIFY(shown->data(shown->index(0, 0), Qt::DecorationRole).isNull());
        table.setRowValues(1, u"Bernhard 😀"_s, u"00491722"_s, QString(), QString());
        QVERIFY(!shown->data(shown->index(1, 0), Qt::DecorationRole).value<QIcon>().isNull());
        QVERIFY(shown->data(shown->index(1, 0), Qt::ToolTipRole).toString().endsWith(u"😀"_s));
        table.setRowValues(1, u"Bernhard"_s, u"00491722"_s, QString(), QString());

        // The main window's counters follow the table: "%name%" counts as the longest name.
        m_harness.child<SmsTextEdit>("txtSMS")->setText(u"Hallo %name%"_s);
        QCOMPARE(m_harness.child<QLineEdit>("txtZeichenMultiSMS")->text(), u"14"_s);
        QCOMPARE(m_harness.child<QLineEdit>("txtAnzahlMultiSMS")->text(), u"2"_s);

        // Deleting another row while one is edited gives the edit up.
        select(0);
        emit in<QTableView>(m_window, "lvData")->doubleClicked(table.index(0, 0));
        QVERIFY(in<QAction>(m_window, "ok")->isVisible() && !in<QAction>(m_window, "add")->isVisible());
        select(1);
        press("delete");
        QCOMPARE(names(), QStringList { u"Anna"_s });
        QVERIFY(in<QLineEdit>(m_window, "txtName")->text().isEmpty());
        QCOMPARE(in<QLineEdit>(m_window, "txtAnzahl")->text(), u"1"_s);
        QCOMPARE(m_harness.child<QLineEdit>("txtAnzahlMultiSMS")->text(), u"1"_s);
    }

    void savingAndOpening()
    {
        MessageBoxScript boxes;
        const QString base = m_harness.folder() + u"/liste"_s;
        FileChooser::setHandler([&base](const FileChooser::Dialog&) { return base; });
        type(u"Jürgen"_s, u"00491711234567"_s, u"eins"_s, QString());
        press("add");
        press("save");
        QCOMPARE(in<QLineEdit>(m_window, "txtFilename")->text(), base + u".msms"_s);

        // A new table asks first; saving it under the same name asks before overwriting. What was
        // written comes back on opening.
        boxes.answer(MessageBox::Answer::Yes);
        press("new");
        boxes.answer(MessageBox::Answer::No);
        press("save");
        QCOMPARE(boxes.last().text, u"Die Datei existiert bereits.\r\nWollen Sie die Datei überschreiben?"_s);
        QVERIFY(in<QLineEdit>(m_window, "txtFilename")->text().isEmpty());

        FileChooser::setHandler([&base](const FileChooser::Dialog& dialog) {
            return dialog.mode == FileChooser::Dialog::Mode::Open ? base + u".msms  "_s : QString();
        });
        press("open");
        QCOMPARE(names(), QStringList { u"Jürgen"_s });
        QCOMPARE(in<QLineEdit>(m_window, "txtAnzahl")->text(), u"1"_s);
    }

    // The question before a run, left as the real box takes Esc and its close box: that is No,
    // and nothing goes out.
    void questionLeftWithoutAnAnswer_data()
    {
        QTest::addColumn<bool>("esc"); // otherwise the close box
        QTest::newRow("Esc") << true;
        QTest::newRow("close box") << false;
    }

    void questionLeftWithoutAnAnswer()
    {
        QFETCH(bool, esc);
        for (const QString& name : { u"Anna"_s, u"Bert"_s, u"Carla"_s })
            m_window->table().addRow(name, u"00491711234567"_s, {}, {});
        m_harness.child<SmsTextEdit>("txtSMS")->setText(u"Hallo %name%"_s);
        MessageBoxScript boxes;
        boxes.actOnRealBox(esc ? &MessageBoxScript::pressEsc : &MessageBoxScript::closeByItsCloseBox);
        QTest::mouseClick(m_harness.child<ToolbarButton>("tbSend"), Qt::LeftButton);
        QCOMPARE(boxes.count(), 1);
        QCOMPARE(boxes.last().text,
                 u"Achtung! Sie versenden eine MassenSMS!\r\nWollen Sie die 3 Nachrichten wirklich versenden?"_s);
        QCOMPARE(boxes.realAnswers(), QList<MessageBox::Answer> { MessageBox::Answer::No });
        QVERIFY(!frmMultiSMSLog::loaded());
        QTest::qWait(200);
        QVERIFY(m_harness.bodies(u"/smsv3/smsv3.php"_s).isEmpty());
    }

    // Everyone ticked in the picker: the card cut off is counted, the one with a landline only is
    // listed as having no mobile number and adds nothing. The MultiSMS editor takes every contact
    // with a mobile number as a row; the main window's fields take the first, its name whole.
    void contactsFromTheAddressBook_data()
    {
        QTest::addColumn<bool>("multiSMS");
        QTest::addColumn<QStringList>("contacts");
        QTest::addColumn<QStringList>("numbers"); // of the rows; in the main window prefix key and txtNummer
        QTest::newRow("rows of the MultiSMS editor") << true << QStringList { u"Müller @ Büro"_s, u"Tom Weber"_s }
                                                     << QStringList { u"00491712345678"_s, u"00491607654321"_s };
        QTest::newRow("main window, a name with @")
            << false << QStringList { u"Müller @ Büro"_s } << QStringList { u"G171"_s, u"2345678"_s };
    }

    void contactsFromTheAddressBook()
    {
        QFETCH(bool, multiSMS);
        QFETCH(QStringList, contacts);
        QFETCH(QStringList, numbers);
        QFile cards(m_harness.folder() + u"/export.vcf"_s);
        QVERIFY(cards.open(QIODevice::WriteOnly));
        cards.write("BEGIN:VCARD\r\nVERSION:3.0\r\nFN:Müller @ Büro\r\nTEL;TYPE=HOME:030 123456\r\n"
                    "TEL;TYPE=CELL:+49 171 2345678\r\nEND:VCARD\r\n"
                    "BEGIN:VCARD\r\nVERSION:3.0\r\nFN:Nur Festnetz\r\nTEL;TYPE=WORK,VOICE:030 999\r\nEND:VCARD\r\n"
                    "BEGIN:VCARD\r\nVERSION:2.1\r\nN:Weber;Tom\r\nTEL;CELL:0160 7654321\r\nEND:VCARD\r\n"
                    "BEGIN:VCARD\r\nVERSION:3.0\r\nFN:Abgebrochen\r\n");
        cards.close();
        Options().setOutlookProfil(m_harness.folder());
        MessageBoxScript boxes; // no box may come
        onNextModal([](QWidget* dialog) {
            auto* picker = static_cast<frmAddressBookPicker*>(dialog);
            QCOMPARE(picker->lstContacts->count(), 3);
            QCOMPARE(picker->lstContacts->item(1)->text(), u"Nur Festnetz  –  keine Mobilfunknummer"_s);
            QVERIFY(picker->lblSkipped->text().startsWith(u"Ein Eintrag konnte nicht gelesen"_s));
            for (int i = 0; i < picker->lstContacts->count(); ++i)
                picker->lstContacts->item(i)->setCheckState(Qt::Checked);
            picker->accept();
        });
        if (multiSMS) {
            press("addressbook");
            QCOMPARE(names(), contacts);
            QCOMPARE(m_window->table().rows().at(0).Nummer, numbers.at(0));
            QCOMPARE(m_window->table().rows().at(1).Nummer, numbers.at(1));
            return;
        }
        m_harness.child<ToolbarButton>("tbMultiSMS")->click();
        QTest::mouseClick(m_harness.child<ToolbarButton>("tbAddressBook"), Qt::LeftButton);
        QCOMPARE(m_harness.child<QComboBox>("cmbName")->currentText(), contacts.at(0));
        QCOMPARE(m_harness.main()->selectedPrefixKey(), numbers.at(0));
        QCOMPARE(m_harness.child<QLineEdit>("txtNummer")->text(), numbers.at(1));
    }

    // Opened beside the centred main window (the screen is 1600 pixels wide), the pair moves left
    // so that both stand whole side by side, of one height. Moved, the main window stays where it
    // is put and the editor follows: at its right edge where that fits on the screen, and never
    // over its command buttons.
    void sideWindowFollowsTheMainWindow_data()
    {
        QTest::addColumn<bool>("againstTheEdge");
        QTest::newRow("room beside") << false;
        QTest::newRow("main window against the screen's right edge") << true;
    }

    void sideWindowFollowsTheMainWindow()
    {
        QFETCH(bool, againstTheEdge);
        frmMain* main = m_harness.main();
        const QRect screen = main->screen()->availableGeometry();
        QCOMPARE(m_window->frameGeometry().topLeft(), main->frameGeometry().topRight() + QPoint(1, 0));
        QCOMPARE(m_window->frameGeometry().height(), main->frameGeometry().height());
        QVERIFY(screen.contains(main->frameGeometry()));
        QVERIFY(screen.contains(m_window->frameGeometry()));
        main->move(againstTheEdge ? screen.right() + 1 - main->frameGeometry().width() : 20, 120);
        main->move(main->pos() + QPoint(0, 21));
        const QRect frame = main->frameGeometry();
        QCOMPARE(frame.topLeft(), QPoint(againstTheEdge ? screen.right() + 1 - frame.width() : 20, 141));
        QTRY_COMPARE(m_window->frameGeometry().top(), frame.top());
        if (againstTheEdge) {
            for (const char* name : { "tbSend", "tbTerminversand", "tbMultiSMS", "tbAdmin" }) {
                auto* button = m_harness.child<ToolbarButton>(name);
                QVERIFY2(
                    !m_window->frameGeometry().intersects(QRect(button->mapToGlobal(QPoint(0, 0)), button->size())),
                    name);
            }
            QVERIFY(m_window->frameGeometry().left() <= frame.right() + 1);
        } else {
            QCOMPARE(m_window->frameGeometry().left(), frame.right() + 1);
        }
        m_harness.child<ToolbarButton>("tbMultiSMS")->click();
        QVERIFY(!m_window->isVisible());
        m_window->table().addRow(u"Bleibt"_s, u"0049"_s, {}, {});
        m_harness.child<ToolbarButton>("tbMultiSMS")->click();
        QVERIFY(m_window->isVisible());
        QCOMPARE(m_window->table().rowCount(), 1);
        // The close box unloads the window, its table with it, and ends the mode.
        m_window->close();
        QTRY_VERIFY(!frmMultiSMS::loaded());
        QVERIFY(!main->isMultiSMSMode);
    }
};

QTEST_MAIN(TestMultiSMS)
#include "tst_multisms.moc"
