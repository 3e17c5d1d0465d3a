// SPDX-License-Identifier: GPL-3.0-or-later
#include "PasswordVault.h"

#include "ToolRegistry.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QStandardPaths>
#include <QTimer>

#ifdef QUELLBOTE_SESSION_BUS
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#endif

#include <qt6keychain/keychain.h>

#include <memory>
#include <type_traits>

namespace PasswordVault {
namespace {

int& timeout()
{
    static int ms = TimeoutMs;
    return ms;
}

#ifdef QUELLBOTE_SESSION_BUS
// QtKeychain talks to the Secret Service (GNOME, most desktops) or to KWallet (KDE).
bool sessionBusHasKeyring()
{
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected() || !bus.interface())
        return false;
    const QStringList names { QStringLiteral("org.freedesktop.secrets"), QStringLiteral("org.kde.kwalletd5"),
                              QStringLiteral("org.kde.kwalletd6") };
    const QStringList activatable = bus.interface()->activatableServiceNames().value();
    for (const QString& name : names) {
        if (bus.interface()->isServiceRegistered(name).value() || activatable.contains(name))
            return true;
    }
    return false;
}
#endif

// Starts the job and waits for its end, with user input held back as during a transfer. A job
// that outlives the wait is left to delete itself when the keyring answers at last, since
// QtKeychain's callbacks still point at it.
template<typename Job> Result run(std::unique_ptr<Job> job, QString* text = nullptr)
{
    job->setAutoDelete(false);
    QEventLoop loop;
    bool finished = false;
    QKeychain::Error error = QKeychain::OtherError;
    QObject::connect(job.get(), &QKeychain::Job::finished, &loop, [&](QKeychain::Job* done) {
        finished = true;
        error = done->error();
        if constexpr (std::is_same_v<Job, QKeychain::ReadPasswordJob>) {
            if (text && error == QKeychain::NoError)
                *text = static_cast<QKeychain::ReadPasswordJob*>(done)->textData();
        }
        loop.quit();
    });
    QTimer::singleShot(timeout(), &loop, &QEventLoop::quit);
    job->start();
    if (!finished)
        loop.exec(QEventLoop::ExcludeUserInputEvents);
    if (!finished) {
        job->setAutoDelete(true);
        static_cast<void>(job.release());
        return Result::Refused;
    }
    if (error == QKeychain::NoError)
        return Result::Done;
    return error == QKeychain::EntryNotFound ? Result::NotFound : Result::Refused;
}

} // namespace

void setTimeoutForTesting(int ms)
{
    timeout() = ms;
}

bool available()
{
    if (ToolRegistry::usesOwnStoreFile() || !qEnvironmentVariableIsEmpty("QUELLBOTE_NO_KEYRING"))
        return false;
    if (QStandardPaths::isTestModeEnabled() && qEnvironmentVariable("QUELLBOTE_TEST_KEYRING") != u"1")
        return false;
    // The jobs need an event loop.
    if (!QCoreApplication::instance())
        return false;
#ifdef QUELLBOTE_SESSION_BUS
    return sessionBusHasKeyring();
#else
    return true;
#endif
}

Result read(const QString& account, QString* password)
{
    password->clear();
    auto job = std::make_unique<QKeychain::ReadPasswordJob>(QString::fromUtf16(Service));
    job->setKey(account);
    return run(std::move(job), password);
}

Result write(const QString& account, const QString& password)
{
    auto job = std::make_unique<QKeychain::WritePasswordJob>(QString::fromUtf16(Service));
    job->setKey(account);
    job->setTextData(password);
    return run(std::move(job));
}

Result remove(const QString& account)
{
    auto job = std::make_unique<QKeychain::DeletePasswordJob>(QString::fromUtf16(Service));
    job->setKey(account);
    const Result result = run(std::move(job));
    return result == Result::NotFound ? Result::Done : result;
}

} // namespace PasswordVault
