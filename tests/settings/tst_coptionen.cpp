// SPDX-License-Identifier: GPL-3.0-or-later
#include "TestStore.h"
#include "settings/cOptionen.h"

#include <QTest>

class TestCOptionen : public QObject
{
    Q_OBJECT

    static QStringList allStoredNames()
    {
        return { QStringLiteral("Password"),
                 QStringLiteral("eMail"),
                 QStringLiteral("Absenderkennung"),
                 QStringLiteral("isAbsenderkennung"),
                 QStringLiteral("isAntwortEnabled"),
                 QStringLiteral("isStatusberichtEnabled"),
                 QStringLiteral("infoVersion"),
                 QStringLiteral("isControlEmail"),
                 QStringLiteral("contactEntryID"),
                 QStringLiteral("contactStoreID"),
                 QStringLiteral("contactFolderName"),
                 QStringLiteral("outlookProfile"),
                 QStringLiteral("firstStartHasRun"),
                 QStringLiteral("waitingForPassword"),
                 QStringLiteral("dontDisplayMinimizeWarning"),
                 QStringLiteral("longSMS"),
                 QStringLiteral("xmlPath"),
                 QStringLiteral("xmlGroup"),
                 QStringLiteral("xmlUser"),
                 QStringLiteral("xmlSecretKey"),
                 QStringLiteral("xmlGroupUser"),
                 QStringLiteral("xmlSingleUser"),
                 QStringLiteral("isXmlServerUsed"),
                 QStringLiteral("proxyAddress"),
                 QStringLiteral("proxyPort"),
                 QStringLiteral("proxyCustom"),
                 QStringLiteral("proxyDefault"),
                 QStringLiteral("proxyNoProxy"),
                 QStringLiteral("proxyAccessType"),
                 QStringLiteral("webProxyInUse"),
                 QStringLiteral("webProxyAddress"),
                 QStringLiteral("webProxyName"),
                 QStringLiteral("webProxyPort"),
                 QStringLiteral("webProxyUserName"),
                 QStringLiteral("webProxyUserPasswd") };
    }

    static const QStringList& booleanNames()
    {
        static const QStringList names = { QStringLiteral("isAbsenderkennung"),
                                           QStringLiteral("isAntwortEnabled"),
                                           QStringLiteral("isStatusberichtEnabled"),
                                           QStringLiteral("isControlEmail"),
                                           QStringLiteral("firstStartHasRun"),
                                           QStringLiteral("waitingForPassword"),
                                           QStringLiteral("dontDisplayMinimizeWarning"),
                                           QStringLiteral("longSMS"),
                                           QStringLiteral("xmlGroupUser"),
                                           QStringLiteral("xmlSingleUser"),
                                           QStringLiteral("isXmlServerUsed"),
                                           QStringLiteral("proxyCustom"),
                                           QStringLiteral("proxyDefault"),
                                           QStringLiteral("proxyNoProxy"),
                                           QStringLiteral("webProxyInUse") };
        return names;
    }

private slots:
    void init() { TestStore::reset(); }

    void emptyStoreGivesDefaultsAndTheWizard()
    {
        cOptionen o;
        QCOMPARE(o.Username(), QString());
        QCOMPARE(o.kennwort(), QString());
        QVERIFY(!o.isAbsenderkennung());
        QVERIFY(!o.FirstStartHasRun());
        QCOMPARE(o.InfoVersion(), qint16(0));
        QCOMPARE(o.xmlSingleUser(), QStringLiteral("False"));
        QVERIFY(!o.ProxyOptionWebProxy());
        QVERIFY(o.takeFirstStartDecision());
    }

    void savingAnEmptyRecordWritesBooleansAndRemovesStrings()
    {
        TestStore::put(QStringLiteral("eMail"), QStringLiteral("alt@example.com"));
        cOptionen o;
        o.setUsername(QString());
        o.save();
        const QStringList names = allStoredNames();
        QCOMPARE(names.size(), 35);
        for (const QString& name : names) {
            if (booleanNames().contains(name))
                QCOMPARE(TestStore::raw(name), QStringLiteral("false"));
            else if (name == u"infoVersion")
                QCOMPARE(TestStore::raw(name), QStringLiteral("0"));
            else
                QVERIFY2(!TestStore::has(name), qPrintable(name));
        }
    }

    void everyValueRoundTrips()
    {
        cOptionen o;
        o.setUsername(QStringLiteral("demo@quellbote.test"));
        o.setKennwort(QStringLiteral("geheim"));
        o.setAbsenderkennung(QStringLiteral("Firma"));
        o.setIsAbsenderkennung(true);
        o.setXmlPfad(QStringLiteral("/srv/sms"));
        o.setXmlSingleUser(QStringLiteral("True"));
        o.setProxyAccessType(QStringLiteral("2"));
        o.setProxyAddress(QStringLiteral("proxy"));
        o.setProxyPort(QStringLiteral("3128"));
        o.setInfoVersion(7);
        o.setContactStoreID(QStringLiteral("store"));
        o.setContactEntryID(QStringLiteral("entry"));
        o.setProxyOptionWebProxy(true);
        o.save();
        QCOMPARE(TestStore::raw(QStringLiteral("Password")), QStringLiteral("geheim"));
        QCOMPARE(TestStore::raw(QStringLiteral("eMail")), QStringLiteral("demo@quellbote.test"));
        QCOMPARE(TestStore::raw(QStringLiteral("xmlPath")), QStringLiteral("/srv/sms"));
        QCOMPARE(TestStore::raw(QStringLiteral("xmlSingleUser")), QStringLiteral("true"));
        QCOMPARE(TestStore::raw(QStringLiteral("webProxyInUse")), QStringLiteral("true"));
        QCOMPARE(TestStore::raw(QStringLiteral("infoVersion")), QStringLiteral("7"));

        cOptionen again;
        QCOMPARE(again.Username(), o.Username());
        QCOMPARE(again.kennwort(), o.kennwort());
        QVERIFY(again.isAbsenderkennung());
        QCOMPARE(again.xmlSingleUser(), QStringLiteral("True"));
        QCOMPARE(again.ProxyAccessType(), QStringLiteral("2"));
        QCOMPARE(again.ContactStoreID(), QStringLiteral("store"));
        QCOMPARE(again.ContactEntryID(), QStringLiteral("entry"));
        QCOMPARE(again.InfoVersion(), qint16(7));
        QVERIFY(again.ProxyOptionWebProxy());
    }

    void passwordOfBlanksIsRemovedBySave()
    {
        TestStore::put(QStringLiteral("Password"), QStringLiteral("alt"));
        cOptionen o;
        o.setKennwort(QStringLiteral("   "));
        o.save();
        QCOMPARE(o.kennwort(), QStringLiteral("   "));
        QVERIFY(!TestStore::has(QStringLiteral("Password")));
        QCOMPARE(cOptionen().kennwort(), QString());
    }

    void booleanSpelledOtherwiseReadsFalseAndIsRewritten_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::newRow("True") << QStringLiteral("True");
        QTest::newRow("TRUE") << QStringLiteral("TRUE");
        QTest::newRow("1") << QStringLiteral("1");
    }

    void booleanSpelledOtherwiseReadsFalseAndIsRewritten()
    {
        QFETCH(QString, stored);
        TestStore::put(QStringLiteral("isAntwortEnabled"), stored);
        TestStore::put(QStringLiteral("xmlSingleUser"), stored);
        cOptionen o;
        QVERIFY(!o.isAntwortEnabled());
        QCOMPARE(o.xmlSingleUser(), QStringLiteral("False"));
        o.save();
        QCOMPARE(TestStore::raw(QStringLiteral("isAntwortEnabled")), QStringLiteral("false"));
        QCOMPARE(TestStore::raw(QStringLiteral("xmlSingleUser")), QStringLiteral("false"));
    }

    void infoVersionGuard_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<int>("value");
        QTest::addColumn<QString>("savedAs");
        QTest::newRow("7") << QStringLiteral("7") << 7 << QStringLiteral("7");
        QTest::newRow("blanks around") << QStringLiteral(" 3 ") << 3 << QStringLiteral("3");
        QTest::newRow("abc") << QStringLiteral("abc") << 0 << QStringLiteral("0");
        QTest::newRow("absent") << QString() << 0 << QStringLiteral("0");
        QTest::newRow("negative") << QStringLiteral("-1") << -1 << QStringLiteral("-1");
        QTest::newRow("too large for 16 bits") << QStringLiteral("40000") << 0 << QStringLiteral("0");
    }

    void infoVersionGuard()
    {
        QFETCH(QString, stored);
        QFETCH(int, value);
        QFETCH(QString, savedAs);
        if (!stored.isNull())
            TestStore::put(QStringLiteral("infoVersion"), stored);
        cOptionen o;
        QCOMPARE(int(o.InfoVersion()), value);
        o.save();
        QCOMPARE(TestStore::raw(QStringLiteral("infoVersion")), savedAs);
    }

    void statusReportWithoutWriterSurvivesSaves()
    {
        TestStore::put(QStringLiteral("isStatusberichtEnabled"), QStringLiteral("true"));
        cOptionen().save();
        QVERIFY(cOptionen().isStatusberichtEnabled());
        QCOMPARE(TestStore::raw(QStringLiteral("isStatusberichtEnabled")), QStringLiteral("true"));
    }

    void startRule_data()
    {
        QTest::addColumn<QString>("infoVersion");
        QTest::addColumn<QString>("firstStartHasRun");
        QTest::addColumn<bool>("wizard");
        QTest::addColumn<QString>("storedFlag"); // null: nothing written
        QTest::newRow("new user") << QString() << QString() << true << QString();
        QTest::newRow("news seen counts as set up")
            << QStringLiteral("1") << QString() << false << QStringLiteral("true");
        QTest::newRow("news 7, flag absent") << QStringLiteral("7") << QString() << false << QStringLiteral("true");
        QTest::newRow("flag set, no news")
            << QStringLiteral("0") << QStringLiteral("true") << false << QStringLiteral("true");
        QTest::newRow("flag spelled True") << QString() << QStringLiteral("True") << true << QStringLiteral("True");
    }

    void startRule()
    {
        QFETCH(QString, infoVersion);
        QFETCH(QString, firstStartHasRun);
        QFETCH(bool, wizard);
        QFETCH(QString, storedFlag);
        if (!infoVersion.isNull())
            TestStore::put(QStringLiteral("infoVersion"), infoVersion);
        if (!firstStartHasRun.isNull())
            TestStore::put(QStringLiteral("firstStartHasRun"), firstStartHasRun);
        cOptionen o;
        QCOMPARE(o.takeFirstStartDecision(), wizard);
        QCOMPARE(TestStore::raw(QStringLiteral("firstStartHasRun")), storedFlag);
    }

    void startRuleWithoutNewsWritesNothing()
    {
        TestStore::put(QStringLiteral("firstStartHasRun"), QStringLiteral("true"));
        cOptionen o;
        QVERIFY(!o.takeFirstStartDecision());
        QVERIFY(!TestStore::has(QStringLiteral("infoVersion")));
    }
};

QTEST_GUILESS_MAIN(TestCOptionen)
#include "tst_coptionen.moc"
