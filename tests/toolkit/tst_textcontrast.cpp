// SPDX-License-Identifier: GPL-3.0-or-later
#include "toolkit/TextContrast.h"

#include <QTest>

#include <array>
#include <utility>

using namespace TextContrast;

namespace {
// The program's own backgrounds that the desktop's text is painted on.
constexpr quint32 MarkedField = 0xFFC0C0;
constexpr quint32 DifferingField = 0xFFFFC0;
constexpr quint32 ChosenPane = 0xCBD7FF;
constexpr quint32 Pane = 0xFFFFFF;
// A balance warning is painted on the window itself.
constexpr quint32 OnTheWindow = 0x1000000;

struct Desktop
{
    const char* name;
    quint32 window;
    quint32 text;
};
} // namespace

class TestTextContrast : public QObject
{
    Q_OBJECT

private slots:
    // The measure everything else stands on, against WCAG's own figures.
    void ratio_data()
    {
        QTest::addColumn<quint32>("a");
        QTest::addColumn<quint32>("b");
        QTest::addColumn<double>("expected");
        QTest::newRow("black on white") << 0x000000u << 0xFFFFFFu << 21.0;
        QTest::newRow("white on black, the same") << 0xFFFFFFu << 0x000000u << 21.0;
        QTest::newRow("one colour") << 0x808080u << 0x808080u << 1.0;
        QTest::newRow("#777 on white, just short of 4.5") << 0x777777u << 0xFFFFFFu << 4.478;
        QTest::newRow("dark red on white") << 0xC00000u << 0xFFFFFFu << 6.479;
    }

    void ratio()
    {
        QFETCH(quint32, a);
        QFETCH(quint32, b);
        QFETCH(double, expected);
        QVERIFY2(qAbs(TextContrast::ratio(a, b) - expected) < 0.001,
                 qPrintable(QString::number(TextContrast::ratio(a, b))));
    }

    // What the program paints on a dark desktop reads at 4.5:1 at least; on a light desktop the
    // colours are the ones it always had, even where the theme's own text is weak.
    void paintedText_data()
    {
        QTest::addColumn<quint32>("window");
        QTest::addColumn<quint32>("text");
        QTest::addColumn<quint32>("background");
        QTest::addColumn<bool>("dark");
        QTest::addColumn<quint32>("expected"); // on a light desktop
        const std::array<std::pair<const char*, quint32>, 5> painted { {
            { "marked field", MarkedField },
            { "differing field", DifferingField },
            { "chosen pane's button", ChosenPane },
            { "pane's button", Pane },
            { "balance warning", OnTheWindow },
        } };
        const std::array<Desktop, 4> darkDesktops { {
            { "Breeze dark", 0x2A2E32, 0xFCFCFC },
            { "Adwaita dark", 0x242424, 0xFFFFFF },
            { "Fusion dark", 0x353535, 0xFFFFFF },
            { "mid grey", 0x505050, 0xFFFFFF },
        } };
        for (const Desktop& d : darkDesktops) {
            for (const auto& [what, background] : painted)
                QTest::addRow("%s, %s", d.name, what) << d.window << d.text << background << true << 0u;
        }
        const std::array<Desktop, 2> lightDesktops { {
            { "light", 0xEFEFEF, 0x000000 },
            { "light, grey text", 0xF0F0F0, 0x777777 },
        } };
        for (const Desktop& d : lightDesktops) {
            for (const auto& [what, background] : painted) {
                QTest::addRow("%s, %s", d.name, what)
                    << d.window << d.text << background << false << (background == OnTheWindow ? 0xC00000u : d.text);
            }
        }
    }

    void paintedText()
    {
        QFETCH(quint32, window);
        QFETCH(quint32, text);
        QFETCH(quint32, background);
        QFETCH(bool, dark);
        QFETCH(quint32, expected);
        QCOMPARE(isDark(window, text), dark);
        const bool warning = background == OnTheWindow;
        const quint32 under = warning ? window : background;
        const quint32 colour = warning ? warningText(window, text) : textOn(background, text, window, text);
        if (!dark) {
            QCOMPARE(colour, expected);
            return;
        }
        QVERIFY2(TextContrast::ratio(colour, under) >= Readable,
                 qPrintable(QString::number(colour, 16) + QStringLiteral(" on ") + QString::number(under, 16)));
        // A warning stays a red: its strongest channel is red.
        if (warning)
            QVERIFY(((colour >> 16) & 0xFF) > ((colour >> 8) & 0xFF) && ((colour >> 8) & 0xFF) == (colour & 0xFF));
    }
};

QTEST_GUILESS_MAIN(TestTextContrast)
#include "tst_textcontrast.moc"
