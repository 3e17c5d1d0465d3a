// SPDX-License-Identifier: GPL-3.0-or-later
#include "AccountProtocol.h"

#include "sending/mUrlEncode.h"
#include "settings/CUrlStore.h"
#include "settings/ProductName.h"
#include "settings/tools.h"
#include "toolkit/Inet.h"

namespace AccountProtocol {

QString checkUserUrl(const QString& baseUrl, const QString& email, const QString& password)
{
    return baseUrl + QStringLiteral("?email=") + email + QStringLiteral("&password=") + password;
}

QString createUserUrl(const QString& baseUrl, const NewAccount& a, const QString& productName)
{
    const auto enc = [](const QString& value) {
        return mUrlEncode::percentEncode(value, false);
    };
    return baseUrl + QStringLiteral("?name=") + enc(a.txtName) + QStringLiteral("&vorname=") + enc(a.txtFirstName)
        + QStringLiteral("&firma=") + enc(a.txtFirma) + QStringLiteral("&email=") + enc(a.txtEmail)
        + QStringLiteral("&telefon=") + enc(a.txtTelefon) + QStringLiteral("&fax=") + enc(a.txtFax)
        + QStringLiteral("&strasse=") + enc(a.txtStrasse) + QStringLiteral("&plz=") + enc(a.txtPLZ)
        + QStringLiteral("&ort=") + enc(a.txtOrt) + QStringLiteral("&land=") + enc(a.txtLand)
        + QStringLiteral("&gutschein=") + enc(a.txtGutscheincode) + QStringLiteral("&referer=") + enc(productName);
}

Answer readAnswer(const QString& text, bool transferOk)
{
    if (!transferOk)
        return Answer::Failed;
    bool numeric = false;
    const double value = tools::NumericValue(text.trimmed(), &numeric);
    if (!numeric)
        return Answer::Failed;
    return value == 0 ? Answer::Accepted : Answer::Refused;
}

Answer checkAccount(Inet& iNet, const QString& email, const QString& password)
{
    bool ok = false;
    const QString text = iNet.OpenURL(checkUserUrl(Urls().CheckUser(), email, password), &ok);
    return readAnswer(text, ok);
}

Answer createAccount(Inet& iNet, const NewAccount& account)
{
    bool ok = false;
    const QString text = iNet.OpenURL(createUserUrl(Urls().CreateUser(), account, ProductName()), &ok);
    return readAnswer(text, ok);
}

} // namespace AccountProtocol
