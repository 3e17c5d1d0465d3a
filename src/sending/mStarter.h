// SPDX-License-Identifier: GPL-3.0-or-later
// The start routine: the product name, the splash, the first-start decision and the main window.
#pragma once

namespace mStarter {
// Runs the start up to the shown main window; the caller then runs the event loop.
void Main();
} // namespace mStarter
