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

} // namespace

TestCertificates::TestCertificates()
{
    QFile config(m_dir.filePath(u"openssl.cnf"_s));
    QFile index(m_dir.filePath(u"index.txt"_s));
    if (!config.open(QIODevice::WriteOnly) || config.write(Config) != Config.size()
        || !index.open(QIODevice::WriteOnly)) {
        m_error = u"cannot write into "_s + m_dir.path();
        return;
    }
    config.close();
    index.close();
    // The accepted ones are valid from 2000 to 2091, whatever the machine's clock says.
    const QString ca = u"ca -batch -notext -cert ca.pem -keyfile ca.key -in "_s;
    const QString always = u" -startdate 20000101000000Z -enddate 20910101000000Z -out "_s;
    const QString newKey = u" -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes"_s;
    const QStringList steps {
        u"req -x509 -days 7 -subj /CN=Quellbote-Test-CA -extensions ca_ext -keyout ca.key -out ca.pem"_s + newKey,
        u"req -x509 -days 7 -subj /CN=Stranger-CA -extensions ca_ext -keyout stranger.key -out stranger.pem"_s + newKey,
        u"req -subj /CN=127.0.0.1 -keyout server.key -out local.csr"_s + newKey,
        u"req -new -key server.key -subj /CN=other.example -out other.csr"_s,
        u"req -x509 -days 7 -key server.key -subj /CN=127.0.0.1 -extensions local -out "_s + fileName(SelfSigned),
        ca + u"local.csr -extensions local"_s + always + fileName(Trusted),
        u"ca -batch -notext -cert stranger.pem -keyfile stranger.key -in local.csr -extensions local"_s + always
            + fileName(UnknownIssuer),
        ca + u"local.csr -extensions local -startdate 20000101000000Z -enddate 20010101000000Z -out "_s
            + fileName(Expired),
        ca + u"local.csr -extensions local -startdate 20900101000000Z -enddate 20910101000000Z -out "_s
            + fileName(NotYetValid),
        ca + u"other.csr -extensions other"_s + always + fileName(OtherHost),
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
    process.start(u"openssl"_s, QStringList { arguments.first(), u"-config"_s, u"openssl.cnf"_s } + arguments.mid(1));
    if (!process.waitForFinished(30000) || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        m_error = u"openssl "_s + arguments.join(u' ') + u" failed: "_s
            + (process.error() == QProcess::FailedToStart ? u"openssl is not installed"_s
                                                          : QString::fromLocal8Bit(process.readAll()));
        return false;
    }
    return true;
}
