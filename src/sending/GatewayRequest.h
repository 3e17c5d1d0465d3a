// SPDX-License-Identifier: GPL-3.0-or-later
// The road of one SMS to the gateway, without the window: the input check, the split of a long
// text into parts, the request body with its escapes, the choice of the address and the message
// after a hand-off to the server folder.
#pragma once

#include "MessageSize.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

class cOptionen;

namespace GatewayRequest {

// The outcome of validateInput: which fields to mark light red, and the texts to show.
struct InputCheck
{
    bool valid = true;
    bool cmbVorwahlMarked = false;
    bool txtNummerMarked = false;
    bool txtSMSMarked = false;
    QString lines; // the gathered lines, each ending in CR LF
    QString warningText; // for the header line; empty when valid
    QString messageText; // for the warning box; empty when valid
};
// cmbVorwahlKey is empty when no entry is selected.
InputCheck validateInput(bool isMultiSMSMode, const QString& cmbVorwahlKey, const QString& txtNummer,
                         const QString& txtSMS);

// Occurrences of "€" and of the double quote in text.
qint16 countDoubleChars(const QString& text);
// The length of the first part of text, in UTF-16 units: at most 160 characters on the wire
// (a surrogate pair one, never cut), lowered until the part and its specials fit into 160.
qint16 fitPartLength(const QString& text);
// The parts that sendMessage hands to submitMessage one after another, measured as they go on
// the wire. With both sender identity and long SMS on, the whole text is one part and the
// gateway splits it.
QStringList sendMessageParts(const QString& text, const MessageSize::SmsOptions& options);

// The escape of "&text=": "%", "&", "+" and blank; everything else passes.
QString encodeText(const QString& text);

// The three fields of a scheduled send.
struct Schedule
{
    QString StartTime;
    QString CronString;
    QString EndTime;
};

// Everything a request body is made of.
struct SendRequest
{
    QString Username;
    QString sessionPassword;
    QString number; // international form with "00"
    QString name; // cmbName's text, or the row's name
    bool isMultiSMSMode = false;
    int chkPrivat = 0; // check box value; only 1 counts as ticked
    int chkPublic = 0;
    QString version; // "2.4.92"
    QString text; // this part, not yet escaped
    QString txtSMS; // the text box, for the size that decides "&long="
    QString Absenderkennung;
    MessageSize::SmsOptions options;
    QString productName;
    std::optional<Schedule> pendingCronjob;
};

// The request of one part as the program's settings make it: account, sender and send options
// from options, the product name and the program's version; the rest as the caller has it.
SendRequest requestFor(const cOptionen& options, const QString& sessionPassword, const QString& number,
                       const QString& name, const QString& part, const QString& txtSMS, bool isMultiSMSMode,
                       int chkPrivat, int chkPublic, const std::optional<Schedule>& pendingCronjob);

// "&long=true" exactly when the size of the part is 161 or more and long SMS applies.
bool isLongSms(const QString& text, const QString& txtSMS, const MessageSize::SmsOptions& options);

// The form-encoded body: 19 fields (16 without a schedule) in their fixed order, only the text
// escaped by encodeText, then every blank of the whole body replaced by "%20".
QString requestBody(const SendRequest& request);
// The body as it goes on the wire: Windows-1252 bytes.
QByteArray requestBytes(const SendRequest& request);

// CronSMS with a schedule, SendSMS without.
QString requestUrl(bool hasPendingCronjob, const QString& SendSMS, const QString& CronSMS);

// Whether the gateway route asks "Kein Absendername vorhanden" before sending a part.
bool asksForSender(bool isAbsenderkennung, const QString& Absenderkennung);

// Which job file the server route writes.
enum class ServerWriter { None, SingleUser, GroupUser };
// xmlSingleUser is the option's text ("True"/"False").
ServerWriter serverWriter(const QString& XmlPfad, const QString& xmlSingleUser, bool xmlGroupUser);

// The message after a hand-off to the server folder. The count is raised on every hand-off and
// never reset; the box comes only when the count equals txtAnzahlSMS.
struct HandOffMessage
{
    qint16 handOffCount = 0; // the new count, to keep
    bool show = false;
    QString text;
};
// The words after a hand-off, by the options (not by what was written).
QString handOffDoneText(bool xmlIsServerUsed, const QString& xmlSingleUser, bool xmlGroupUser);
HandOffMessage serverHandOffDone(qint16 handOffCount, const QString& txtAnzahlSMS, bool xmlIsServerUsed,
                                 const QString& xmlSingleUser, bool xmlGroupUser);

} // namespace GatewayRequest
