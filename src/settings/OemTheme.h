// SPDX-License-Identifier: GPL-3.0-or-later
// The look a branding file oem.inf gives the main window: header picture, text and background
// colours, copyright and whether the header's texts show. Without the file the designed look
// stays; with it, missing keys take the defaults below, so an almost empty file resets the
// colours to the system's.
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

struct OemTheme
{
    bool fileExists = false;
    QString headerPicture; // a file in the program's folder; empty keeps the designed picture
    QString logoPicture; // the splash's logo, likewise
    // Colours as the file gives them (0xBBGGRR or 0x800000nn); none for a value that isn't a
    // number, which keeps the designed colour.
    std::optional<qint64> headerColor;
    std::optional<qint64> headerInfoColor;
    std::optional<qint64> backgroundColor;
    QString copyright;
    bool hideHeaderStrings = false;
    // Values that can't be used, each as "[Section] Key=value: why", for the one who rebranded
    // the program; the designed look stands in for them.
    QStringList problems;

    static QString builtInCopyright();
    // Reads oem.inf from the program's folder.
    static OemTheme read();
};
