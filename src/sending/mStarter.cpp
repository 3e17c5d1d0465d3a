// SPDX-License-Identifier: GPL-3.0-or-later
#include "mStarter.h"

#include "frmMain.h"
#include "frmSplash.h"
#include "settings/ProductName.h"
#include "settings/cOptionen.h"

#include <QApplication>

namespace mStarter {

void Main()
{
    setProductName(readProductName());
    QGuiApplication::setApplicationDisplayName(ProductName());

    frmSplash splash;
    splash.show();
    splash.repaint();
    QCoreApplication::processEvents();

    // The first-start wizard comes in the account work; until then the main window opens.
    Options().takeFirstStartDecision();

    auto* main = new frmMain;
    main->setAttribute(Qt::WA_DeleteOnClose);
    main->load(&splash);
    splash.close();
}

} // namespace mStarter
