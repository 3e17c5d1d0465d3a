// SPDX-License-Identifier: GPL-3.0-or-later
#include "GatewayRequest.h"

#include "Version.h"
#include "WireText.h"
#include "settings/ProductName.h"
#include "settings/cOptionen.h"
#include "settings/tools.h"
#include "toolkit/Codepage.h"

namespace GatewayRequest {

namespace {
const QString crlf = QStringLiteral("\r\n");
}

InputCheck validateInput(bool isMultiSMSMode, const QString& cmbVorwahlKey, const QString& txtNummer,
                         const QString& txtSMS)
{
    InputCheck check;
    if (!isMultiSMSMode) {
        if (cmbVorwahlKey.isEmpty()) {
            check.lines += QString::fromUtf16(u"  - Bitte wählen Sie eine Vorwahl aus.") + crlf;
            check.cmbVorwahlMarked = true;
        }
        if (txtNummer.isEmpty()) {
            check.lines += QStringLiteral("  - Bitte geben Sie eine Rufnummer an.") + crlf;
            check.txtNummerMarked = true;
        } else if (!tools::IsNumeric(txtNummer)) {
            check.lines += QStringLiteral("  - Die Rufnummer darf nur Ziffern enthalten.") + crlf;
            check.txtNummerMarked = true;
        }
    }
    if (txtSMS.isEmpty()) {
        check.lines += QStringLiteral("  - Bitte geben Sie eine Nachricht ein.") + crlf;
        check.txtSMSMarked = true;
    }
    if (!check.lines.isEmpty()) {
        check.valid = false;
        check.warningText = QStringLiteral("Bitte korrigieren Sie die rot markierten Felder.");
        check.messageText = check.warningText + crlf + crlf + check.lines;
    }
    return check;
}

qint16 countDoubleChars(const QString& text)
{
    // Both are in the code page: the text and its wire form hold the same number.
    return qint16(text.count(u'€') + text.count(u'"'));
}

qint16 fitPartLength(const QString& text)
{
    // The longest beginning of at most 160 characters on the wire that, with its specials, fits
    // into 160. Counted character by character on the wire, so that a surrogate pair is one
    // character and never cut in two. A text that fits whole gives 160, or its length in UTF-16
    // units where that is more.
    qsizetype units = 0;
    int size = 0;
    int characters = 0;
    while (units < text.size() && characters < MessageSize::SmsSize) {
        const QChar c = text.at(units);
        const qsizetype length
            = c.isHighSurrogate() && units + 1 < text.size() && text.at(units + 1).isLowSurrogate() ? 2 : 1;
        const int cost = c == u'€' || c == u'"' ? 2 : 1;
        if (size + cost > MessageSize::SmsSize)
            return qint16(units);
        size += cost;
        ++characters;
        units += length;
    }
    return qint16(units == text.size() ? qMax<qsizetype>(units, MessageSize::SmsSize) : units);
}

QStringList sendMessageParts(const QString& text, const MessageSize::SmsOptions& options)
{
    if (options.isAbsenderkennung && options.isLongSmsEnabled)
        return { text };
    QStringList parts;
    QString rest = text;
    while (WireText::wireLength(rest) > MessageSize::SmsSize - countDoubleChars(rest)) {
        const qint16 n = fitPartLength(rest);
        parts.append(rest.left(n));
        rest.remove(0, n);
    }
    parts.append(rest);
    return parts;
}

QString encodeText(const QString& text)
{
    // "%" first, so that the escapes made afterwards are not escaped again.
    QString encoded = text;
    encoded.replace(u'%', QStringLiteral("%25"));
    encoded.replace(u'&', QStringLiteral("%26"));
    encoded.replace(u'+', QStringLiteral("%2B"));
    encoded.replace(u' ', QStringLiteral("%20"));
    return encoded;
}

SendRequest requestFor(const cOptionen& options, const QString& sessionPassword, const QString& number,
                       const QString& name, const QString& part, const QString& txtSMS, bool isMultiSMSMode,
                       int chkPrivat, int chkPublic, const std::optional<Schedule>& pendingCronjob)
{
    SendRequest request;
    request.Username = options.Username();
    request.sessionPassword = sessionPassword;
    request.number = number;
    request.name = name;
    request.isMultiSMSMode = isMultiSMSMode;
    request.chkPrivat = chkPrivat;
    request.chkPublic = chkPublic;
    request.version = Version::text();
    request.text = part;
    request.txtSMS = txtSMS;
    request.Absenderkennung = options.Absenderkennung();
    request.options = MessageSize::smsOptionsOf(options);
    request.productName = ProductName();
    request.pendingCronjob = pendingCronjob;
    return request;
}

bool isLongSms(const QString& text, const QString& txtSMS, const MessageSize::SmsOptions& options)
{
    return MessageSize::calcSmsSize(text, txtSMS) > MessageSize::SmsSize && options.isLongSmsEnabled
        && options.isAbsenderkennung;
}

QString requestBody(const SendRequest& r)
{
    using tools::BoolToText;
    const bool isPrivate = !r.isMultiSMSMode && tools::CheckBoxValueToBool(r.chkPrivat);
    const bool isPublic = !r.isMultiSMSMode && tools::CheckBoxValueToBool(r.chkPublic);
    QString body = QStringLiteral("email=") + r.Username + QStringLiteral("&kennwort=") + r.sessionPassword
        + QStringLiteral("&firma= ") + QStringLiteral("&empfaenger=") + r.number + QStringLiteral("&empfaengername=")
        + r.name + QStringLiteral("&private=") + BoolToText(isPrivate) + QStringLiteral("&public=")
        + BoolToText(isPublic) + QStringLiteral("&version=") + r.version + QStringLiteral("&text=") + encodeText(r.text)
        + QStringLiteral("&absenderkennung=") + BoolToText(r.options.isAbsenderkennung) + QStringLiteral("&absender=")
        + r.Absenderkennung + QStringLiteral("&statusmeldung=") + BoolToText(r.options.isStatusberichtEnabled)
        + QStringLiteral("&antwort=") + BoolToText(r.options.isAntwortEnabled) + QStringLiteral("&einlieferung=")
        + BoolToText(r.options.isControlEmail) + QStringLiteral("&referer=") + r.productName;
    if (r.pendingCronjob) {
        body += QStringLiteral("&term=") + r.pendingCronjob->StartTime + QStringLiteral("&cronjobstring=")
            + r.pendingCronjob->CronString + QStringLiteral("&enddate=") + r.pendingCronjob->EndTime;
    }
    body += QStringLiteral("&long=") + BoolToText(isLongSms(r.text, r.txtSMS, r.options));
    // The one escape every field gets.
    body.replace(u' ', QStringLiteral("%20"));
    return body;
}

QByteArray requestBytes(const SendRequest& request)
{
    return Codepage::toWindows1252(requestBody(request));
}

QString requestUrl(bool hasPendingCronjob, const QString& SendSMS, const QString& CronSMS)
{
    return hasPendingCronjob ? CronSMS : SendSMS;
}

bool asksForSender(bool isAbsenderkennung, const QString& Absenderkennung)
{
    return isAbsenderkennung && Absenderkennung.isEmpty();
}

ServerWriter serverWriter(const QString& XmlPfad, const QString& xmlSingleUser, bool xmlGroupUser)
{
    if (XmlPfad.size() < 3)
        return ServerWriter::None;
    if (textToBool(xmlSingleUser))
        return ServerWriter::SingleUser;
    if (xmlGroupUser)
        return ServerWriter::GroupUser;
    return ServerWriter::None;
}

QString handOffDoneText(bool xmlIsServerUsed, const QString& xmlSingleUser, bool xmlGroupUser)
{
    if (!xmlIsServerUsed) {
        return QStringLiteral("Das Verzeichnis des Quellbote Server fehlt. Wählen Sie ein Verzeichnis unter "
                              "Optionen/Quellbote Server aus.");
    }
    if (textToBool(xmlSingleUser)) {
        return QString::fromUtf16(u"Die SMS wurde unter Berücksichtigung der angegebenen Kontodaten an den "
                                  u"Quellbote Server weitergeleitet.");
    }
    if (xmlGroupUser) {
        return QString::fromUtf16(u"Die SMS wurde unter Berücksichtigung der angegebenen Gruppendaten an den "
                                  u"Quellbote Server weitergeleitet.");
    }
    return QStringLiteral("Sie müssen unter Optionen/Quellbote Server ein Konto auswählen");
}

HandOffMessage serverHandOffDone(qint16 handOffCount, const QString& txtAnzahlSMS, bool xmlIsServerUsed,
                                 const QString& xmlSingleUser, bool xmlGroupUser)
{
    HandOffMessage message;
    message.handOffCount = qint16(handOffCount + 1);
    if (QString::number(message.handOffCount) != txtAnzahlSMS)
        return message;
    message.show = true;
    message.text = handOffDoneText(xmlIsServerUsed, xmlSingleUser, xmlGroupUser);
    return message;
}

} // namespace GatewayRequest
