// SPDX-License-Identifier: GPL-3.0-or-later
#include "WebView.h"

#include "Codepage.h"
#include "Inet.h"
#include "WebEngineLoader.h"
#include "WebEngineSurface.h"

#include <QLabel>
#include <QRegularExpression>
#include <QVBoxLayout>

namespace {
bool isPseudoAddress(const QString& url)
{
    static const QRegularExpression pattern(QString::fromLatin1(PseudoAddressPattern));
    return pattern.match(url).hasMatch();
}
} // namespace

WebView::WebView(QWidget* parent)
    : QWidget(parent)
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
}

WebEngineSurface* WebView::engine()
{
    if (m_engine || m_engineFailed)
        return m_engine;
    WebEngineFactory* factory = WebEngineLoader::factory();
    if (!factory) {
        // The page can't be shown; the window around it stays usable.
        m_engineFailed = true;
        auto* message = new QLabel(QStringLiteral("Die Webseite kann nicht angezeigt werden, weil die "
                                                  "Webansicht nicht geladen werden konnte:\n")
                                       + WebEngineLoader::errorString(),
                                   this);
        message->setObjectName(QStringLiteral("lblWebViewMissing"));
        message->setWordWrap(true);
        message->setAlignment(Qt::AlignCenter);
        layout()->addWidget(message);
        return nullptr;
    }
    WebEngineHandlers handlers;
    handlers.navigation = [this](const QString& url) {
        bool cancel = false;
        emit beforeNavigate(url, &cancel);
        return !cancel;
    };
    handlers.pseudoAddress = [this](const QString& url) {
        deliverPseudoAddress(url);
    };
    handlers.loaded = [this](const QString& url) {
        emit documentComplete(url);
    };
    handlers.describeCertificate = &certificateFailureText;
    m_engine = factory->create(this, handlers);
    m_engine->setContextMenuEnabled(m_contextMenuEnabled);
    layout()->addWidget(m_engine->widget());
    return m_engine;
}

void WebView::navigate(const QString& url)
{
    // A pseudo-address reaches the window as written, as a click on such a link does.
    if (isPseudoAddress(url)) {
        deliverPseudoAddress(url);
        return;
    }
    if (WebEngineSurface* surface = engine())
        surface->load(Codepage::toUrl(url));
}

void WebView::deliverPseudoAddress(const QString& url)
{
    bool cancel = false;
    emit beforeNavigate(url, &cancel);
}

void WebView::focusFirstLink()
{
    if (m_engine)
        m_engine->focusFirstLink();
}

void WebView::setContextMenuEnabled(bool enabled)
{
    m_contextMenuEnabled = enabled;
    if (m_engine)
        m_engine->setContextMenuEnabled(enabled);
}

bool WebView::canShowPages()
{
    return engine() != nullptr;
}

QString WebView::currentUrl() const
{
    return m_engine ? m_engine->url() : QString();
}
