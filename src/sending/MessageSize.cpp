// SPDX-License-Identifier: GPL-3.0-or-later
#include "MessageSize.h"

#include "WireText.h"
#include "settings/cOptionen.h"

namespace MessageSize {

SmsOptions smsOptionsOf(const cOptionen& options)
{
    SmsOptions o;
    o.isAbsenderkennung = options.isAbsenderkennung();
    o.isAntwortEnabled = options.isAntwortEnabled();
    o.isStatusberichtEnabled = options.isStatusberichtEnabled();
    o.isLongSmsEnabled = options.isLongSmsEnabled();
    o.isControlEmail = options.isControlEmail();
    return o;
}

qint16 calcSmsSize(const QString& text, const QString& txtSMS)
{
    // Counted as it goes on the wire: an emoji, two UTF-16 units, goes out as one "?". The euro
    // sign and the double quote are in the code page, so the box holds as many as the wire.
    const qsizetype size = WireText::wireLength(text) + txtSMS.count(u'€') + txtSMS.count(u'"');
    return qint16(qMin<qsizetype>(size, 32767));
}

int partSize(const SmsOptions& options)
{
    return options.isAbsenderkennung && options.isLongSmsEnabled ? LongSmsPartSize : SmsSize;
}

namespace {
// The integer part of (size - 1) / p, plus 1; integer division cuts towards zero, so an empty
// text makes one SMS.
int smsCount(int size, int p)
{
    return (size - 1) / p + 1;
}

int withPlaceholder(int size, const QString& text, const QString& placeholder, int maxSize)
{
    const qsizetype n = text.count(placeholder);
    if (n == 0)
        return size;
    return size - int(placeholder.size() * n) + int(maxSize * n);
}
} // namespace

SmsSizeFigures recalcSmsSize(const QString& txtSMS, bool isMultiSMSMode, const SmsOptions& options,
                             const PlaceholderSizes& placeholders)
{
    SmsSizeFigures f;
    f.size = calcSmsSize(txtSMS, txtSMS);
    if (f.size > SizeLimit) {
        f.overLimit = true;
        f.sendEnabled = false;
        f.warningText = QString::fromUtf16(u"Eine SMS darf maximal 1500 Zeichen groß sein!");
    }
    const int p = partSize(options);
    if (isMultiSMSMode) {
        int size = f.size;
        size = withPlaceholder(size, txtSMS, QStringLiteral("%name%"), placeholders.maxNameSize);
        size = withPlaceholder(size, txtSMS, QStringLiteral("%frei1%"), placeholders.maxFrei1Size);
        size = withPlaceholder(size, txtSMS, QStringLiteral("%frei2%"), placeholders.maxFrei2Size);
        f.txtZeichenMultiSMS = size;
        f.txtAnzahlProNachricht = smsCount(size, p);
        f.txtAnzahlMultiSMS = f.txtAnzahlProNachricht * placeholders.rowCount;
    } else {
        f.txtZeichen = f.size;
        // Only here a message up to 160 is one SMS, whatever the part size.
        f.txtAnzahlSMS = f.size > SmsSize ? smsCount(f.size, p) : 1;
    }
    return f;
}

int updateCost(const SmsOptions& options, const QString& cmbVorwahlKey, const QString& txtNummer)
{
    int price = options.isAbsenderkennung ? 14 : 10;
    if (options.isAntwortEnabled)
        ++price;
    if (options.isStatusberichtEnabled)
        ++price;
    // "Weltweit" to a German number has one fixed price.
    if (cmbVorwahlKey == u"W" && txtNummer.startsWith(u"0049"))
        price = 19;
    return price;
}

OptionsPriceLine optionsPriceLine(bool cbVarAbsender, bool chkLongSMS, bool chkSmsAntwort)
{
    OptionsPriceLine line;
    line.price = 10;
    line.lblKostenDetails = QString::fromUtf16(u"Kosten der SMS mit den gewählten Optionen:");
    if (cbVarAbsender) {
        line.price = 14;
        if (chkLongSMS)
            line.lblKostenDetails = QString::fromUtf16(u"Kosten je 153 Zeichen:");
    }
    if (chkSmsAntwort)
        ++line.price;
    line.lblKosten = QString::number(line.price) + QStringLiteral(" Credits");
    return line;
}

int balanceTestPrice(const SmsOptions& options)
{
    return (options.isAbsenderkennung ? 14 : 10) + (options.isAntwortEnabled ? 1 : 0);
}

bool isBalanceTooLow(qint32 credits, double anzahl, int price)
{
    return credits != -1 && double(credits) < anzahl * price;
}

} // namespace MessageSize
