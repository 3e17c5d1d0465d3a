// SPDX-License-Identifier: GPL-3.0-or-later
#include "AddressBook.h"

#include "VCardReader.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace AddressBook {
namespace {

QString hashOf(const QString& canonicalPath)
{
    return QString::fromLatin1(QCryptographicHash::hash(canonicalPath.toUtf8(), QCryptographicHash::Sha1).toHex())
        .toUpper();
}

QString cleanAbsolute(const QString& path)
{
    return QDir::cleanPath(QFileInfo(path).absoluteFilePath());
}

} // namespace

bool isContactFolder(const QString& path)
{
    const QFileInfo info(path);
    if (info.isFile())
        return VCardReader::isVCardFileName(path);
    if (!info.isDir())
        return false;
    const QStringList files = QDir(path).entryList(QDir::Files);
    return std::any_of(files.cbegin(), files.cend(), &VCardReader::isVCardFileName);
}

QString addressBookName(const QString& path)
{
    const QFileInfo info(path);
    const QString name = info.isDir() ? QDir(info.absoluteFilePath()).dirName() : info.completeBaseName();
    // The root of a drive has no name of its own.
    return name.isEmpty() ? QDir::toNativeSeparators(info.absoluteFilePath()) : name;
}

QString entryID(const QString& path)
{
    const QString canonical = QFileInfo(path).canonicalFilePath();
    return canonical.isEmpty() ? QString() : hashOf(canonical);
}

QString storeID(const QString& path)
{
    const QString canonical = QFileInfo(path).canonicalFilePath();
    return canonical.isEmpty() ? QString() : hashOf(QFileInfo(canonical).absolutePath());
}

std::optional<ContactFolder> chooseFolder(const QString& path)
{
    if (!isContactFolder(path))
        return std::nullopt;
    return ContactFolder { addressBookName(path), storeID(path), entryID(path) };
}

QString profilesRoot()
{
    return QDir::cleanPath(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)
                           + QStringLiteral("/contacts"));
}

QString loginName()
{
    return QDir::home().dirName();
}

QString profileName(const QString& profileFolder)
{
    if (profileFolder.trimmed().isEmpty())
        return loginName();
    const QString folder = cleanAbsolute(profileFolder);
    const QString root = profilesRoot();
    if (folder == root)
        return loginName();
    const QFileInfo info(folder);
    if (info.absolutePath() == root)
        return info.fileName();
    return QDir::toNativeSeparators(folder);
}

QString profileFolder(const QString& profileName)
{
    const QString root = profilesRoot();
    const QString name = profileName.trimmed();
    if (name.isEmpty())
        return root;
    if (QDir::isAbsolutePath(QDir::fromNativeSeparators(name)))
        return QDir::cleanPath(QDir::fromNativeSeparators(name));
    const QString inRoot = root + u'/' + name;
    if (!QFileInfo(inRoot).isDir() && name == loginName())
        return root;
    return inRoot;
}

VCardReader::Result profileContacts(const QString& profileFolder)
{
    VCardReader::Result all = VCardReader::read(profileFolder);
    const QFileInfoList inside = QDir(profileFolder).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    for (const QFileInfo& folder : inside) {
        const VCardReader::Result more = VCardReader::read(folder.filePath());
        all.contacts += more.contacts;
        all.skipped += more.skipped;
    }
    return all;
}

QString internationalNumber(const QString& number)
{
    const QString trimmed = number.trimmed();
    QString digits;
    for (const QChar c : trimmed) {
        if (c.isDigit())
            digits += c;
    }
    if (trimmed.startsWith(u'+'))
        return QStringLiteral("00") + digits;
    if (digits.startsWith(QStringLiteral("00")) || digits.isEmpty())
        return digits;
    if (digits.startsWith(u'0'))
        return QStringLiteral("0049") + digits.mid(1);
    return digits;
}

QString appendMobileNumbers(const QString& txtAn, const QList<VCardContact>& chosen)
{
    QString text = txtAn;
    for (const VCardContact& contact : chosen) {
        const QString number = contact.mobileNumber();
        if (!number.isEmpty())
            text += number + u"; ";
    }
    return text;
}

} // namespace AddressBook
