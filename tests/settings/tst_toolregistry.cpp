// SPDX-License-Identifier: GPL-3.0-or-later
#include "TestStore.h"
#include "settings/ToolRegistry.h"

#include <QFile>
#include <QTest>

using namespace ToolRegistry;

class TestToolRegistry : public QObject
{
    Q_OBJECT

    const QString root = QString::fromUtf16(RootKey);

private slots:
    void init() { TestStore::reset(); }

    void absentValueReadsEmptyAndCreatesNothing()
    {
        QCOMPARE(GetRegString(root + QStringLiteral("\\Nowhere"), QStringLiteral("x")), QString());
        QVERIFY(!GetRegBool(root, QStringLiteral("x")));
        QVERIFY(!TestStore::has(QStringLiteral("x"), QStringLiteral("Nowhere")));
        QVERIFY(!QFile::exists(storeFileName()));
    }

    void writeCreatesMissingKeys()
    {
        QVERIFY(SaveRegString(root + QStringLiteral("\\MRU"), QStringLiteral("1"), QStringLiteral("Anna;G171-123")));
        QCOMPARE(TestStore::raw(QStringLiteral("1"), QStringLiteral("MRU")), QStringLiteral("Anna;G171-123"));
        QCOMPARE(GetRegString(root + QStringLiteral("\\MRU"), QStringLiteral("1")), QStringLiteral("Anna;G171-123"));
    }

    void blankTextRemoves_data()
    {
        QTest::addColumn<bool>("exists");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("result");
        QTest::newRow("empty text removes an existing value") << true << QString() << true;
        QTest::newRow("blanks remove an existing value") << true << QStringLiteral("   ") << true;
        QTest::newRow("removing an absent value fails") << false << QString() << false;
        QTest::newRow("blanks on an absent value fail") << false << QStringLiteral(" ") << false;
    }

    void blankTextRemoves()
    {
        QFETCH(bool, exists);
        QFETCH(QString, text);
        QFETCH(bool, result);
        if (exists)
            TestStore::put(QStringLiteral("Absenderkennung"), QStringLiteral("Firma"));
        QCOMPARE(SaveRegString(root, QStringLiteral("Absenderkennung"), text), result);
        QVERIFY(!TestStore::has(QStringLiteral("Absenderkennung")));
    }

    void removalCreatesNoKey()
    {
        QVERIFY(!SaveRegString(root + QStringLiteral("\\Neu"), QStringLiteral("a"), QString()));
        QCOMPARE(CreateRegKey(root + QStringLiteral("\\Neu")), 1);
    }

    void blanksAroundTextAreKept()
    {
        QVERIFY(SaveRegString(root, QStringLiteral("v"), QStringLiteral("  a b  ")));
        QCOMPARE(GetRegString(root, QStringLiteral("v")), QStringLiteral("  a b  "));
    }

    void readLimit_data()
    {
        QTest::addColumn<int>("length");
        QTest::addColumn<bool>("readsBack");
        QTest::newRow("1023 characters read whole") << 1023 << true;
        QTest::newRow("1024 characters read empty") << 1024 << false;
        QTest::newRow("5000 characters read empty") << 5000 << false;
    }

    void readLimit()
    {
        QFETCH(int, length);
        QFETCH(bool, readsBack);
        const QString text(length, QLatin1Char('x'));
        QVERIFY(SaveRegString(root, QStringLiteral("long"), text));
        QCOMPARE(TestStore::raw(QStringLiteral("long")), text);
        QCOMPARE(GetRegString(root, QStringLiteral("long")), readsBack ? text : QString());
    }

    void booleans_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<bool>("value");
        QTest::newRow("true") << QStringLiteral("true") << true;
        QTest::newRow("True") << QStringLiteral("True") << false;
        QTest::newRow("TRUE") << QStringLiteral("TRUE") << false;
        QTest::newRow("1") << QStringLiteral("1") << false;
        QTest::newRow("true with a blank") << QStringLiteral("true ") << false;
        QTest::newRow("false") << QStringLiteral("false") << false;
    }

    void booleans()
    {
        QFETCH(QString, stored);
        QFETCH(bool, value);
        TestStore::put(QStringLiteral("flag"), stored);
        QCOMPARE(GetRegBool(root, QStringLiteral("flag")), value);
    }

    void saveRegBoolWritesTrueOnlyForAllOnes_data()
    {
        QTest::addColumn<int>("value");
        QTest::addColumn<QString>("stored");
        QTest::newRow("-1") << -1 << QStringLiteral("true");
        QTest::newRow("1") << 1 << QStringLiteral("false");
        QTest::newRow("0") << 0 << QStringLiteral("false");
        QTest::newRow("2") << 2 << QStringLiteral("false");
    }

    void saveRegBoolWritesTrueOnlyForAllOnes()
    {
        QFETCH(int, value);
        QFETCH(QString, stored);
        QVERIFY(SaveRegBool(root, QStringLiteral("flag"), qint16(value)));
        QCOMPARE(TestStore::raw(QStringLiteral("flag")), stored);
    }

    void createRegKeyDisposition()
    {
        const QString key = root + QStringLiteral("\\Signaturen");
        QCOMPARE(CreateRegKey(key), 1);
        QCOMPARE(CreateRegKey(key), 2);
        SaveRegString(root + QStringLiteral("\\MRU"), QStringLiteral("1"), QStringLiteral("x"));
        QCOMPARE(CreateRegKey(root + QStringLiteral("\\MRU")), 2);
    }

#ifndef Q_OS_WIN
    void storeFileIsReadableByItsOwnerOnly()
    {
        SaveRegString(root, QStringLiteral("Password"), QStringLiteral("geheim"));
        const QFile::Permissions permissions = QFile::permissions(storeFileName());
        QVERIFY(permissions & QFile::ReadOwner);
        QVERIFY(!(permissions & (QFile::ReadGroup | QFile::ReadOther | QFile::WriteGroup | QFile::WriteOther)));
    }
#endif
};

QTEST_GUILESS_MAIN(TestToolRegistry)
#include "tst_toolregistry.moc"
