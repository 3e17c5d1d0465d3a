// SPDX-License-Identifier: GPL-3.0-or-later
#include "WebView.h"

#include "Codepage.h"

#include <QPointer>
#include <QVBoxLayout>
#include <QWebEnginePage>
#include <QWebEngineProfile>
#include <QWebEngineUrlRequestJob>
#include <QWebEngineUrlScheme>
#include <QWebEngineUrlSchemeHandler>
#include <QWebEngineView>

namespace {
const QList<QByteArray>& pseudoSchemes()
{
    static const QList<QByteArray> schemes = { "telefon", "close", "gruppe" };
    return schemes;
}

// A navigation to a pseudo-scheme that nobody cancelled ends here, unanswered.
class PseudoSchemeHandler : public QWebEngineUrlSchemeHandler
{
public:
    using QWebEngineUrlSchemeHandler::QWebEngineUrlSchemeHandler;
    void requestStarted(QWebEngineUrlRequestJob* job) override { job->fail(QWebEngineUrlRequestJob::RequestAborted); }
};

class Page : public QWebEnginePage
{
public:
    Page(QWebEngineProfile* profile, WebView* view)
        : QWebEnginePage(profile, view)
        , m_view(view)
    {
    }

protected:
    bool acceptNavigationRequest(const QUrl& url, NavigationType, bool) override
    {
        bool cancel = false;
        if (m_view)
            emit m_view->beforeNavigate(QString::fromLatin1(url.toEncoded()), &cancel);
        return !cancel;
    }

private:
    QPointer<WebView> m_view;
};

QWebEngineProfile* profile()
{
    QWebEngineProfile* p = QWebEngineProfile::defaultProfile();
    static bool installed = false;
    if (!installed) {
        installed = true;
        auto* handler = new PseudoSchemeHandler(p);
        for (const QByteArray& scheme : pseudoSchemes())
            p->installUrlSchemeHandler(scheme, handler);
    }
    return p;
}
} // namespace

void WebView::registerSchemes()
{
    for (const QByteArray& name : pseudoSchemes()) {
        QWebEngineUrlScheme scheme(name);
        scheme.setSyntax(QWebEngineUrlScheme::Syntax::Path);
        scheme.setFlags(QWebEngineUrlScheme::LocalAccessAllowed);
        QWebEngineUrlScheme::registerScheme(scheme);
    }
}

WebView::WebView(QWidget* parent)
    : QWidget(parent)
    , m_view(new QWebEngineView(this))
{
    m_view->setPage(new Page(profile(), this));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_view);
    connect(m_view, &QWebEngineView::loadFinished, this,
            [this](bool) { emit documentComplete(QString::fromLatin1(m_view->url().toEncoded())); });
}

void WebView::navigate(const QString& url)
{
    m_view->setUrl(Codepage::toUrl(url));
}

void WebView::setContextMenuEnabled(bool enabled)
{
    m_view->setContextMenuPolicy(enabled ? Qt::DefaultContextMenu : Qt::NoContextMenu);
}

QString WebView::currentUrl() const
{
    return QString::fromLatin1(m_view->url().toEncoded());
}
