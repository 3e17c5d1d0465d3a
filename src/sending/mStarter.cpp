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
    // The program presents itself under its product name. The settings keep their place, as the
    // store names it itself. No display name is set: it would be appended to every window title.
    QCoreApplication::setApplicationName(ProductName());

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
