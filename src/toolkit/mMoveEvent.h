// SPDX-License-Identifier: GPL-3.0-or-later
// Side windows that stand at the main window's right edge and follow it: whenever the main
// window moves, the side window moves so that its left edge is the main window's right edge and
// its top the main window's top, as far as the screen allows and never over the main window's
// command buttons. Its size stays, and a hidden side window moves too.
#pragma once

#include <QList>

#include <functional>

class QWidget;

namespace mMoveEvent {
// Starts following; false when sideWindow already follows mainWindow, so that it follows once.
// The hook ends by itself when either window is destroyed.
bool installHook(QWidget* mainWindow, QWidget* sideWindow);
void removeHook(QWidget* mainWindow, QWidget* sideWindow);
// Puts sideWindow at the right edge of mainWindow. Where it doesn't fit there, mainWindow first
// narrows as far as it allows (see allowNarrowing), then sideWindow down to its minimum width,
// then mainWindow moves left until both stand whole side by side; only a screen too narrow for
// both lets the side window overlap mainWindow, and then not over its commands. A side window as
// tall as mainWindow stays as tall as it.
void placeBeside(QWidget* mainWindow, QWidget* sideWindow);
// The controls of mainWindow that a side window never covers: the commands the user needs at
// hand whatever stands beside the window.
void keepUncovered(QWidget* mainWindow, const QList<QWidget*>& commands);
// How mainWindow makes room for a side window: narrowTo(width) makes it at most that wide (its
// contents wrap), or as narrow as it can be.
void allowNarrowing(QWidget* mainWindow, std::function<void(int width)> narrowTo);
} // namespace mMoveEvent
