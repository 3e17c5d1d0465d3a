// SPDX-License-Identifier: GPL-3.0-or-later
#include "TestStore.h"
#include "settings/ProxyConfig.h"
#include "settings/cOptionen.h"
#include "settings/clsMRU.h"

#include <QTest>

class TestUsedNumbersAndProxy : public QObject
{
    Q_OBJECT

    static QString item(int i) { return QStringLiteral("Name%1;G171-%1").arg(i); }

private slots:
    void init() { TestStore::reset(); }

    void newListHasLimitFour()
    {
        clsMRU mru;
        QCOMPARE(mru.Max(), 4);
        QVERIFY(!mru.setMax(0));
        QCOMPARE(mru.Max(), 4);
    }

    void eleventhItemDropsTheOldest()
    {
        clsMRU mru;
        mru.setMax(10);
        for (int i = 1; i <= 11; ++i)
            mru.Add(item(i));
        QCOMPARE(mru.Count(), 10);
        QCOMPARE(mru.Item(1), item(11));
        QCOMPARE(mru.Item(10), item(2));
        QCOMPARE(mru.Item(11), QString());
    }

    void repeatedItemMovesToTheFrontKeepingItsSpelling()
    {
        clsMRU mru;
        mru.setMax(10);
        for (int i = 1; i <= 7; ++i)
            mru.Add(item(i));
        QCOMPARE(mru.Item(7), item(1));
        mru.Add(item(1).toUpper());
        QCOMPARE(mru.Count(), 7);
        QCOMPARE(mru.Item(1), item(1));
        QCOMPARE(mru.Item(2), item(7));
    }

    void storeRewritesPositionsAndLeavesTheStaleTail()
    {
        TestStore::put(QStringLiteral("1"), QStringLiteral("A;G171-1"), QStringLiteral("MRU"));
        TestStore::put(QStringLiteral("2"), QStringLiteral("B;G171-2"), QStringLiteral("MRU"));
        TestStore::put(QStringLiteral("4"), QStringLiteral("C;G171-3"), QStringLiteral("MRU"));
        clsMRU mru;
        mru.setMax(10);
        mru.ReadSettings();
        QCOMPARE(mru.items(),
                 (QStringList { QStringLiteral("A;G171-1"), QStringLiteral("B;G171-2"), QStringLiteral("C;G171-3") }));
        mru.Add(QStringLiteral("B;G171-2"));
        mru.StoreSettings();
        QCOMPARE(TestStore::raw(QStringLiteral("1"), QStringLiteral("MRU")), QStringLiteral("B;G171-2"));
        QCOMPARE(TestStore::raw(QStringLiteral("2"), QStringLiteral("MRU")), QStringLiteral("A;G171-1"));
        QCOMPARE(TestStore::raw(QStringLiteral("3"), QStringLiteral("MRU")), QStringLiteral("C;G171-3"));
        // The old fourth value stays behind and is read again, as far as no double forbids it.
        QCOMPARE(TestStore::raw(QStringLiteral("4"), QStringLiteral("MRU")), QStringLiteral("C;G171-3"));
        mru.ReadSettings();
        QCOMPARE(mru.Count(), 3);
    }

    void comboItems_data()
    {
        QTest::addColumn<QString>("item");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("tag");
        QTest::newRow("plain") << "Max;G171-1234567"
                               << "Max"
                               << "G171-1234567";
        QTest::newRow("empty name") << ";A664-1"
                                    << ""
                                    << "A664-1";
        QTest::newRow("name with ;") << "Max;Moritz;G171-1"
                                     << "Max"
                                     << "Moritz";
        QTest::newRow("no ; at all") << "kaputt"
                                     << "kaputt"
                                     << "";
    }

    void comboItems()
    {
        QFETCH(QString, item);
        QFETCH(QString, name);
        QFETCH(QString, tag);
        clsMRU mru;
        mru.Add(item);
        QCOMPARE(mru.comboItems().size(), 1);
        QCOMPARE(mru.comboItems().first().name, name);
        QCOMPARE(mru.comboItems().first().tag, tag);
    }

    void proxy_data()
    {
        QTest::addColumn<QString>("accessType");
        QTest::addColumn<QString>("address");
        QTest::addColumn<QString>("port");
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("proxy");
        QTest::newRow("empty store") << ""
                                     << ""
                                     << "" << 0 << ":0";
        QTest::newRow("system proxy ignores the host") << "0"
                                                       << "proxy"
                                                       << "3128" << 0 << ":0";
        QTest::newRow("no proxy") << "1"
                                  << "proxy"
                                  << "3128" << 1 << ":0";
        QTest::newRow("named proxy") << "2"
                                     << "proxy.example"
                                     << "3128" << 2 << "proxy.example:3128";
        QTest::newRow("port 65535 prints as -1") << "2"
                                                 << "p"
                                                 << "65535" << 2 << "p:-1";
        QTest::newRow("port 32768") << "2"
                                    << "p"
                                    << "32768" << 2 << "p:-32768";
        QTest::newRow("port not a number") << "2"
                                           << "p"
                                           << "abc" << 2 << "p:0";
        QTest::newRow("access type not a number") << "x"
                                                  << "p"
                                                  << "1" << 0 << ":0";
        QTest::newRow("other number passes") << "5"
                                             << "p"
                                             << "1" << 5 << ":0";
    }

    void proxy()
    {
        QFETCH(QString, accessType);
        QFETCH(QString, address);
        QFETCH(QString, port);
        QFETCH(int, type);
        QFETCH(QString, proxy);
        Options().setProxyAccessType(accessType);
        Options().setProxyAddress(address);
        Options().setProxyPort(port);
        QCOMPARE(int(ProxyConfig::GetAccessType()), type);
        QCOMPARE(ProxyConfig::GetProxyString(), proxy);
    }
};

QTEST_GUILESS_MAIN(TestUsedNumbersAndProxy)
#include "tst_clsmru.moc"
