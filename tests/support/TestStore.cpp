// SPDX-License-Identifier: GPL-3.0-or-later
#include "TestStore.h"

#include "settings/ToolRegistry.h"
#include "settings/cOptionen.h"

#include <QFile>
#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryDir>

namespace TestStore {
namespace {
QSettings store()
{
    return QSettings(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Tarnholt"), QStringLiteral("SMS"));
}

QString key(const QString& name, const QString& subKey)
{
    return subKey.isEmpty() ? name : subKey + QLatin1Char('/') + name;
}
} // namespace

void reset()
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

void put(const QString& name, const QString& value, const QString& subKey)
{
    QSettings s = store();
    s.setValue(key(name, subKey), value);
    s.sync();
}

QString raw(const QString& name, const QString& subKey)
{
    return store().value(key(name, subKey)).toString();
}

bool has(const QString& name, const QString& subKey)
{
    return store().contains(key(name, subKey));
}
} // namespace TestStore
