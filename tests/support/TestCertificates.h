// SPDX-License-Identifier: GPL-3.0-or-later
// Certificates made with the openssl command for one test run, in a temporary folder: a CA that a
// test trusts, and server certificates for 127.0.0.1 and localhost that a client must accept or
// refuse. Nothing of it is kept after the run.
#pragma once

#include <QString>
#include <QTemporaryDir>

class TestCertificates
{
public:
    enum Kind {
        Trusted, // signed by the CA
        SelfSigned,
        UnknownIssuer, // signed by a CA nobody trusts
        Expired,
        NotYetValid,
        OtherHost, // signed by the CA, for other.example only
    };

    TestCertificates();
    TestCertificates(const TestCertificates&) = delete;
    TestCertificates& operator=(const TestCertificates&) = delete;

    // Empty when every certificate was made, else what went wrong.
    QString error() const { return m_error; }
    QString caFile() const { return m_dir.filePath(QStringLiteral("ca.pem")); }
    QString certificateFile(Kind kind) const { return m_dir.filePath(fileName(kind)); }
    // The key of every server certificate.
    QString keyFile() const { return m_dir.filePath(QStringLiteral("server.key")); }

private:
    static QString fileName(Kind kind)
    {
        static const char* const names[] = { "trusted.pem", "self-signed.pem",   "unknown-issuer.pem",
                                             "expired.pem", "not-yet-valid.pem", "other-host.pem" };
        return QString::fromLatin1(names[kind]);
    }
    bool openssl(const QStringList& arguments);

    QTemporaryDir m_dir;
    QString m_error;
};
