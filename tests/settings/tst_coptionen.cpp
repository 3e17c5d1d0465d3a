// SPDX-License-Identifier: GPL-3.0-or-later
#include "TestStore.h"
#include "settings/cOptionen.h"

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

class TestCOptionen : public QObject
{
    Q_OBJECT

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
    void everyValueIsReadAndWrittenUnderItsName()
    {
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
    }

    void savingAnEmptyRecordWritesBooleansAndRemovesStrings()
    {
        cOptionen o;
        for (const QString& name : StringNames)
            TestStore::put(name, u"alt"_s);
        o.setKennwort(u"   "_s);
        o.save();
        QCOMPARE(o.kennwort(), u"   "_s);
        for (const QString& name : BooleanNames)
            QCOMPARE(TestStore::raw(name), u"false"_s);
        for (const QString& name : StringNames)
            QVERIFY2(!TestStore::has(name), qPrintable(name));
        QCOMPARE(TestStore::raw(u"infoVersion"_s), u"0"_s);
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
};

QTEST_GUILESS_MAIN(TestCOptionen)
#include "tst_coptionen.moc"
