// SPDX-License-Identifier: GPL-3.0-or-later
#include "frmHelp.h"

#include "settings/CUrlStore.h"
#include "settings/ProductName.h"
#include "toolkit/DefaultInstance.h"
#include "toolkit/HeaderBand.h"
#include "toolkit/WebView.h"

#include <QIcon>
#include <QVBoxLayout>

frmHelp* frmHelp::showHelp()
{
    QPointer<frmHelp>& window = defaultInstance<frmHelp>();
    if (!window)
        window = new frmHelp; // deletes itself when closed, or with the main window
    window->show();
    window->raise();
    window->activateWindow();
    return window;
}

frmHelp* frmHelp::loaded()
{
    return defaultInstance<frmHelp>();
}

frmHelp::frmHelp()
    : QWidget(nullptr)
{
    setObjectName(QStringLiteral("frmHelp"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(ProductName() + QStringLiteral(" Hilfe"));
    setWindowIcon(QIcon(QStringLiteral(":/pictures/help.svg")));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    auto* header = new HeaderBand(QStringLiteral("Online Hilfe"),
                                  QStringLiteral("Die Hilfe ist nur bei einer Verbindung zum Internet verfügbar."),
                                  QStringLiteral(":/pictures/help.svg"), this);
    header->setObjectName(QStringLiteral("header"));
    layout->addWidget(header);
    browser = new WebView(this);
    browser->setObjectName(QStringLiteral("browser"));
    browser->setAccessibleName(QStringLiteral("Online Hilfe"));
    layout->addWidget(browser, 1);
    resize(760, 600);
    browser->navigate(Urls().Helppage());
}

frmHelp::~frmHelp() = default;
