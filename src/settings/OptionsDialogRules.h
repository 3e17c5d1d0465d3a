// SPDX-License-Identifier: GPL-3.0-or-later
// What the options dialog computes: the checks of the sender identity, the colour text and the
// addresses of its two web panes.
#pragma once

#include <QString>

namespace OptionsDialogRules {

// The sender field after a change of its text.
struct SenderCheck
{
    // The warning strip with "max. 11 alphanumerische Zeichen möglich!".
    bool tooLong = false;
    // Only for a text longer than 11 characters: whether OK and Apply are enabled (a number) or
    // disabled (a name). A shorter text leaves OK as it was.
    bool decidesSave = false;
    bool saveEnabled = true;
    // 16 characters for a number, 11 for a name.
    int maxLength = 11;
};
SenderCheck checkSender(const QString& text);

// Whether a typed key may go into the sender field: letters a-z and A-Z, digits, "-" and
// backspace. Pasted text isn't filtered.
bool senderKeyAllowed(QChar key);

// The colour as RRGGBB in upper-case hex, without "#", as the shop and job list take it.
QString colourText(int red, int green, int blue);

// Pane 3 names the password "passwort", pane 4 "kennwort"; only the password is encoded.
QString shopUrl(const QString& BuyCredits, const QString& Username, const QString& password, const QString& colour);
QString jobListUrl(const QString& EditCronSMS, const QString& Username, const QString& password, const QString& colour);

} // namespace OptionsDialogRules
