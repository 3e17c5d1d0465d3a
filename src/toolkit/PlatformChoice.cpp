// SPDX-License-Identifier: GPL-3.0-or-later
#include "PlatformChoice.h"

#include <QtGlobal>

namespace PlatformChoice {

QByteArray platformFor(const Session& session)
{
    const bool x11 = !session.DISPLAY.isEmpty();
    if (!session.QT_QPA_PLATFORM.isEmpty()) {
        // Qt tries the platforms of a list in turn; a single one it can't load ends the program.
        if (x11 && !session.QT_QPA_PLATFORM.contains(';') && session.QT_QPA_PLATFORM.startsWith("wayland"))
            return QByteArray(session.QT_QPA_PLATFORM).append(";xcb");
        return {};
    }
    const bool wayland = !session.WAYLAND_DISPLAY.isEmpty() || session.XDG_SESSION_TYPE == "wayland";
    if (wayland && x11)
        return "xcb";
    return {};
}

void apply()
{
    const Session session { qgetenv("QT_QPA_PLATFORM"), qgetenv("WAYLAND_DISPLAY"), qgetenv("DISPLAY"),
                            qgetenv("XDG_SESSION_TYPE") };
    const QByteArray platform = platformFor(session);
    if (!platform.isEmpty())
        qputenv("QT_QPA_PLATFORM", platform);
    // GTK's platform theme (the desktop's dialogs and colours) starts GTK, whose own bridge
    // would put a second, empty "quellbote" on the accessibility bus beside the program's.
    if (!qEnvironmentVariableIsSet("NO_AT_BRIDGE"))
        qputenv("NO_AT_BRIDGE", "1");
}

} // namespace PlatformChoice
