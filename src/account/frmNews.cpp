// SPDX-License-Identifier: GPL-3.0-or-later
#include "frmNews.h"

#include "sending/frmMain.h"
#include "settings/CUrlStore.h"
#include "settings/ProductName.h"
#include "settings/ProxyConfig.h"
#include "settings/cOptionen.h"
#include "settings/tools.h"
#include "toolkit/DefaultInstance.h"
#include "toolkit/HeaderBand.h"
#include "toolkit/Inet.h"
#include "toolkit/WebView.h"

#include <QIcon>
#include <QLabel>
#include <QTimer>
#include <QVBoxLayout>

frmNews* frmNews::load()
{
    if (!defaultInstance<frmNews>())
        defaultInstance<frmNews>() = new frmNews; // deletes itself when closed, or with the main window
    return defaultInstance<frmNews>();
}

frmNews* frmNews::loaded()
{
    return defaultInstance<frmNews>();
}

frmNews::frmNews()
    : QWidget(nullptr)
{
    setObjectName(QStringLiteral("frmNews"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(ProductName());
    setWindowIcon(QIcon(QStringLiteral(":/pictures/logo.svg")));
    m_layout = new QVBoxLayout(this);
    m_layout->setContentsMargins(0, 0, 0, 0);
    auto* header = new HeaderBand(QStringLiteral("Neues von ") + ProductName(),
                                  QStringLiteral("Wichtige Informationen und neue Funktionen"),
                                  QStringLiteral(":/pictures/logo.svg"), this);
    header->titleLabel()->setObjectName(QStringLiteral("lblHeadline"));
    header->textLabel()->setObjectName(QStringLiteral("Label1"));
    m_layout->addWidget(header);
    iNet = new Inet(this);
    iNet->setObjectName(QStringLiteral("iNet"));
    iNet->setAccessType(ProxyConfig::GetAccessType());
    iNet->setProxy(ProxyConfig::GetProxyString());
    resize(640, 520);
}

frmNews::~frmNews() = default;

void frmNews::checkForInfo()
{
    if (!Options().FirstStartHasRun())
        return;
    bool ok = false;
    const QString text = iNet->OpenURL(Urls().CheckInfo(), &ok);
    // Not a number (an error page, a failed fetch): nothing, and the window stays unseen.
    bool isNumber = false;
    const qint16 n = tools::NumericToInt16(text, &isNumber);
    if (!ok || !tools::IsNumeric(text) || !isNumber)
        return;
    if (n == -1) {
        // Shown at every start; the number the user has seen stays.
        navigateToNews();
        return;
    }
    if (Options().InfoVersion() >= n) {
        close();
        return;
    }
    navigateToNews();
    Options().setInfoVersion(n);
    Options().save();
}

void frmNews::navigateToNews()
{
    if (!wBrowser) {
        wBrowser = new WebView(this);
        wBrowser->setObjectName(QStringLiteral("wBrowser"));
        wBrowser->setAccessibleName(QStringLiteral("Neues von ") + ProductName());
        m_layout->addWidget(wBrowser, 1);
        connect(wBrowser, &WebView::documentComplete, this, &frmNews::wBrowser_DocumentComplete);
        // The page's close link: the navigation goes ahead, the window goes.
        connect(wBrowser, &WebView::beforeNavigate, this, [this](const QString& url, bool*) {
            if (url.contains(QStringLiteral("close://")))
                QTimer::singleShot(0, this, [this] {
                    close();
                    if (frmMain* main = frmMain::instance())
                        main->activateWindow();
                });
        });
    }
    wBrowser->navigate(Urls().News());
}

void frmNews::wBrowser_DocumentComplete(const QString& url)
{
    if (url == u"http:///")
        return;
    show();
    raise();
    activateWindow();
}
