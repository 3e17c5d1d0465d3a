// SPDX-License-Identifier: GPL-3.0-or-later
#include "handoff/CMD5.h"
#include "handoff/xmlServer.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

class TestHandOff : public QObject
{
    Q_OBJECT

private slots:
    void rfc1321Suite_data()
    {
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("digest");
        QTest::newRow("empty") << ""
                               << "d41d8cd98f00b204e9800998ecf8427e";
        QTest::newRow("a") << "a"
                           << "0cc175b9c0f1b6a831c399e269772661";
        QTest::newRow("abc") << "abc"
                             << "900150983cd24fb0d6963f7d28e17f72";
        QTest::newRow("message digest") << "message digest"
                                        << "f96b697d7cb7938d525a2f31aaf161d0";
        QTest::newRow("alphabet") << "abcdefghijklmnopqrstuvwxyz"
                                  << "c3fcd3d76192e4007dfb496cca67e13b";
        QTest::newRow("alphanumerics") << "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789"
                                       << "d174ab98d277d9f5a5611c2c9f419d9f";
        QTest::newRow("eight times 1234567890")
            << "12345678901234567890123456789012345678901234567890123456789012345678901234567890"
            << "57edf4a22be3c955ac49da2e2107b67a";
    }

    void rfc1321Suite()
    {
        QFETCH(QString, message);
        QFETCH(QString, digest);
        QCOMPARE(CMD5().MD5(message), digest);
    }

    void bytesAreTheLowEightBits_data()
    {
        QTest::addColumn<QString>("message");
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("55 characters, one block") << QString(55, u'x') << QByteArray(55, 'x');
        QTest::newRow("56 characters, two blocks") << QString(56, u'x') << QByteArray(56, 'x');
        QTest::newRow("64 characters") << QString(64, u'y') << QByteArray(64, 'y');
        QTest::newRow("umlaut is its Latin-1 byte") << QStringLiteral("ä") << QByteArray("\xe4");
        QTest::newRow("euro sign loses its high byte") << QStringLiteral("€") << QByteArray("\xac");
    }

    void bytesAreTheLowEightBits()
    {
        QFETCH(QString, message);
        QFETCH(QByteArray, bytes);
        QCOMPARE(CMD5().MD5(message),
                 QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Md5).toHex()));
    }

    void singleAccountDocument()
    {
        const QByteArray expected = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\" standalone=\"yes\" ?>\n"
                                    "<SMS>\n"
                                    "\t<login>demo@quellbote.test</login>\n"
                                    "\t<password>geheim</password>\n"
                                    "\t<user>U&1</user>\n"
                                    "\t<to>+49170123</to>\n"
                                    "\t<from>A&B</from>\n"
                                    "\t<text>A&amp;B&lt;C&gt;D \xfc 10 E</text>\n"
                                    "\t<application>\n"
                                    "\t\t<name>Quellbote</name>\n"
                                    "\t\t<version>2.4.92</version>\n"
                                    "\t</application>\n"
                                    "</SMS>\n";
        QCOMPARE(xmlServer::singleAccountDocument(QStringLiteral("demo@quellbote.test"), QStringLiteral("geheim"),
                                                  QStringLiteral("U&1"), QStringLiteral("0049170123"),
                                                  QStringLiteral("A&B"), QStringLiteral("A&B<C>D ü 10 €"),
                                                  QStringLiteral("Quellbote"), QStringLiteral("2.4.92")),
                 expected);
    }

    void groupDocument()
    {
        const QString text = QStringLiteral("10 € & mehr");
        const QString hash
            = CMD5().MD5(QStringLiteral("Gruppe") + QStringLiteral("U") + QStringLiteral("+4917")
                         + QStringLiteral("Firma") + QStringLiteral("10 E & mehr") + QStringLiteral("Quellbote")
                         + QStringLiteral("2.4.92") + QStringLiteral("schluessel"));
        const QByteArray expected = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\" standalone=\"yes\" ?>\n"
                                    "<SMS>\n"
                                    "\t<group>Gruppe</group>\n"
                                    "\t<user>U</user>\n"
                                    "\t<to>+4917</to>\n"
                                    "\t<from>Firma</from>\n"
                                    "\t<text>10 E &amp; mehr</text>\n"
                                    "\t<application>\n"
                                    "\t\t<name>Quellbote</name>\n"
                                    "\t\t<version>2.4.92</version>\n"
                                    "\t</application>\n"
                                    "\t<hash>"
            + hash.toLatin1()
            + "</hash>\n"
              "</SMS>\n";
        QCOMPARE(xmlServer::groupDocument(QStringLiteral("Gruppe"), QStringLiteral("U"), QStringLiteral("004917"),
                                          QStringLiteral("Firma"), text, QStringLiteral("Quellbote"),
                                          QStringLiteral("2.4.92"), QStringLiteral("schluessel")),
                 expected);
    }

    void escapesAndRecipients_data()
    {
        QTest::addColumn<QString>("input");
        QTest::addColumn<QString>("escaped");
        QTest::addColumn<QString>("number");
        QTest::addColumn<QString>("to");
        QTest::newRow("markup") << "A&B<C>D"
                                << "A&amp;B&lt;C&gt;D"
                                << "0049170123"
                                << "+49170123";
        QTest::newRow("an escape is escaped again") << "&lt;"
                                                    << "&amp;lt;"
                                                    << "017001"
                                                    << "017+1";
        QTest::newRow("quotes stay") << "\"'"
                                     << "\"'"
                                     << "123"
                                     << "123";
    }

    void escapesAndRecipients()
    {
        QFETCH(QString, input);
        QFETCH(QString, escaped);
        QFETCH(QString, number);
        QFETCH(QString, to);
        QCOMPARE(xmlServer::escapeText(input), escaped);
        QCOMPARE(xmlServer::recipient(number), to);
    }

    void fileIsCopiedIntoTheTargetAndNotLeftBehind()
    {
        QTemporaryDir temp;
        QTemporaryDir target;
        qputenv("temp", temp.path().toLocal8Bit());
        const auto result = xmlServer::writeSingleAccountJob(
            QStringLiteral("l"), QStringLiteral("p"), QStringLiteral("u"), QStringLiteral("0049171"), QString(),
            QStringLiteral("x"), QStringLiteral("Quellbote"), QStringLiteral("2.4.92"), target.path());
        QVERIFY(result.ok);
        const QStringList files = QDir(target.path()).entryList(QDir::Files);
        QCOMPARE(files.size(), 1);
        QVERIFY(QRegularExpression(QStringLiteral("^[0-9A-F]{8}-([0-9A-F]{4}-){3}[0-9A-F]{12}\\.xml$"))
                    .match(files.first())
                    .hasMatch());
        QVERIFY(QDir(temp.path()).entryList(QDir::Files).isEmpty());
        QFile file(target.filePath(files.first()));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.readAll().contains("<to>+49171</to>"));
        qunsetenv("temp");
    }

    void missingTargetFolderIsReported()
    {
        const auto result = xmlServer::writeGroupJob(
            QStringLiteral("g"), QStringLiteral("u"), QStringLiteral("1"), QString(), QStringLiteral("x"),
            QStringLiteral("Q"), QStringLiteral("1"), QStringLiteral("k"), QStringLiteral("/nonexistent/folder"));
        QVERIFY(!result.ok);
        QVERIFY(!result.error.isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestHandOff)
#include "tst_handoff.moc"
