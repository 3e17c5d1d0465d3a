// SPDX-License-Identifier: GPL-3.0-or-later
#include "Inet.h"

#include "Codepage.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <QSslConfiguration>
#include <QSslError>
#include <QStringDecoder>
#include <QTimer>
#include <QUrl>

#include <cstring>
#include <optional>

QString decodeHttpBody(const QByteArray& body, const QByteArray& contentType)
{
    const QByteArray lower = contentType.toLower();
    const qsizetype at = lower.indexOf("charset=");
    if (at >= 0) {
        QByteArray name = contentType.mid(at + 8).trimmed();
        const qsizetype end = name.indexOf(';');
        if (end >= 0)
            name.truncate(end);
        name = name.trimmed();
        if (name.startsWith('"') && name.endsWith('"') && name.size() >= 2)
            name = name.mid(1, name.size() - 2);
        // The gateway's own code page, which Codepage decodes without a converter of its own for
        // nearly every answer.
        if (name.compare("windows-1252", Qt::CaseInsensitive) == 0)
            return Codepage::fromWindows1252(body);
        QStringDecoder decoder(name.constData());
        if (decoder.isValid())
            return decoder.decode(body);
    }
    return Codepage::fromWindows1252(body);
}

namespace {
// The reply's property that holds why its server's certificate was refused.
constexpr char CertificateFailure[] = "quellboteCertificateFailure";
// A request body that can be read once. Qt sends a request again by itself when the server closes
// the connection without an answer; for a gateway that may have taken the SMS before it closed,
// that would send it twice. A body that can't be read a second time makes Qt report the failure
// instead.
class OneShotBody : public QIODevice
{
public:
    explicit OneShotBody(const QByteArray& data)
        : m_data(data)
    {
        open(QIODevice::ReadOnly);
    }
    bool isSequential() const override { return true; }
    qint64 bytesAvailable() const override { return m_data.size() - m_pos + QIODevice::bytesAvailable(); }

protected:
    qint64 readData(char* data, qint64 maxSize) override
    {
        const qint64 n = qMin(maxSize, qint64(m_data.size()) - m_pos);
        if (n <= 0)
            return m_pos >= m_data.size() ? -1 : 0;
        std::memcpy(data, m_data.constData() + m_pos, size_t(n));
        m_pos += n;
        return n;
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    QByteArray m_data;
    qint64 m_pos = 0;
};

// A connection kept from a request longer ago than this may have been closed by the server
// meanwhile; the next request opens a new one rather than find out by failing.
constexpr qint64 KeptConnectionMs = 2000;

// The reply's property set once some of the request was written to the connection.
constexpr char RequestLeftProperty[] = "quellboteRequestLeft";

// Qt's OpenSSL backend trusts the system's store (/etc/ssl/certs on Debian) but not the file that
// OpenSSL's own programs take from SSL_CERT_FILE. A CA file an administrator names there counts
// here too, beside the system's. Without one a request keeps Qt's default configuration, which it
// has unasked: the TLS backend then isn't loaded before an https:// address needs it.
const std::optional<QSslConfiguration>& transferSslConfiguration()
{
    static const std::optional<QSslConfiguration> configuration = []() -> std::optional<QSslConfiguration> {
        const QString file = qEnvironmentVariable("SSL_CERT_FILE");
        const QList<QSslCertificate> named
            = file.isEmpty() ? QList<QSslCertificate>() : QSslCertificate::fromPath(file);
        if (named.isEmpty())
            return std::nullopt;
        QSslConfiguration c = QSslConfiguration::defaultConfiguration();
        // Setting the CA list ends the system store's loading on demand, so it is read here whole.
        c.setCaCertificates(QSslConfiguration::systemCaCertificates() + named);
        return c;
    }();
    return configuration;
}
} // namespace

QString certificateFailureText(const QString& host, const QList<QSslError>& errors)
{
    QStringList reasons;
    for (const QSslError& error : errors) {
        QString reason;
        switch (error.error()) {
        case QSslError::SelfSignedCertificate:
        case QSslError::SelfSignedCertificateInChain:
        case QSslError::UnableToGetIssuerCertificate:
        case QSslError::UnableToGetLocalIssuerCertificate:
        case QSslError::UnableToVerifyFirstCertificate:
        case QSslError::CertificateUntrusted:
            reason = QStringLiteral("es ist von keiner vertrauenswürdigen Stelle ausgestellt");
            break;
        case QSslError::CertificateExpired:
            reason = QStringLiteral("es ist abgelaufen");
            break;
        case QSslError::CertificateNotYetValid:
            reason = QStringLiteral("es ist noch nicht gültig");
            break;
        case QSslError::HostNameMismatch:
            reason = QStringLiteral("es gilt nicht für diesen Servernamen");
            break;
        case QSslError::CertificateRevoked:
            reason = QStringLiteral("es wurde widerrufen");
            break;
        default:
            reason = QStringLiteral("es ist fehlerhaft (") + error.errorString() + u')';
            break;
        }
        if (!reasons.contains(reason))
            reasons.append(reason);
    }
    return QStringLiteral("Das Zertifikat des Servers %1 ist nicht vertrauenswürdig: %2.")
        .arg(host, reasons.join(QStringLiteral("; ")));
}

Inet::Inet(QObject* parent)
    : QObject(parent)
    , m_manager(std::make_unique<QNetworkAccessManager>())
{
    setAccessType(0);
}

Inet::~Inet()
{
    if (m_reply) {
        m_reply->disconnect(this);
        m_reply->abort();
        m_reply->deleteLater();
    }
}

void Inet::setAccessType(int accessType)
{
    m_accessType = accessType;
    setProxy(m_proxy);
}

void Inet::setProxy(const QString& proxy)
{
    m_proxy = proxy;
    switch (m_accessType) {
    case 1:
        m_manager->setProxy(QNetworkProxy(QNetworkProxy::NoProxy));
        break;
    case 2: {
        const qsizetype colon = proxy.lastIndexOf(QLatin1Char(':'));
        const QString host = colon < 0 ? proxy : proxy.left(colon);
        const quint16 port = colon < 0 ? 0 : quint16(proxy.mid(colon + 1).toInt());
        m_manager->setProxy(QNetworkProxy(QNetworkProxy::HttpProxy, host, port));
        break;
    }
    default:
        m_manager->setProxy(QNetworkProxy(QNetworkProxy::DefaultProxy));
        QNetworkProxyFactory::setUseSystemConfiguration(true);
        break;
    }
}

QNetworkReply* Inet::start(const QString& url, const QByteArray& operation, const QByteArray& body,
                           const QString& headers)
{
    // A bulk run asks the same address for every row.
    if (url != m_lastUrlText || m_lastUrlText.isNull()) {
        m_lastUrl = Codepage::toUrl(url);
        m_lastUrlText = url;
    }
    QNetworkRequest request(m_lastUrl);
    request.setTransferTimeout(m_timeoutMs);
    if (const std::optional<QSslConfiguration>& ssl = transferSslConfiguration())
        request.setSslConfiguration(*ssl);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    const QStringList lines = headers.split(QStringLiteral("\r\n"), Qt::SkipEmptyParts);
    for (const QString& line : lines) {
        const qsizetype colon = line.indexOf(QLatin1Char(':'));
        if (colon > 0)
            request.setRawHeader(line.left(colon).trimmed().toLatin1(), line.mid(colon + 1).trimmed().toLatin1());
    }
    QNetworkReply* reply = nullptr;
    if (operation == "POST") {
        if (m_lastEnded.isValid() && m_lastEnded.elapsed() > KeptConnectionMs)
            m_manager->clearConnectionCache();
        request.setHeader(QNetworkRequest::ContentLengthHeader, body.size());
        request.setAttribute(QNetworkRequest::DoNotBufferUploadDataAttribute, true);
        auto device = std::make_unique<OneShotBody>(body);
        reply = m_manager->post(request, device.get());
        device.release()->setParent(reply);
    } else {
        reply = m_manager->get(request);
    }
    // Nothing ignores these errors: the handshake fails, and before anything of the request is
    // sent. What was wrong is kept for the failure text.
    connect(reply, &QNetworkReply::sslErrors, reply, [reply](const QList<QSslError>& errors) {
        reply->setProperty(CertificateFailure, certificateFailureText(reply->url().host(), errors));
    });
    // Whether a failed request may have reached the gateway: once its bytes are on the wire, an
    // SMS may be billed though no answer comes.
    connect(reply, &QNetworkReply::uploadProgress, reply, [reply](qint64 sent, qint64) {
        if (sent > 0)
            reply->setProperty(RequestLeftProperty, true);
    });
    connect(reply, &QNetworkReply::metaDataChanged, reply, [reply] { reply->setProperty(RequestLeftProperty, true); });
    return reply;
}

QString transferFailureText(int error, int httpStatus, const QString& reason, const QString& details)
{
    if (httpStatus >= 400) {
        return QStringLiteral("Der Server hat mit dem Fehler %1 geantwortet%2.")
            .arg(httpStatus)
            .arg(reason.isEmpty() ? QString() : QStringLiteral(" (") + reason + u')');
    }
    switch (QNetworkReply::NetworkError(error)) {
    case QNetworkReply::NoError:
        return {};
    case QNetworkReply::ConnectionRefusedError:
        return QStringLiteral("Keine Verbindung zum Server: Die Verbindung wurde abgelehnt.");
    case QNetworkReply::RemoteHostClosedError:
    // Qt wanted to send the request a second time after the server closed without an answer; the
    // program's request bodies don't allow that.
    case QNetworkReply::ContentReSendError:
        return QStringLiteral("Der Server hat die Verbindung ohne Antwort geschlossen.");
    case QNetworkReply::HostNotFoundError:
        return QStringLiteral("Keine Verbindung zum Server: Der Server wurde nicht gefunden.");
    case QNetworkReply::TimeoutError:
    case QNetworkReply::OperationCanceledError:
        return QStringLiteral("Zeitüberschreitung: Der Server hat nicht rechtzeitig geantwortet.");
    case QNetworkReply::ProxyConnectionRefusedError:
    case QNetworkReply::ProxyConnectionClosedError:
    case QNetworkReply::ProxyNotFoundError:
    case QNetworkReply::ProxyTimeoutError:
    case QNetworkReply::ProxyAuthenticationRequiredError:
        return QStringLiteral("Keine Verbindung über den Proxy-Server: ") + details;
    case QNetworkReply::SslHandshakeFailedError:
        return QStringLiteral("Keine sichere Verbindung zum Server: ") + details;
    case QNetworkReply::NetworkSessionFailedError:
    case QNetworkReply::TemporaryNetworkFailureError:
    case QNetworkReply::UnknownNetworkError:
        return QStringLiteral("Keine Verbindung zum Netzwerk: ") + details;
    default:
        return QStringLiteral("Die Übertragung ist fehlgeschlagen: ") + details;
    }
}

bool Inet::finish(QNetworkReply* reply, QString* body)
{
    m_lastEnded.start();
    m_responseCode = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    const QString reason = reply->attribute(QNetworkRequest::HttpReasonPhraseAttribute).toString();
    m_responseInfo = reply->error() == QNetworkReply::NoError ? reason : reply->errorString();
    const QString certificateFailure = reply->property(CertificateFailure).toString();
    m_certificateRefused = reply->error() == QNetworkReply::SslHandshakeFailedError && !certificateFailure.isEmpty();
    m_requestLeft = !m_certificateRefused && (reply->property(RequestLeftProperty).toBool() || m_responseCode > 0);
    m_failureText = m_certificateRefused
        ? certificateFailure
        : transferFailureText(reply->error(), m_responseCode, reason, reply->errorString());
    *body = decodeHttpBody(reply->readAll(), reply->header(QNetworkRequest::ContentTypeHeader).toByteArray());
    return reply->error() == QNetworkReply::NoError;
}

QString Inet::OpenURL(const QString& url, bool* ok)
{
    if (!url.isEmpty())
        m_url = url;
    QNetworkReply* reply = start(m_url, "GET", {}, {});
    QEventLoop loop;
    connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
    // The window doesn't react to the user while the fetch runs.
    loop.exec(QEventLoop::ExcludeUserInputEvents);
    QString body;
    const bool good = finish(reply, &body);
    reply->deleteLater();
    if (ok)
        *ok = good;
    // As with Execute, the end of the transfer is announced and the body can be read in chunks;
    // handlers run before the caller gets the text.
    m_answer = good ? body : QString();
    m_answerPos = 0;
    emit StateChanged(good ? icResponseCompleted : icError);
    return good ? body : QString();
}

void Inet::Execute(const QString& url, const QString& operation, const QString& body, const QString& headers)
{
    if (!url.isEmpty())
        m_url = url;
    m_answer.clear();
    m_answerPos = 0;
    m_reply = start(m_url, operation.toLatin1().toUpper(), Codepage::toWindows1252(body), headers);
    QNetworkReply* reply = m_reply;
    connect(reply, &QNetworkReply::finished, this, [this, reply] {
        QString text;
        // The words of a server that answers with an error status are its answer; a status with
        // nothing to say is no answer.
        const bool good = finish(reply, &text) || (m_responseCode >= 400 && !text.isEmpty());
        if (good)
            m_failureText.clear();
        if (m_reply == reply)
            m_reply = nullptr;
        reply->deleteLater();
        m_answer = text;
        m_answerPos = 0;
        emit StateChanged(good ? icResponseCompleted : icError);
    });
    // Qt hands the request to its network thread from a posted call; made at once, the request is
    // on the wire while the caller goes on (a bulk run prepares its next row meanwhile).
    QCoreApplication::sendPostedEvents(reply, QEvent::MetaCall);
}

QString Inet::GetChunk(int size)
{
    const QString chunk = m_answer.mid(m_answerPos, size);
    m_answerPos += chunk.size();
    return chunk;
}
