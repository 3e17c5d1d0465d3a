// SPDX-License-Identifier: GPL-3.0-or-later
#include "handoff/CMD5.h"
#include "handoff/xmlServer.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

namespace {
QByteArray readAll(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList filesIn(const QString& folder)
{
    return QDir(folder).entryList(QDir::Files);
}

// Points "temp" at a folder of the test's own for as long as it lives.
class TempVariable
{
public:
    explicit TempVariable(const QByteArray& value)
        : m_old(qgetenv("temp"))
        , m_wasSet(qEnvironmentVariableIsSet("temp"))
    {
        qputenv("temp", value);
    }
    ~TempVariable()
    {
        if (m_wasSet)
            qputenv("temp", m_old);
        else
            qunsetenv("temp");
    }
    Q_DISABLE_COPY_MOVE(TempVariable)

private:
    QByteArray m_old;
    bool m_wasSet;
};
} // namespace

class TestHandOff : public QObject
{
    Q_OBJECT

private slots:
    void rfc1321Suite_data()
    {
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("digest");
        QTest::newRow("empty") << QString() << QStringLiteral("d41d8cd98f00b204e9800998ecf8427e");
        QTest::newRow("a") << QStringLiteral("a") << QStringLiteral("0cc175b9c0f1b6a831c399e269772661");
        QTest::newRow("abc") << QStringLiteral("abc") << QStringLiteral("900150983cd24fb0d6963f7d28e17f72");
        QTest::newRow("message digest") << QStringLiteral("message digest")
                                        << QStringLiteral("f96b697d7cb7938d525a2f31aaf161d0");
        QTest::newRow("alphabet") << QStringLiteral("abcdefghijklmnopqrstuvwxyz")
                                  << QStringLiteral("c3fcd3d76192e4007dfb496cca67e13b");
        QTest::newRow("alphanumerics") << QStringLiteral(
            "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789")
                                       << QStringLiteral("d174ab98d277d9f5a5611c2c9f419d9f");
        QTest::newRow("eight times 1234567890")
            << QString(QStringLiteral("1234567890")).repeated(8) << QStringLiteral("57edf4a22be3c955ac49da2e2107b67a");
    }

    void rfc1321Suite()
    {
        QFETCH(QString, message);
        QFETCH(QString, digest);
        CMD5 md5;
        QCOMPARE(md5.MD5(message), digest);
        // No state outlives a call.
        QCOMPARE(md5.MD5(message), digest);
    }

    // The digest over the characters equals the standard one over their low bytes.
    void bytesAreTheLowEightBits_data()
    {
        QTest::addColumn<QString>("message");
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("55 characters, one block") << QString(55, u'x') << QByteArray(55, 'x');
        QTest::newRow("56 characters, two blocks") << QString(56, u'x') << QByteArray(56, 'x');
        QTest::newRow("63 characters") << QString(63, u'y') << QByteArray(63, 'y');
        QTest::newRow("64 characters") << QString(64, u'y') << QByteArray(64, 'y');
        QTest::newRow("119 characters, two blocks") << QString(119, u'z') << QByteArray(119, 'z');
        QTest::newRow("120 characters, three blocks") << QString(120, u'z') << QByteArray(120, 'z');
        QTest::newRow("1000 characters") << QString(1000, u'q') << QByteArray(1000, 'q');
        QTest::newRow("umlaut is its Latin-1 byte") << QStringLiteral("ä") << QByteArray("\xe4");
        QTest::newRow("byte FF") << QStringLiteral("ÿ") << QByteArray("\xff");
        QTest::newRow("euro sign loses its high byte") << QStringLiteral("€") << QByteArray("\xac");
        QTest::newRow("Omega digests like the copyright sign") << QStringLiteral("aΩb")
                                                               << QByteArray("a\xa9"
                                                                             "b");
        QTest::newRow("NUL character") << QString(3, QChar(0)) << QByteArray(3, '\0');
        QTest::newRow("line break") << QStringLiteral("a\r\nb") << QByteArray("a\r\nb");
    }

    void bytesAreTheLowEightBits()
    {
        QFETCH(QString, message);
        QFETCH(QByteArray, bytes);
        QCOMPARE(CMD5().MD5(message),
                 QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Md5).toHex()));
    }

    // The files as the server finds them, compared byte for byte with files written by hand.
    void writtenFilesMatchTheLayout_data()
    {
        QTest::addColumn<bool>("group");
        QTest::addColumn<QString>("expectedFile");
        QTest::newRow("single account") << false << QFINDTESTDATA("data/single.xml");
        QTest::newRow("group, with its hash") << true << QFINDTESTDATA("data/group.xml");
    }

    void writtenFilesMatchTheLayout()
    {
        QFETCH(bool, group);
        QFETCH(QString, expectedFile);
        QVERIFY(!expectedFile.isEmpty());
        QTemporaryDir temp;
        QTemporaryDir target;
        const TempVariable variable(QFile::encodeName(temp.path()));
        const xmlServer::WriteResult result = group
            ? xmlServer::writeGroupJob(QStringLiteral("Vertrieb"), QStringLiteral("U"), QStringLiteral("0049171234"),
                                       QStringLiteral("Firma"), QStringLiteral("10 € & <mehr> für \"alle\" Ω"),
                                       QStringLiteral("Quellbote"), QStringLiteral("2.4.92"),
                                       QStringLiteral("schluessel"), target.path())
            : xmlServer::writeSingleAccountJob(QStringLiteral("demo@quellbote.test"), QStringLiteral("geheim"),
                                               QStringLiteral("U&1"), QStringLiteral("0049170123"),
                                               QStringLiteral("A&B „x“ – …"), QStringLiteral("A&B<C>D ü 10 €"),
                                               QStringLiteral("Quellbote"), QStringLiteral("2.4.92"), target.path());
        QVERIFY2(result.ok, qPrintable(result.error));
        const QStringList files = filesIn(target.path());
        QCOMPARE(files.size(), 1);
        QCOMPARE(result.path, target.path() + u'/' + files.first());
        QCOMPARE(readAll(result.path), readAll(expectedFile));
        // Only the copy is left; the temporary folder is empty again.
        QCOMPARE(filesIn(temp.path()), QStringList());
    }

    void escapes_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("escaped");
        QTest::newRow("markup") << QStringLiteral("A&B<C>D") << QStringLiteral("A&amp;B&lt;C&gt;D");
        QTest::newRow("an escape is escaped again") << QStringLiteral("&lt;") << QStringLiteral("&amp;lt;");
        QTest::newRow("euro sign") << QStringLiteral("10 €") << QStringLiteral("10 E");
        QTest::newRow("euro sign before an ampersand") << QStringLiteral("€&€") << QStringLiteral("E&amp;E");
        QTest::newRow("quotes stay") << QStringLiteral("\"'") << QStringLiteral("\"'");
        QTest::newRow("line breaks stay") << QStringLiteral("a\r\nb") << QStringLiteral("a\r\nb");
    }

    void escapes()
    {
        QFETCH(QString, text);
        QFETCH(QString, escaped);
        QCOMPARE(xmlServer::escapeText(text), escaped);
    }

    void recipients_data()
    {
        QTest::addColumn<QString>("number");
        QTest::addColumn<QString>("to");
        QTest::newRow("international prefix") << QStringLiteral("0049170123") << QStringLiteral("+49170123");
        QTest::newRow("00 inside the number") << QStringLiteral("017001") << QStringLiteral("017+1");
        QTest::newRow("the first of three zeros") << QStringLiteral("0170001") << QStringLiteral("017+01");
        QTest::newRow("only the first 00") << QStringLiteral("00490049") << QStringLiteral("+490049");
        QTest::newRow("three zeros") << QStringLiteral("000") << QStringLiteral("+0");
        QTest::newRow("no 00") << QStringLiteral("01701") << QStringLiteral("01701");
        QTest::newRow("empty") << QString() << QString();
    }

    void recipients()
    {
        QFETCH(QString, number);
        QFETCH(QString, to);
        QCOMPARE(xmlServer::recipient(number), to);
    }

    // Only <text> is escaped, and the hash is taken over the text before that.
    void hashInput()
    {
        const QByteArray doc = xmlServer::groupDocument(
            QStringLiteral("G&"), QStringLiteral("<U>"), QStringLiteral("0049"), QStringLiteral("A&B"),
            QStringLiteral("x & 5 €"), QStringLiteral("Q"), QStringLiteral("1.2.3"), QStringLiteral("key"));
        QVERIFY(doc.contains("\t<group>G&</group>\n\t<user><U></user>\n\t<to>+49</to>\n\t<from>A&B</from>\n"));
        QVERIFY(doc.contains("\t<text>x &amp; 5 E</text>\n"));
        const QByteArray hash
            = QCryptographicHash::hash("G&<U>+49A&Bx & 5 EQ1.2.3key", QCryptographicHash::Md5).toHex();
        QVERIFY(doc.contains(QByteArray("\t</application>\n\t<hash>" + hash + "</hash>\n</SMS>\n")));
        QVERIFY(!doc.contains("key"));
    }

    void fileNameIsANewUpperCaseGuid()
    {
        QTemporaryDir temp;
        QTemporaryDir target;
        const TempVariable variable(QFile::encodeName(temp.path()));
        for (int i = 0; i < 3; ++i) {
            QVERIFY(xmlServer::writeSingleAccountJob(QStringLiteral("l"), QStringLiteral("p"), QStringLiteral("u"),
                                                     QStringLiteral("0049171"), QString(), QStringLiteral("x"),
                                                     QStringLiteral("Quellbote"), QStringLiteral("2.4.92"),
                                                     target.path())
                        .ok);
        }
        const QStringList files = filesIn(target.path());
        QCOMPARE(files.size(), 3);
        const QRegularExpression guid(QStringLiteral("^[0-9A-F]{8}-([0-9A-F]{4}-){3}[0-9A-F]{12}\\.xml$"));
        for (const QString& name : files)
            QVERIFY2(guid.match(name).hasMatch(), qPrintable(name));
    }

    void targetFolderEndingInASeparator()
    {
        QTemporaryDir temp;
        QTemporaryDir target;
        const TempVariable variable(QFile::encodeName(temp.path()));
        const auto result = xmlServer::writeGroupJob(QStringLiteral("g"), QStringLiteral("u"), QStringLiteral("1"),
                                                     QString(), QStringLiteral("x"), QStringLiteral("Q"),
                                                     QStringLiteral("1"), QStringLiteral("k"), target.path() + u'/');
        QVERIFY(result.ok);
        QVERIFY(result.path.startsWith(target.path() + QStringLiteral("//")));
        QCOMPARE(filesIn(target.path()).size(), 1);
    }

    void temporaryFolder()
    {
        {
            const TempVariable variable("/some/where");
            QCOMPARE(xmlServer::temporaryFolder(), QStringLiteral("/some/where"));
        }
        const TempVariable variable { QByteArray() };
        qunsetenv("temp");
        QCOMPARE(xmlServer::temporaryFolder(), QDir::tempPath());
        // Without "temp" the platform's folder is used, and the file still arrives.
        QTemporaryDir target;
        QVERIFY(xmlServer::writeSingleAccountJob(QStringLiteral("l"), QStringLiteral("p"), QStringLiteral("u"),
                                                 QStringLiteral("1"), QString(), QStringLiteral("x"),
                                                 QStringLiteral("Q"), QStringLiteral("1"), target.path())
                    .ok);
        QCOMPARE(filesIn(target.path()).size(), 1);
    }

    // A folder that isn't there is reported to the caller, and nothing is left behind.
    void failures_data()
    {
        QTest::addColumn<bool>("badTemp");
        QTest::addColumn<bool>("badTarget");
        QTest::newRow("target folder missing") << false << true;
        QTest::newRow("temporary folder missing") << true << false;
    }

    void failures()
    {
        QFETCH(bool, badTemp);
        QFETCH(bool, badTarget);
        QTemporaryDir temp;
        QTemporaryDir target;
        const QString tempPath = badTemp ? temp.filePath(QStringLiteral("missing")) : temp.path();
        const QString targetPath = badTarget ? target.filePath(QStringLiteral("missing")) : target.path();
        const TempVariable variable(QFile::encodeName(tempPath));
        const auto result = xmlServer::writeGroupJob(QStringLiteral("g"), QStringLiteral("u"), QStringLiteral("1"),
                                                     QString(), QStringLiteral("x"), QStringLiteral("Q"),
                                                     QStringLiteral("1"), QStringLiteral("k"), targetPath);
        QVERIFY(!result.ok);
        QVERIFY(!result.error.isEmpty());
        QCOMPARE(filesIn(temp.path()), QStringList());
        QCOMPARE(filesIn(target.path()), QStringList());
    }
};

QTEST_GUILESS_MAIN(TestHandOff)
#include "tst_handoff.moc"
