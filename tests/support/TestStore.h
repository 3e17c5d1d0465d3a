// SPDX-License-Identifier: GPL-3.0-or-later
// An empty per-user store for one test: Qt's test mode keeps it apart from the user's real
// settings, and every test starts from nothing.
#pragma once

#include "settings/ToolRegistry.h"
#include "settings/cOptionen.h"

#include <QFile>
#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryDir>

namespace TestStore {
// The store under the program's root key; name under subKey where one is given.
inline QSettings store()
{
    return QSettings(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Tarnholt"), QStringLiteral("SMS"));
}
inline QString key(const QString& name, const QString& subKey)
{
    return subKey.isEmpty() ? name : subKey + QLatin1Char('/') + name;
}

// Switches to the test store and empties it; also forgets the loaded options.
inline void reset()
{
    // Each test process gets a store folder of its own, so that tests run side by side.
    static QTemporaryDir folder;
    QStandardPaths::setTestModeEnabled(true);
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder.path());
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, folder.path());
    {
        QSettings s = store();
        s.clear();
        s.sync();
    }
    QFile::remove(ToolRegistry::storeFileName());
    reloadOptionsForTesting();
}

// Writes a value straight into the store under the program's root key (or a subkey).
inline void put(const QString& name, const QString& value, const QString& subKey = QString())
{
    QSettings s = store();
    s.setValue(key(name, subKey), value);
    s.sync();
}

// The raw value in the store, or a null string when it is absent.
inline QString raw(const QString& name, const QString& subKey = QString())
{
    return store().value(key(name, subKey)).toString();
}

// Whether the value exists.
inline bool has(const QString& name, const QString& subKey = QString())
{
    return store().contains(key(name, subKey));
}
} // namespace TestStore
