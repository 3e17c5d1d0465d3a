// SPDX-License-Identifier: GPL-3.0-or-later
#include "TestStore.h"
#include "settings/ProxyConfig.h"
#include "settings/cOptionen.h"
#include "settings/clsMRU.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {
// Every value under the name existing stores have it by.
const QStringList BooleanNames
    = u"isAbsenderkennung isAntwortEnabled isStatusberichtEnabled isControlEmail firstStartHasRun waitingForPassword "
      "dontDisplayMinimizeWarning longSMS xmlGroupUser xmlSingleUser isXmlServerUsed proxyCustom proxyDefault "
      "proxyNoProxy webProxyInUse"_s.split(u' ');
const QStringList StringNames
    = u"Password eMail Absenderkennung contactEntryID contactStoreID contactFolderName outlookProfile xmlPath xmlGroup "
      "xmlUser xmlSecretKey proxyAddress proxyPort proxyAccessType webProxyAddress webProxyName webProxyPort "
      "webProxyUserName webProxyUserPasswd"_s.split(u' ');
} // namespace

// The stored options, the list of used numbers and the proxy settings read from the options.
class TestCOptionen : public QObject
{
    Q_OBJECT

    static QString item(int i) { return u"Name%1;G171-%1"_s.arg(i); }

private slots:
    void init() { TestStore::reset(); }

    void emptyOrMisspelledStoreGivesDefaults()
    {
        TestStore::put(u"isAntwortEnabled"_s, u"True"_s);
        TestStore::put(u"xmlSingleUser"_s, u"1"_s);
        cOptionen o;
        QVERIFY(!o.isAntwortEnabled());
        QCOMPARE(o.xmlSingleUser(), u"False"_s);
    }

    // Values that nothing in the program changes (the status report among them) survive a save.
    // Saved over them, an empty record writes its booleans as false and removes its strings.
    void everyValueIsReadAndWrittenUnderItsName()
    {
        cOptionen empty;
        for (const QString& name : StringNames)
            TestStore::put(name, name);
        for (const QString& name : BooleanNames)
            TestStore::put(name, u"true"_s);
        TestStore::put(u"infoVersion"_s, u"7"_s);
        const cOptionen o;
        QCOMPARE(o.kennwort(), u"Password"_s);
        QCOMPARE(o.Username(), u"eMail"_s);
        QCOMPARE(o.xmlSingleUser(), u"True"_s);
        TestStore::reset();
        o.save();
        for (const QString& name : StringNames)
            QCOMPARE(TestStore::raw(name), name);
        for (const QString& name : BooleanNames)
            QCOMPARE(TestStore::raw(name), u"true"_s);
        QCOMPARE(TestStore::raw(u"infoVersion"_s), u"7"_s);

        empty.setKennwort(u"   "_s);
        empty.save();
        QCOMPARE(empty.kennwort(), u"   "_s);
        for (const QString& name : BooleanNames)
            QCOMPARE(TestStore::raw(name), u"false"_s);
        for (const QString& name : StringNames)
            QVERIFY2(!TestStore::has(name), qPrintable(name));
        QCOMPARE(TestStore::raw(u"infoVersion"_s), u"0"_s);
    }

    // Without a keyring (as here, in Qt's test mode) the store keeps the password as it always
    // did; a note that it lives in a keyring, left by a session that had one, makes it asked for.
    void passwordWithoutAKeyring_data()
    {
        QTest::addColumn<QString>("inStore"); // null: absent
        QTest::addColumn<bool>("noted");
        QTest::addColumn<QString>("typed"); // null: the options are saved unchanged
        QTest::addColumn<QString>("loaded");
        QTest::addColumn<QString>("storeAfter");
        QTest::addColumn<bool>("notedAfter");
        QTest::newRow("in the store") << u"geheim"_s << false << QString() << u"geheim"_s << u"geheim"_s << false;
        QTest::newRow("in a keyring not there: asked for")
            << QString() << true << QString() << QString() << QString() << true;
        QTest::newRow("typed now: into the store") << QString() << true << u"neu"_s << QString() << u"neu"_s << false;
        QTest::newRow("cleared") << u"geheim"_s << false << u""_s << u"geheim"_s << QString() << false;
    }

    void passwordWithoutAKeyring()
    {
        QFETCH(QString, inStore);
        QFETCH(bool, noted);
        QFETCH(QString, typed);
        QFETCH(QString, loaded);
        QFETCH(QString, storeAfter);
        QFETCH(bool, notedAfter);
        TestStore::put(u"eMail"_s, u"demo@quellbote.test"_s);
        if (!inStore.isNull())
            TestStore::put(u"Password"_s, inStore);
        if (noted)
            TestStore::put(u"passwordInKeyring"_s, u"true"_s);
        cOptionen o;
        QCOMPARE(o.kennwort(), loaded);
        if (!typed.isNull())
            o.setKennwort(typed);
        o.save();
        QVERIFY(!o.keyringRefusedPassword());
        QCOMPARE(TestStore::raw(u"Password"_s), storeAfter);
        QCOMPARE(TestStore::has(u"passwordInKeyring"_s), notedAfter);
    }

    void infoVersionGuard_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<int>("value");
        QTest::newRow("blanks around") << u" 3 "_s << 3;
        QTest::newRow("abc") << u"abc"_s << 0;
        QTest::newRow("negative") << u"-1"_s << -1;
        QTest::newRow("too large for 16 bits") << u"40000"_s << 0;
    }

    void infoVersionGuard()
    {
        QFETCH(QString, stored);
        QFETCH(int, value);
        TestStore::put(u"infoVersion"_s, stored);
        cOptionen o;
        QCOMPARE(int(o.InfoVersion()), value);
        o.save();
        QCOMPARE(TestStore::raw(u"infoVersion"_s), QString::number(value));
    }

    void startRule_data()
    {
        QTest::addColumn<QString>("infoVersion"); // null: absent
        QTest::addColumn<QString>("firstStartHasRun");
        QTest::addColumn<bool>("wizard");
        QTest::addColumn<QString>("storedFlag"); // null: nothing written
        QTest::newRow("new user") << QString() << QString() << true << QString();
        QTest::newRow("news seen counts as set up") << u"1"_s << QString() << false << u"true"_s;
        QTest::newRow("flag set, news 0") << u"0"_s << u"true"_s << false << u"true"_s;
        QTest::newRow("flag spelled True") << QString() << u"True"_s << true << u"True"_s;
    }

    void startRule()
    {
        QFETCH(QString, infoVersion);
        QFETCH(QString, firstStartHasRun);
        QFETCH(bool, wizard);
        QFETCH(QString, storedFlag);
        if (!infoVersion.isNull())
            TestStore::put(u"infoVersion"_s, infoVersion);
        if (!firstStartHasRun.isNull())
            TestStore::put(u"firstStartHasRun"_s, firstStartHasRun);
        cOptionen o;
        QCOMPARE(o.takeFirstStartDecision(), wizard);
        QCOMPARE(TestStore::raw(u"firstStartHasRun"_s), storedFlag);
        QCOMPARE(TestStore::raw(u"infoVersion"_s), infoVersion);
    }

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

QTEST_GUILESS_MAIN(TestCOptionen)
#include "tst_coptionen.moc"
