// SPDX-License-Identifier: GPL-3.0-or-later
// An empty per-user store for one test: Qt's test mode keeps it apart from the user's real
// settings, and every test starts from nothing.
#pragma once

#include <QString>

namespace TestStore {
// Switches to the test store and empties it; also forgets the loaded options.
void reset();
// Writes a value straight into the store under the program's root key (or a subkey).
void put(const QString& name, const QString& value, const QString& subKey = QString());
// The raw value in the store, or a null string when it is absent.
QString raw(const QString& name, const QString& subKey = QString());
// Whether the value exists.
bool has(const QString& name, const QString& subKey = QString());
} // namespace TestStore
