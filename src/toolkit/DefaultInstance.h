// SPDX-License-Identifier: GPL-3.0-or-later
// The one instance of a window that is made on first use and goes when it is unloaded (closed
// with Qt::WA_DeleteOnClose, or deleted with the main window): null while none is loaded.
#pragma once

#include <QPointer>

template<typename Window> QPointer<Window>& defaultInstance()
{
    static QPointer<Window> window;
    return window;
}
