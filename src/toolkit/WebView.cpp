// SPDX-License-Identifier: GPL-3.0-or-later
#include "WebView.h"

#include "Codepage.h"

#include <QPointer>
#include <QRegularExpression>
#include <QVBoxLayout>
#include <QWebEnginePage>
#include <QWebEngineProfile>
#include <QWebEngineScript>
#include <QWebEngineScriptCollection>
#include <QWebEngineUrlRequestJob>
#include <QWebEngineUrlScheme>
#include <QWebEngineUrlSchemeHandler>
#include <QWebEngineView>

namespace {
const QList<QByteArray>& pseudoSchemes()
{
    static const QList<QByteArray> schemes = { "telefon", "close", "gruppe", "quellbote-raw" };
    return schemes;
}

// A click on a link to a pseudo-address is sent on as "quellbote-raw:" and the link's address
// exactly as the page wrote it. Taken apart as a URL, "telefon://Name@0043/664/1" would have
// its "host" 0043 turned into the address 0.0.0.35, and a name with a blank would not pass.
const QString RawScheme = QStringLiteral("quellbote-raw");
const char* const RawLinkScript = R"(
document.addEventListener('click', function (event) {
    var link = event.target && event.target.closest ? event.target.closest('a[href]') : null;
    if (!link)
        return;
    var href = link.getAttribute('href');
    if (/^(telefon:|gruppe:|close:|http:\/\/gruppe\/)/i.test(href)) {
        event.preventDefault();
        window.location.href = 'quellbote-raw:' + encodeURIComponent(href);
    }
}, true);
)";

bool isPseudoAddress(const QString& url)
{
    static const QRegularExpression pattern(QStringLiteral("^(telefon:|gruppe:|close:|http://gruppe/)"),
                                            QRegularExpression::CaseInsensitiveOption);
    return pattern.match(url).hasMatch();
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
        if (!m_view)
            return true;
        if (url.scheme() == RawScheme) {
            // A pseudo-address leads nowhere, whether the window cancels it or not.
            m_view->deliverPseudoAddress(QUrl::fromPercentEncoding(url.path(QUrl::FullyEncoded).toLatin1()));
            return false;
        }
        bool cancel = false;
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
    QWebEngineScript rawLinks;
    rawLinks.setName(QStringLiteral("quellbote-raw-links"));
    rawLinks.setSourceCode(QString::fromLatin1(RawLinkScript));
    rawLinks.setInjectionPoint(QWebEngineScript::DocumentCreation);
    rawLinks.setWorldId(QWebEngineScript::ApplicationWorld);
    rawLinks.setRunsOnSubFrames(true);
    m_view->page()->scripts().insert(rawLinks);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_view);
    connect(m_view, &QWebEngineView::loadFinished, this,
            [this](bool) { emit documentComplete(QString::fromLatin1(m_view->url().toEncoded())); });
}

void WebView::navigate(const QString& url)
{
    // A pseudo-address reaches the window as written, as a click on such a link does.
    if (isPseudoAddress(url)) {
        deliverPseudoAddress(url);
        return;
    }
    m_view->setUrl(Codepage::toUrl(url));
}

void WebView::deliverPseudoAddress(const QString& url)
{
    bool cancel = false;
    emit beforeNavigate(url, &cancel);
}

void WebView::setContextMenuEnabled(bool enabled)
{
    m_view->setContextMenuPolicy(enabled ? Qt::DefaultContextMenu : Qt::NoContextMenu);
}

QString WebView::currentUrl() const
{
    return QString::fromLatin1(m_view->url().toEncoded());
}
