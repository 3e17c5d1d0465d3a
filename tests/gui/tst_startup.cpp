// SPDX-License-Identifier: GPL-3.0-or-later
#include "DarkDesktop.h"
#include "MainWindowHarness.h"
#include "MessageBoxScript.h"
#include "TestStore.h"
#include "account/frmFirstTime.h"
#include "account/frmHelp.h"
#include "sending/frmSplash.h"
#include "sending/mStarter.h"
#include "settings/cOptionen.h"
#include "toolkit/SmsTextEdit.h"
#include "toolkit/TextContrast.h"
#include "toolkit/ToolbarButton.h"
#include "toolkit/frmMinimizeWarning.h"
#include "toolkit/mTrayIcon.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

// Where a stored coordinate puts the window.
enum Where { Stored, Centred, AtTheEdge };

class TestStartup : public QObject
{
    Q_OBJECT

    MainWindowHarness m_harness;

    void writeOem(const QByteArray& extra = {}) { m_harness.service()->pointProgramAt(m_harness.folder(), extra); }

    // The program as it starts and runs: its start routine, then whileRunning in its event loop
    // once the main window shows, until the program ends (or ten seconds have passed). True when
    // it ended by itself, with its main window gone. Without inWizard the start is not the first;
    // with it the store stays as the test left it, the start routine must show the wizard, and
    // inWizard acts on it in the event loop.
    bool runProgram(const std::function<void(frmMain*)>& whileRunning,
                    const std::function<void(frmFirstTime*)>& inWizard = {})
    {
        if (!inWizard) {
            TestStore::put(u"firstStartHasRun"_s, u"true"_s);
            TestStore::put(u"infoVersion"_s, u"32767"_s);
        }
        reloadOptionsForTesting();
        mStarter::Main();
        frmFirstTime* wizard = shownWizard();
        if (!wizard != !inWizard)
            return false;
        if (wizard)
            QTimer::singleShot(0, wizard, [wizard, inWizard] { inWizard(wizard); });
        QPointer<frmMain> main;
        bool shown = false;
        QTimer poll;
        connect(&poll, &QTimer::timeout, [&] {
            if (shown || !frmMain::instance() || !frmMain::instance()->isVisible())
                return;
            shown = true;
            main = frmMain::instance();
            whileRunning(main);
        });
        poll.start(20);
        QTimer watchdog;
        connect(&watchdog, &QTimer::timeout, [] { QCoreApplication::exit(1); });
        watchdog.start(10000);
        return QApplication::exec() == 0 && shown && !main;
    }

    static frmFirstTime* shownWizard()
    {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (auto* wizard = qobject_cast<frmFirstTime*>(window); wizard && wizard->isVisible())
                return wizard;
        }
        return nullptr;
    }

    // The main window loaded behind its splash screen, as the program starts.
    struct Loaded
    {
        std::unique_ptr<frmSplash> splash = std::make_unique<frmSplash>();
        std::unique_ptr<frmMain> main = std::make_unique<frmMain>();
        Loaded()
        {
            splash->show();
            main->load(splash.get());
        }
        template<typename T> T* child(const char* name) const { return in<T>(main.get(), name); }
    };

private slots:
    void initTestCase() { QVERIFY(m_harness.startService()); }

    void init() { TestStore::reset(); }

    void cleanup() { writeOem(); }

    void splashLinesComeInTheOrderOfTheLoadSequence()
    {
        // A last prefix the list doesn't know selects nothing.
        TestStore::put(u"lastPrefix"_s, u"G999"_s);
        const Loaded loaded;
        // Every line of the table, in its order; a later part may add nothing in between.
        QCOMPARE(loaded.splash->lines(),
                 (QStringList { u"Lade Quellbote ..."_s, u"Lade Theme ..."_s, u"Initialisiere Vorwahlen ..."_s,
                                u"Lade Signaturen ..."_s, u"Suche nach Updates ..."_s, u"Überprüfe Guthaben ..."_s,
                                u"MRU laden ..."_s, u"News herunterladen ..."_s, u"Optionen wiederherstellen ..."_s,
                                u"Sitzung wiederherstellen ..."_s, u"Quellbote geladen"_s }));
        QVERIFY(loaded.main->isVisible());
        QCOMPARE(loaded.child<QLabel>("lblVersion")->text(), u"Version 2.4.92"_s);
        auto* cmbVorwahl = loaded.child<QComboBox>("cmbVorwahl");
        QCOMPARE(cmbVorwahl->count(), 32);
        QCOMPARE(cmbVorwahl->itemText(3), u"01520"_s);
        QCOMPARE(cmbVorwahl->itemText(31), u"Weltweit"_s);
        QCOMPARE(loaded.main->selectedPrefixKey(), QString());
    }

    void position_data()
    {
        QTest::addColumn<QString>("x");
        QTest::addColumn<QString>("y");
        QTest::addColumn<int>("xAt");
        QTest::addColumn<int>("yAt");
        QTest::newRow("stored position") << u"7"_s << u"9"_s << int(Stored) << int(Stored);
        QTest::newRow("decimal text of a float") << u"7.5"_s << u"9"_s << int(Stored) << int(Stored);
        QTest::newRow("negative x centres x only") << u"-100"_s << u"9"_s << int(Centred) << int(Stored);
        QTest::newRow("text x centres x only") << u"abc"_s << u"9"_s << int(Centred) << int(Stored);
        QTest::newRow("missing y centres y only") << u"7"_s << QString() << int(Stored) << int(Centred);
        QTest::newRow("x beyond an int centres x only") << u"1e12"_s << u"9"_s << int(Centred) << int(Stored);
        // Stored on a larger screen: the window comes whole onto this one.
        QTest::newRow("beyond the screen's right edge") << u"2200"_s << u"9"_s << int(AtTheEdge) << int(Stored);
    }

    void position()
    {
        QFETCH(QString, x);
        QFETCH(QString, y);
        QFETCH(int, xAt);
        QFETCH(int, yAt);
        TestStore::put(u"x"_s, x);
        if (!y.isNull())
            TestStore::put(u"y"_s, y);
        const Loaded loaded;
        const QRect screen = loaded.main->screen()->geometry();
        const QSize size = loaded.main->frameGeometry().size();
        const auto expected = [](int where, int stored, int screenLength, int length) {
            return where == Stored ? stored : where == Centred ? screenLength / 2 - length / 2 : screenLength - length;
        };
        // The frame is not known before the window shows; a few pixels of it may differ.
        const QPoint at = loaded.main->pos();
        QVERIFY2(qAbs(at.x() - expected(xAt, 7, screen.width(), size.width())) <= 4,
                 qPrintable(QString::number(at.x())));
        QVERIFY2(qAbs(at.y() - expected(yAt, 9, screen.height(), size.height())) <= 4,
                 qPrintable(QString::number(at.y())));
    }

    // What the window held comes back at the next start. Closed maximised, it keeps the position
    // it had before.
    void sessionIsSavedAndRestored()
    {
        {
            const Loaded loaded;
            loaded.main->move(50, 60);
            loaded.main->selectPrefixKey(u"A664"_s);
            loaded.child<QLineEdit>("txtNummer")->setText(u"1234567"_s);
            loaded.child<SmsTextEdit>("txtSMS")->setText(u"Hallo\r\nWelt"_s);
            QVERIFY(loaded.main->close());
        }
        for (const auto& [name, value] :
             { std::pair { "x", "50" }, std::pair { "y", "60" }, std::pair { "lastPrefix", "A664" },
               std::pair { "lastNumber", "1234567" }, std::pair { "lastText", "Hallo\r\nWelt" } })
            QCOMPARE(TestStore::raw(QString::fromLatin1(name)), QString::fromLatin1(value));

        const Loaded again;
        QCOMPARE(again.main->selectedPrefixKey(), u"A664"_s);
        QCOMPARE(again.child<QLineEdit>("txtNummer")->text(), u"1234567"_s);
        QCOMPARE(again.child<SmsTextEdit>("txtSMS")->text(), u"Hallo\r\nWelt"_s);
        QCOMPARE(again.main->pos(), QPoint(50, 60));
        again.child<QLineEdit>("txtNummer")->setText(u"99"_s);
        again.main->showMaximized();
        QVERIFY(again.main->close());
        QCOMPARE(TestStore::raw(u"x"_s), u"50"_s);
        QCOMPARE(TestStore::raw(u"y"_s), u"60"_s);
        QCOMPARE(TestStore::raw(u"lastNumber"_s), u"99"_s);
    }

    // The program as it starts and ends: with a tray, minimising hides the main window and shows
    // the hint; closing the help window then, the last window seen, must not end the program. Only
    // the main window's unload ends it, and that keeps the session.
    void theProgramEndsWithTheMainWindowOnly_data()
    {
        QTest::addColumn<bool>("tray");
        QTest::newRow("with a tray") << true;
        QTest::newRow("without a tray: the window stays in the task bar, no hint") << false;
    }

    void theProgramEndsWithTheMainWindowOnly()
    {
        QFETCH(bool, tray);
        mTrayIcon::setAvailableForTesting(tray);
        frmHelp::showHelp();
        bool hidden = false, hinted = false, stillRunning = false, restored = false;
        const bool ended = runProgram([&](frmMain* window) {
            window->setWindowState(Qt::WindowMinimized);
            hidden = !window->isVisible();
            auto* hint = window->findChild<frmMinimizeWarning*>();
            hinted = hint && hint->isVisible();
            if (hinted)
                in<QPushButton>(hint, "cmdOK")->click();
            frmHelp::loaded()->close();
            QTimer::singleShot(200, window, [&, window] {
                stillRunning = true;
                window->SysTrayMouseEventHandler();
                restored = window->isVisible() && window->windowState() == Qt::WindowNoState;
                in<QLineEdit>(window, "txtNummer")->setText(u"7654321"_s);
                window->close();
            });
        });
        mTrayIcon::setAvailableForTesting(false);
        QVERIFY(ended);
        QCOMPARE(hidden, tray);
        QCOMPARE(hinted, tray);
        QVERIFY(stillRunning);
        QVERIFY(restored);
        QCOMPARE(TestStore::raw(u"lastNumber"_s), u"7654321"_s);
    }

    // A first start, from an empty store: the wizard, and after it the main window, whichever way
    // the wizard went. Signed in with an account the service knows, the main window works with it;
    // left by "Assistent abbrechen", nothing is stored.
    void firstStartShowsTheWizardThenTheMainWindow_data()
    {
        QTest::addColumn<bool>("signIn");
        QTest::addColumn<QString>("credits"); // lblCredits of the main window
        QTest::newRow("signed in with a known account") << true << u"500 Credits"_s;
        QTest::newRow("left by Assistent abbrechen") << false << u"nicht angemeldet"_s;
    }

    void firstStartShowsTheWizardThenTheMainWindow()
    {
        QFETCH(bool, signIn);
        QFETCH(QString, credits);
        MessageBoxScript boxes; // no box may come
        bool mainBeforeWizardWent = false, wizardStayed = false;
        QString shownCredits;
        const bool ended = runProgram(
            [&](frmMain* window) {
                wizardStayed = shownWizard() != nullptr;
                shownCredits = in<QLabel>(window, "lblCredits")->text();
                window->close();
            },
            [&](frmFirstTime* wizard) {
                mainBeforeWizardWent = frmMain::instance() != nullptr;
                if (!signIn) {
                    wizard->cmdExit->click();
                    return;
                }
                wizard->cmdNext->click();
                QTest::keyClicks(wizard->txtOldEmail, u"demo@quellbote.test"_s);
                QTest::keyClicks(wizard->txtPassword, u"demo"_s);
                wizard->chkRememberPassword->setChecked(true);
                QTest::mouseClick(wizard->cmdDoIt, Qt::LeftButton);
            });
        QVERIFY(ended);
        QVERIFY(!mainBeforeWizardWent);
        QVERIFY(!wizardStayed);
        QCOMPARE(shownCredits, credits);
        reloadOptionsForTesting();
        QCOMPARE(Options().FirstStartHasRun(), signIn);
        QCOMPARE(Options().Username(), signIn ? u"demo@quellbote.test"_s : QString());
        QCOMPARE(Options().kennwort(), signIn ? u"demo"_s : QString());
    }

    // Whoever rebranded the program learns once what of oem.inf can't be used.
    void brandingThatCantBeUsedIsToldOnce()
    {
        writeOem("[Colors]\r\nHeader=blau\r\n[Images]\r\nLogo=fehlt.png\r\nHeader=kaputt.png\r\n");
        QFile broken(m_harness.folder() + u"/kaputt.png"_s);
        QVERIFY(broken.open(QIODevice::WriteOnly));
        broken.write("\x89PNG\r\n\x1a\n kaputt");
        broken.close();
        MessageBoxScript boxes;
        boxes.answer(MessageBox::Answer::Ok);
        QVERIFY(runProgram([](frmMain* window) { window->close(); }));
        QCOMPARE(boxes.count(), 1);
        QCOMPARE(boxes.last().text,
                 u"Die Datei oem.inf enthält Werte, die nicht verwendet werden können. An ihrer Stelle gilt das "
                 "vorgesehene Aussehen.\r\n\r\n[Colors] Header=blau: keine Farbe (erwartet wird eine Zahl)\r\n"
                 "[Images] Header=kaputt.png: kein lesbares Bild\r\n[Images] Logo=fehlt.png: kein lesbares Bild"_s);
    }

    void brandingIsApplied()
    {
        writeOem("[Strings]\r\nProductName=Testbote\r\nCopyright=Beispiel GmbH\r\n[Colors]\r\nBackground=16777215\r\n"
                 "Header=255\r\n[Common]\r\nHideHeaderStrings=true\r\n");
        const Loaded loaded;
        QCOMPARE(in<QLabel>(loaded.splash.get(), "lblProductName")->text(), u"Testbote"_s);
        QCOMPARE(loaded.splash->lines().constFirst(), u"Lade Testbote ..."_s);
        QCOMPARE(loaded.splash->lines().constLast(), u"Testbote geladen"_s);
        QCOMPARE(loaded.main->palette().color(QPalette::Window), QColor(Qt::white));
        QCOMPARE(loaded.child<ToolbarButton>("tbSend")->ThemedBackColor(), QColor(Qt::white));
        auto* lblHeader = loaded.child<QLabel>("lblHeader");
        QCOMPARE(lblHeader->palette().color(QPalette::WindowText), QColor(255, 0, 0));
        QVERIFY(!lblHeader->isVisibleTo(loaded.main.get()));
        QVERIFY(!loaded.child<QLabel>("lblHeaderInfo")->isVisibleTo(loaded.main.get()));
        QCOMPARE(loaded.child<QLabel>("lblCopyright")->text(), u"© Beispiel GmbH"_s);
    }

    // The header's default colour (that of a window's background) and a light theme background
    // would leave a dark desktop's texts unreadable; there they give way to readable ones.
    void brandingReadsOnADarkDesktop_data()
    {
        QTest::addColumn<QByteArray>("oem");
        QTest::newRow("designed colours") << QByteArray("[Strings]\r\nCopyright=Beispiel GmbH\r\n");
        QTest::newRow("white background, red header")
            << QByteArray("[Colors]\r\nBackground=16777215\r\nHeader=255\r\nHeaderInfo=255\r\n");
    }

    void brandingReadsOnADarkDesktop()
    {
        QFETCH(QByteArray, oem);
        writeOem(oem);
        const DarkDesktop dark;
        const Loaded loaded;
        const auto contrast = [](const QColor& a, const QColor& b) {
            return TextContrast::ratio(a.rgb() & 0xFFFFFF, b.rgb() & 0xFFFFFF);
        };
        // The lighter end of the header's blue band.
        for (const char* name : { "lblHeader", "lblHeaderInfo" }) {
            const QColor text = loaded.child<QLabel>(name)->palette().color(QPalette::WindowText);
            QVERIFY2(contrast(text, QColor(0x2b, 0x6c, 0xb0)) >= TextContrast::Readable, name);
        }
        const QPalette window = loaded.main->palette();
        QVERIFY(contrast(window.color(QPalette::WindowText), window.color(QPalette::Window)) >= TextContrast::Readable);
    }
};

QTEST_MAIN(TestStartup)
#include "tst_startup.moc"
