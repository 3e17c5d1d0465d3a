// SPDX-License-Identifier: GPL-3.0-or-later
#include "OptionsDialogRules.h"

#include "sending/mUrlEncode.h"
#include "tools.h"

namespace OptionsDialogRules {

SenderCheck checkSender(const QString& text)
{
    SenderCheck check;
    const bool numeric = tools::IsNumeric(text);
    if (text.size() > 11) {
        check.decidesSave = true;
        check.saveEnabled = numeric;
        check.tooLong = !numeric;
    }
    check.maxLength = numeric ? 16 : 11;
    return check;
}

bool senderKeyAllowed(QChar key)
{
    const char16_t c = key.unicode();
    return c == 8 || c == u'-' || (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9');
}

QString colourText(int red, int green, int blue)
{
    return QStringLiteral("%1%2%3")
        .arg(red, 2, 16, QLatin1Char('0'))
        .arg(green, 2, 16, QLatin1Char('0'))
        .arg(blue, 2, 16, QLatin1Char('0'))
        .toUpper();
}

QString shopUrl(const QString& BuyCredits, const QString& Username, const QString& password, const QString& colour)
{
    return BuyCredits + QStringLiteral("?email=") + Username + QStringLiteral("&passwort=")
        + mUrlEncode::percentEncode(password, false) + QStringLiteral("&backcolor=") + colour;
}

QString jobListUrl(const QString& EditCronSMS, const QString& Username, const QString& password, const QString& colour)
{
    return EditCronSMS + QStringLiteral("?email=") + Username + QStringLiteral("&kennwort=")
        + mUrlEncode::percentEncode(password, false) + QStringLiteral("&backcolor=") + colour;
}

} // namespace OptionsDialogRules
