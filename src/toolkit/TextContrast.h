// SPDX-License-Identifier: GPL-3.0-or-later
// Readable text on light and dark desktops: the contrast of two colours as WCAG measures it, and
// the text colours the program chooses where its own backgrounds meet a dark theme. Colours are
// 0xRRGGBB.
#pragma once

#include <QtGlobal>

namespace TextContrast {

// The least contrast of text to its background that stays readable (WCAG AA for normal text).
constexpr double Readable = 4.5;

// From 1 (the same luminance) to 21 (black on white), whichever of the two is the lighter.
double ratio(quint32 a, quint32 b);

// A dark desktop: its window colour is less light than its text.
bool isDark(quint32 window, quint32 text);

// `preferred` where it is readable on `background`, otherwise black or white, whichever reads
// better there.
quint32 readableOn(quint32 background, quint32 preferred);

// The colour of the desktop's `text` painted on a `background` of the program's own (a marked
// field, a chosen pane's button): as it is on a light desktop, readableOn on a dark one, whose
// light text would vanish on the program's light backgrounds.
quint32 textOn(quint32 background, quint32 text, quint32 window, quint32 windowText);

// The red of a warning on the window: the dark red 0xC00000 on a light desktop, a light red
// that is readable on the window on a dark one.
quint32 warningText(quint32 window, quint32 text);

} // namespace TextContrast
