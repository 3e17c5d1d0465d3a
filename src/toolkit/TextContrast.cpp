// SPDX-License-Identifier: GPL-3.0-or-later
#include "TextContrast.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace TextContrast {
namespace {
constexpr quint32 Black = 0x000000;
constexpr quint32 White = 0xFFFFFF;
constexpr quint32 DarkRed = 0xC00000;
// Light reds of rising lightness for dark windows; the first readable one is taken.
constexpr std::array<quint32, 4> LightReds { 0xFF6B6B, 0xFF8A8A, 0xFFA8A8, 0xFFC8C8 };

int channel(quint32 rgb, int shift)
{
    return int((rgb >> shift) & 0xFF);
}

double linear(int value)
{
    const double c = value / 255.0;
    return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
}

double luminance(quint32 rgb)
{
    return 0.2126 * linear(channel(rgb, 16)) + 0.7152 * linear(channel(rgb, 8)) + 0.0722 * linear(channel(rgb, 0));
}

// As a colour's HSL lightness: the mean of its strongest and weakest channel.
int lightness(quint32 rgb)
{
    const int r = channel(rgb, 16), g = channel(rgb, 8), b = channel(rgb, 0);
    return (std::max({ r, g, b }) + std::min({ r, g, b })) / 2;
}
} // namespace

double ratio(quint32 a, quint32 b)
{
    const double la = luminance(a);
    const double lb = luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

bool isDark(quint32 window, quint32 text)
{
    return lightness(window) < lightness(text);
}

quint32 readableOn(quint32 background, quint32 preferred)
{
    if (ratio(background, preferred) >= Readable)
        return preferred;
    return ratio(background, Black) >= ratio(background, White) ? Black : White;
}

quint32 textOn(quint32 background, quint32 text, quint32 window, quint32 windowText)
{
    return isDark(window, windowText) ? readableOn(background, text) : text;
}

quint32 warningText(quint32 window, quint32 text)
{
    if (!isDark(window, text))
        return DarkRed;
    for (const quint32 red : LightReds) {
        if (ratio(window, red) >= Readable)
            return red;
    }
    // A window too light for any red that is still a red: white reads best on it.
    return readableOn(window, LightReds.back());
}

} // namespace TextContrast
