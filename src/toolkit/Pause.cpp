// SPDX-License-Identifier: GPL-3.0-or-later
#include "Pause.h"

#include <QCoreApplication>
#include <QThread>

namespace Pause {
namespace {
int& scalePercent()
{
    static int percent = 100;
    return percent;
}
} // namespace

void pumpAndSleep(int milliseconds)
{
    QCoreApplication::processEvents();
    const int length = milliseconds * scalePercent() / 100;
    if (length > 0)
        QThread::msleep(unsigned(length));
}

void setLengthForTesting(int percent)
{
    scalePercent() = percent;
}
} // namespace Pause
