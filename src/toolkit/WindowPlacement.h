// SPDX-License-Identifier: GPL-3.0-or-later
// Where windows stand on the screens: a side window beside the main window, and a window whose
// stored place lies on no present screen. Rectangles are frames (title bar and borders
// included) in the desktop's logical pixels; areas are the screens' available rectangles.
#pragma once

#include <QList>
#include <QPoint>
#include <QRect>
#include <QSize>

namespace WindowPlacement {

struct Pair
{
    QPoint main;
    QPoint side;
};

// A side window opens at the main window's right edge, with its top. Where it doesn't fit there,
// the main window moves left (and up, as far as the side window needs) until both stand whole
// side by side; only a screen too narrow for both lets the side window overlap the main window,
// and then never over `commands` (the main window's command buttons): it reaches beyond the
// screen instead.
Pair besideMain(const QRect& area, const QRect& mainFrame, const QSize& sideFrame, const QRect& commands);

// Where the side window goes when the main window has been moved: the main window stays where
// the user put it, and the side window keeps to its right edge as far as the screen allows,
// never over `commands`.
QPoint followMain(const QRect& area, const QRect& mainFrame, const QSize& sideFrame, const QRect& commands);

// A window whose title bar lies on none of `screens` comes onto the nearest of them, whole where
// it fits (its top left corner where it doesn't); a title bar that can be taken hold of on a
// screen leaves the window where it is.
QRect ontoScreens(const QRect& frame, int titleBarHeight, const QList<QRect>& screens);

// The size a window's contents may take on a screen's available area: a title bar's height (40
// pixels, a generous one) is left over.
QSize contentRoom(const QRect& area);

} // namespace WindowPlacement
