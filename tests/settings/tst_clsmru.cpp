// SPDX-License-Identifier: GPL-3.0-or-later
#include "TestStore.h"
#include "settings/ProxyConfig.h"
#include "settings/cOptionen.h"
#include "settings/clsMRU.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestUsedNumbersAndProxy : public QObject
{
    Q_OBJECT

    static QString item(int i) { return u"Name%1;G171-%1"_s.arg(i); }

private slots:
    void init() { TestStore::reset(); }

    void newestFirstWithoutDoubles()
    {
        clsMRU mru;
        QVERIFY(!mru.setMax(0));
        QCOMPARE(mru.Max(), 4);
        mru.setMax(10);
        for (int i = 1; i <= 7; ++i)
            mru.Add(item(i));
        // A repeat moves to the front and keeps its first spelling.
        mru.Add(item(1).toUpper());
        QCOMPARE(mru.Count(), 7);
        QCOMPARE(mru.Item(1), item(1));
        QCOMPARE(mru.Item(2), item(7));
        for (int i = 8; i <= 11; ++i)
            mru.Add(item(i));
        QCOMPARE(mru.Count(), 10);
        QCOMPARE(mru.Item(1), item(11));
        QCOMPARE(mru.Item(10), item(3));
        QCOMPARE(mru.Item(11), QString());
    }

    void storeRewritesPositionsAndLeavesTheStaleTail()
    {
        TestStore::put(u"1"_s, u"A;G171-1"_s, u"MRU"_s);
        TestStore::put(u"2"_s, u"B;G171-2"_s, u"MRU"_s);
        TestStore::put(u"4"_s, u"C;G171-3"_s, u"MRU"_s);
        clsMRU mru;
        mru.setMax(10);
        mru.ReadSettings();
        QCOMPARE(mru.items(), (QStringList { u"A;G171-1"_s, u"B;G171-2"_s, u"C;G171-3"_s }));
        mru.Add(u"B;G171-2"_s);
        mru.StoreSettings();
        QCOMPARE(TestStore::raw(u"1"_s, u"MRU"_s), u"B;G171-2"_s);
        QCOMPARE(TestStore::raw(u"2"_s, u"MRU"_s), u"A;G171-1"_s);
        QCOMPARE(TestStore::raw(u"3"_s, u"MRU"_s), u"C;G171-3"_s);
        QCOMPARE(TestStore::raw(u"4"_s, u"MRU"_s), u"C;G171-3"_s);
        mru.ReadSettings();
        QCOMPARE(mru.Count(), 3);
    }

    void comboItems_data()
    {
        QTest::addColumn<QString>("item");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("tag");
        QTest::newRow("plain") << u"Max;G171-1234567"_s << u"Max"_s << u"G171-1234567"_s;
        QTest::newRow("name with ;") << u"Max;Moritz;G171-1"_s << u"Max"_s << u"Moritz"_s;
        QTest::newRow("no ; at all") << u"kaputt"_s << u"kaputt"_s << u""_s;
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
        QTest::newRow("system proxy ignores the host") << u"0"_s << u"proxy"_s << u"3128"_s << 0 << u":0"_s;
        QTest::newRow("named proxy") << u"2"_s << u"proxy.example"_s << u"3128"_s << 2 << u"proxy.example:3128"_s;
        QTest::newRow("port 65535 prints as -1") << u"2"_s << u"p"_s << u"65535"_s << 2 << u"p:-1"_s;
        QTest::newRow("port 32768") << u"2"_s << u"p"_s << u"32768"_s << 2 << u"p:-32768"_s;
        QTest::newRow("port not a number") << u"2"_s << u"p"_s << u"abc"_s << 2 << u"p:0"_s;
        QTest::newRow("other number passes") << u"5"_s << u"p"_s << u"1"_s << 5 << u":0"_s;
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
