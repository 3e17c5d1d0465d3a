// SPDX-License-Identifier: GPL-3.0-or-later
// The user's settings: read whole from the per-user store when first touched, changed in memory
// by the windows, and written back whole by save(). Nothing else keeps a copy of a setting.
// Where the desktop has a keyring the password lives there instead of in the store, and the
// store only notes that it does (see PasswordVault).
#pragma once

#include <QString>

class cOptionen
{
public:
    // Reads every value from the store, and the password from the keyring where the store
    // says it lives there. A password still in the store moves into the keyring.
    cOptionen();

    // Writes every value to the store; a value that can't be written is skipped. A password
    // that was changed goes to the keyring, or to the store where there is none.
    void save() const;

    // Whether the last save found a keyring that refused the password, which then went into the
    // store; the window that saved tells the user.
    bool keyringRefusedPassword() const { return m_keyringRefused; }

    QString WebProxyUserPasswd() const { return m_WebProxyUserPasswd; }
    void setWebProxyUserPasswd(const QString& v) { m_WebProxyUserPasswd = v; }
    QString WebProxyUserName() const { return m_WebProxyUserName; }
    void setWebProxyUserName(const QString& v) { m_WebProxyUserName = v; }
    QString WebProxyPort() const { return m_WebProxyPort; }
    void setWebProxyPort(const QString& v) { m_WebProxyPort = v; }
    QString WebProxyWebAddress() const { return m_WebProxyWebAddress; }
    void setWebProxyWebAddress(const QString& v) { m_WebProxyWebAddress = v; }
    QString WebProxyName() const { return m_WebProxyName; }
    void setWebProxyName(const QString& v) { m_WebProxyName = v; }
    // A boolean at its interface, held as the text of the boolean.
    bool ProxyOptionWebProxy() const;
    void setProxyOptionWebProxy(bool v);
    QString ProxyAccessType() const { return m_ProxyAccessType; }
    void setProxyAccessType(const QString& v) { m_ProxyAccessType = v; }
    bool ProxyOptionCustom() const { return m_ProxyOptionCustom; }
    void setProxyOptionCustom(bool v) { m_ProxyOptionCustom = v; }
    bool ProxyOptionDefault() const { return m_ProxyOptionDefault; }
    void setProxyOptionDefault(bool v) { m_ProxyOptionDefault = v; }
    bool ProxyOptionNoProxy() const { return m_ProxyOptionNoProxy; }
    void setProxyOptionNoProxy(bool v) { m_ProxyOptionNoProxy = v; }
    QString ProxyPort() const { return m_ProxyPort; }
    void setProxyPort(const QString& v) { m_ProxyPort = v; }
    QString ProxyAddress() const { return m_ProxyAddress; }
    void setProxyAddress(const QString& v) { m_ProxyAddress = v; }
    bool xmlIsServerUsed() const { return m_xmlIsServerUsed; }
    void setXmlIsServerUsed(bool v) { m_xmlIsServerUsed = v; }
    // The text of a boolean ("True" or "False" after a load); readers parse it.
    QString xmlSingleUser() const { return m_xmlSingleUser; }
    void setXmlSingleUser(const QString& v) { m_xmlSingleUser = v; }
    bool xmlGroupUser() const { return m_xmlGroupUser; }
    void setXmlGroupUser(bool v) { m_xmlGroupUser = v; }
    QString xmlSecretKey() const { return m_xmlSecretKey; }
    void setXmlSecretKey(const QString& v) { m_xmlSecretKey = v; }
    QString xmlUser() const { return m_xmlUser; }
    void setXmlUser(const QString& v) { m_xmlUser = v; }
    QString xmlGroup() const { return m_xmlGroup; }
    void setXmlGroup(const QString& v) { m_xmlGroup = v; }
    QString XmlPfad() const { return m_XmlPfad; }
    void setXmlPfad(const QString& v) { m_XmlPfad = v; }
    bool isLongSmsEnabled() const { return m_isLongSmsEnabled; }
    void setIsLongSmsEnabled(bool v) { m_isLongSmsEnabled = v; }
    bool DontDisplayMinimizeWarning() const { return m_DontDisplayMinimizeWarning; }
    void setDontDisplayMinimizeWarning(bool v) { m_DontDisplayMinimizeWarning = v; }
    bool WaitingForPassword() const { return m_WaitingForPassword; }
    void setWaitingForPassword(bool v) { m_WaitingForPassword = v; }
    bool FirstStartHasRun() const { return m_FirstStartHasRun; }
    void setFirstStartHasRun(bool v) { m_FirstStartHasRun = v; }
    QString OutlookProfil() const { return m_OutlookProfil; }
    void setOutlookProfil(const QString& v) { m_OutlookProfil = v; }
    QString ContactFolderName() const { return m_ContactFolderName; }
    void setContactFolderName(const QString& v) { m_ContactFolderName = v; }
    QString ContactEntryID() const { return m_ContactEntryID; }
    void setContactEntryID(const QString& v) { m_ContactEntryID = v; }
    QString ContactStoreID() const { return m_ContactStoreID; }
    void setContactStoreID(const QString& v) { m_ContactStoreID = v; }
    bool isControlEmail() const { return m_isControlEmail; }
    void setIsControlEmail(bool v) { m_isControlEmail = v; }
    qint16 InfoVersion() const { return m_InfoVersion; }
    void setInfoVersion(qint16 v) { m_InfoVersion = v; }
    bool isAntwortEnabled() const { return m_isAntwortEnabled; }
    void setIsAntwortEnabled(bool v) { m_isAntwortEnabled = v; }
    bool isStatusberichtEnabled() const { return m_isStatusberichtEnabled; }
    void setIsStatusberichtEnabled(bool v) { m_isStatusberichtEnabled = v; }
    QString Absenderkennung() const { return m_Absenderkennung; }
    void setAbsenderkennung(const QString& v) { m_Absenderkennung = v; }
    bool isAbsenderkennung() const { return m_isAbsenderkennung; }
    void setIsAbsenderkennung(bool v) { m_isAbsenderkennung = v; }
    QString kennwort() const { return m_kennwort; }
    void setKennwort(const QString& v) { m_kennwort = v; }
    QString Username() const { return m_Username; }
    void setUsername(const QString& v) { m_Username = v; }

    // The start rule: an installation that has ever fetched news counts as set up. Returns
    // true when the first-start wizard is to run.
    bool takeFirstStartDecision();

private:
    void loadPassword();
    void savePassword() const;
    void storePasswordPlace() const;

    QString m_WebProxyUserPasswd;
    QString m_WebProxyUserName;
    QString m_WebProxyPort;
    QString m_WebProxyWebAddress;
    QString m_WebProxyName;
    QString m_ProxyOptionWebProxy;
    QString m_ProxyAccessType;
    bool m_ProxyOptionCustom = false;
    bool m_ProxyOptionDefault = false;
    bool m_ProxyOptionNoProxy = false;
    QString m_ProxyPort;
    QString m_ProxyAddress;
    bool m_xmlIsServerUsed = false;
    QString m_xmlSingleUser;
    bool m_xmlGroupUser = false;
    QString m_xmlSecretKey;
    QString m_xmlUser;
    QString m_xmlGroup;
    QString m_XmlPfad;
    bool m_isLongSmsEnabled = false;
    bool m_DontDisplayMinimizeWarning = false;
    bool m_WaitingForPassword = false;
    bool m_FirstStartHasRun = false;
    QString m_OutlookProfil;
    QString m_ContactFolderName;
    QString m_ContactEntryID;
    QString m_ContactStoreID;
    bool m_isControlEmail = false;
    qint16 m_InfoVersion = 0;
    bool m_isAntwortEnabled = false;
    bool m_isStatusberichtEnabled = false;
    QString m_Absenderkennung;
    bool m_isAbsenderkennung = false;
    QString m_kennwort;
    QString m_Username;
    // What the store or the keyring holds as of the last load or save, and under which address;
    // save() touches the keyring only when the password or the address has changed since.
    mutable bool m_passwordInKeyring = false;
    mutable QString m_keptPassword;
    mutable QString m_keptUsername;
    mutable bool m_keyringRefused = false;
};

// The text of a boolean as the language writes it: "True" or "False".
QString boolText(bool value);
// Reads the text of a boolean back: "True" and "False" in any case, or a number (non-zero true).
bool textToBool(const QString& text);

// The one settings record, created and loaded on first use.
cOptionen& Options();

// Tests start from the store as it is now.
void reloadOptionsForTesting();
