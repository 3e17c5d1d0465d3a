// SPDX-License-Identifier: GPL-3.0-or-later
#include "mStarter.h"

#include "account/frmFirstTime.h"
#include "frmMain.h"
#include "frmSplash.h"
#include "settings/ProductName.h"
#include "settings/cOptionen.h"

#include <QApplication>

namespace mStarter {
namespace {
// The splash, then the main window through its load sequence, announced on the splash.
void loadMain(frmSplash& splash)
{
    auto* main = new frmMain; // deletes itself when closed
    main->setAttribute(Qt::WA_DeleteOnClose);
    // The program ends with the main window's unload, which keeps the session; not when its last
    // visible window closes, which may be a side window while the main window is in the tray.
    QObject::connect(main, &QObject::destroyed, qApp, &QCoreApplication::quit, Qt::QueuedConnection);
    main->load(&splash);
    splash.close();
}

void loadMainAfterWizard()
{
    frmSplash splash;
    splash.show();
    splash.repaint();
    QCoreApplication::processEvents();
    loadMain(splash);
}
} // namespace

void Main()
{
    setProductName(readProductName());
    // The program presents itself under its product name. The settings keep their place, as the
    // store names it itself. No display name is set: it would be appended to every window title.
    QCoreApplication::setApplicationName(ProductName());
    QGuiApplication::setQuitOnLastWindowClosed(false);

    frmSplash splash;
    splash.show();
    splash.repaint();
    QCoreApplication::processEvents();

    if (Options().takeFirstStartDecision()) {
        // The wizard first; whichever way it goes away, the main window comes up after it.
        splash.close();
        auto* wizard = new frmFirstTime; // deletes itself when closed
        wizard->setAttribute(Qt::WA_DeleteOnClose);
        QObject::connect(wizard, &frmFirstTime::unloaded, qApp, &loadMainAfterWizard, Qt::QueuedConnection);
        wizard->show();
        return;
    }
    loadMain(splash);
}

} // namespace mStarter
