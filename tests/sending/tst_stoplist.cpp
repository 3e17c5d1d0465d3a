// SPDX-License-Identifier: GPL-3.0-or-later
#include "TestStore.h"
#include "sending/StopList.h"
#include "settings/ProgramFolder.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class TestStopList : public QObject
{
    Q_OBJECT

    QTemporaryDir m_folder;

    void write(const QString& name, const QByteArray& content)
    {
        QDir(m_folder.path()).mkpath(QFileInfo(m_folder.filePath(name)).path());
        QFile f(m_folder.filePath(name));
        QVERIFY(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
        f.write(content);
    }

private slots:
    void initTestCase() { ProgramFolder::setPathForTesting(m_folder.path()); }
    void init()
    {
        TestStore::reset();
        QFile::remove(m_folder.filePath(u"oem.inf"_s));
    }

    void compared_data()
    {
        QTest::addColumn<QString>("entry");
        QTest::addColumn<QString>("asked");
        QTest::addColumn<bool>("stopped");
        const QString entry = u"0171 1234567"_s;
        QTest::newRow("national form") << entry << u"01711234567"_s << true;
        QTest::newRow("+49 with blanks") << entry << u"+49 171 1234567"_s << true;
        QTest::newRow("0049 with blanks") << entry << u"0049 171 1234567"_s << true;
        QTest::newRow("table form") << entry << u"00491711234567"_s << true;
        QTest::newRow("+49 (0) and slash") << entry << u"+49 (0)171/1234567"_s << true;
        QTest::newRow("entry in table form, asked nationally") << u"00491711234567"_s << u"0171-1234567"_s << true;
        QTest::newRow("one digit apart") << entry << u"0171 1234568"_s << false;
        QTest::newRow("same digits, another country") << entry << u"0043 171 1234567"_s << false;
        QTest::newRow("Austrian entry") << u"+43 664 1234567"_s << u"00436641234567"_s << true;
        QTest::newRow("no number asked") << entry << u"Meier"_s << false;
        QTest::newRow("empty asked") << entry << QString() << false;
        // Excel's lost leading zero is never guessed back.
        QTest::newRow("number without 0 or +") << entry << u"1711234567"_s << false;
    }

    void compared()
    {
        QFETCH(QString, entry);
        QFETCH(QString, asked);
        QFETCH(bool, stopped);
        QCOMPARE(StopList::of({ entry }).contains(asked), stopped);
        QCOMPARE(StopList::of({}, { entry }).contains(asked), stopped);
        QVERIFY(!StopList::of({ u"kein Anschluss"_s }).contains(asked));
    }

    void key_data()
    {
        QTest::addColumn<QString>("written");
        QTest::addColumn<QString>("key");
        QTest::newRow("national") << u"0171 1234567"_s << u"00491711234567"_s;
        QTest::newRow("international") << u"+43 664 1234567"_s << u"00436641234567"_s;
        QTest::newRow("letters") << u"0171 12345six"_s << QString();
        QTest::newRow("blanks") << u"   "_s << QString();
        QTest::newRow("exponent form") << u"4,91711E+11"_s << QString();
    }

    void key()
    {
        QFETCH(QString, written);
        QFETCH(QString, key);
        QCOMPARE(StopList::key(written), key);
    }

    void sharedFile_data()
    {
        QTest::addColumn<QByteArray>("oem"); // null: no oem.inf
        QTest::addColumn<QString>("fileName"); // where the list is written; empty: nowhere
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("sharedFile"); // relative to the program's folder
        QTest::addColumn<QStringList>("entries");
        QTest::addColumn<QString>("error"); // the start of the error text
        const QByteArray files = "[Files]\r\nSperrliste=sperr.txt\r\n";
        QTest::newRow("no oem.inf") << QByteArray() << u"sperr.txt"_s << QByteArray("0171 1234567\r\n") << QString()
                                    << QStringList() << QString();
        QTest::newRow("oem.inf without the key")
            << QByteArray("[Files]\r\nUpdater=u\r\n") << u"sperr.txt"_s << QByteArray("0171 1234567\r\n") << QString()
            << QStringList() << QString();
        QTest::newRow("blanks, comments, BOM, CR LF")
            << files << u"sperr.txt"_s
            << QByteArray("\xEF\xBB\xBF"
                          "0171 1234567\r\n\r\n   \r\n# Widerspruch vom 3.5.\r\n; alt\r\n  +43 664 1234567  \r\n"
                          "0049 160 5555555 # Herr Weiß\r\nkein Anschluss\r\n")
            << u"sperr.txt"_s << QStringList { u"0171 1234567"_s, u"+43 664 1234567"_s, u"0049 160 5555555"_s }
            << QString();
        QTest::newRow("UTF-16 with BOM, LF") << files << u"sperr.txt"_s
                                             << QByteArray("\xFF\xFE"
                                                           "0\0"
                                                           "1\0"
                                                           "7\0"
                                                           "1\0"
                                                           "1\0"
                                                           "2\0"
                                                           "3\0"
                                                           "4\0"
                                                           "5\0"
                                                           "6\0"
                                                           "7\0\n\0",
                                                           26)
                                             << u"sperr.txt"_s << QStringList { u"01711234567"_s } << QString();
        QTest::newRow("relative path into a folder")
            << QByteArray("[files]\r\nsperrliste=listen/../gemeinsam/sperr.txt   \r\n") << u"gemeinsam/sperr.txt"_s
            << QByteArray("0171 1234567\n") << u"gemeinsam/sperr.txt"_s << QStringList { u"0171 1234567"_s }
            << QString();
        QTest::newRow("missing file is told")
            << QByteArray("[Files]\r\nSperrliste=fehlt.txt\r\n") << QString() << QByteArray() << u"fehlt.txt"_s
            << QStringList() << u"Die Sperrliste %1 (in oem.inf unter [Files] Sperrliste genannt) gibt es nicht."_s;
        QTest::newRow("a folder can't be read") << QByteArray("[Files]\r\nSperrliste=ordner\r\n") << u"ordner/x.txt"_s
                                                << QByteArray("0171 1234567\n") << u"ordner"_s << QStringList()
                                                << u"Die Sperrliste %1 (in oem.inf unter [Files] Sperrliste genannt) "
                                                   "kann nicht gelesen werden: "_s;
        QTest::newRow("empty file") << files << u"sperr.txt"_s << QByteArray("") << u"sperr.txt"_s << QStringList()
                                    << QString();
    }

    void sharedFile()
    {
        QFETCH(QByteArray, oem);
        QFETCH(QString, fileName);
        QFETCH(QByteArray, content);
        QFETCH(QString, sharedFile);
        QFETCH(QStringList, entries);
        QFETCH(QString, error);
        if (!oem.isNull())
            write(u"oem.inf"_s, oem);
        if (!fileName.isEmpty())
            write(fileName, content);
        const StopList list = StopList::load();
        const QString path = sharedFile.isEmpty() ? QString() : m_folder.filePath(sharedFile);
        QCOMPARE(list.sharedFile(), path);
        QCOMPARE(list.sharedEntries(), entries);
        if (error.isEmpty())
            QCOMPARE(list.sharedFileError(), QString());
        else
            QVERIFY2(list.sharedFileError().startsWith(error.arg(QDir::toNativeSeparators(path))),
                     qPrintable(list.sharedFileError()));
        QCOMPARE(list.isEmpty(), entries.isEmpty());
        for (const QString& entry : entries)
            QVERIFY(list.contains(StopList::key(entry)));
        QVERIFY(list.userEntries().isEmpty());
        QFile::remove(m_folder.filePath(fileName));
    }

    // The user's list keeps what was written, in its order, and a shorter list leaves nothing of
    // the longer one behind.
    void userEntriesInTheStore()
    {
        // Saving nothing into an empty store makes no store.
        QVERIFY(StopList::saveUserEntries({}));
        QVERIFY(!QFile::exists(ToolRegistry::storeFileName()));
        QVERIFY(StopList::load().isEmpty());
        const QStringList three { u"0171 1234567"_s, u"+43 664 1234567"_s, u"0160/5555555"_s };
        QVERIFY(StopList::saveUserEntries(three));
        StopList list = StopList::load();
        QCOMPARE(list.userEntries(), three);
        QVERIFY(list.contains(u"00491605555555"_s));

        QVERIFY(StopList::saveUserEntries({ u"0160/5555555"_s, u"  "_s }));
        list = StopList::load();
        QCOMPARE(list.userEntries(), QStringList { u"0160/5555555"_s });
        QVERIFY(!list.contains(u"0171 1234567"_s));
        QVERIFY(!TestStore::has(u"2"_s, u"Sperrliste"_s));
        QVERIFY(!TestStore::has(u"3"_s, u"Sperrliste"_s));

        QVERIFY(StopList::saveUserEntries({}));
        QVERIFY(StopList::load().isEmpty());
        QVERIFY(!TestStore::has(u"count"_s, u"Sperrliste"_s));
        // Both lists together.
        write(u"oem.inf"_s, "[Files]\r\nSperrliste=sperr.txt\r\n");
        write(u"sperr.txt"_s, "0171 1234567\r\n");
        QVERIFY(StopList::saveUserEntries({ u"0160 5555555"_s }));
        list = StopList::load();
        QVERIFY(list.contains(u"+49 171 1234567"_s));
        QVERIFY(list.contains(u"+49 160 5555555"_s));
    }

    void importFile_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QStringList>("numbers");
        QTest::addColumn<int>("refused");
        QTest::newRow("CSV with header: the mobile column, not the phone")
            << QByteArray("Name;Telefon geschäftlich;Mobiltelefon\r\nAnna;0201 555;0171 1234567\r\n"
                          "Ben;0201 556;\r\nCem;0201 557;+43 664 1234567\r\nDora;0201 558;4,91711E+11\r\n")
            << QStringList { u"00491711234567"_s, u"00436641234567"_s } << 2;
        QTest::newRow("a number a line") << QByteArray(
            "0171 1234567\n\n+43 664 1234567\r\n# Kommentar\nMeier\n01711234567\n")
                                         << QStringList { u"00491711234567"_s, u"00436641234567"_s } << 1;
        QTest::newRow("list without a header, .msms form")
            << QByteArray("Anna;00491711234567;;\r\nBen;;;\r\n") << QStringList { u"00491711234567"_s } << 1;
        QTest::newRow("empty file") << QByteArray() << QStringList() << 0;
    }

    void importFile()
    {
        QFETCH(QByteArray, content);
        QFETCH(QStringList, numbers);
        QFETCH(int, refused);
        write(u"import.csv"_s, content);
        const StopList::Import read = StopList::importFile(m_folder.filePath(u"import.csv"_s));
        QCOMPARE(read.error, QString());
        QCOMPARE(read.numbers, numbers);
        QCOMPARE(read.refused, refused);
    }

    void importFileThatCantBeRead()
    {
        const QString path = m_folder.filePath(u"fehlt.csv"_s);
        const StopList::Import read = StopList::importFile(path);
        QVERIFY2(read.error.startsWith(u"Die Datei %1 kann nicht gelesen werden: "_s.arg(path)),
                 qPrintable(read.error));
        QVERIFY(read.numbers.isEmpty());
        write(u"mappe.xlsx"_s, QByteArray("PK\x03\x04", 4) + QByteArray(100, '\x01'));
        QVERIFY(!StopList::importFile(m_folder.filePath(u"mappe.xlsx"_s)).error.isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestStopList)
#include "tst_stoplist.moc"
