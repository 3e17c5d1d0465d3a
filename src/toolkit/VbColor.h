// SPDX-License-Identifier: GPL-3.0-or-later
// Colour values in the form the branding file and the settings use: 0xBBGGRR for a plain
// colour, 0x800000nn for the system colour with index nn.
#pragma once

#include <QColor>
#include <QString>

namespace VbColor {

// The name of system colour nn ("ButtonFace" for 15), empty for an index without a name.
QString systemColorName(int index);

// The colour a value stands for, system colours taken from the application's palette.
QColor toQColor(qint64 value);

// A plain colour back to 0xBBGGRR.
qint64 fromQColor(const QColor& color);

inline constexpr qint64 SystemWindow = 0x80000005;
inline constexpr qint64 SystemButtonFace = 0x8000000F;

} // namespace VbColor
