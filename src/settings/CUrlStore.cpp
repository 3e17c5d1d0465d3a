// SPDX-License-Identifier: GPL-3.0-or-later
#include "CUrlStore.h"

#include "ProgramFolder.h"
#include "iniHandler.h"

#include <array>

namespace {

struct Entry
{
    QString (CUrlStore::*get)() const;
    void (CUrlStore::*set)(const QString&);
    const char16_t* section;
    const char16_t* key;
    const char16_t* builtIn; // a path on the service's host, or a file name
    bool isAddress;
};

// The properties in the order they are set and overridden.
const std::array<Entry, 19> Entries = { {
    { &CUrlStore::Homepage, &CUrlStore::setHomepage, u"URLs", u"Homepage", u"", true },
    { &CUrlStore::Helppage, &CUrlStore::setHelppage, u"URLs", u"Helppage", u"/hilfe/", true },
    { &CUrlStore::SendSMS, &CUrlStore::setSendSMS, u"URLs", u"SendSMS", u"/smsv3/smsv3.php", true },
    { &CUrlStore::CronSMS, &CUrlStore::setCronSMS, u"URLs", u"CronSMS", u"/cronjob/send_repeat.php", true },
    { &CUrlStore::EditCronSMS, &CUrlStore::setEditCronSMS, u"URLs", u"EditCronSMS", u"/terminversand/deleteSMS.php",
      true },
    { &CUrlStore::Phonebook, &CUrlStore::setPhonebook, u"URLs", u"Phonebook", u"/telefonbuch/telefonbuch.php", true },
    { &CUrlStore::WebGroup, &CUrlStore::setWebGroup, u"URLs", u"WebGroup", u"/sms/gruppenv2/gruppenv2.php", true },
    { &CUrlStore::BuyCredits, &CUrlStore::setBuyCredits, u"URLs", u"BuyCredits", u"/sms/buyCredits.php", true },
    { &CUrlStore::CheckUser, &CUrlStore::setCheckUser, u"URLs", u"CheckUser", u"/sms/checkUser.php", true },
    { &CUrlStore::CreateUser, &CUrlStore::setCreateUser, u"URLs", u"CreateUser", u"/sms/createUser.php", true },
    { &CUrlStore::SmsCount, &CUrlStore::setSmsCount, u"URLs", u"SmsCount", u"/sms/count.php?email=", true },
    { &CUrlStore::CheckVersion, &CUrlStore::setCheckVersion, u"URLs", u"CheckVersion", u"/update/version", true },
    { &CUrlStore::CheckInfo, &CUrlStore::setCheckInfo, u"URLs", u"CheckInfo", u"/update/infoVersion", true },
    { &CUrlStore::AGB, &CUrlStore::setAGB, u"URLs", u"AGB", u"/sms_agb/sms_agb.htm", true },
    { &CUrlStore::WebGroupDir, &CUrlStore::setWebGroupDir, u"URLs", u"WebGroupDir", u"/sms/gruppenv2/", true },
    { &CUrlStore::News, &CUrlStore::setNews, u"URLs", u"News", u"/news.htm", true },
    { &CUrlStore::Update, &CUrlStore::setUpdate, u"URLs", u"Update", u"/update/quellbote.exe", true },
    { &CUrlStore::UpdaterName, &CUrlStore::setUpdaterName, u"Files", u"Updater", u"quellboteupdater.exe", false },
    { &CUrlStore::ExeName, &CUrlStore::setExeName, u"Files", u"Main", u"quellbote.exe", false },
} };

} // namespace

CUrlStore::CUrlStore()
{
    load();
}

void CUrlStore::load()
{
    const QString host = QString::fromUtf16(DefaultHost);
    for (const Entry& e : Entries) {
        const QString builtIn = QString::fromUtf16(e.builtIn);
        (this->*e.set)(e.isAddress ? host + builtIn : builtIn);
    }
    if (!ProgramFolder::oemFileExists())
        return;
    const QString file = ProgramFolder::oemFile();
    for (const Entry& e : Entries) {
        (this->*e.set)(
            iniHandler::GetIniValue(file, QString::fromUtf16(e.section), QString::fromUtf16(e.key), (this->*e.get)()));
    }
}

CUrlStore& Urls()
{
    static CUrlStore store;
    return store;
}

void reloadUrlsForTesting()
{
    Urls().load();
}
