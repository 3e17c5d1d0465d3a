// SPDX-License-Identifier: GPL-3.0-or-later
#include "WindowPlacement.h"

#include <algorithm>
#include <limits>

namespace WindowPlacement {
namespace {
// The position on one axis that keeps [at, at + length) within [low, high]; where it can't, the
// low end wins, so that a title bar or a left edge stays in sight.
int within(int at, int length, int low, int high)
{
    return std::max(low, std::min(at, high + 1 - length));
}

// How much of a title bar must lie on a screen for the user to take hold of it and drag.
constexpr int GripWidth = 100;

qint64 squaredDistance(const QRect& a, const QRect& b)
{
    const qint64 dx = std::max({ 0, b.left() - a.right(), a.left() - b.right() });
    const qint64 dy = std::max({ 0, b.top() - a.bottom(), a.top() - b.bottom() });
    return dx * dx + dy * dy;
}
} // namespace

QPoint followMain(const QRect& area, const QRect& mainFrame, const QSize& sideFrame, const QRect& commands)
{
    int x = std::min(mainFrame.right() + 1, area.right() + 1 - sideFrame.width());
    x = std::max(x, area.left());
    if (commands.isValid())
        x = std::max(x, commands.right() + 1);
    return { x, within(mainFrame.top(), sideFrame.height(), area.top(), area.bottom()) };
}

Pair besideMain(const QRect& area, const QRect& mainFrame, const QSize& sideFrame, const QRect& commands)
{
    QRect main = mainFrame;
    // Only as far as needed: a main window that leaves room beside it stays where it is.
    if (main.right() + sideFrame.width() > area.right())
        main.moveLeft(std::max(area.left(), area.right() + 1 - main.width() - sideFrame.width()));
    const int height = std::max(main.height(), sideFrame.height());
    if (main.top() + height - 1 > area.bottom())
        main.moveTop(std::max(area.top(), area.bottom() + 1 - height));
    const QRect movedCommands = commands.translated(main.topLeft() - mainFrame.topLeft());
    return { main.topLeft(), followMain(area, main, sideFrame, movedCommands) };
}

QRect ontoScreens(const QRect& frame, int titleBarHeight, const QList<QRect>& screens)
{
    const QRect titleBar(frame.topLeft(), QSize(frame.width(), std::max(1, titleBarHeight)));
    const int grip = std::min(GripWidth, frame.width());
    const QRect* nearest = nullptr;
    qint64 nearestDistance = std::numeric_limits<qint64>::max();
    // A title bar may be held where it spans two screens side by side.
    int held = 0;
    for (const QRect& screen : screens) {
        const QRect common = screen.intersected(titleBar);
        if (common.height() == titleBar.height())
            held += common.width();
        // The first of equally near screens, the primary one where it is among them.
        if (const qint64 distance = squaredDistance(screen, titleBar); distance < nearestDistance) {
            nearest = &screen;
            nearestDistance = distance;
        }
    }
    if (!nearest || held >= grip)
        return frame;
    QRect moved = frame;
    moved.moveTo(within(frame.left(), frame.width(), nearest->left(), nearest->right()),
                 within(frame.top(), frame.height(), nearest->top(), nearest->bottom()));
    return moved;
}

QSize contentRoom(const QRect& area)
{
    constexpr int TitleBar = 40;
    return area.size() - QSize(0, TitleBar);
}

} // namespace WindowPlacement
