// SPDX-License-Identifier: GPL-3.0-or-later
// The password in the desktop's keyring: a real Secret Service (gnome-keyring in a D-Bus session
// of the test's own, see tests/support/with-keyring.sh), looked into with secret-tool.
#include "MainWindowHarness.h"
#include "MessageBoxScript.h"
#include "ModalWindows.h"
#include "TestStore.h"
#include "account/frmAGBs.h"
#include "account/frmFirstTime.h"
#include "account/frmLogin.h"
#include "settings/PasswordVault.h"
#include "settings/cOptionen.h"
#include "settings/frmOptionen.h"

#include <QCheckBox>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <sys/types.h>

using namespace Qt::StringLiterals;

// A secret as the Secret Service hands it over: session, parameters, value, content type.
struct Secret
{
    QDBusObjectPath session;
    QByteArray parameters;
    QByteArray value;
    QString contentType;
};
Q_DECLARE_METATYPE(Secret)

QDBusArgument& operator<<(QDBusArgument& argument, const Secret& secret)
{
    argument.beginStructure();
    argument << secret.session << secret.parameters << secret.value << secret.contentType;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, Secret& secret)
{
    argument.beginStructure();
    argument >> secret.session >> secret.parameters >> secret.value >> secret.contentType;
    argument.endStructure();
    return argument;
}

namespace {
const QString Email = u"demo@quellbote.test"_s;
const QString Other = u"zweites@quellbote.test"_s;
const QString Login = u"/org/freedesktop/secrets/collection/login"_s;
const QString Prompted = u"getippt"_s;

QDBusMessage callKeyring(const QString& interface, const QString& method, const QVariantList& arguments)
{
    QDBusMessage call = QDBusMessage::createMethodCall(u"org.freedesktop.secrets"_s, u"/org/freedesktop/secrets"_s,
                                                       interface, method);
    call.setArguments(arguments);
    return QDBusConnection::sessionBus().call(call);
}

// What the keyring holds for an account, read past the program; null when nothing.
QString inKeyring(const QString& account)
{
    QProcess lookup;
    lookup.start(u"secret-tool"_s,
                 { u"lookup"_s, u"server"_s, QString::fromUtf16(PasswordVault::Service), u"user"_s, account });
    if (!lookup.waitForFinished(20000) || lookup.exitCode() != 0)
        return QString();
    return QString::fromUtf8(lookup.readAllStandardOutput());
}

bool lockKeyring()
{
    const QDBusMessage reply = callKeyring(u"org.freedesktop.Secret.Service"_s, u"Lock"_s,
                                           { QVariant::fromValue(QList<QDBusObjectPath> { QDBusObjectPath(Login) }) });
    return reply.type() == QDBusMessage::ReplyMessage;
}

// Unlocking through the Secret Service shows a prompt; gnome-keyring takes the keyring's own
// password without one.
bool unlockKeyring()
{
    const QDBusMessage opened = callKeyring(u"org.freedesktop.Secret.Service"_s, u"OpenSession"_s,
                                            { u"plain"_s, QVariant::fromValue(QDBusVariant(QString())) });
    if (opened.type() != QDBusMessage::ReplyMessage || opened.arguments().size() < 2)
        return false;
    const Secret secret { qvariant_cast<QDBusObjectPath>(opened.arguments().at(1)),
                          {},
                          qEnvironmentVariable("KEYRING_PASSWORD").toUtf8(),
                          u"text/plain"_s };
    const QDBusMessage unlocked
        = callKeyring(u"org.gnome.keyring.InternalUnsupportedGuiltRiddenInterface"_s, u"UnlockWithMasterPassword"_s,
                      { QVariant::fromValue(QDBusObjectPath(Login)), QVariant::fromValue(secret) });
    return unlocked.type() == QDBusMessage::ReplyMessage;
}

// The prompt "Kennwort eingeben" answered with a typed password.
void typeAtThePrompt()
{
    onNextModal([](QWidget* dialog) {
        QCOMPARE(dialog->objectName(), u"frmLogin"_s);
        in<QLineEdit>(dialog, "txtPassword")->setText(Prompted);
        in<QPushButton>(dialog, "cmdOK")->click();
    });
}

bool ownerOnly(const QString& file)
{
    const QFile::Permissions permissions = QFile::permissions(file);
    return (permissions & QFile::ReadOwner)
        && !(permissions & (QFile::ReadGroup | QFile::ReadOther | QFile::WriteGroup | QFile::WriteOther));
}
} // namespace

class TestKeyring : public QObject
{
    Q_OBJECT

    MainWindowHarness m_harness;

    // The keyring unlocked and empty of the test's accounts, the store empty.
    bool startClean()
    {
        TestStore::reset();
        if (!unlockKeyring())
            return false;
        for (const QString& account : { Email, Other, u"eva@example.com"_s }) {
            if (PasswordVault::remove(account) != PasswordVault::Result::Done)
                return false;
        }
        return true;
    }

    // The next start's password, with the keyring unlocked; prompted when none is kept.
    static QString atTheNextStart()
    {
        reloadOptionsForTesting();
        if (!Options().kennwort().isEmpty())
            return Options().kennwort();
        typeAtThePrompt();
        return GetKennwort();
    }

private slots:
    void initTestCase()
    {
        qDBusRegisterMetaType<Secret>();
        QVERIFY2(qEnvironmentVariable("QUELLBOTE_TEST_KEYRING") == u"1", "runs only under with-keyring.sh");
        QVERIFY(startClean());
        QVERIFY(PasswordVault::available());
    }

    void init() { QVERIFY(startClean()); }

    void cleanup() { m_harness.reset(); }

    // What a start finds, and where the password is afterwards.
    void start_data()
    {
        QTest::addColumn<QString>("inStore"); // null: absent
        QTest::addColumn<bool>("noted"); // the store notes the keyring
        QTest::addColumn<QString>("keyringAccount");
        QTest::addColumn<QString>("inKeyring"); // null: no entry
        QTest::addColumn<bool>("locked");
        QTest::addColumn<QString>("password"); // empty: asked for
        QTest::addColumn<QString>("storeAfter");
        QTest::addColumn<bool>("notedAfter");
        QTest::addColumn<QString>("nextStart"); // unlocked; the prompt types "getippt"
        QTest::newRow("a password in the store moves into the keyring")
            << u"geheim"_s << false << Email << QString() << false << u"geheim"_s << QString() << true << u"geheim"_s;
        QTest::newRow("locked: the move waits, the store stays as it was")
            << u"geheim"_s << false << Email << QString() << true << u"geheim"_s << u"geheim"_s << false << u"geheim"_s;
        QTest::newRow("the keyring's password is read")
            << QString() << true << Email << u"geheim"_s << false << u"geheim"_s << QString() << true << u"geheim"_s;
        QTest::newRow("locked: asked for, the note stays")
            << QString() << true << Email << u"geheim"_s << true << QString() << QString() << true << u"geheim"_s;
        QTest::newRow("gone from the keyring: asked for")
            << QString() << true << Email << QString() << false << QString() << QString() << true << Prompted;
        QTest::newRow("another account's entry is not taken")
            << QString() << true << Other << u"geheim"_s << false << QString() << QString() << true << Prompted;
        QTest::newRow("a move cut short is finished")
            << u"geheim"_s << true << Email << u"geheim"_s << false << u"geheim"_s << QString() << true << u"geheim"_s;
    }

    void start()
    {
        QFETCH(QString, inStore);
        QFETCH(bool, noted);
        QFETCH(QString, keyringAccount);
        QFETCH(QString, inKeyring);
        QFETCH(bool, locked);
        QFETCH(QString, password);
        QFETCH(QString, storeAfter);
        QFETCH(bool, notedAfter);
        QFETCH(QString, nextStart);
        TestStore::put(u"eMail"_s, Email);
        if (!inStore.isNull())
            TestStore::put(u"Password"_s, inStore);
        if (noted)
            TestStore::put(u"passwordInKeyring"_s, u"true"_s);
        if (!inKeyring.isNull())
            QCOMPARE(PasswordVault::write(keyringAccount, inKeyring), PasswordVault::Result::Done);
        if (locked)
            QVERIFY(lockKeyring());

        reloadOptionsForTesting();
        QCOMPARE(Options().kennwort(), password);
        QCOMPARE(TestStore::raw(u"Password"_s), storeAfter);
        QCOMPARE(TestStore::raw(u"passwordInKeyring"_s) == u"true", notedAfter);
        // Without a password every operation asks, and what is typed is kept nowhere.
        if (password.isEmpty()) {
            typeAtThePrompt();
            QCOMPARE(GetKennwort(), Prompted);
        }
        // An options bar's save in between changes nothing of it.
        Options().save();
        QCOMPARE(TestStore::raw(u"Password"_s), storeAfter);

        QVERIFY(unlockKeyring());
        QCOMPARE(atTheNextStart(), nextStart);
        if (nextStart != Prompted) {
            QCOMPARE(::inKeyring(Email), nextStart);
            QVERIFY(!TestStore::has(u"Password"_s));
        }
    }

    // A keyring that doesn't answer holds up the start no longer than the wait, and its late
    // answer finds the job it belongs to still there.
    void aKeyringThatHangsCountsAsLocked()
    {
        TestStore::put(u"eMail"_s, Email);
        TestStore::put(u"passwordInKeyring"_s, u"true"_s);
        QCOMPARE(PasswordVault::write(Email, u"geheim"_s), PasswordVault::Result::Done);
        const uint daemon = QDBusConnection::sessionBus().interface()->servicePid(u"org.freedesktop.secrets"_s).value();
        QVERIFY(daemon > 0);
        PasswordVault::setTimeoutForTesting(300);
        QElapsedTimer waited;
        waited.start();
        QCOMPARE(::kill(pid_t(daemon), SIGSTOP), 0);
        reloadOptionsForTesting();
        ::kill(pid_t(daemon), SIGCONT);
        PasswordVault::setTimeoutForTesting(PasswordVault::TimeoutMs);
        QVERIFY(waited.elapsed() < 5000);
        QVERIFY(Options().kennwort().isEmpty());
        QCOMPARE(atTheNextStart(), u"geheim"_s);
    }

    // The password given in "Kontodaten", in the keyring or, said so, in the owner-only store.
    void optionsPane_data()
    {
        QTest::addColumn<QString>("before"); // in the keyring at start; null: none
        QTest::addColumn<QString>("email");
        QTest::addColumn<QString>("password");
        QTest::addColumn<QString>("locked"); // "start", "save" or empty
        QTest::addColumn<QString>("storeAfter");
        QTest::addColumn<QString>("underEmail"); // the entry of the first address afterwards
        QTest::addColumn<QString>("nextStart"); // unlocked; the prompt types "getippt"
        QTest::newRow("a first password goes to the keyring")
            << QString() << Email << u"neu"_s << QString() << QString() << u"neu"_s << u"neu"_s;
        QTest::newRow("a changed password replaces the old")
            << u"alt"_s << Email << u"neu"_s << QString() << QString() << u"neu"_s << u"neu"_s;
        QTest::newRow("a cleared password leaves the keyring")
            << u"alt"_s << Email << QString() << QString() << QString() << QString() << Prompted;
        QTest::newRow("a new address takes the password along")
            << u"alt"_s << Other << u"alt"_s << QString() << QString() << QString() << u"alt"_s;
        QTest::newRow("locked: said so, kept in the owner-only store")
            << QString() << Email << u"neu"_s << u"save"_s << u"neu"_s << QString() << u"neu"_s;
        QTest::newRow("locked at start, a new address: nothing cleared")
            << u"alt"_s << Other << QString() << u"start"_s << QString() << u"alt"_s << Prompted;
    }

    void optionsPane()
    {
        QFETCH(QString, before);
        QFETCH(QString, email);
        QFETCH(QString, password);
        QFETCH(QString, locked);
        QFETCH(QString, storeAfter);
        QFETCH(QString, underEmail);
        QFETCH(QString, nextStart);
        TestStore::put(u"eMail"_s, Email);
        if (!before.isNull()) {
            TestStore::put(u"passwordInKeyring"_s, u"true"_s);
            QCOMPARE(PasswordVault::write(Email, before), PasswordVault::Result::Done);
        }
        if (locked == u"start")
            QVERIFY(lockKeyring());
        reloadOptionsForTesting();
        if (locked == u"save")
            QVERIFY(lockKeyring());

        MessageBoxScript boxes;
        {
            frmOptionen dialog(nullptr);
            dialog.show();
            QCOMPARE(in<QLineEdit>(&dialog, "txtKennwort")->text(), locked == u"start" ? QString() : before);
            in<QLineEdit>(&dialog, "txtEmail")->setText(email);
            in<QLineEdit>(&dialog, "txtKennwort")->setText(password);
            if (locked == u"save")
                boxes.answer(MessageBox::Answer::Ok);
            dialog.cmdApply->click();
        }
        QCOMPARE(boxes.count(), locked == u"save" ? 1 : 0);
        if (boxes.count()) {
            QVERIFY(
                boxes.last().text.startsWith(u"Der Schlüsselbund des Desktops hat das Kennwort nicht angenommen"_s));
            QVERIFY(ownerOnly(ToolRegistry::storeFileName()));
        }
        QCOMPARE(TestStore::raw(u"Password"_s), storeAfter);

        QVERIFY(unlockKeyring());
        QCOMPARE(::inKeyring(Email), underEmail);
        QCOMPARE(atTheNextStart(), nextStart);
        QVERIFY(!TestStore::has(u"Password"_s));
        if (nextStart != Prompted)
            QCOMPARE(::inKeyring(email), nextStart);
    }

    // What the first-start wizard remembers ends in the keyring, never in the store.
    void wizard_data()
    {
        QTest::addColumn<bool>("newAccount");
        QTest::newRow("existing account") << false;
        QTest::newRow("new account, the mailed password") << true;
    }

    void wizard()
    {
        QFETCH(bool, newAccount);
        QVERIFY(m_harness.startService());
        reloadOptionsForTesting();
        MessageBoxScript boxes;
        frmFirstTime wizard;
        wizard.show();
        wizard.cmdNext->click();
        QString account = Email;
        QString password = u"demo"_s;
        if (newAccount) {
            account = u"eva@example.com"_s;
            wizard.optNew->setChecked(true);
            wizard.txtFirstName->setText(u"Eva"_s);
            wizard.txtName->setText(u"Müller"_s);
            wizard.txtStrasse->setText(u"Hauptstr. 1"_s);
            wizard.txtPLZ->setText(u"10115"_s);
            wizard.txtOrt->setText(u"Berlin"_s);
            wizard.txtEmail->setText(account);
            wizard.txtEmailRepeat->setText(account);
            onNextModal([](QWidget* dialog) { static_cast<frmAGBs*>(dialog)->cmdAccept->click(); });
            wizard.cmdDoIt->click();
            QCOMPARE(wizard.pages->currentWidget(), wizard.boxCompleteNewCustomer);
            for (const QJsonObject& entry : m_harness.service()->journal()) {
                if (entry.contains(u"mail"_s))
                    password = entry.value(u"password"_s).toString();
            }
            wizard.txtPasswordNew->setText(password);
            wizard.chkRememberPasswordNew->setChecked(true);
            boxes.answer(MessageBox::Answer::Ok);
            wizard.cmdCompleteNewCustomer->click();
        } else {
            wizard.txtOldEmail->setText(account);
            wizard.txtPassword->setText(password);
            wizard.chkRememberPassword->setChecked(true);
            wizard.cmdDoIt->click();
        }
        QVERIFY(!wizard.isVisible());
        QCOMPARE(inKeyring(account), password);
        QVERIFY(!TestStore::has(u"Password"_s));
        QCOMPARE(TestStore::raw(u"passwordInKeyring"_s), u"true"_s);
        QCOMPARE(atTheNextStart(), password);
    }

    // quellbote-send reads the keyring as the window does, except for a server's store of its
    // own, and where there is no session bus at all.
    void command_data()
    {
        QTest::addColumn<bool>("config");
        QTest::addColumn<bool>("noBus");
        QTest::addColumn<QString>("inStore");
        QTest::addColumn<QString>("inKeyring"); // noted in the store unless config
        QTest::addColumn<int>("exitCode"); // 3: no password
        QTest::addColumn<QString>("storeAfter");
        QTest::addColumn<QString>("keyringAfter");
        QTest::newRow("the keyring's password")
            << false << false << QString() << u"geheim"_s << 0 << QString() << u"geheim"_s;
        QTest::newRow("a password in the store moves")
            << false << false << u"geheim"_s << QString() << 0 << QString() << u"geheim"_s;
        QTest::newRow("--config never reads the keyring")
            << true << false << QString() << u"geheim"_s << 3 << QString() << u"geheim"_s;
        QTest::newRow("--config keeps the password in its file")
            << true << false << u"geheim"_s << QString() << 0 << u"geheim"_s << QString();
        QTest::newRow("no session bus: the store keeps it")
            << false << true << u"geheim"_s << QString() << 0 << u"geheim"_s << QString();
    }

    void command()
    {
        QFETCH(bool, config);
        QFETCH(bool, noBus);
        QFETCH(QString, inStore);
        QFETCH(QString, inKeyring);
        QFETCH(int, exitCode);
        QFETCH(QString, storeAfter);
        QFETCH(QString, keyringAfter);
        QTemporaryDir home;
        const QString file = config ? home.filePath(u"server.conf"_s) : home.filePath(u"config/Tarnholt/SMS.conf"_s);
        {
            QSettings store(file, QSettings::IniFormat);
            store.setValue(u"eMail"_s, Email);
            if (!inStore.isNull())
                store.setValue(u"Password"_s, inStore);
            if (!inKeyring.isNull() && !config)
                store.setValue(u"passwordInKeyring"_s, u"true"_s);
        }
        if (!inKeyring.isNull())
            QCOMPARE(PasswordVault::write(Email, inKeyring), PasswordVault::Result::Done);

        QProcess send;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(u"XDG_CONFIG_HOME"_s, home.filePath(u"config"_s));
        env.insert(u"XDG_DATA_HOME"_s, home.filePath(u"data"_s));
        if (noBus)
            env.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, u"unix:path="_s + home.filePath(u"kein-bus"_s));
        send.setProcessEnvironment(env);
        QStringList arguments;
        if (config)
            arguments << u"--config"_s << file;
        send.start(qEnvironmentVariable("QUELLBOTE_SEND"),
                   arguments << u"--dry-run"_s << u"01711234567"_s << u"Hallo"_s);
        send.closeWriteChannel();
        QVERIFY(send.waitForFinished(60000));
        QVERIFY2(send.exitCode() == exitCode, send.readAllStandardError().constData());
        QCOMPARE(QSettings(file, QSettings::IniFormat).value(u"Password"_s).toString(), storeAfter);
        QCOMPARE(::inKeyring(Email), keyringAfter);
    }
};

QTEST_MAIN(TestKeyring)
#include "tst_keyring.moc"
