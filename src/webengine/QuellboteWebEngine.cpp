// SPDX-License-Identifier: GPL-3.0-or-later
// The web engine module: Qt WebEngine behind the program's WebView. Loaded when the first page is
// shown (see WebEngineLoader), so it registers the pseudo-schemes itself before it makes anything
// of the engine.
#include "toolkit/WebEngineSurface.h"

#include <QDateTime>
#include <QObject>
#include <QPointer>
#include <QSslCertificate>
#include <QSslError>
#include <QWebEngineCertificateError>
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
// its "host" 0043 turned into the address 0.0.0.35, a name with a blank would not pass, and
// "http://gruppe://x" would arrive as "http://gruppe//x".
const QString RawScheme = QStringLiteral("quellbote-raw");
QString rawLinkScript()
{
    return QStringLiteral(R"(
(function () {
    var pseudo = new RegExp('%1');
    document.addEventListener('click', function (event) {
        var link = event.target && event.target.closest ? event.target.closest('a[href]') : null;
        if (!link)
            return;
        var href = link.getAttribute('href');
        if (pseudo.test(href)) {
            event.preventDefault();
            window.location.href = 'quellbote-raw:' + encodeURIComponent(href);
        }
    }, true);
})();
)")
        .arg(QString::fromLatin1(PseudoAddressPattern));
}

// A phonebook entry's link names the contact; its number stands beside it as plain text, which a
// screen reader going from link to link never reaches. The number the link carries ("telefon://
// Name@Number") joins its accessible name, the page's text stays as it is.
QString numberLabelScript()
{
    return QStringLiteral(R"(
(function () {
    document.querySelectorAll('a[href^="telefon://"]').forEach(function (link) {
        if (link.hasAttribute('aria-label'))
            return;
        var href = link.getAttribute('href');
        var at = href.lastIndexOf('@');
        if (at < 0)
            return;
        var number = href.slice(at + 1);
        try { number = decodeURIComponent(number); } catch (e) {}
        var name = link.textContent.trim();
        if (number && name.indexOf(number) < 0)
            link.setAttribute('aria-label', name + ', ' + number);
    });
})();
)");
}

// A navigation to a pseudo-scheme that nobody cancelled ends here, unanswered.
class PseudoSchemeHandler : public QWebEngineUrlSchemeHandler
{
public:
    using QWebEngineUrlSchemeHandler::QWebEngineUrlSchemeHandler;
    void requestStarted(QWebEngineUrlRequestJob* job) override { job->fail(QWebEngineUrlRequestJob::RequestAborted); }
};

// Why the engine refused a server's certificate, as the program's transfers name it.
QList<QSslError> sslErrorsOf(const QWebEngineCertificateError& error)
{
    const QList<QSslCertificate> chain = error.certificateChain();
    const QSslCertificate first = chain.isEmpty() ? QSslCertificate() : chain.constFirst();
    switch (error.type()) {
    case QWebEngineCertificateError::CertificateAuthorityInvalid:
        return { QSslError(QSslError::CertificateUntrusted, first) };
    case QWebEngineCertificateError::CertificateDateInvalid:
        // The engine tells expired and not yet valid apart by no type of their own.
        return { QSslError(first.expiryDate() < QDateTime::currentDateTimeUtc() ? QSslError::CertificateExpired
                                                                                : QSslError::CertificateNotYetValid,
                           first) };
    case QWebEngineCertificateError::CertificateCommonNameInvalid:
        return { QSslError(QSslError::HostNameMismatch, first) };
    case QWebEngineCertificateError::CertificateRevoked:
        return { QSslError(QSslError::CertificateRevoked, first) };
    default:
        return { QSslError(QSslError::UnspecifiedError, first) };
    }
}

// In place of a page whose server wasn't trusted: what the program's other windows would say.
QString refusedPage(const QString& reason)
{
    return QStringLiteral("<!DOCTYPE html><html lang=\"de\"><head><meta charset=\"utf-8\"><title>Nicht "
                          "vertrauenswürdig</title></head><body style=\"font-family:sans-serif;margin:24px\">"
                          "<h3>Die Seite kann nicht angezeigt werden.</h3><p>%1</p><p>Es wurde nichts an den "
                          "Server gesendet.</p></body></html>")
        .arg(reason.toHtmlEscaped());
}

class Page : public QWebEnginePage
{
public:
    Page(QWebEngineProfile* profile, const WebEngineHandlers& handlers, QObject* parent)
        : QWebEnginePage(profile, parent)
        , m_handlers(handlers)
    {
        // Not accepted, the certificate is refused; nothing ever accepts one the system doesn't
        // trust. The page that failed then gives way to the reason.
        connect(this, &QWebEnginePage::certificateError, this, [this](const QWebEngineCertificateError& error) {
            m_refusal = m_handlers.describeCertificate(error.url().host(), sslErrorsOf(error));
        });
        connect(this, &QWebEnginePage::loadFinished, this, [this](bool ok) {
            if (ok || m_refusal.isEmpty())
                return;
            setHtml(refusedPage(m_refusal), QUrl(QStringLiteral("about:blank")));
            m_refusal.clear();
        });
    }

protected:
    bool acceptNavigationRequest(const QUrl& url, NavigationType, bool) override
    {
        if (url.scheme() == RawScheme) {
            // A pseudo-address leads nowhere, whether the window cancels it or not.
            m_handlers.pseudoAddress(QUrl::fromPercentEncoding(url.path(QUrl::FullyEncoded).toLatin1()));
            return false;
        }
        return m_handlers.navigation(QString::fromLatin1(url.toEncoded()));
    }

private:
    WebEngineHandlers m_handlers;
    QString m_refusal;
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

class EngineView : public QWebEngineView, public WebEngineSurface
{
public:
    EngineView(QWidget* parent, const WebEngineHandlers& handlers)
        : QWebEngineView(parent)
    {
        setPage(new Page(profile(), handlers, this));
        QWebEngineScript rawLinks;
        rawLinks.setName(QStringLiteral("quellbote-raw-links"));
        rawLinks.setSourceCode(rawLinkScript());
        rawLinks.setInjectionPoint(QWebEngineScript::DocumentCreation);
        rawLinks.setWorldId(QWebEngineScript::ApplicationWorld);
        rawLinks.setRunsOnSubFrames(true);
        page()->scripts().insert(rawLinks);
        QWebEngineScript numberLabels;
        numberLabels.setName(QStringLiteral("quellbote-number-labels"));
        numberLabels.setSourceCode(numberLabelScript());
        numberLabels.setInjectionPoint(QWebEngineScript::DocumentReady);
        numberLabels.setWorldId(QWebEngineScript::ApplicationWorld);
        page()->scripts().insert(numberLabels);
        connect(this, &QWebEngineView::loadFinished, this,
                [this, loaded = handlers.loaded](bool) { loaded(EngineView::url()); });
    }

    QWidget* widget() override { return this; }
    void load(const QUrl& url) override { setUrl(url); }
    QString url() const override { return QString::fromLatin1(QWebEngineView::url().toEncoded()); }
    void setContextMenuEnabled(bool enabled) override
    {
        setContextMenuPolicy(enabled ? Qt::DefaultContextMenu : Qt::NoContextMenu);
    }
    void focusFirstLink() override
    {
        setFocus(Qt::OtherFocusReason);
        page()->runJavaScript(QStringLiteral("(function () { var a = document.querySelector('a[href]'); "
                                             "if (a) a.focus(); })();"),
                              QWebEngineScript::ApplicationWorld);
    }
};

void registerSchemes()
{
    for (const QByteArray& name : pseudoSchemes()) {
        QWebEngineUrlScheme scheme(name);
        scheme.setSyntax(QWebEngineUrlScheme::Syntax::Path);
        scheme.setFlags(QWebEngineUrlScheme::LocalAccessAllowed);
        QWebEngineUrlScheme::registerScheme(scheme);
    }
}
} // namespace

class QuellboteWebEngine : public QObject, public WebEngineFactory
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID WebEngineFactory_iid)
    Q_INTERFACES(WebEngineFactory)

public:
    // The schemes must be known before the engine makes its first profile. The engine reads
    // whether to offer its pages to screen readers once, as it starts; on Linux it does not unless
    // told to.
    QuellboteWebEngine()
    {
        if (!qEnvironmentVariableIsSet("QTWEBENGINE_ENABLE_LINUX_ACCESSIBILITY"))
            qputenv("QTWEBENGINE_ENABLE_LINUX_ACCESSIBILITY", "1");
        registerSchemes();
    }

    WebEngineSurface* create(QWidget* parent, WebEngineHandlers handlers) override
    {
        return new EngineView(parent, handlers); // owned by parent
    }
};

#include "QuellboteWebEngine.moc"
