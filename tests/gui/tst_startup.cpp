// SPDX-License-Identifier: GPL-3.0-or-later
#include "MessageBoxScript.h"
#include "ServiceProcess.h"
#include "TestStore.h"
#include "sending/frmMain.h"
#include "sending/frmSplash.h"
#include "settings/CUrlStore.h"
#include "settings/ProductName.h"
#include "settings/ProgramFolder.h"
#include "toolkit/Pause.h"
#include "toolkit/SmsTextEdit.h"
#include "toolkit/ToolbarButton.h"

#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>

class TestStartup : public QObject
{
    Q_OBJECT

    QTemporaryDir m_folder;
    std::unique_ptr<ServiceProcess> m_service;

    void writeOem(const QByteArray& extra = {}) { m_service->pointProgramAt(m_folder.path(), extra); }

    struct Loaded
    {
        std::unique_ptr<frmSplash> splash = std::make_unique<frmSplash>();
        std::unique_ptr<frmMain> main = std::make_unique<frmMain>();
    };

    static std::unique_ptr<Loaded> start()
    {
        auto loaded = std::make_unique<Loaded>();
        loaded->splash->show();
        loaded->main->load(loaded->splash.get());
        return loaded;
    }

private slots:
    void initTestCase()
    {
        Pause::setLengthForTesting(0);
        ProgramFolder::setPathForTesting(m_folder.path());
        m_service = std::make_unique<ServiceProcess>();
        QVERIFY(m_service->isRunning());
        writeOem();
    }

    void init() { TestStore::reset(); }

    void splashLinesComeInTheOrderOfTheLoadSequence()
    {
        const auto loaded = start();
        const QStringList lines = loaded->splash->lines();
        const QStringList expected = { QStringLiteral("Lade Quellbote ..."),
                                       QStringLiteral("Lade Theme ..."),
                                       QStringLiteral("Initialisiere Vorwahlen ..."),
                                       QStringLiteral("Lade Signaturen ..."),
                                       QStringLiteral("Suche nach Updates ..."),
                                       QStringLiteral("Überprüfe Guthaben ..."),
                                       QStringLiteral("MRU laden ..."),
                                       QStringLiteral("News herunterladen ..."),
                                       QStringLiteral("Optionen wiederherstellen ..."),
                                       QStringLiteral("Sitzung wiederherstellen ..."),
                                       QStringLiteral("Quellbote geladen") };
        // Every line of the table, in its order; a later part may add nothing in between.
        QCOMPARE(lines, expected);
        QVERIFY(loaded->main->isVisible());
        QCOMPARE(loaded->main->windowTitle(), QStringLiteral("Quellbote"));
        QCOMPARE(loaded->main->findChild<QLabel*>(QStringLiteral("lblVersion"))->text(),
                 QStringLiteral("Version 2.4.92"));
    }

    void prefixesAreListedWithoutSelection()
    {
        const auto loaded = start();
        auto* cmbVorwahl = loaded->main->findChild<QComboBox*>(QStringLiteral("cmbVorwahl"));
        QCOMPARE(cmbVorwahl->count(), 32);
        QCOMPARE(cmbVorwahl->itemData(3).toString(), QStringLiteral("G1520"));
        QCOMPARE(cmbVorwahl->itemText(3), QStringLiteral("01520"));
        QCOMPARE(cmbVorwahl->itemData(16).toString(), QStringLiteral("G177"));
        QCOMPARE(cmbVorwahl->itemData(31).toString(), QStringLiteral("W"));
        QCOMPARE(cmbVorwahl->itemText(31), QStringLiteral("Weltweit"));
    }

    void position_data()
    {
        QTest::addColumn<QString>("x");
        QTest::addColumn<QString>("y");
        QTest::addColumn<bool>("xCentred");
        QTest::addColumn<bool>("yCentred");
        QTest::newRow("stored position") << "7"
                                         << "9" << false << false;
        QTest::newRow("decimal text of a float") << "7.5"
                                                 << "9" << false << false;
        QTest::newRow("negative x centres x only") << "-100"
                                                   << "9" << true << false;
        QTest::newRow("text x centres x only") << "abc"
                                               << "9" << true << false;
        QTest::newRow("missing y centres y only") << "7" << QString() << false << true;
    }

    void position()
    {
        QFETCH(QString, x);
        QFETCH(QString, y);
        QFETCH(bool, xCentred);
        QFETCH(bool, yCentred);
        TestStore::put(QStringLiteral("x"), x);
        if (!y.isNull())
            TestStore::put(QStringLiteral("y"), y);
        const auto loaded = start();
        const QRect screen = loaded->main->screen()->geometry();
        // The frame is not known before the window shows; a few pixels of it may differ.
        const QPoint at = loaded->main->pos();
        const int centreX = screen.width() / 2 - loaded->main->frameGeometry().width() / 2;
        const int centreY = screen.height() / 2 - loaded->main->frameGeometry().height() / 2;
        QVERIFY2(qAbs(at.x() - (xCentred ? centreX : 7)) <= 4, qPrintable(QString::number(at.x())));
        QVERIFY2(qAbs(at.y() - (yCentred ? centreY : 9)) <= 4, qPrintable(QString::number(at.y())));
    }

    void sessionIsSavedAndRestored()
    {
        {
            const auto loaded = start();
            loaded->main->move(50, 60);
            auto* cmbVorwahl = loaded->main->findChild<QComboBox*>(QStringLiteral("cmbVorwahl"));
            cmbVorwahl->setCurrentIndex(cmbVorwahl->findData(QStringLiteral("A664")));
            loaded->main->findChild<QLineEdit*>(QStringLiteral("txtNummer"))->setText(QStringLiteral("1234567"));
            loaded->main->findChild<SmsTextEdit*>(QStringLiteral("txtSMS"))->setText(QStringLiteral("Hallo\r\nWelt"));
            QVERIFY(loaded->main->close());
        }
        QCOMPARE(TestStore::raw(QStringLiteral("x")), QStringLiteral("50"));
        QCOMPARE(TestStore::raw(QStringLiteral("y")), QStringLiteral("60"));
        QCOMPARE(TestStore::raw(QStringLiteral("lastPrefix")), QStringLiteral("A664"));
        QCOMPARE(TestStore::raw(QStringLiteral("lastNumber")), QStringLiteral("1234567"));
        QCOMPARE(TestStore::raw(QStringLiteral("lastText")), QStringLiteral("Hallo\r\nWelt"));

        const auto again = start();
        QCOMPARE(again->main->selectedPrefixKey(), QStringLiteral("A664"));
        QCOMPARE(again->main->findChild<QLineEdit*>(QStringLiteral("txtNummer"))->text(), QStringLiteral("1234567"));
        QCOMPARE(again->main->findChild<SmsTextEdit*>(QStringLiteral("txtSMS"))->text(),
                 QStringLiteral("Hallo\r\nWelt"));
        QCOMPARE(again->main->pos(), QPoint(50, 60));
    }

    void closingMaximisedKeepsThePosition()
    {
        TestStore::put(QStringLiteral("x"), QStringLiteral("11"));
        TestStore::put(QStringLiteral("y"), QStringLiteral("12"));
        {
            const auto loaded = start();
            loaded->main->findChild<QLineEdit*>(QStringLiteral("txtNummer"))->setText(QStringLiteral("99"));
            loaded->main->showMaximized();
            QVERIFY(loaded->main->close());
        }
        QCOMPARE(TestStore::raw(QStringLiteral("x")), QStringLiteral("11"));
        QCOMPARE(TestStore::raw(QStringLiteral("y")), QStringLiteral("12"));
        QCOMPARE(TestStore::raw(QStringLiteral("lastNumber")), QStringLiteral("99"));
        QVERIFY(TestStore::has(QStringLiteral("lastPrefix")) == false);
    }

    void unknownLastPrefixLeavesNoSelection()
    {
        TestStore::put(QStringLiteral("lastPrefix"), QStringLiteral("G999"));
        const auto loaded = start();
        QCOMPARE(loaded->main->selectedPrefixKey(), QString());
    }

    void themeIsApplied()
    {
        writeOem("[Strings]\r\nCopyright=Beispiel GmbH\r\n[Colors]\r\nBackground=16777215\r\nHeader=255\r\n"
                 "[Common]\r\nHideHeaderStrings=true\r\n");
        const auto loaded = start();
        frmMain* main = loaded->main.get();
        QCOMPARE(main->palette().color(QPalette::Window), QColor(Qt::white));
        QCOMPARE(main->findChild<ToolbarButton*>(QStringLiteral("tbSend"))->ThemedBackColor(), QColor(Qt::white));
        QCOMPARE(main->findChild<QLabel*>(QStringLiteral("lblHeader"))->palette().color(QPalette::WindowText),
                 QColor(255, 0, 0));
        QVERIFY(!main->findChild<QLabel*>(QStringLiteral("lblHeader"))->isVisibleTo(main));
        QVERIFY(!main->findChild<QLabel*>(QStringLiteral("lblHeaderInfo"))->isVisibleTo(main));
        QCOMPARE(main->findChild<QLabel*>(QStringLiteral("lblCopyright"))->text(), QStringLiteral("© Beispiel GmbH"));
        writeOem();
    }

    void brandedNameReachesSplashAndTitle()
    {
        writeOem("[Strings]\r\nProductName=Testbote\r\n");
        const auto loaded = start();
        QCOMPARE(loaded->splash->findChild<QLabel*>(QStringLiteral("lblProductName"))->text(),
                 QStringLiteral("Testbote"));
        QCOMPARE(loaded->splash->lines().constFirst(), QStringLiteral("Lade Testbote ..."));
        QCOMPARE(loaded->splash->lines().constLast(), QStringLiteral("Testbote geladen"));
        writeOem();
    }
};

QTEST_MAIN(TestStartup)
#include "tst_startup.moc"
