// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/CUrlStore.h"
#include "settings/OemTheme.h"
#include "settings/ProductName.h"
#include "settings/ProgramFolder.h"
#include "settings/iniHandler.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

class TestIniHandler : public QObject
{
    Q_OBJECT

    QTemporaryDir m_folder;

    void writeOem(const QByteArray& content)
    {
        QFile f(m_folder.filePath(QStringLiteral("oem.inf")));
        QVERIFY(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
        f.write(content);
    }

private slots:
    void initTestCase() { ProgramFolder::setPathForTesting(m_folder.path()); }
    void init() { QFile::remove(m_folder.filePath(QStringLiteral("oem.inf"))); }

    void reading_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("section");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("value");
        const QByteArray file = "[Strings]\r\nProductName=Testbote   \r\nCopyright = Beispiel GmbH\r\nLeer=\r\n"
                                "Blanks=    \r\n[Colors]\r\nHeader=255\r\n[Images]\r\nHeader=kopf.png\r\n";
        QTest::newRow("plain") << file << "Strings"
                               << "ProductName"
                               << "Testbote";
        QTest::newRow("section and key in any case") << file << "STRINGS"
                                                     << "productname"
                                                     << "Testbote";
        QTest::newRow("blanks around the equals sign") << file << "Strings"
                                                       << "Copyright"
                                                       << "Beispiel GmbH";
        QTest::newRow("empty value counts as absent") << file << "Strings"
                                                      << "Leer"
                                                      << "fallback";
        QTest::newRow("blanks only count as absent") << file << "Strings"
                                                     << "Blanks"
                                                     << "fallback";
        QTest::newRow("same key in two sections") << file << "Images"
                                                  << "Header"
                                                  << "kopf.png";
        QTest::newRow("same key, other section") << file << "Colors"
                                                 << "Header"
                                                 << "255";
        QTest::newRow("missing key") << file << "Strings"
                                     << "Nichts"
                                     << "fallback";
        QTest::newRow("missing section") << file << "URLs"
                                         << "SendSMS"
                                         << "fallback";
        QTest::newRow("LF line ends") << QByteArray("[a]\nk=v  \n") << "a"
                                      << "k"
                                      << "v";
        QTest::newRow("umlaut in Windows-1252") << QByteArray("[a]\nk=M\xfcller\n") << "a"
                                                << "k"
                                                << "Müller";
        QTest::newRow("umlaut in UTF-8") << QByteArray("[a]\nk=M\xc3\xbcller\n") << "a"
                                         << "k"
                                         << "Müller";
    }

    void reading()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, section);
        QFETCH(QString, key);
        QFETCH(QString, value);
        writeOem(content);
        QCOMPARE(iniHandler::GetIniValue(ProgramFolder::oemFile(), section, key, QStringLiteral("fallback")), value);
    }

    void missingFileGivesTheDefault()
    {
        QCOMPARE(iniHandler::GetIniValue(ProgramFolder::oemFile(), QStringLiteral("a"), QStringLiteral("b")),
                 QString());
    }

    void longValueReadsWhole()
    {
        const QByteArray value(65534, 'v');
        writeOem("[URLs]\nSendSMS=" + value + "\n");
        QCOMPARE(
            iniHandler::GetIniValue(ProgramFolder::oemFile(), QStringLiteral("URLs"), QStringLiteral("SendSMS")).size(),
            65534);
    }

    void productName_data()
    {
        QTest::addColumn<QByteArray>("content"); // empty: no file
        QTest::addColumn<QString>("name");
        QTest::newRow("no file") << QByteArray() << "Quellbote";
        QTest::newRow("file without the key") << QByteArray("[Strings]\n") << "Quellbote";
        QTest::newRow("renamed") << QByteArray("[Strings]\nProductName=Testbote\n") << "Testbote";
    }

    void productName()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, name);
        if (!content.isEmpty())
            writeOem(content);
        QCOMPARE(readProductName(), name);
    }

    void themeWithoutFileKeepsTheDesign()
    {
        const OemTheme theme = OemTheme::read();
        QVERIFY(!theme.fileExists);
        QVERIFY(!theme.backgroundColor.has_value());
        QCOMPARE(theme.copyright, OemTheme::builtInCopyright());
    }

    void theme_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<qint64>("header");
        QTest::addColumn<qint64>("background"); // -1: kept as designed
        QTest::addColumn<bool>("hide");
        QTest::newRow("empty file: system colours")
            << QByteArray("\r\n") << qint64(-2147483643) << qint64(-2147483633) << false;
        QTest::newRow("white background")
            << QByteArray("[Colors]\r\nBackground=16777215\r\n") << qint64(-2147483643) << qint64(16777215) << false;
        QTest::newRow("colour that is no number")
            << QByteArray("[Colors]\r\nBackground=blau\r\nHeader=255\r\n") << qint64(255) << qint64(-1) << false;
        QTest::newRow("HideHeaderStrings true") << QByteArray("[Common]\r\nHideHeaderStrings=true\r\n")
                                                << qint64(-2147483643) << qint64(-2147483633) << true;
        QTest::newRow("HideHeaderStrings True hides nothing") << QByteArray("[Common]\r\nHideHeaderStrings=True\r\n")
                                                              << qint64(-2147483643) << qint64(-2147483633) << false;
        QTest::newRow("Images/Header is not Colors/Header")
            << QByteArray("[Images]\r\nHeader=kopf.png\r\n") << qint64(-2147483643) << qint64(-2147483633) << false;
    }

    void theme()
    {
        QFETCH(QByteArray, content);
        QFETCH(qint64, header);
        QFETCH(qint64, background);
        QFETCH(bool, hide);
        writeOem(content);
        const OemTheme theme = OemTheme::read();
        QVERIFY(theme.fileExists);
        QCOMPARE(theme.headerColor.value(), header);
        QCOMPARE(theme.backgroundColor.has_value(), background != -1);
        if (background != -1)
            QCOMPARE(theme.backgroundColor.value(), background);
        QCOMPARE(theme.hideHeaderStrings, hide);
        QCOMPARE(theme.copyright, OemTheme::builtInCopyright());
    }

    void urlStoreWithoutFileHasBuiltInAddresses()
    {
        CUrlStore urls;
        QCOMPARE(urls.Homepage(), QStringLiteral("http://www.quellbote.de"));
        QCOMPARE(urls.SendSMS(), QStringLiteral("http://www.quellbote.de/smsv3/smsv3.php"));
        QCOMPARE(urls.SmsCount(), QStringLiteral("http://www.quellbote.de/sms/count.php?email="));
        QCOMPARE(urls.Helppage(), QStringLiteral("http://www.quellbote.de/hilfe/"));
        QCOMPARE(urls.WebGroupDir(), QStringLiteral("http://www.quellbote.de/sms/gruppenv2/"));
        QCOMPARE(urls.UpdaterName(), QStringLiteral("quellboteupdater.exe"));
        QCOMPARE(urls.ExeName(), QStringLiteral("quellbote.exe"));
    }

    void urlStoreOverrides()
    {
        writeOem("[URLs]\nSendSMS=http://127.0.0.1:9/send  \nCronSMS=\nMain=nope\nUpdater=nope\n"
                 "[Files]\nUpdater=updater\n");
        CUrlStore urls;
        QCOMPARE(urls.SendSMS(), QStringLiteral("http://127.0.0.1:9/send"));
        // An empty value and keys in the wrong section leave the built-in value.
        QCOMPARE(urls.CronSMS(), QStringLiteral("http://www.quellbote.de/cronjob/send_repeat.php"));
        QCOMPARE(urls.ExeName(), QStringLiteral("quellbote.exe"));
        QCOMPARE(urls.UpdaterName(), QStringLiteral("updater"));
        QCOMPARE(urls.CheckVersion(), QStringLiteral("http://www.quellbote.de/update/version"));
    }
};

QTEST_GUILESS_MAIN(TestIniHandler)
#include "tst_inihandler.moc"
