// SPDX-License-Identifier: GPL-3.0-or-later
#include "OpenInBrowser.h"

#include "MessageBox.h"
#include "settings/CUrlStore.h"
#include "settings/ProductName.h"

#include <QDesktopServices>
#include <QUrl>

namespace tools {

bool OpenInBrowser(const QString& url, QWidget* parent)
{
    if (QDesktopServices::openUrl(QUrl::fromEncoded(url.toUtf8(), QUrl::TolerantMode)))
        return true;
    // The box names the homepage, whatever address was passed.
    MessageBox::show(parent,
                     QStringLiteral("Der Webbrowser konnte nicht geöffnet werden.\r\nUm zum Webinterface zu gelangen "
                                    "öffnen Sie bitte ")
                         + Urls().Homepage() + QStringLiteral("."),
                     MessageBox::Buttons::Ok, MessageBox::Icon::Critical, ProductName());
    return false;
}

} // namespace tools
