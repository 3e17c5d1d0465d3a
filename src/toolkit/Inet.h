// SPDX-License-Identifier: GPL-3.0-or-later
// An HTTP transfer object with the surface the program's windows use: a blocking fetch that
// keeps the window from reacting (OpenURL), an asynchronous POST (Execute) whose answer is read
// in chunks, and the states icError and icResponseCompleted. A request that gets no answer fails
// after 60 seconds. URLs and bodies go on the wire as Windows-1252; answers are decoded by the
// charset the server names, Windows-1252 where it names none. An https:// server must show a
// certificate the system trusts; a refused one ends the transfer before anything is sent, and
// nothing lets a transfer pass it.
#pragma once

#include <QElapsedTimer>
#include <QList>
#include <QObject>
#include <QString>
#include <QUrl>

#include <memory>

class QNetworkAccessManager;
class QNetworkReply;
class QSslError;

class Inet : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(Inet)

public:
    static constexpr int icError = 11;
    static constexpr int icResponseCompleted = 12;
    static constexpr int DefaultTimeoutMs = 60000;

    explicit Inet(QObject* parent = nullptr);
    ~Inet() override;

    // 0 the system's proxy, 1 no proxy, 2 the proxy named by Proxy ("host:port").
    int AccessType() const { return m_accessType; }
    void setAccessType(int accessType);
    QString Proxy() const { return m_proxy; }
    void setProxy(const QString& proxy);
    QString URL() const { return m_url; }
    void setURL(const QString& url) { m_url = url; }

    // Fetches url (or URL when url is empty) and returns the body. The window doesn't react
    // meanwhile. *ok is false when the transfer failed outright (no answer, time-out, HTTP error).
    // StateChanged comes before it returns, and GetChunk reads the same body.
    QString OpenURL(const QString& url = QString(), bool* ok = nullptr);

    // Starts a request and returns at once; StateChanged tells how it ended. headers: lines of
    // "Name: value". A body that comes with an HTTP error status is the server's answer all the
    // same; only a transfer that brings no answer at all ends in icError.
    void Execute(const QString& url, const QString& operation, const QString& body, const QString& headers);

    bool StillExecuting() const { return m_reply != nullptr; }

    // The next piece of the answer of the last transfer, at most size characters; empty when
    // everything has been read.
    QString GetChunk(int size);

    int ResponseCode() const { return m_responseCode; }
    QString ResponseInfo() const { return m_responseInfo; }
    // What went wrong with the last transfer, in words for the user ("keine Verbindung zum
    // Server", a time-out, an HTTP error, a refused certificate); empty when it brought an answer.
    QString FailureText() const { return m_failureText; }
    // Whether the last transfer ended because the server's certificate wasn't trusted: a fault
    // of the server or of the machine's trust, not of the connection, which a user is told of.
    bool CertificateRefused() const { return m_certificateRefused; }
    // Whether some of the last request was written to the connection: a transfer that failed
    // after that may still have been taken by the server.
    bool RequestLeft() const { return m_requestLeft; }

    // Tests shorten the time a request may take.
    void setTimeoutMsForTesting(int milliseconds) { m_timeoutMs = milliseconds; }

signals:
    void StateChanged(int state);

private:
    QNetworkReply* start(const QString& url, const QByteArray& operation, const QByteArray& body,
                         const QString& headers);
    // Reads a finished reply: its body, decoded, and whether it ended without any error.
    bool finish(QNetworkReply* reply, QString* body);

    std::unique_ptr<QNetworkAccessManager> m_manager;
    int m_accessType = 0;
    QString m_proxy;
    QString m_url;
    // The last address converted for the wire, kept for the next request to the same.
    QString m_lastUrlText;
    QUrl m_lastUrl;
    QNetworkReply* m_reply = nullptr;
    QString m_answer;
    qsizetype m_answerPos = 0;
    int m_responseCode = 0;
    QString m_responseInfo;
    QString m_failureText;
    bool m_certificateRefused = false;
    bool m_requestLeft = false;
    QElapsedTimer m_lastEnded;
    int m_timeoutMs = DefaultTimeoutMs;
};

// The text of an HTTP body, decoded by the charset named in contentType, Windows-1252 otherwise.
QString decodeHttpBody(const QByteArray& body, const QByteArray& contentType);

// A failed transfer in words for the user: error is a QNetworkReply::NetworkError, httpStatus
// and reason the HTTP status line where one came, details Qt's own description.
QString transferFailureText(int error, int httpStatus, const QString& reason, const QString& details);

// Why the certificate of host was refused, in words for the user: "Das Zertifikat des Servers
// host ist nicht vertrauenswürdig: es ist abgelaufen."
QString certificateFailureText(const QString& host, const QList<QSslError>& errors);
