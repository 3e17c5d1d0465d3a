// SPDX-License-Identifier: GPL-3.0-or-later
#include "ToolRegistry.h"

#include "tools.h"

#include <QFile>
#include <QSettings>

#include <algorithm>
#include <memory>

#ifdef Q_OS_WIN
#include <windows.h>
#endif

namespace ToolRegistry {
namespace {

// Opens the store at a key: the group of the key path below the program's root, or, for a key
// elsewhere, a group named after the whole path. On Windows the native store is the registry
// itself and the path is used as it stands.
struct OpenKey
{
    std::unique_ptr<QSettings> settings;
};

QString groupOf(const QString& keyPath)
{
    QString path = keyPath;
    while (path.endsWith(QLatin1Char('\\')))
        path.chop(1);
    const QString root = QString::fromUtf16(RootKey);
    if (path.compare(root, Qt::CaseInsensitive) == 0)
        return {};
    if (path.startsWith(root + QLatin1Char('\\'), Qt::CaseInsensitive))
        return path.mid(root.size() + 1).replace(QLatin1Char('\\'), QLatin1Char('/'));
    return QStringLiteral("HKCU/") + QString(path).replace(QLatin1Char('\\'), QLatin1Char('/'));
}

QString& storeFileOverride()
{
    static QString path;
    return path;
}

// The registry on Windows, unless a settings file was named instead.
bool usesRegistry()
{
#ifdef Q_OS_WIN
    return storeFileOverride().isEmpty();
#else
    return false;
#endif
}

std::unique_ptr<QSettings> openStore(const QString& keyPath)
{
#ifdef Q_OS_WIN
    if (usesRegistry())
        return std::make_unique<QSettings>(QStringLiteral("HKEY_CURRENT_USER\\") + keyPath, QSettings::NativeFormat);
#endif
    auto settings = storeFileOverride().isEmpty()
        ? std::make_unique<QSettings>(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Tarnholt"),
                                      QStringLiteral("SMS"))
        : std::make_unique<QSettings>(storeFileOverride(), QSettings::IniFormat);
    const QString group = groupOf(keyPath);
    if (!group.isEmpty())
        settings->beginGroup(group);
    return settings;
}

#ifdef Q_OS_WIN
HKEY hiveKey(quint32 hive)
{
    // The predefined keys are sign-extended handles: HKEY_CURRENT_USER is 0x80000001 as a LONG.
    return reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(static_cast<LONG>(hive)));
}

const wchar_t* wide(const QString& text)
{
    return reinterpret_cast<const wchar_t*>(text.utf16());
}
#endif

// In a settings file a key exists when it holds a value or a subkey, or was created and marked so.
bool keyExists(QSettings& settings)
{
    if (settings.group().isEmpty())
        return true;
    return !settings.childKeys().isEmpty() || !settings.childGroups().isEmpty();
}

// The store holds a password in plain text: on POSIX only its owner may read it.
void restrictToOwner(QSettings& settings)
{
#ifndef Q_OS_WIN
    const QString file = settings.fileName();
    if (QFile::exists(file))
        QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner);
#else
    Q_UNUSED(settings);
#endif
}

bool finish(QSettings& settings)
{
    settings.sync();
    restrictToOwner(settings);
    return settings.status() == QSettings::NoError;
}

// The marker that keeps an otherwise empty key alive in a file-based store.
constexpr auto KeyMarker = u".key";

} // namespace

QString GetRegString(const QString& keyPath, const QString& valueName, quint32 hive)
{
    Q_UNUSED(hive);
    const auto settings = openStore(keyPath);
    const QVariant value = settings->value(valueName);
    if (!value.isValid())
        return {};
    const QString text = value.toString();
    if (text.size() > MaxReadLength)
        return {};
    return text;
}

bool SaveRegString(const QString& keyPath, const QString& valueName, const QString& text, quint32 hive)
{
    const auto settings = openStore(keyPath);
    // Only blanks count: a text of line breaks is stored.
    if (tools::TrimBlanks(text).isEmpty()) {
        // A removal never creates a key.
        if (!settings->contains(valueName))
            return false;
        settings->remove(valueName);
        return finish(*settings);
    }
    // The registry needs the key before a value can go in; a settings file makes it on write.
    if (usesRegistry() && CreateRegKey(keyPath, hive) == 0)
        return false;
    // The options are saved whole, most values unchanged: a value that is already there is not
    // written again, which spares the file a rewrite per value.
    if (settings->value(valueName) == text)
        return true;
    settings->setValue(valueName, text);
    return finish(*settings);
}

QStringList GetRegStrings(const QString& keyPath, const QStringList& valueNames)
{
    const auto settings = openStore(keyPath);
    QStringList texts;
    texts.reserve(valueNames.size());
    for (const QString& name : valueNames) {
        const QVariant value = settings->value(name);
        const QString text = value.isValid() ? value.toString() : QString();
        texts.append(text.size() > MaxReadLength ? QString() : text);
    }
    return texts;
}

bool SaveRegStrings(const QString& keyPath, const QList<std::pair<QString, QString>>& values)
{
    // As for one value: the registry needs the key before a value can go in, and a removal never
    // creates one.
    const bool writes = std::any_of(values.cbegin(), values.cend(),
                                    [](const auto& value) { return !tools::TrimBlanks(value.second).isEmpty(); });
    if (writes && usesRegistry() && CreateRegKey(keyPath) == 0)
        return false;
    const auto settings = openStore(keyPath);
    bool changed = false;
    for (const auto& [name, text] : values) {
        if (tools::TrimBlanks(text).isEmpty()) {
            if (settings->contains(name)) {
                settings->remove(name);
                changed = true;
            }
        } else if (settings->value(name) != text) {
            settings->setValue(name, text);
            changed = true;
        }
    }
    return !changed || finish(*settings);
}

bool GetRegBool(const QString& keyPath, const QString& valueName)
{
    return GetRegString(keyPath, valueName) == u"true";
}

bool SaveRegBool(const QString& keyPath, const QString& valueName, qint16 value)
{
    return SaveRegString(keyPath, valueName, value == qint16(-1) ? QStringLiteral("true") : QStringLiteral("false"));
}

int CreateRegKey(const QString& keyPath, quint32 hive)
{
#ifdef Q_OS_WIN
    if (usesRegistry()) {
        HKEY key = nullptr;
        DWORD disposition = 0;
        if (RegCreateKeyExW(hiveKey(hive), wide(keyPath), 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_WRITE, nullptr, &key,
                            &disposition)
            != ERROR_SUCCESS)
            return 0;
        RegCloseKey(key);
        // REG_CREATED_NEW_KEY (1) or REG_OPENED_EXISTING_KEY (2).
        return int(disposition);
    }
#endif
    Q_UNUSED(hive);
    const auto settings = openStore(keyPath);
    if (keyExists(*settings))
        return 2;
    settings->setValue(QString::fromUtf16(KeyMarker), QString());
    return finish(*settings) ? 1 : 0;
}

QString storeFileName()
{
    return usesRegistry() ? QString() : openStore(QString::fromUtf16(RootKey))->fileName();
}

void useStoreFile(const QString& path)
{
    storeFileOverride() = path;
}

bool usesOwnStoreFile()
{
    return !storeFileOverride().isEmpty();
}

} // namespace ToolRegistry
