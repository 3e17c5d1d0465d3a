// SPDX-License-Identifier: GPL-3.0-or-later
#include "TestCertificates.h"

#include <QFile>
#include <QProcess>

using namespace Qt::StringLiterals;

namespace {
// One configuration for "openssl req" and "openssl ca", so that nothing of the machine's
// openssl.cnf slips in. "openssl ca" is used for signing because it alone sets any start and end
// date.
const QByteArray Config = R"(
[req]
distinguished_name = dn
[dn]
[ca_ext]
basicConstraints = critical, CA:true
keyUsage = critical, keyCertSign, cRLSign
subjectKeyIdentifier = hash
[local]
basicConstraints = CA:false
subjectAltName = IP:127.0.0.1, DNS:localhost
[other]
basicConstraints = CA:false
subjectAltName = DNS:other.example
[ca]
default_ca = signing
[signing]
database = index.txt
new_certs_dir = .
rand_serial = yes
unique_subject = no
default_md = sha256
policy = any
[any]
commonName = supplied
)";

// The files of the server certificates, in the order of TestCertificates::Kind.
const char* const Files[]
    = { "trusted.pem", "self-signed.pem", "unknown-issuer.pem", "expired.pem", "not-yet-valid.pem", "other-host.pem" };

QString fileOf(TestCertificates::Kind kind)
{
    return QString::fromLatin1(Files[kind]);
}
} // namespace

TestCertificates::TestCertificates()
{
    QFile config(m_dir.filePath(QStringLiteral("openssl.cnf")));
    QFile index(m_dir.filePath(QStringLiteral("index.txt")));
    if (!config.open(QIODevice::WriteOnly) || config.write(Config) != Config.size()
        || !index.open(QIODevice::WriteOnly)) {
        m_error = QStringLiteral("cannot write into ") + m_dir.path();
        return;
    }
    config.close();
    index.close();
    // The accepted ones are valid from 2000 to 2091, whatever the machine's clock says.
    const QString ca = QStringLiteral("ca -batch -notext -cert ca.pem -keyfile ca.key -in ");
    const QString always = QStringLiteral(" -startdate 20000101000000Z -enddate 20910101000000Z -out ");
    const QString newKey = QStringLiteral(" -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes");
    const QStringList steps {
        u"req -x509 -days 7 -subj /CN=Quellbote-Test-CA -extensions ca_ext -keyout ca.key -out ca.pem"_s + newKey,
        u"req -x509 -days 7 -subj /CN=Stranger-CA -extensions ca_ext -keyout stranger.key -out stranger.pem"_s + newKey,
        u"req -subj /CN=127.0.0.1 -keyout server.key -out local.csr"_s + newKey,
        u"req -new -key server.key -subj /CN=other.example -out other.csr"_s,
        u"req -x509 -days 7 -key server.key -subj /CN=127.0.0.1 -extensions local -out "_s + fileOf(SelfSigned),
        ca + u"local.csr -extensions local"_s + always + fileOf(Trusted),
        u"ca -batch -notext -cert stranger.pem -keyfile stranger.key -in local.csr -extensions local"_s + always
            + fileOf(UnknownIssuer),
        ca + u"local.csr -extensions local -startdate 20000101000000Z -enddate 20010101000000Z -out "_s
            + fileOf(Expired),
        ca + u"local.csr -extensions local -startdate 20900101000000Z -enddate 20910101000000Z -out "_s
            + fileOf(NotYetValid),
        ca + u"other.csr -extensions other"_s + always + fileOf(OtherHost),
    };
    for (const QString& step : steps) {
        if (!openssl(step.split(u' ')))
            return;
    }
}

bool TestCertificates::openssl(const QStringList& arguments)
{
    QProcess process;
    process.setWorkingDirectory(m_dir.path());
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QStringLiteral("openssl"),
                  QStringList { arguments.first(), QStringLiteral("-config"), QStringLiteral("openssl.cnf") }
                      + arguments.mid(1));
    if (!process.waitForFinished(30000) || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        m_error = QStringLiteral("openssl ") + arguments.join(u' ') + QStringLiteral(" failed: ")
            + (process.error() == QProcess::FailedToStart ? QStringLiteral("openssl is not installed")
                                                          : QString::fromLocal8Bit(process.readAll()));
        return false;
    }
    return true;
}

QString TestCertificates::caFile() const
{
    return m_dir.filePath(QStringLiteral("ca.pem"));
}

QString TestCertificates::certificateFile(Kind kind) const
{
    return m_dir.filePath(fileOf(kind));
}

QString TestCertificates::keyFile() const
{
    return m_dir.filePath(QStringLiteral("server.key"));
}
