// SPDX-License-Identifier: GPL-3.0-or-later
#include "MainWindowHarness.h"
#include "MessageBoxScript.h"
#include "ModalWindows.h"
#include "bulk/frmMultiSMS.h"
#include "settings/cOptionen.h"
#include "settings/frmAddressBookPicker.h"
#include "toolkit/FileChooser.h"
#include "toolkit/SmsTextEdit.h"
#include "toolkit/ToolbarButton.h"
#include "toolkit/WebView.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTableView>
#include <QTest>

namespace {
QStringList names(const RecipientTable& table)
{
    QStringList list;
    for (const RecipientRow& row : table.rows())
        list.append(row.Name);
    return list;
}
} // namespace

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

    // Opens the web-group dialog and sends its browser to address, as a click on a link does.
    void pickGroup(const QString& address)
    {
        onNextModal([address](QWidget* dialog) { in<WebView>(dialog, "web")->navigate(address); });
        press("openWeb");
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

    void editingTheTable()
    {
        MessageBoxScript boxes;
        RecipientTable& table = m_window->table();
        type(QStringLiteral("Anna"), QString());
        boxes.answer(MessageBox::Answer::Ok);
        press("add");
        QCOMPARE(boxes.last().title, QStringLiteral("MultiSMS - Rufnummer fehlt"));
        QCOMPARE(table.rowCount(), 0);

        type(QStringLiteral("Anna"), QStringLiteral("00491711"), QStringLiteral("Gruß"), QStringLiteral("00491799"));
        press("add");
        type(QStringLiteral("Bernhard"), QStringLiteral("00491722"));
        press("add");
        // The free texts are searched for the number too; No keeps what was typed.
        type(QStringLiteral("Carla"), QStringLiteral("00491799"));
        boxes.answer(MessageBox::Answer::No);
        press("add");
        QCOMPARE(boxes.last().text,
                 QStringLiteral(
                     "Ein Eintrag mit dieser Nummer existiert schon.\r\nMöchten Sie diesen trotzdem hinzufügen?"));
        QCOMPARE(in<QLineEdit>(m_window, "txtName")->text(), QStringLiteral("Carla"));
        QCOMPARE(names(table), (QStringList { QStringLiteral("Anna"), QStringLiteral("Bernhard") }));

        // Edit the first row and apply.
        select(0);
        emit in<QTableView>(m_window, "lvData")->doubleClicked(table.index(0, 0));
        QVERIFY(in<QAction>(m_window, "ok")->isVisible() && !in<QAction>(m_window, "add")->isVisible());
        in<QLineEdit>(m_window, "txtName")->setText(QStringLiteral("Annabell"));
        press("ok");
        QCOMPARE(names(table), (QStringList { QStringLiteral("Annabell"), QStringLiteral("Bernhard") }));

        // The main window's counters follow the table: "%name%" counts as the longest name.
        m_harness.child<SmsTextEdit>("txtSMS")->setText(QStringLiteral("Hallo %name%"));
        QCOMPARE(m_harness.child<QLineEdit>("txtZeichenMultiSMS")->text(), QStringLiteral("14"));
        QCOMPARE(m_harness.child<QLineEdit>("txtAnzahlMultiSMS")->text(), QStringLiteral("2"));

        // Deleting another row while one is edited gives the edit up.
        emit in<QTableView>(m_window, "lvData")->doubleClicked(table.index(0, 0));
        select(1);
        press("delete");
        QCOMPARE(names(table), QStringList { QStringLiteral("Annabell") });
        QVERIFY(in<QLineEdit>(m_window, "txtName")->text().isEmpty());
        QCOMPARE(in<QLineEdit>(m_window, "txtAnzahl")->text(), QStringLiteral("1"));
        QCOMPARE(m_harness.child<QLineEdit>("txtAnzahlMultiSMS")->text(), QStringLiteral("1"));
        QCOMPARE(boxes.pending(), 0);
    }

    void savingAndOpening()
    {
        MessageBoxScript boxes;
        const QString base = m_harness.folder() + QStringLiteral("/liste");
        FileChooser::setHandler([&base](const FileChooser::Dialog&) { return base; });
        type(QStringLiteral("Jürgen"), QStringLiteral("00491711"), QStringLiteral("eins"), QString());
        press("add");
        press("save");
        QCOMPARE(in<QLineEdit>(m_window, "txtFilename")->text(), base + QStringLiteral(".msms"));
        QFile file(base + QStringLiteral(".msms"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("J\xFCrgen;00491711;eins;;\r\n"));
        file.close();

        // A new table asks first; saving it under the same name asks before overwriting.
        boxes.answer(MessageBox::Answer::Yes);
        press("new");
        QCOMPARE(m_window->table().rowCount(), 0);
        boxes.answer(MessageBox::Answer::No);
        press("save");
        QCOMPARE(boxes.last().text,
                 QStringLiteral("Die Datei existiert bereits.\r\nWollen Sie die Datei überschreiben?"));
        QVERIFY(in<QLineEdit>(m_window, "txtFilename")->text().isEmpty());

        FileChooser::setHandler([&base](const FileChooser::Dialog& dialog) {
            return dialog.mode == FileChooser::Dialog::Mode::Open ? base + QStringLiteral(".msms  ") : QString();
        });
        press("open");
        QCOMPARE(names(m_window->table()), QStringList { QStringLiteral("Jürgen") });
        QCOMPARE(in<QLineEdit>(m_window, "txtAnzahl")->text(), QStringLiteral("1"));
        QCOMPARE(boxes.pending(), 0);
    }

    void webGroups()
    {
        MessageBoxScript boxes;
        pickGroup(QStringLiteral("http://gruppe//jaeger.txt"));
        QTRY_COMPARE(names(m_window->table()),
                     (QStringList { QStringLiteral("Jürgen Jäger"), QStringLiteral("Zoë Weiß") }));
        pickGroup(QStringLiteral("http://gruppe//vertrieb.txt"));
        QTRY_COMPARE(m_window->table().rowCount(), 3);
        const QStringList group = names(m_window->table());

        // A download that fails, or brings no group, leaves the table as it was.
        for (const char* file : { "fehlt.txt", "kaputt.txt" }) {
            boxes.answer(MessageBox::Answer::Ok);
            pickGroup(QStringLiteral("http://gruppe//") + QLatin1String(file));
            QTRY_COMPARE(boxes.count(), 1);
            QCOMPARE(names(m_window->table()), group);
            boxes.clear();
        }
    }

    void contactsFromTheAddressBookBecomeRows()
    {
        const QString profile = m_harness.folder() + QStringLiteral("/kontakte");
        QVERIFY(QDir().mkpath(profile));
        QFile cards(profile + QStringLiteral("/export.vcf"));
        QVERIFY(cards.open(QIODevice::WriteOnly));
        cards.write("BEGIN:VCARD\r\nVERSION:3.0\r\nFN:Jana Berg\r\nTEL;TYPE=HOME:030 123456\r\n"
                    "TEL;TYPE=CELL:+49 171 2345678\r\nEND:VCARD\r\n"
                    "BEGIN:VCARD\r\nVERSION:3.0\r\nFN:Ohne Nummer\r\nEND:VCARD\r\n"
                    "BEGIN:VCARD\r\nVERSION:2.1\r\nN:Weber;Tom\r\nTEL;CELL:0160 7654321\r\nEND:VCARD\r\n"
                    "BEGIN:VCARD\r\nVERSION:3.0\r\nFN:Abgebrochen\r\n");
        cards.close();
        Options().setOutlookProfil(profile);
        // Everyone ticked; the card cut off is counted, the one without a number adds no row.
        onNextModal([](QWidget* dialog) {
            auto* picker = static_cast<frmAddressBookPicker*>(dialog);
            QCOMPARE(picker->lstContacts->count(), 3);
            QVERIFY(picker->lblSkipped->text().startsWith(QStringLiteral("Ein Eintrag konnte nicht gelesen")));
            for (int i = 0; i < picker->lstContacts->count(); ++i)
                picker->lstContacts->item(i)->setCheckState(Qt::Checked);
            picker->accept();
        });
        press("addressbook");
        QCOMPARE(names(m_window->table()), (QStringList { QStringLiteral("Jana Berg"), QStringLiteral("Tom Weber") }));
        QCOMPARE(m_window->table().rows().at(0).Nummer, QStringLiteral("00491712345678"));
        QCOMPARE(m_window->table().rows().at(1).Nummer, QStringLiteral("00491607654321"));
    }

    void sideWindowFollowsTheMainWindow()
    {
        frmMain* main = m_harness.main();
        main->move(main->pos() + QPoint(37, 21));
        QTRY_COMPARE(m_window->pos(), QPoint(main->frameGeometry().right() + 1, main->frameGeometry().top()));
        m_harness.child<ToolbarButton>("tbMultiSMS")->click();
        QVERIFY(!m_window->isVisible());
        m_window->table().addRow(QStringLiteral("Bleibt"), QStringLiteral("0049"), {}, {});
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
