// SPDX-License-Identifier: GPL-3.0-or-later
// "Now" for the whole program, so that tests can set the date and time the rules see.
#pragma once

#include <QDateTime>

namespace Clock {
QDateTime now();
// A valid value pins "now"; an invalid one returns to the system clock.
void setNow(const QDateTime& now);
// Whether "now" is pinned by setNow.
bool isPinned();
} // namespace Clock
