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
    QString caFile() const;
    QString certificateFile(Kind kind) const;
    // The key of every server certificate.
    QString keyFile() const;

private:
    bool openssl(const QStringList& arguments);

    QTemporaryDir m_dir;
    QString m_error;
};
