// SPDX-License-Identifier: GPL-3.0-or-later
#include "KillWhileWriting.h"
#include "TestStore.h"
#include "settings/ToolRegistry.h"

#include <QFile>
#include <QSettings>
#include <QTest>

using namespace ToolRegistry;
using namespace Qt::StringLiterals;

class TestToolRegistry : public QObject
{
    Q_OBJECT

    const QString root = QString::fromUtf16(RootKey);

private slots:
    void init() { TestStore::reset(); }

    // The store is rewritten whole at each save (it holds the password): a kill at any moment
    // leaves the old file or the new one, never a cut one.
    void storeIsWholeAfterAKillAtAnyMoment()
    {
        const QString big(3000, u'x');
        QVERIFY(SaveRegString(root, u"eMail"_s, u"demo@quellbote.test"_s));
        const QString problem = killWhileWriting(
            [&] {
                for (int i = 0;; ++i)
                    SaveRegString(root, u"lastText"_s, QString::number(i % 2) + big);
            },
            [&] {
                QSettings file(storeFileName(), QSettings::IniFormat);
                const QString text = file.value(u"lastText"_s).toString();
                if (file.status() != QSettings::NoError || file.value(u"eMail"_s) != u"demo@quellbote.test"_s)
                    return u"the store can't be read whole"_s;
                if (!text.isEmpty() && text != u"0"_s + big && text != u"1"_s + big)
                    return u"lastText is cut: %1 characters"_s.arg(text.size());
                return QString();
            });
        QVERIFY2(problem.isEmpty(), qPrintable(problem));
        // A killed writer leaves its lock behind, and as a fork of this process it names this one,
        // which would wait the lock out as if another program held it.
        QFile::remove(storeFileName() + u".lock"_s);
    }

    // Reading an absent value, or failing to remove one, creates nothing, not even the store.
    void absentValueReadsEmptyAndCreatesNothing()
    {
        QCOMPARE(GetRegString(root + u"\\Nowhere"_s, u"x"_s), QString());
        QVERIFY(!GetRegBool(root, u"x"_s));
        QVERIFY(!SaveRegString(root + u"\\Neu"_s, u"a"_s, u" "_s));
        QVERIFY(!QFile::exists(storeFileName()));
    }

    void writeCreatesMissingKeysAndKeepsBlanks()
    {
        QVERIFY(SaveRegString(root + u"\\MRU"_s, u"1"_s, u"  Anna;G171-123  "_s));
        QCOMPARE(TestStore::raw(u"1"_s, u"MRU"_s), u"  Anna;G171-123  "_s);
        QCOMPARE(GetRegString(root + u"\\MRU"_s, u"1"_s), u"  Anna;G171-123  "_s);
        QCOMPARE(CreateRegKey(root + u"\\MRU"_s), 2); // the value made the key
        // Only blanks count as empty, and remove the value: a text of line breaks is a text.
        QVERIFY(SaveRegString(root, u"lastText"_s, u"\r\n"_s));
        QCOMPARE(TestStore::raw(u"lastText"_s), u"\r\n"_s);
        QVERIFY(SaveRegString(root, u"lastText"_s, u"   "_s));
        QVERIFY(!TestStore::has(u"lastText"_s));
    }

    void readLimit_data()
    {
        QTest::addColumn<int>("length");
        QTest::newRow("1023 characters read whole") << 1023;
        QTest::newRow("1024 characters read empty") << 1024;
    }

    void readLimit()
    {
        QFETCH(int, length);
        const QString text(length, u'x');
        QVERIFY(SaveRegString(root, u"long"_s, text));
        QCOMPARE(TestStore::raw(u"long"_s), text);
        QCOMPARE(GetRegString(root, u"long"_s), length <= MaxReadLength ? text : QString());
        // Read with others, the same rule.
        QVERIFY(SaveRegStrings(root, { { u"short"_s, u"x"_s }, { u"other"_s, text } }));
        QCOMPARE(GetRegStrings(root, { u"short"_s, u"other"_s, u"absent"_s }),
                 (QStringList { u"x"_s, length <= MaxReadLength ? text : QString(), QString() }));
    }

    // Only "true" reads as true, and only -1, the all-ones True, is written as "true".
    void booleans_data()
    {
        QTest::addColumn<int>("written"); // 0: the stored text put there by hand
        QTest::addColumn<QString>("stored");
        QTest::addColumn<bool>("value");
        QTest::newRow("true") << 0 << u"true"_s << true;
        QTest::newRow("True") << 0 << u"True"_s << false;
        QTest::newRow("true with a blank") << 0 << u"true "_s << false;
        QTest::newRow("-1 written") << -1 << u"true"_s << true;
        QTest::newRow("1 written") << 1 << u"false"_s << false;
    }

    void booleans()
    {
        QFETCH(int, written);
        QFETCH(QString, stored);
        QFETCH(bool, value);
        if (written == 0)
            TestStore::put(u"flag"_s, stored);
        else
            QVERIFY(SaveRegBool(root, u"flag"_s, qint16(written)));
        QCOMPARE(TestStore::raw(u"flag"_s), stored);
        QCOMPARE(GetRegBool(root, u"flag"_s), value);
    }

#ifndef Q_OS_WIN
    void storeFileIsReadableByItsOwnerOnly()
    {
        SaveRegString(root, u"Password"_s, u"geheim"_s);
        const QFile::Permissions permissions = QFile::permissions(storeFileName());
        QVERIFY(permissions & QFile::ReadOwner);
        QVERIFY(!(permissions & (QFile::ReadGroup | QFile::ReadOther | QFile::WriteGroup | QFile::WriteOther)));
    }
#endif
};

QTEST_GUILESS_MAIN(TestToolRegistry)
#include "tst_toolregistry.moc"
