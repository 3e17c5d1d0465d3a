// SPDX-License-Identifier: GPL-3.0-or-later
// The account's password in the desktop's keyring (the Secret Service on Linux, the credential
// store on Windows, the keychain on macOS), through QtKeychain. Each call blocks until the keyring
// answers, at most Timeout: a keyring that hangs counts as one that refused.
#pragma once

#include <QString>

namespace PasswordVault {

// The entry's service name: the store's own name, which branding never changes, so that an
// entry outlives a rebranding. The entry's key is the account's e-mail address: two stores
// of the same user (a second installation, the demo) never overwrite each other's password.
inline constexpr auto Service = u"Tarnholt SMS";

// Long enough for the user to type the keyring's own password when the desktop asks for it.
inline constexpr int TimeoutMs = 30000;
// Tests of a keyring that hangs wait less.
void setTimeoutForTesting(int ms);

enum class Result {
    Done, // read, written or deleted
    NotFound, // the keyring holds no password for this account
    Refused, // locked, access denied, no answer in time, or any other failure
};

// Whether a keyring is there to be used: never for a store file of its own (a server's
// --config), never when QUELLBOTE_NO_KEYRING is set, never in a test that has no keyring of its
// own (Qt's test mode without QUELLBOTE_TEST_KEYRING=1), and on Linux only with a session bus
// that has (or can start) a Secret Service or KWallet.
bool available();

// The stored password of the account; empty unless the result is Done.
Result read(const QString& account, QString* password);
Result write(const QString& account, const QString& password);
// An entry that isn't there counts as deleted.
Result remove(const QString& account);

} // namespace PasswordVault
