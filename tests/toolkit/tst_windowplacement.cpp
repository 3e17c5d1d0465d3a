// SPDX-License-Identifier: GPL-3.0-or-later
#include "toolkit/PlatformChoice.h"
#include "toolkit/WindowPlacement.h"

#include <QTest>

using namespace WindowPlacement;
using namespace Qt::StringLiterals;

namespace {
// The main window's frame and that of the MultiSMS editor as they stand on an ordinary desktop,
// and where the command buttons lie in the main window: a column at its right edge.
constexpr QSize MainSize(780, 600);
constexpr QSize SideSize(477, 600);
constexpr QRect CommandsInMain(620, 80, 150, 300);

QRect mainAt(int x, int y)
{
    return { QPoint(x, y), MainSize };
}
} // namespace

class TestWindowPlacement : public QObject
{
    Q_OBJECT

private slots:
    // Opening (the pair may move) and following a moved main window (it stays where it was put).
    void sideWindow_data()
    {
        QTest::addColumn<QRect>("area");
        QTest::addColumn<QRect>("main");
        QTest::addColumn<bool>("opening");
        QTest::addColumn<QPoint>("mainAt");
        QTest::addColumn<QPoint>("sideAt");
        // Centred, the editor would stand over the main window's right 184 pixels.
        QTest::newRow("1366 x 768, centred")
            << QRect(0, 0, 1366, 728) << mainAt(293, 64) << true << QPoint(109, 64) << QPoint(889, 64);
        QTest::newRow("1600 x 1000, centred")
            << QRect(0, 0, 1600, 960) << mainAt(410, 180) << true << QPoint(343, 180) << QPoint(1123, 180);
        QTest::newRow("1920 x 1080 at 150 %, centred")
            << QRect(0, 0, 1280, 720) << mainAt(250, 60) << true << QPoint(23, 60) << QPoint(803, 60);
        // A task bar of 40 pixels below: the pair moves up until the editor's bottom is in sight.
        QTest::newRow("2560 x 1440 at 200 %, low")
            << QRect(0, 0, 1280, 680) << mainAt(250, 100) << true << QPoint(23, 80) << QPoint(803, 80);
        QTest::newRow("second screen right of the first")
            << QRect(1920, 0, 1366, 728) << mainAt(2213, 64) << true << QPoint(2029, 64) << QPoint(2809, 64);
        QTest::newRow("room beside: nothing moves")
            << QRect(0, 0, 1600, 960) << mainAt(20, 120) << true << QPoint(20, 120) << QPoint(800, 120);
        // Too narrow for both: the editor overlaps only the margin right of the buttons and
        // reaches beyond the screen.
        QTest::newRow("1024 x 768, too narrow for both")
            << QRect(0, 0, 1024, 728) << mainAt(122, 64) << true << QPoint(0, 64) << QPoint(770, 64);
        QTest::newRow("moved: room beside")
            << QRect(0, 0, 1600, 960) << mainAt(300, 200) << false << QPoint(300, 200) << QPoint(1080, 200);
        QTest::newRow("moved: 7 pixels short of room, onto the screen over the margin")
            << QRect(0, 0, 1600, 960) << mainAt(350, 200) << false << QPoint(350, 200) << QPoint(1123, 200);
        QTest::newRow("moved: against the right edge, never over the buttons")
            << QRect(0, 0, 1600, 960) << mainAt(800, 200) << false << QPoint(800, 200) << QPoint(1570, 200);
        QTest::newRow("moved: low, the editor's bottom stays in sight")
            << QRect(0, 0, 1600, 960) << mainAt(20, 500) << false << QPoint(20, 500) << QPoint(800, 360);
        QTest::newRow("moved: beyond the left edge")
            << QRect(0, 0, 1600, 960) << mainAt(-700, 200) << false << QPoint(-700, 200) << QPoint(80, 200);
    }

    void sideWindow()
    {
        QFETCH(QRect, area);
        QFETCH(QRect, main);
        QFETCH(bool, opening);
        QFETCH(QPoint, mainAt);
        QFETCH(QPoint, sideAt);
        const QRect commands = CommandsInMain.translated(main.topLeft());
        if (opening) {
            const Pair pair = besideMain(area, main, SideSize, commands);
            QCOMPARE(pair.main, mainAt);
            QCOMPARE(pair.side, sideAt);
            // Wherever the screen holds both, both stand whole on it, side by side.
            if (area.width() >= MainSize.width() + SideSize.width()) {
                QVERIFY(area.contains(QRect(pair.main, MainSize)));
                QVERIFY(area.contains(QRect(pair.side, SideSize)));
                QCOMPARE(pair.side, QPoint(pair.main.x() + MainSize.width(), pair.main.y()));
            }
        } else {
            QCOMPARE(followMain(area, main, SideSize, commands), sideAt);
        }
        const QRect commandsNow = CommandsInMain.translated(mainAt);
        QVERIFY(!QRect(sideAt, SideSize).intersects(commandsNow));
    }

    void ontoScreens_data()
    {
        QTest::addColumn<QRect>("frame");
        QTest::addColumn<QList<QRect>>("screens");
        QTest::addColumn<QPoint>("at");
        const QList<QRect> laptop { QRect(0, 0, 1366, 728) };
        const QList<QRect> twoApart { QRect(0, 0, 1920, 1040), QRect(3840, 0, 1920, 1040) };
        QTest::newRow("title bar on the screen: as stored") << mainAt(100, 100) << laptop << QPoint(100, 100);
        QTest::newRow("title bar on the screen, the rest below it: as stored")
            << mainAt(300, 500) << laptop << QPoint(300, 500);
        QTest::newRow("title bar just in hold at the right edge: as stored")
            << mainAt(1266, 100) << laptop << QPoint(1266, 100);
        QTest::newRow("title bar too little in sight at the right edge")
            << mainAt(1267, 100) << laptop << QPoint(586, 100);
        QTest::newRow("right of a smaller screen") << mainAt(2200, 300) << laptop << QPoint(586, 128);
        QTest::newRow("negative coordinates") << mainAt(-900, -200) << laptop << QPoint(0, 0);
        QTest::newRow("title bar above the screen's top") << mainAt(100, -10) << laptop << QPoint(100, 0);
        QTest::newRow("negative coordinates of a screen left of the primary: as stored")
            << mainAt(-1000, 50) << QList<QRect> { QRect(0, 0, 1920, 1040), QRect(-1280, 0, 1280, 984) }
            << QPoint(-1000, 50);
        QTest::newRow("between two screens, nearer the left one") << mainAt(2000, 300) << twoApart << QPoint(1140, 300);
        QTest::newRow("between two screens, nearer the right one")
            << mainAt(3000, 300) << twoApart << QPoint(3840, 300);
        QTest::newRow("title bar across two screens side by side: as stored")
            << QRect(1850, 100, 150, 400) << QList<QRect> { QRect(0, 0, 1920, 1040), QRect(1920, 0, 1280, 1024) }
            << QPoint(1850, 100);
        QTest::newRow("larger than the screen: top left in sight")
            << QRect(2000, 100, 1600, 900) << laptop << QPoint(0, 0);
    }

    void ontoScreens()
    {
        QFETCH(QRect, frame);
        QFETCH(QList<QRect>, screens);
        QFETCH(QPoint, at);
        const QRect placed = WindowPlacement::ontoScreens(frame, 30, screens);
        QCOMPARE(placed.topLeft(), at);
        QCOMPARE(placed.size(), frame.size());
    }

    // Windows can be placed on X11 only: a Wayland session with XWayland runs the program there,
    // unless the user chose; a chosen Wayland gets X11 as its fallback.
    void platform_data()
    {
        QTest::addColumn<QByteArray>("chosen");
        QTest::addColumn<QByteArray>("waylandDisplay");
        QTest::addColumn<QByteArray>("display");
        QTest::addColumn<QByteArray>("sessionType");
        QTest::addColumn<QByteArray>("platform");
        QTest::newRow("X11 session") << QByteArray() << QByteArray() << ":0"_ba
                                     << "x11"_ba << QByteArray();
        QTest::newRow("Wayland with XWayland") << QByteArray() << "wayland-0"_ba
                                               << ":0"_ba
                                               << "wayland"_ba
                                               << "xcb"_ba;
        QTest::newRow("Wayland, session type only") << QByteArray() << QByteArray() << ":1"_ba
                                                    << "wayland"_ba
                                                    << "xcb"_ba;
        QTest::newRow("Wayland without XWayland")
            << QByteArray() << "wayland-0"_ba << QByteArray() << "wayland"_ba << QByteArray();
        QTest::newRow("Wayland chosen") << "wayland"_ba
                                        << "wayland-0"_ba
                                        << ":0"_ba
                                        << "wayland"_ba
                                        << "wayland;xcb"_ba;
        QTest::newRow("Wayland chosen, no X11") << "wayland"_ba
                                                << "wayland-0"_ba << QByteArray() << "wayland"_ba << QByteArray();
        QTest::newRow("a list chosen") << "wayland;offscreen"_ba
                                       << "wayland-0"_ba
                                       << ":0"_ba
                                       << "wayland"_ba << QByteArray();
        QTest::newRow("offscreen chosen") << "offscreen"_ba
                                          << "wayland-0"_ba
                                          << ":0"_ba
                                          << "wayland"_ba << QByteArray();
    }

    void platform()
    {
        QFETCH(QByteArray, chosen);
        QFETCH(QByteArray, waylandDisplay);
        QFETCH(QByteArray, display);
        QFETCH(QByteArray, sessionType);
        QFETCH(QByteArray, platform);
        QCOMPARE(PlatformChoice::platformFor({ chosen, waylandDisplay, display, sessionType }), platform);
    }
};

QTEST_GUILESS_MAIN(TestWindowPlacement)
#include "tst_windowplacement.moc"
