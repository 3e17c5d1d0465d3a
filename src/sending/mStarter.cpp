// SPDX-License-Identifier: GPL-3.0-or-later
#include "mStarter.h"

#include "account/frmFirstTime.h"
#include "frmMain.h"
#include "frmSplash.h"
#include "settings/OemTheme.h"
#include "settings/ProductName.h"
#include "settings/ProgramFolder.h"
#include "settings/cOptionen.h"
#include "toolkit/MessageBox.h"

#include <QApplication>
#include <QImage>

namespace mStarter {
namespace {
// What of oem.inf can't be used: colours that are no numbers, pictures that can't be read.
QStringList brandingProblems()
{
    const OemTheme theme = OemTheme::read();
    QStringList problems = theme.problems;
    for (const auto& [key, file] :
         { std::pair { u"Header", theme.headerPicture }, std::pair { u"Logo", theme.logoPicture } }) {
        if (!file.isEmpty() && QImage(ProgramFolder::path() + u'/' + file).isNull())
            problems.append(QStringLiteral("[Images] %1=%2: kein lesbares Bild").arg(QString::fromUtf16(key), file));
    }
    return problems;
}

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

    // A rebranding that can't be used is told once, to whoever made it; the program goes on with
    // the designed look in its place.
    if (const QStringList problems = brandingProblems(); !problems.isEmpty()) {
        MessageBox::show(&splash,
                         QStringLiteral("Die Datei oem.inf enthält Werte, die nicht verwendet werden können. An ihrer "
                                        "Stelle gilt das vorgesehene Aussehen.\r\n\r\n")
                             + problems.join(QStringLiteral("\r\n")),
                         MessageBox::Buttons::Ok, MessageBox::Icon::Warning, ProductName());
    }

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
