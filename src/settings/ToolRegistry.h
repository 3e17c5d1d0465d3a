// SPDX-License-Identifier: GPL-3.0-or-later
// The per-user store of settings: keys with named text values. On Windows this is the registry
// under HKEY_CURRENT_USER, elsewhere Qt's per-user settings file of "Tarnholt"/"SMS". The rules
// of the store are kept here rather than left to QSettings: an absent value reads empty, at
// most 1023 characters read back, a blank text removes the value, and missing keys are created
// on write. The store is opened and closed on every call.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <utility>

namespace ToolRegistry {

// HKEY_CURRENT_USER, the only hive the program uses.
inline constexpr quint32 HKEY_CURRENT_USER = 0x80000001;

// The program's root key; its subkeys MRU and Signaturen hang below it.
inline constexpr auto RootKey = u"Software\\Tarnholt\\SMS";

// The longest text that reads back whole; a longer value reads as an empty text.
inline constexpr int MaxReadLength = 1023;

QString GetRegString(const QString& keyPath, const QString& valueName, quint32 hive = HKEY_CURRENT_USER);
bool SaveRegString(const QString& keyPath, const QString& valueName, const QString& text,
                   quint32 hive = HKEY_CURRENT_USER);
// Several values of one key by the rules of GetRegString, the store opened once: for lists kept a
// value an entry, which would otherwise open and read the store per entry.
QStringList GetRegStrings(const QString& keyPath, const QStringList& valueNames);
// Several values of one key by the rules of SaveRegString (a blank text removes a value, and a
// removal of an absent value is no failure here), written in one go; false when the store refused.
bool SaveRegStrings(const QString& keyPath, const QList<std::pair<QString, QString>>& values);
bool GetRegBool(const QString& keyPath, const QString& valueName);
// Writes "true" only for a 16-bit value of all ones (the language's true, -1); any other value,
// 1 included, writes "false".
bool SaveRegBool(const QString& keyPath, const QString& valueName, qint16 value);
// 1 for a key that was created, 2 for one that existed already, 0 on failure.
int CreateRegKey(const QString& keyPath, quint32 hive = HKEY_CURRENT_USER);

// A C++ bool as the 16-bit value SaveRegBool expects.
constexpr qint16 boolValue(bool b)
{
    return b ? qint16(-1) : qint16(0);
}

// The file behind the store where it is a file (empty on Windows).
QString storeFileName();

// From now on the store is this settings file (in the form of the per-user file), whatever the
// platform; an empty path gives the per-user store back. For a server that keeps an account of
// its own.
void useStoreFile(const QString& path);
// Whether a settings file was named by useStoreFile.
bool usesOwnStoreFile();

} // namespace ToolRegistry
