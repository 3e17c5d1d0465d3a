// SPDX-License-Identifier: GPL-3.0-or-later
// The service's addresses and the names of the program's two files. Each has a built-in
// default on the service's host; a branding file oem.inf next to the program may replace any of
// them, so that the whole client can be pointed at another server.
#pragma once

#include <QString>

class CUrlStore
{
public:
    // The service's host in the built-in addresses.
    static constexpr auto DefaultHost = u"http://www.quellbote.de";

    CUrlStore();

    // The built-in values, then the overrides of the branding file if it exists.
    void load();

    QString EditCronSMS() const { return m_EditCronSMS; }
    void setEditCronSMS(const QString& v) { m_EditCronSMS = v; }
    QString CronSMS() const { return m_CronSMS; }
    void setCronSMS(const QString& v) { m_CronSMS = v; }
    QString UpdaterName() const { return m_UpdaterName; }
    void setUpdaterName(const QString& v) { m_UpdaterName = v; }
    QString ExeName() const { return m_ExeName; }
    void setExeName(const QString& v) { m_ExeName = v; }
    QString Update() const { return m_Update; }
    void setUpdate(const QString& v) { m_Update = v; }
    QString News() const { return m_News; }
    void setNews(const QString& v) { m_News = v; }
    QString WebGroupDir() const { return m_WebGroupDir; }
    void setWebGroupDir(const QString& v) { m_WebGroupDir = v; }
    QString AGB() const { return m_AGB; }
    void setAGB(const QString& v) { m_AGB = v; }
    QString CheckInfo() const { return m_CheckInfo; }
    void setCheckInfo(const QString& v) { m_CheckInfo = v; }
    QString CheckVersion() const { return m_CheckVersion; }
    void setCheckVersion(const QString& v) { m_CheckVersion = v; }
    QString SmsCount() const { return m_SmsCount; }
    void setSmsCount(const QString& v) { m_SmsCount = v; }
    QString CreateUser() const { return m_CreateUser; }
    void setCreateUser(const QString& v) { m_CreateUser = v; }
    QString CheckUser() const { return m_CheckUser; }
    void setCheckUser(const QString& v) { m_CheckUser = v; }
    QString BuyCredits() const { return m_BuyCredits; }
    void setBuyCredits(const QString& v) { m_BuyCredits = v; }
    QString WebGroup() const { return m_WebGroup; }
    void setWebGroup(const QString& v) { m_WebGroup = v; }
    QString Phonebook() const { return m_Phonebook; }
    void setPhonebook(const QString& v) { m_Phonebook = v; }
    QString SendSMS() const { return m_SendSMS; }
    void setSendSMS(const QString& v) { m_SendSMS = v; }
    QString Helppage() const { return m_Helppage; }
    void setHelppage(const QString& v) { m_Helppage = v; }
    QString Homepage() const { return m_Homepage; }
    void setHomepage(const QString& v) { m_Homepage = v; }

private:
    QString m_EditCronSMS;
    QString m_CronSMS;
    QString m_UpdaterName;
    QString m_ExeName;
    QString m_Update;
    QString m_News;
    QString m_WebGroupDir;
    QString m_AGB;
    QString m_CheckInfo;
    QString m_CheckVersion;
    QString m_SmsCount;
    QString m_CreateUser;
    QString m_CheckUser;
    QString m_BuyCredits;
    QString m_WebGroup;
    QString m_Phonebook;
    QString m_SendSMS;
    QString m_Helppage;
    QString m_Homepage;
};

// The one URL store, created on first use.
CUrlStore& Urls();

// Tests read the branding file anew after changing it.
void reloadUrlsForTesting();
