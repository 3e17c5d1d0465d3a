// SPDX-License-Identifier: GPL-3.0-or-later
#include "sending/ApplicationSetup.h"
#include "sending/mStarter.h"

#include <QApplication>

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    ApplicationSetup::apply(app);
    mStarter::Main();
    return QApplication::exec();
}
