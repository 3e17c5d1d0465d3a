// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/CUrlStore.h"
#include "settings/OemTheme.h"
#include "settings/ProductName.h"
#include "settings/ProgramFolder.h"
#include "settings/iniHandler.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class TestIniHandler : public QObject
{
    Q_OBJECT

    QTemporaryDir m_folder;

    // Writes oem.inf; a null content leaves the program without one.
    void writeOem(const QByteArray& content)
    {
        if (content.isNull())
            return;
        QFile f(m_folder.filePath(u"oem.inf"_s));
        QVERIFY(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
        f.write(content);
    }

private slots:
    void initTestCase() { ProgramFolder::setPathForTesting(m_folder.path()); }
    void init() { QFile::remove(m_folder.filePath(u"oem.inf"_s)); }

    void reading_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("section");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("value");
        const QByteArray file = "[Strings]\r\nProductName=Testbote   \r\nCopyright = Beispiel GmbH\r\n"
                                "Blanks=    \r\n[Colors]\r\nHeader=255\r\n[Images]\r\nHeader=kopf.png\r\n";
        QTest::newRow("section and key in any case") << file << u"STRINGS"_s << u"productname"_s << u"Testbote"_s;
        QTest::newRow("blanks around the equals sign") << file << u"Strings"_s << u"Copyright"_s << u"Beispiel GmbH"_s;
        QTest::newRow("blanks only count as absent") << file << u"Strings"_s << u"Blanks"_s << u"fallback"_s;
        QTest::newRow("same key in two sections") << file << u"Images"_s << u"Header"_s << u"kopf.png"_s;
        QTest::newRow("missing key") << file << u"Strings"_s << u"Nichts"_s << u"fallback"_s;
        QTest::newRow("missing file") << QByteArray() << u"a"_s << u"b"_s << u"fallback"_s;
        QTest::newRow("LF line ends, umlaut in Windows-1252")
            << QByteArray("[a]\nk=M\xfcller\n") << u"a"_s << u"k"_s << u"Müller"_s;
        QTest::newRow("umlaut in UTF-8") << QByteArray("[a]\nk=M\xc3\xbcller\n") << u"a"_s << u"k"_s << u"Müller"_s;
        QTest::newRow("value of 65534 characters") << "[a]\nk=" + QByteArray(65534, 'v') + "\n"
                                                   << u"a"_s << u"k"_s << QString(65534, u'v');
    }

    void reading()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, section);
        QFETCH(QString, key);
        QFETCH(QString, value);
        writeOem(content);
        QCOMPARE(iniHandler::GetIniValue(ProgramFolder::oemFile(), section, key, u"fallback"_s), value);
    }

    void theme_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<qint64>("header"); // 0: no file, nothing read
        QTest::addColumn<qint64>("background"); // -1: kept as designed
        QTest::addColumn<bool>("hide");
        QTest::addColumn<QStringList>("problems");
        const qint64 window = -2147483643;
        const qint64 face = -2147483633;
        QTest::newRow("no file keeps the design") << QByteArray() << qint64(0) << qint64(-1) << false << QStringList();
        QTest::newRow("empty file: system colours") << QByteArray("\r\n") << window << face << false << QStringList();
        QTest::newRow("colour that is no number")
            << QByteArray("[Colors]\r\nBackground=blau\r\nHeader=255\r\n") << qint64(255) << qint64(-1) << false
            << QStringList { u"[Colors] Background=blau: keine Farbe (erwartet wird eine Zahl)"_s };
        QTest::newRow("HideHeaderStrings true")
            << QByteArray("[Common]\r\nHideHeaderStrings=true\r\n") << window << face << true << QStringList();
        QTest::newRow("HideHeaderStrings True hides nothing")
            << QByteArray("[Common]\r\nHideHeaderStrings=True\r\n") << window << face << false << QStringList();
    }

    void theme()
    {
        QFETCH(QByteArray, content);
        QFETCH(qint64, header);
        QFETCH(qint64, background);
        QFETCH(bool, hide);
        QFETCH(QStringList, problems);
        writeOem(content);
        const OemTheme theme = OemTheme::read();
        QCOMPARE(theme.problems, problems);
        QCOMPARE(theme.fileExists, !content.isNull());
        if (theme.fileExists)
            QCOMPARE(theme.headerColor.value(), header);
        QCOMPARE(theme.backgroundColor.has_value(), background != -1);
        if (background != -1)
            QCOMPARE(theme.backgroundColor.value(), background);
        QCOMPARE(theme.hideHeaderStrings, hide);
        QCOMPARE(theme.copyright, OemTheme::builtInCopyright());
    }

    void urlStoreOverrides()
    {
        writeOem("[URLs]\nSendSMS=http://127.0.0.1:9/send  \nCronSMS=\nMain=nope\nUpdater=nope\n"
                 "[Files]\nUpdater=updater\n");
        CUrlStore urls;
        QCOMPARE(urls.SendSMS(), u"http://127.0.0.1:9/send"_s);
        // An empty value and keys in the wrong section leave the built-in value, as a file
        // without the product name leaves the built-in name.
        QCOMPARE(urls.CronSMS(), u"http://www.quellbote.de/cronjob/send_repeat.php"_s);
        QCOMPARE(urls.ExeName(), u"quellbote.exe"_s);
        QCOMPARE(urls.UpdaterName(), u"updater"_s);
        QCOMPARE(readProductName(), u"Quellbote"_s);
    }
};

QTEST_GUILESS_MAIN(TestIniHandler)
#include "tst_inihandler.moc"
