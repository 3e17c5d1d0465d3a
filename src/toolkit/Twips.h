// SPDX-License-Identifier: GPL-3.0-or-later
// Lengths given in twips: 1440 to the inch, so 15 twips are one pixel at 96 dpi.
#pragma once

namespace Twips {
inline constexpr int PerPixel = 15;

constexpr int toPixels(int twips)
{
    return twips / PerPixel;
}

constexpr int fromPixels(int pixels)
{
    return pixels * PerPixel;
}
} // namespace Twips
