// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskFull.h"
#include "KillWhileWriting.h"
#include "handoff/CMD5.h"
#include "handoff/xmlServer.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

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

// Points "temp" at a folder of the test's own (a null one unsets it) until the guard goes.
[[nodiscard]] auto pointTempAt(const QString& folder)
{
    const bool wasSet = qEnvironmentVariableIsSet("temp");
    const QByteArray old = qgetenv("temp");
    if (folder.isNull())
        qunsetenv("temp");
    else
        qputenv("temp", QFile::encodeName(folder));
    return qScopeGuard([wasSet, old] { wasSet ? qputenv("temp", old) : qunsetenv("temp"); });
}
} // namespace

class TestHandOff : public QObject
{
    Q_OBJECT

private slots:
    // The digest over the characters equals the standard one over their low bytes, across the
    // block and padding boundaries.
    void md5OfTheLowEightBits_data()
    {
        QTest::addColumn<QString>("message");
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("empty") << QString() << QByteArray();
        QTest::newRow("55 characters, one block") << QString(55, u'x') << QByteArray(55, 'x');
        QTest::newRow("56 characters, two blocks") << QString(56, u'x') << QByteArray(56, 'x');
        QTest::newRow("120 characters, three blocks") << QString(120, u'z') << QByteArray(120, 'z');
        QTest::newRow("umlaut is its Latin-1 byte") << u"ä"_s << QByteArray("\xe4");
        QTest::newRow("euro sign loses its high byte") << u"€"_s << QByteArray("\xac");
        QTest::newRow("NUL character") << QString(3, QChar(0)) << QByteArray(3, '\0');
    }

    void md5OfTheLowEightBits()
    {
        QFETCH(QString, message);
        QFETCH(QByteArray, bytes);
        const QString digest = QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Md5).toHex());
        CMD5 md5;
        QCOMPARE(md5.MD5(message), digest);
        // No state outlives a call.
        QCOMPARE(md5.MD5(message), digest);
    }

    // The files as the server finds them, compared byte for byte with files written by hand. Each
    // job gets a new file named by an upper-case GUID, and the folder setting gets a separator
    // behind it even when it ends in one.
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
        const auto restore = pointTempAt(temp.path());
        for (int i = 0; i < 2; ++i) {
            const xmlServer::WriteResult result = group
                ? xmlServer::writeGroupJob(u"Vertrieb"_s, u"U"_s, u"0049171234"_s, u"Firma"_s,
                                           u"10 € & <mehr> für \"alle\" Ω"_s, u"Quellbote"_s, u"2.4.92"_s,
                                           u"schluessel"_s, target.path() + u'/')
                : xmlServer::writeSingleAccountJob(u"demo@quellbote.test"_s, u"geheim"_s, u"U&1"_s, u"0049170123"_s,
                                                   u"A&B „x“ – …"_s, u"A&B<C>D ü 10 €"_s, u"Quellbote"_s, u"2.4.92"_s,
                                                   target.path() + u'/');
            QVERIFY2(result.ok, qPrintable(result.error));
            QVERIFY(result.path.startsWith(target.path() + u"//"_s));
            QCOMPARE(readAll(result.path), readAll(expectedFile));
        }
        const QStringList files = filesIn(target.path());
        QCOMPARE(files.size(), 2);
        static const QRegularExpression guid(u"^[0-9A-F]{8}-([0-9A-F]{4}-){3}[0-9A-F]{12}\\.xml$"_s);
        for (const QString& name : files)
            QVERIFY2(guid.match(name).hasMatch(), qPrintable(name));
        // Only the copies are left; the temporary folder is empty again.
        QCOMPARE(filesIn(temp.path()), QStringList());
    }

    // In <text> the euro sign becomes "E", then "&", "<" and ">" are escaped, an escape again;
    // line breaks stay. The hash is taken over the text before the escaping; the other fields
    // stay as they are but for the number, whose first 00, wherever it stands, becomes "+".
    void groupDocument()
    {
        const QByteArray doc = xmlServer::groupDocument(u"G&"_s, u"<U>"_s, u"01700010049"_s, u"A&B"_s,
                                                        u"<&lt;> €&\r\n"_s, u"Q"_s, u"1.2.3"_s, u"key"_s);
        QVERIFY(doc.contains("\t<group>G&</group>\n\t<user><U></user>\n\t<to>017+010049</to>\n\t<from>A&B</from>\n"));
        QVERIFY(doc.contains("\t<text>&lt;&amp;lt;&gt; E&amp;\r\n</text>\n"));
        const QByteArray hash
            = QCryptographicHash::hash("G&<U>017+010049A&B<&lt;> E&\r\nQ1.2.3key", QCryptographicHash::Md5).toHex();
        QVERIFY(doc.contains(QByteArray("\t</application>\n\t<hash>" + hash + "</hash>\n</SMS>\n")));
        QVERIFY(!doc.contains("key"));
    }

    void temporaryFolderWithoutTempIsThePlatformsOne()
    {
        const auto restore = pointTempAt(QString());
        QCOMPARE(xmlServer::temporaryFolder(), QDir::tempPath());
    }

    // A folder that isn't there, or a disk that runs full, is reported to the caller, and nothing
    // is left behind: the server never sees half a job.
    void failures_data()
    {
        QTest::addColumn<bool>("badTemp");
        QTest::addColumn<bool>("diskFull");
        QTest::newRow("target folder missing") << false << false;
        QTest::newRow("temporary folder missing") << true << false;
        QTest::newRow("disk full") << false << true;
    }

    void failures()
    {
        QFETCH(bool, badTemp);
        QFETCH(bool, diskFull);
        QTemporaryDir temp;
        QTemporaryDir target;
        const QString missing = u"missing"_s;
        const auto restore = pointTempAt(badTemp ? temp.filePath(missing) : temp.path());
        const auto full = diskFullAfter(diskFull ? 64 : RLIM_INFINITY);
        const auto result = xmlServer::writeGroupJob(u"g"_s, u"u"_s, u"1"_s, {}, u"x"_s, u"Q"_s, u"1"_s, u"k"_s,
                                                     badTemp || diskFull ? target.path() : target.filePath(missing));
        QVERIFY(!result.ok);
        QVERIFY(!result.error.isEmpty());
        QCOMPARE(filesIn(temp.path()), QStringList());
        QCOMPARE(filesIn(target.path()), QStringList());
    }

    // A job file in the server's folder is whole whenever the program was killed: the server
    // never takes a cut one for a job.
    void jobFilesAreWholeAfterAKillAtAnyMoment()
    {
        QTemporaryDir temp;
        QTemporaryDir target;
        const auto guard = pointTempAt(temp.path());
        const QByteArray document
            = xmlServer::singleAccountDocument(u"l"_s, u"p"_s, u"u"_s, u"1"_s, {}, QString(400, u'x'), u"Q"_s, u"1"_s);
        const QString problem = killWhileWriting(
            [&] {
                for (;;)
                    xmlServer::writeSingleAccountJob(u"l"_s, u"p"_s, u"u"_s, u"1"_s, {}, QString(400, u'x'), u"Q"_s,
                                                     u"1"_s, target.path());
            },
            [&] {
                for (const QString& name : filesIn(target.path())) {
                    if (name.endsWith(u".xml") && readAll(target.filePath(name)) != document)
                        return u"%1 is not the whole job"_s.arg(name);
                }
                return QString();
            });
        QVERIFY2(problem.isEmpty(), qPrintable(problem));
        QVERIFY(!filesIn(target.path()).isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestHandOff)
#include "tst_handoff.moc"
