// SPDX-License-Identifier: GPL-3.0-or-later
// Which window system the program runs on. On Wayland a program can't place its windows, so the
// MultiSMS editor and the phonebook could not stand beside the main window: where the session
// also offers X11 (XWayland), the program takes it, unless the user chose a platform. A platform
// the user chose gets X11 as a fallback, so that a missing Wayland plugin doesn't end the program
// at start.
#pragma once

#include <QByteArray>

namespace PlatformChoice {

struct Session
{
    QByteArray QT_QPA_PLATFORM; // as the user set it; empty when not
    QByteArray WAYLAND_DISPLAY;
    QByteArray DISPLAY;
    QByteArray XDG_SESSION_TYPE;
};

// The value to put into QT_QPA_PLATFORM before the application starts; empty to leave it as it is.
QByteArray platformFor(const Session& session);

// Reads the session from the environment and sets QT_QPA_PLATFORM where platformFor says so;
// keeps GTK's accessibility bridge out, as the program has its own.
void apply();

} // namespace PlatformChoice
