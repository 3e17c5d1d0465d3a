// SPDX-License-Identifier: GPL-3.0-or-later
#include "ServiceProcess.h"
#include "TestCertificates.h"
#include "toolkit/Inet.h"

#include <QFile>
#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

class TestInet : public QObject
{
    Q_OBJECT

    std::unique_ptr<TestCertificates> m_certificates;

private slots:
    void initTestCase()
    {
        if (qEnvironmentVariableIsEmpty("QUELLBOTE_SERVICE"))
            QSKIP("QUELLBOTE_SERVICE is not set");
        m_certificates = std::make_unique<TestCertificates>();
        QVERIFY2(m_certificates->error().isEmpty(), qPrintable(m_certificates->error()));
        // The test's CA is trusted as an administrator trusts a company CA without touching the
        // system's store; it is read with the first transfer.
        qputenv("SSL_CERT_FILE", QFile::encodeName(m_certificates->caFile()));
    }

    // An https:// gateway: a certificate that isn't trusted ends both the blocking fetch and the
    // POST before the service hears anything, the password included; a trusted one works as HTTP.
    void httpsGateway_data()
    {
        QTest::addColumn<int>("certificate"); // a TestCertificates::Kind
        QTest::addColumn<QString>("host");
        QTest::addColumn<QString>("failure"); // FailureText(), empty when the transfers pass
        const QString refused = u"Das Zertifikat des Servers 127.0.0.1 ist nicht vertrauenswürdig: "_s;
        const QString untrusted = refused + u"es ist von keiner vertrauenswürdigen Stelle ausgestellt."_s;
        QTest::newRow("issued by the trusted CA") << int(TestCertificates::Trusted) << u"127.0.0.1"_s << QString();
        QTest::newRow("issued by the trusted CA, by host name")
            << int(TestCertificates::Trusted) << u"localhost"_s << QString();
        QTest::newRow("self-signed") << int(TestCertificates::SelfSigned) << u"127.0.0.1"_s << untrusted;
        QTest::newRow("issued by an unknown CA") << int(TestCertificates::UnknownIssuer) << u"127.0.0.1"_s << untrusted;
        QTest::newRow("expired") << int(TestCertificates::Expired) << u"127.0.0.1"_s
                                 << refused + u"es ist abgelaufen."_s;
        QTest::newRow("not yet valid") << int(TestCertificates::NotYetValid) << u"127.0.0.1"_s
                                       << refused + u"es ist noch nicht gültig."_s;
        QTest::newRow("issued for another host name") << int(TestCertificates::OtherHost) << u"127.0.0.1"_s
                                                      << refused + u"es gilt nicht für diesen Servernamen."_s;
    }

    void httpsGateway()
    {
        QFETCH(int, certificate);
        QFETCH(QString, host);
        QFETCH(QString, failure);
        ServiceProcess service({ u"--tls"_s, m_certificates->certificateFile(TestCertificates::Kind(certificate)),
                                 m_certificates->keyFile() });
        QVERIFY(service.isRunning());
        QVERIFY(service.baseUrl().startsWith(u"https://127.0.0.1:"_s));
        const QString base = service.baseUrl().replace(u"127.0.0.1"_s, host);

        Inet iNet;
        bool ok = false;
        const QString balance = iNet.OpenURL(base + u"/sms/count.php?email=demo@quellbote.test"_s, &ok);
        QCOMPARE(ok, failure.isEmpty());
        QCOMPARE(iNet.FailureText(), failure);

        QSignalSpy ended(&iNet, &Inet::StateChanged);
        iNet.Execute(base + u"/smsv3/smsv3.php"_s, u"POST"_s,
                     u"email=demo@quellbote.test&kennwort=demo&empfaenger=00491711234567&text=Hallo"_s,
                     u"Content-Type: application/x-www-form-urlencoded\r\n"_s);
        QVERIFY(ended.wait(10000));
        QCOMPARE(iNet.FailureText(), failure);

        const QList<QJsonObject> heard = service.journal();
        if (!failure.isEmpty()) {
            QCOMPARE(ended.first().first().toInt(), Inet::icError);
            QCOMPARE(heard.size(), 0);
            return;
        }
        QCOMPARE(balance, u"500"_s);
        QCOMPARE(ended.first().first().toInt(), Inet::icResponseCompleted);
        QVERIFY2(iNet.GetChunk(1000).contains(u"wurde erfolgreich an das Gateway übermittelt"_s),
                 qPrintable(iNet.FailureText()));
        QCOMPARE(heard.size(), 2);
        QVERIFY(heard.last().value(u"body"_s).toString().contains(u"kennwort=demo"_s));
    }
};

QTEST_GUILESS_MAIN(TestInet)
#include "tst_inet.moc"
