// SPDX-License-Identifier: GPL-3.0-or-later
#include "sending/ApplicationSetup.h"
#include "sending/mStarter.h"
#include "toolkit/PlatformChoice.h"

#include <QApplication>

int main(int argc, char* argv[])
{
    // Before the application exists: it loads its platform plugin when it starts.
    PlatformChoice::apply();
    QApplication app(argc, argv);
    ApplicationSetup::apply(app);
    mStarter::Main();
    return QApplication::exec();
}
