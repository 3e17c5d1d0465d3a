// SPDX-License-Identifier: GPL-3.0-or-later
#include "ServiceProcess.h"
#include "account/AccountProtocol.h"
#include "settings/CUrlStore.h"
#include "settings/ProgramFolder.h"
#include "toolkit/Inet.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace AccountProtocol;

class TestAccountProtocol : public QObject
{
    Q_OBJECT

    QTemporaryDir m_folder;
    std::unique_ptr<ServiceProcess> m_service;

    static NewAccount eva()
    {
        NewAccount a;
        a.txtName = QStringLiteral("Müller");
        a.txtFirstName = QStringLiteral("Eva");
        a.txtFirma = QStringLiteral("Müller & Söhne");
        a.txtEmail = QStringLiteral("eva@example.com");
        a.txtStrasse = QStringLiteral("Weg 1");
        a.txtPLZ = QStringLiteral("12345");
        a.txtOrt = QStringLiteral("Berlin");
        return a;
    }

private slots:
    void initTestCase()
    {
        QFile accounts(m_folder.filePath(QStringLiteral("accounts.json")));
        QVERIFY(accounts.open(QIODevice::WriteOnly));
        accounts.write(R"({"accounts": [{"email": "demo@quellbote.test", "password": "demo", "credits": 500},
                                        {"email": "kaese@example.com", "password": "Käse 1€", "credits": 10}]})");
        accounts.close();
        m_service = std::make_unique<ServiceProcess>(QStringList { QStringLiteral("--accounts"), accounts.fileName() });
        QVERIFY(m_service->isRunning());
        ProgramFolder::setPathForTesting(m_folder.path());
        m_service->pointProgramAt(m_folder.path());
    }

    void urls()
    {
        QCOMPARE(checkUserUrl(QStringLiteral("http://h/c"), QStringLiteral("a@b"), QStringLiteral("p w&x")),
                 QStringLiteral("http://h/c?email=a@b&password=p w&x"));
        QCOMPARE(createUserUrl(QStringLiteral("http://h/n"), eva(), QStringLiteral("Test Bote")),
                 QStringLiteral("http://h/n?name=M%FCller&vorname=Eva&firma=M%FCller%20%26%20S%F6hne"
                                "&email=eva%40example%2Ecom&telefon=&fax=&strasse=Weg%201&plz=12345&ort=Berlin"
                                "&land=&gutschein=&referer=Test%20Bote"));
        QCOMPARE(createUserUrl(QStringLiteral("u"), NewAccount(), QStringLiteral("Q")),
                 QStringLiteral("u?name=&vorname=&firma=&email=&telefon=&fax=&strasse=&plz=&ort=&land=&gutschein="
                                "&referer=Q"));
    }

    void answers_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("transfer");
        QTest::addColumn<int>("answer");
        QTest::newRow("0") << "0" << true << int(Answer::Accepted);
        QTest::newRow("0 with blanks") << " 0 " << true << int(Answer::Accepted);
        QTest::newRow("1") << "1" << true << int(Answer::Refused);
        QTest::newRow("html page") << "<html>" << true << int(Answer::Failed);
        QTest::newRow("empty") << "" << true << int(Answer::Failed);
        QTest::newRow("failed transfer") << "0" << false << int(Answer::Failed);
    }

    void answers()
    {
        QFETCH(QString, text);
        QFETCH(bool, transfer);
        QFETCH(int, answer);
        QCOMPARE(int(readAnswer(text, transfer)), answer);
    }

    void againstTheService()
    {
        Inet iNet;
        QCOMPARE(checkAccount(iNet, QStringLiteral("demo@quellbote.test"), QStringLiteral("demo")), Answer::Accepted);
        QCOMPARE(checkAccount(iNet, QStringLiteral("demo@quellbote.test"), QStringLiteral("x")), Answer::Refused);
        // The raw password goes out in the code page of the bodies, and so the service reads it.
        QCOMPARE(checkAccount(iNet, QStringLiteral("kaese@example.com"), QStringLiteral("Käse 1€")), Answer::Accepted);
        QCOMPARE(
            m_service->requests(QStringLiteral("/sms/checkUser.php")).last().value(QStringLiteral("query")).toString(),
            QStringLiteral("email=kaese@example.com&password=K%E4se%201%80"));
        QCOMPARE(createAccount(iNet, eva()), Answer::Accepted);
        NewAccount known = eva();
        known.txtEmail = QStringLiteral("demo@quellbote.test");
        QCOMPARE(createAccount(iNet, known), Answer::Refused);
        const auto created = m_service->requests(QStringLiteral("/sms/createUser.php"));
        QVERIFY(
            created.first().value(QStringLiteral("query")).toString().contains(QStringLiteral("firma=M%FCller%20%26")));
        QVERIFY(m_service->setFault(QStringLiteral("/sms/checkUser.php"), QStringLiteral("garbage")));
        QCOMPARE(checkAccount(iNet, QStringLiteral("demo@quellbote.test"), QStringLiteral("demo")), Answer::Failed);
        QVERIFY(m_service->setFault(QStringLiteral("/sms/checkUser.php"), QStringLiteral("drop")));
        QCOMPARE(checkAccount(iNet, QStringLiteral("demo@quellbote.test"), QStringLiteral("demo")), Answer::Failed);
    }
};

QTEST_GUILESS_MAIN(TestAccountProtocol)
#include "tst_accountprotocol.moc"
