// SPDX-License-Identifier: GPL-3.0-or-later
// quellbote-service: a stand-in for the SMS gateway and its web pages, on loopback only.
#include "Service.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>
#include <QHostAddress>
#include <QSocketNotifier>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>

#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace {
int quitPipe[2] = { -1, -1 };

// A signal only writes a byte; the event loop reads it and quits.
void quitOnSignal(int)
{
    const char byte = 0;
    [[maybe_unused]] const ssize_t written = ::write(quitPipe[1], &byte, 1);
}

// SIGTERM and SIGINT end the service through the end of main(), as any program ends: the service
// and its journal are closed, and a sanitizer build checks the process for leaks.
void quitOnTermination(QCoreApplication& app)
{
    if (::pipe2(quitPipe, O_CLOEXEC) != 0)
        return;
    auto* notifier = new QSocketNotifier(quitPipe[0], QSocketNotifier::Read, &app);
    QObject::connect(notifier, &QSocketNotifier::activated, &app, &QCoreApplication::quit);
    std::signal(SIGTERM, quitOnSignal);
    std::signal(SIGINT, quitOnSignal);
}
} // namespace

namespace {
// The server side of TLS: the certificate file (the server's certificate first, any chain after
// it) and its unencrypted private key, RSA or EC, both PEM.
bool tlsConfiguration(const QString& certificatePath, const QString& keyPath, QSslConfiguration* configuration,
                      QString* error)
{
    const QList<QSslCertificate> chain = QSslCertificate::fromPath(certificatePath);
    if (chain.isEmpty()) {
        *error = QStringLiteral("no certificate in ") + certificatePath;
        return false;
    }
    QFile keyFile(keyPath);
    if (!keyFile.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("cannot read ") + keyPath;
        return false;
    }
    const QByteArray pem = keyFile.readAll();
    QSslKey key;
    for (const QSsl::KeyAlgorithm algorithm : { QSsl::Rsa, QSsl::Ec }) {
        if (key.isNull())
            key = QSslKey(pem, algorithm);
    }
    if (key.isNull()) {
        *error = QStringLiteral("no RSA or EC private key in ") + keyPath;
        return false;
    }
    *configuration = QSslConfiguration::defaultConfiguration();
    configuration->setLocalCertificateChain(chain);
    configuration->setPrivateKey(key);
    configuration->setPeerVerifyMode(QSslSocket::VerifyNone);
    return true;
}
} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("quellbote-service"));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Sandbox stand-in for the SMS gateway and its web pages."));
    parser.addHelpOption();
    const QCommandLineOption port(QStringLiteral("port"), QStringLiteral("Port on 127.0.0.1, 0 for a free one."),
                                  QStringLiteral("N"), QStringLiteral("0"));
    const QCommandLineOption accounts(QStringLiteral("accounts"), QStringLiteral("Accounts from a JSON file."),
                                      QStringLiteral("FILE"));
    const QCommandLineOption journal(QStringLiteral("journal"), QStringLiteral("Write every request to FILE."),
                                     QStringLiteral("FILE"));
    const QCommandLineOption version(QStringLiteral("version-answer"), QStringLiteral("Answer of the version check."),
                                     QStringLiteral("TEXT"), QStringLiteral("2.4.92"));
    const QCommandLineOption info(QStringLiteral("info-answer"), QStringLiteral("The current news number."),
                                  QStringLiteral("N"), QStringLiteral("1"));
    const QCommandLineOption fault(QStringLiteral("fault"),
                                   QStringLiteral("PATH=MODE: slow:MS, drop, http500, garbage, empty, none."),
                                   QStringLiteral("PATH=MODE"));
    const QCommandLineOption tls(QStringLiteral("tls"), QStringLiteral("Serve HTTPS with the PEM files CERT and KEY."));
    parser.addOptions({ port, accounts, journal, version, info, fault, tls });
    parser.addPositionalArgument(QStringLiteral("CERT KEY"), QStringLiteral("With --tls: certificate and private key."),
                                 QStringLiteral("[--tls CERT KEY]"));
    parser.process(app);
    if (parser.positionalArguments().size() != (parser.isSet(tls) ? 2 : 0)) {
        std::fprintf(stderr, "quellbote-service: --tls takes a certificate file and a key file\n");
        return 2;
    }

    Accounts data = Accounts::demo();
    if (parser.isSet(accounts)) {
        QString error;
        if (!Accounts::fromJsonFile(parser.value(accounts), &data, &error)) {
            std::fprintf(stderr, "quellbote-service: %s\n", qPrintable(error));
            return 2;
        }
    }
    Service service(std::move(data), parser.value(journal), parser.value(version), parser.value(info));
    for (const QString& f : parser.values(fault)) {
        const qsizetype eq = f.indexOf(u'=');
        if (eq < 0 || !service.setFault(f.left(eq), f.mid(eq + 1))) {
            std::fprintf(stderr, "quellbote-service: bad fault %s\n", qPrintable(f));
            return 2;
        }
    }
    if (parser.isSet(tls)) {
        QSslConfiguration configuration;
        QString error;
        if (!tlsConfiguration(parser.positionalArguments().at(0), parser.positionalArguments().at(1), &configuration,
                              &error)) {
            std::fprintf(stderr, "quellbote-service: %s\n", qPrintable(error));
            return 2;
        }
        service.sslSetup(configuration);
    }
    const quint16 bound = service.listen(QHostAddress::LocalHost, quint16(parser.value(port).toUInt()));
    if (bound == 0) {
        std::fprintf(stderr, "quellbote-service: cannot listen on port %s\n", qPrintable(parser.value(port)));
        return 1;
    }
    quitOnTermination(app);
    std::fprintf(stdout, "listening on %s://127.0.0.1:%u\n", parser.isSet(tls) ? "https" : "http", unsigned(bound));
    std::fflush(stdout);
    return QCoreApplication::exec();
}
