// SPDX-License-Identifier: GPL-3.0-or-later
#include "VbColor.h"

#include <QGuiApplication>
#include <QPalette>

#include <array>

namespace VbColor {
namespace {
constexpr std::array<const char16_t*, 25> SystemColorNames = {
    u"Scrollbar",       u"Background",    u"ActiveCaption",    u"InactiveCaption",     u"Menu",
    u"Window",          u"WindowFrame",   u"MenuText",         u"WindowText",          u"CaptionText",
    u"ActiveBorder",    u"InactiveBorder", u"AppWorkspace",    u"Highlight",           u"HighlightText",
    u"ButtonFace",      u"ButtonShadow",  u"GrayText",         u"ButtonText",          u"InactiveCaptionText",
    u"ButtonHighlight", u"ThreeDDarkShadow", u"ThreeDLightShadow", u"InfoText",        u"InfoBackground",
};

// The palette role that plays the part of each system colour on this platform.
QColor systemColor(int index)
{
    const QPalette palette = QGuiApplication::palette();
    switch (index) {
    case 0: // Scrollbar
    case 15: // ButtonFace
    case 11: // InactiveBorder
    case 4: // Menu
        return palette.color(QPalette::Button);
    case 1: // Background (desktop)
    case 12: // AppWorkspace
        return palette.color(QPalette::Dark);
    case 2: // ActiveCaption
    case 13: // Highlight
        return palette.color(QPalette::Highlight);
    case 3: // InactiveCaption
    case 10: // ActiveBorder
        return palette.color(QPalette::Inactive, QPalette::Highlight);
    case 5: // Window
        return palette.color(QPalette::Base);
    case 6: // WindowFrame
    case 21: // ThreeDDarkShadow
        return palette.color(QPalette::Shadow);
    case 7: // MenuText
    case 8: // WindowText
        return palette.color(QPalette::Text);
    case 9: // CaptionText
    case 14: // HighlightText
        return palette.color(QPalette::HighlightedText);
    case 16: // ButtonShadow
        return palette.color(QPalette::Mid);
    case 17: // GrayText
        return palette.color(QPalette::Disabled, QPalette::Text);
    case 18: // ButtonText
        return palette.color(QPalette::ButtonText);
    case 19: // InactiveCaptionText
        return palette.color(QPalette::Inactive, QPalette::HighlightedText);
    case 20: // ButtonHighlight
        return palette.color(QPalette::Light);
    case 22: // ThreeDLightShadow
        return palette.color(QPalette::Midlight);
    case 23: // InfoText
        return palette.color(QPalette::ToolTipText);
    case 24: // InfoBackground
        return palette.color(QPalette::ToolTipBase);
    default:
        return {};
    }
}
} // namespace

QString systemColorName(int index)
{
    if (index < 0 || index >= int(SystemColorNames.size()))
        return {};
    return QString::fromUtf16(SystemColorNames[size_t(index)]);
}

QColor toQColor(qint64 value)
{
    const quint32 bits = quint32(value);
    if (bits & 0x80000000u)
        return systemColor(int(bits & 0xFFu));
    return QColor(int(bits & 0xFF), int((bits >> 8) & 0xFF), int((bits >> 16) & 0xFF));
}

qint64 fromQColor(const QColor& color)
{
    return qint64(color.red()) | (qint64(color.green()) << 8) | (qint64(color.blue()) << 16);
}

} // namespace VbColor
