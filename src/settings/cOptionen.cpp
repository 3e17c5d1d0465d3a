// SPDX-License-Identifier: GPL-3.0-or-later
#include "cOptionen.h"

#include "PasswordVault.h"
#include "ToolRegistry.h"
#include "tools.h"

#include <memory>

namespace {
QString root()
{
    return QString::fromUtf16(ToolRegistry::RootKey);
}

QString readString(const char16_t* name)
{
    return ToolRegistry::GetRegString(root(), QString::fromUtf16(name));
}

bool readBool(const char16_t* name)
{
    return ToolRegistry::GetRegBool(root(), QString::fromUtf16(name));
}

void writeString(const char16_t* name, const QString& value)
{
    ToolRegistry::SaveRegString(root(), QString::fromUtf16(name), value);
}

void writeBool(const char16_t* name, bool value)
{
    ToolRegistry::SaveRegBool(root(), QString::fromUtf16(name), ToolRegistry::boolValue(value));
}

// The store's note that the password is in the keyring: "true", or absent.
constexpr auto InKeyringName = u"passwordInKeyring";

void writeInKeyring(bool inKeyring)
{
    writeString(InKeyringName, inKeyring ? QStringLiteral("true") : QString());
}

std::unique_ptr<cOptionen>& instance()
{
    static std::unique_ptr<cOptionen> options;
    return options;
}
} // namespace

QString boolText(bool value)
{
    return value ? QStringLiteral("True") : QStringLiteral("False");
}

bool textToBool(const QString& text)
{
    const QString t = text.trimmed();
    if (t.compare(u"true", Qt::CaseInsensitive) == 0)
        return true;
    if (t.compare(u"false", Qt::CaseInsensitive) == 0)
        return false;
    bool ok = false;
    const double value = tools::NumericValue(t, &ok);
    return ok && value != 0;
}

cOptionen::cOptionen()
{
    m_kennwort = readString(u"Password");
    m_Username = readString(u"eMail");
    m_Absenderkennung = readString(u"Absenderkennung");
    m_isAbsenderkennung = readBool(u"isAbsenderkennung");
    m_isAntwortEnabled = readBool(u"isAntwortEnabled");
    m_isStatusberichtEnabled = readBool(u"isStatusberichtEnabled");
    // The one guarded value: a text that is no number, or too large for 16 bits, counts as 0.
    m_InfoVersion
        = tools::IsNumeric(readString(u"infoVersion")) ? tools::NumericToInt16(readString(u"infoVersion")) : qint16(0);
    m_isControlEmail = readBool(u"isControlEmail");
    m_ContactEntryID = readString(u"contactEntryID");
    m_ContactStoreID = readString(u"contactStoreID");
    m_ContactFolderName = readString(u"contactFolderName");
    m_OutlookProfil = readString(u"outlookProfile");
    m_FirstStartHasRun = readBool(u"firstStartHasRun");
    m_WaitingForPassword = readBool(u"waitingForPassword");
    m_DontDisplayMinimizeWarning = readBool(u"dontDisplayMinimizeWarning");
    m_isLongSmsEnabled = readBool(u"longSMS");
    m_XmlPfad = readString(u"xmlPath");
    m_xmlGroup = readString(u"xmlGroup");
    m_xmlUser = readString(u"xmlUser");
    m_xmlSecretKey = readString(u"xmlSecretKey");
    m_xmlGroupUser = readBool(u"xmlGroupUser");
    m_xmlSingleUser = boolText(readBool(u"xmlSingleUser"));
    m_xmlIsServerUsed = readBool(u"isXmlServerUsed");
    m_ProxyAddress = readString(u"proxyAddress");
    m_ProxyPort = readString(u"proxyPort");
    m_ProxyOptionCustom = readBool(u"proxyCustom");
    m_ProxyOptionDefault = readBool(u"proxyDefault");
    m_ProxyOptionNoProxy = readBool(u"proxyNoProxy");
    m_ProxyAccessType = readString(u"proxyAccessType");
    m_ProxyOptionWebProxy = boolText(readBool(u"webProxyInUse"));
    m_WebProxyWebAddress = readString(u"webProxyAddress");
    m_WebProxyName = readString(u"webProxyName");
    m_WebProxyPort = readString(u"webProxyPort");
    m_WebProxyUserName = readString(u"webProxyUserName");
    m_WebProxyUserPasswd = readString(u"webProxyUserPasswd");
    loadPassword();
}

void cOptionen::loadPassword()
{
    m_passwordInKeyring = readBool(InKeyringName);
    // The keyring is asked only for a password it holds or one to move into it.
    const bool toMove = !m_passwordInKeyring && !tools::TrimBlanks(m_kennwort).isEmpty() && !m_Username.isEmpty();
    if ((m_passwordInKeyring || toMove) && PasswordVault::available()) {
        if (m_passwordInKeyring) {
            // A locked keyring, or one that doesn't answer, leaves the password empty: every
            // operation that needs it asks, as when none is stored.
            QString password;
            if (PasswordVault::read(m_Username, &password) == PasswordVault::Result::Done) {
                // A move into the keyring that ended between the note and the removal.
                if (!m_kennwort.isEmpty())
                    writeString(u"Password", QString());
                m_kennwort = password;
            } else {
                m_kennwort.clear();
            }
        } else if (PasswordVault::write(m_Username, m_kennwort) == PasswordVault::Result::Done) {
            // The note first: a move cut short after it still finds the password in the keyring.
            writeInKeyring(true);
            writeString(u"Password", QString());
            m_passwordInKeyring = true;
        }
        // A keyring that refuses the move leaves the store as it was; the next start tries again.
    } else if (m_passwordInKeyring) {
        // The keyring isn't there this time (another session, no session bus): ask.
        m_kennwort.clear();
    }
    m_keptPassword = m_kennwort;
    m_keptUsername = m_Username;
}

void cOptionen::savePassword() const
{
    m_keyringRefused = false;
    const bool passwordChanged = m_kennwort != m_keptPassword;
    const bool moved = m_passwordInKeyring && m_Username != m_keptUsername;
    if (!passwordChanged && !moved) {
        storePasswordPlace();
        return;
    }
    const bool vault = PasswordVault::available();
    if (!passwordChanged && m_kennwort.isEmpty()) {
        // A new address while the keyring couldn't be read at start: there is nothing to take
        // along, and nothing the user cleared. The next start looks under the new address.
        m_keptUsername = m_Username;
        storePasswordPlace();
        return;
    }
    if (tools::TrimBlanks(m_kennwort).isEmpty()) {
        // Cleared: gone from the keyring as from the store.
        if (vault) {
            PasswordVault::remove(m_keptUsername);
            if (m_Username != m_keptUsername)
                PasswordVault::remove(m_Username);
        }
        m_passwordInKeyring = false;
    } else if (vault && !m_Username.isEmpty()
               && PasswordVault::write(m_Username, m_kennwort) == PasswordVault::Result::Done) {
        if (m_passwordInKeyring && m_Username != m_keptUsername)
            PasswordVault::remove(m_keptUsername);
        m_passwordInKeyring = true;
    } else {
        // No keyring here, or it refused: the owner-only store keeps the password, as it always
        // did without a keyring. The next start moves it into the keyring if it will take it.
        // (The keyring's entry is named by the e-mail address: without one it stays out.)
        m_keyringRefused = vault && !m_Username.isEmpty();
        m_passwordInKeyring = false;
    }
    storePasswordPlace();
    m_keptPassword = m_kennwort;
    m_keptUsername = m_Username;
}

void cOptionen::storePasswordPlace() const
{
    // In this order, so that a save cut short in between never loses the password: the note
    // goes in before the password leaves the store, and out after it is back.
    if (m_passwordInKeyring) {
        writeInKeyring(true);
        writeString(u"Password", QString());
    } else {
        writeString(u"Password", m_kennwort);
        writeInKeyring(false);
    }
}

void cOptionen::save() const
{
    savePassword();
    writeString(u"eMail", m_Username);
    writeString(u"Absenderkennung", m_Absenderkennung);
    writeBool(u"isAbsenderkennung", m_isAbsenderkennung);
    writeBool(u"isAntwortEnabled", m_isAntwortEnabled);
    writeBool(u"isStatusberichtEnabled", m_isStatusberichtEnabled);
    writeString(u"infoVersion", QString::number(m_InfoVersion));
    writeBool(u"isControlEmail", m_isControlEmail);
    writeString(u"contactStoreID", m_ContactStoreID);
    writeString(u"contactEntryID", m_ContactEntryID);
    writeString(u"contactFolderName", m_ContactFolderName);
    writeString(u"outlookProfile", m_OutlookProfil);
    writeBool(u"firstStartHasRun", m_FirstStartHasRun);
    writeBool(u"waitingForPassword", m_WaitingForPassword);
    writeBool(u"dontDisplayMinimizeWarning", m_DontDisplayMinimizeWarning);
    writeBool(u"longSMS", m_isLongSmsEnabled);
    writeString(u"xmlPath", m_XmlPfad);
    writeString(u"xmlGroup", m_xmlGroup);
    writeString(u"xmlUser", m_xmlUser);
    writeString(u"xmlSecretKey", m_xmlSecretKey);
    writeBool(u"xmlGroupUser", m_xmlGroupUser);
    writeBool(u"xmlSingleUser", textToBool(m_xmlSingleUser));
    writeBool(u"isXmlServerUsed", m_xmlIsServerUsed);
    writeString(u"proxyAddress", m_ProxyAddress);
    writeString(u"proxyPort", m_ProxyPort);
    writeBool(u"proxyCustom", m_ProxyOptionCustom);
    writeBool(u"proxyDefault", m_ProxyOptionDefault);
    writeBool(u"proxyNoProxy", m_ProxyOptionNoProxy);
    writeString(u"proxyAccessType", m_ProxyAccessType);
    writeBool(u"webProxyInUse", ProxyOptionWebProxy());
    writeString(u"webProxyAddress", m_WebProxyWebAddress);
    writeString(u"webProxyName", m_WebProxyName);
    writeString(u"webProxyPort", m_WebProxyPort);
    writeString(u"webProxyUserName", m_WebProxyUserName);
    writeString(u"webProxyUserPasswd", m_WebProxyUserPasswd);
}

bool cOptionen::ProxyOptionWebProxy() const
{
    return textToBool(m_ProxyOptionWebProxy);
}

void cOptionen::setProxyOptionWebProxy(bool v)
{
    m_ProxyOptionWebProxy = boolText(v);
}

bool cOptionen::takeFirstStartDecision()
{
    if (m_InfoVersion >= 1) {
        m_FirstStartHasRun = true;
        save();
    }
    return !m_FirstStartHasRun;
}

cOptionen& Options()
{
    if (!instance())
        instance() = std::make_unique<cOptionen>();
    return *instance();
}

void reloadOptionsForTesting()
{
    instance() = std::make_unique<cOptionen>();
}
