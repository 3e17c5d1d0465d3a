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
using namespace Qt::StringLiterals;

class TestAccountProtocol : public QObject
{
    Q_OBJECT

    QTemporaryDir m_folder;
    std::unique_ptr<ServiceProcess> m_service;

    static NewAccount eva()
    {
        NewAccount a;
        a.txtName = u"Müller"_s;
        a.txtFirstName = u"Eva"_s;
        a.txtFirma = u"Müller & Söhne"_s;
        a.txtEmail = u"eva@example.com"_s;
        a.txtStrasse = u"Weg 1"_s;
        a.txtPLZ = u"12345"_s;
        a.txtOrt = u"Berlin"_s;
        return a;
    }

private slots:
    void initTestCase()
    {
        QFile accounts(m_folder.filePath(u"accounts.json"_s));
        QVERIFY(accounts.open(QIODevice::WriteOnly));
        accounts.write(R"({"accounts": [{"email": "demo@quellbote.test", "password": "demo", "credits": 500},
                                        {"email": "kaese@example.com", "password": "Käse 1€", "credits": 10}]})");
        accounts.close();
        m_service = std::make_unique<ServiceProcess>(QStringList { u"--accounts"_s, accounts.fileName() });
        QVERIFY(m_service->isRunning());
        ProgramFolder::setPathForTesting(m_folder.path());
        m_service->pointProgramAt(m_folder.path());
    }

    void urls()
    {
        QCOMPARE(checkUserUrl(u"http://h/c"_s, u"a@b"_s, u"p w&x"_s), u"http://h/c?email=a@b&password=p w&x"_s);
        QCOMPARE(createUserUrl(u"http://h/n"_s, eva(), u"Test Bote"_s),
                 u"http://h/n?name=M%FCller&vorname=Eva&firma=M%FCller%20%26%20S%F6hne"
                 "&email=eva%40example%2Ecom&telefon=&fax=&strasse=Weg%201&plz=12345&ort=Berlin"
                 "&land=&gutschein=&referer=Test%20Bote"_s);
    }

    void answers_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("transfer");
        QTest::addColumn<Answer>("answer");
        QTest::newRow("0 with blanks") << u" 0 "_s << true << Answer::Accepted;
        QTest::newRow("1") << u"1"_s << true << Answer::Refused;
        QTest::newRow("html page") << u"<html>"_s << true << Answer::Failed;
        QTest::newRow("failed transfer") << u"0"_s << false << Answer::Failed;
    }

    void answers()
    {
        QFETCH(QString, text);
        QFETCH(bool, transfer);
        QFETCH(Answer, answer);
        QCOMPARE(readAnswer(text, transfer), answer);
    }

    void againstTheService()
    {
        Inet iNet;
        // The raw password goes out in the code page of the bodies, and so the service reads it.
        QCOMPARE(checkAccount(iNet, u"kaese@example.com"_s, u"Käse 1€"_s), Answer::Accepted);
        QCOMPARE(m_service->requests(u"/sms/checkUser.php"_s).last().value(u"query"_s).toString(),
                 u"email=kaese@example.com&password=K%E4se%201%80"_s);
        NewAccount known = eva();
        known.txtEmail = u"demo@quellbote.test"_s;
        QCOMPARE(createAccount(iNet, known), Answer::Refused);
        QVERIFY(m_service->setFault(u"/sms/checkUser.php"_s, u"drop"_s));
        QCOMPARE(checkAccount(iNet, u"demo@quellbote.test"_s, u"demo"_s), Answer::Failed);
    }
};

QTEST_GUILESS_MAIN(TestAccountProtocol)
#include "tst_accountprotocol.moc"
