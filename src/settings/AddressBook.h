// SPDX-License-Identifier: GPL-3.0-or-later
// The address book of the options pane and the recipient picker: vCard files where desktop
// address books and phones export them. A contacts folder is a folder of vCard files or one
// vCard file holding many cards; a profile is the folder of address books the user works with.
#pragma once

#include "VCardContact.h"
#include "VCardReader.h"

#include <QList>
#include <QString>

#include <optional>

namespace AddressBook {

// Shown as a warning, titled with the product name, when a chosen folder holds no contacts.
inline constexpr auto NoContactsWarning
    = u"Der gewählte Ordner muss Kontakte enthalten.\r\nBitte wählen Sie einen anderen Ordner.";

// A contacts folder as the options keep it: ContactFolderName, ContactStoreID, ContactEntryID.
struct ContactFolder
{
    QString name;
    QString storeID;
    QString entryID;
};

// A folder with at least one vCard file directly inside, or a vCard file itself. Decided by the
// file names alone; what the files hold shows when they are read.
bool isContactFolder(const QString& path);

// The name to show: the folder's name, or the file's name without its last suffix.
QString addressBookName(const QString& path);

// Identifiers that stay the same from run to run as long as the folder stays where it is: 40
// upper-case hex digits, the SHA-1 of the canonical path (symbolic links resolved). The entry is
// the chosen folder or file itself, the store the folder that holds it, so that a file's store
// is its folder's entry. Empty for a path that doesn't exist.
QString entryID(const QString& path);
QString storeID(const QString& path);

// The choice of a contacts folder: its name and identifiers, or nothing for a folder that holds
// no contacts, which the caller refuses with NoContactsWarning.
std::optional<ContactFolder> chooseFolder(const QString& path);

// Where profiles live: "contacts" in the user's shared data folder (~/.local/share/contacts
// here), which is itself the default profile; each folder inside it is a profile of its own.
QString profilesRoot();
// The user's login name, as the name of the home folder gives it.
QString loginName();
// The name of the profile in a folder: the default profile (or no folder) is named after the
// user, a folder inside the profiles' root by its own name, any other folder by its full path,
// so that profileFolder() finds each of them again.
QString profileName(const QString& profileFolder);
// The folder of a profile by name; an empty name is the default profile. A name that is no
// folder yet gives the place where it would be.
QString profileFolder(const QString& profileName);

// The contacts of a profile: the vCard files in its folder and in the folders directly inside.
VCardReader::Result profileContacts(const QString& profileFolder);

// A number as address books write it, in the program's international form: only the digits are
// kept, a leading "+" becomes "00", and a national number ("0171 ...") gets the German prefix.
QString internationalNumber(const QString& number);

// The recipients field after a pick: txtAn as it was, then the mobile number of each chosen
// contact that has one, each closed by "; ".
QString appendMobileNumbers(const QString& txtAn, const QList<VCardContact>& chosen);

} // namespace AddressBook
