// SPDX-License-Identifier: GPL-3.0-or-later
// The deliberate pauses of the start and the end (200 ms a status line): pending window events
// run, then the thread sleeps. Tests set the length to 0.
#pragma once

namespace Pause {
void pumpAndSleep(int milliseconds);
void setLengthForTesting(int percent);
} // namespace Pause
