// SPDX-License-Identifier: GPL-3.0-or-later
// Side windows that stand at the main window's right edge and follow it: whenever the main
// window moves, the side window moves so that its left edge is the main window's right edge and
// its top the main window's top (or as near as the screen allows). Its size stays, and a hidden
// side window moves too.
#pragma once

class QWidget;

namespace mMoveEvent {
// Starts following; false when sideWindow already follows mainWindow, so that it follows once.
// The hook ends by itself when either window is destroyed.
bool installHook(QWidget* mainWindow, QWidget* sideWindow);
void removeHook(QWidget* mainWindow, QWidget* sideWindow);
// Puts sideWindow at the right edge of mainWindow, as a move of the main window does; moved
// back onto the screen as far as it would stand beyond it.
void placeBeside(const QWidget* mainWindow, QWidget* sideWindow);
} // namespace mMoveEvent
