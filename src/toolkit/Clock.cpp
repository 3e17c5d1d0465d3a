// SPDX-License-Identifier: GPL-3.0-or-later
#include "Clock.h"

namespace Clock {
namespace {
QDateTime& pinned()
{
    static QDateTime value;
    return value;
}
} // namespace

QDateTime now()
{
    return pinned().isValid() ? pinned() : QDateTime::currentDateTime();
}

bool isPinned()
{
    return pinned().isValid();
}

void setNow(const QDateTime& value)
{
    pinned() = value;
}
} // namespace Clock
