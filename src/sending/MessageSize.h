// SPDX-License-Identifier: GPL-3.0-or-later
// Size, SMS count and price of a message, as the main window shows them while the user types.
// The three prices (the main window's, the options dialog's line, the balance test) differ on
// purpose and are kept as three functions.
#pragma once

#include <QString>

class cOptionen;

namespace MessageSize {

inline constexpr int SizeLimit = 1500;
inline constexpr int SmsSize = 160;
inline constexpr int LongSmsPartSize = 153;

// The options that decide size and price, taken as values so that the rules need no store.
struct SmsOptions
{
    bool isAbsenderkennung = false;
    bool isAntwortEnabled = false;
    bool isStatusberichtEnabled = false;
    bool isLongSmsEnabled = false;
    bool isControlEmail = false;
};
SmsOptions smsOptionsOf(const cOptionen& options);

// The size of text: its length on the wire (a character Windows-1252 lacks is one "?", a
// surrogate pair one character) plus one for each "€" and each double quote in txtSMS, the
// present content of the text box, not in text. A part of a split message thus counts the
// specials of the whole box.
qint16 calcSmsSize(const QString& text, const QString& txtSMS);

// Characters of one SMS: 153 when both sender identity and long SMS are on, otherwise 160.
int partSize(const SmsOptions& options);

// The sizes of a run's placeholders: the longest value of each column of the recipient table.
struct PlaceholderSizes
{
    int maxNameSize = 0;
    int maxFrei1Size = 0;
    int maxFrei2Size = 0;
    int rowCount = 0;
};

// What recalcSmsSize sets on the window. Only the counters of the mode in hand are meaningful.
struct SmsSizeFigures
{
    int size = 0; // calcSmsSize of txtSMS; the limit applies to it
    bool overLimit = false; // txtSMS marked light red, warning shown
    bool sendEnabled = true; // tbSend
    QString warningText; // empty: clearWarning
    // single mode
    int txtZeichen = 0;
    int txtAnzahlSMS = 0;
    // MultiSMS mode
    int txtZeichenMultiSMS = 0;
    int txtAnzahlProNachricht = 0;
    int txtAnzahlMultiSMS = 0;
};
SmsSizeFigures recalcSmsSize(const QString& txtSMS, bool isMultiSMSMode, const SmsOptions& options,
                             const PlaceholderSizes& placeholders = {});

// txtKostenProSMS: 10, or 14 with sender identity, +1 for replies, +1 for the status report;
// 19 whatever the options when "W" is selected and the number begins with "0049".
int updateCost(const SmsOptions& options, const QString& cmbVorwahlKey, const QString& txtNummer);

// The price line of the options dialog, from its three check boxes.
struct OptionsPriceLine
{
    int price = 10;
    QString lblKostenDetails;
    QString lblKosten;
};
OptionsPriceLine optionsPriceLine(bool cbVarAbsender, bool chkLongSMS, bool chkSmsAntwort);

// The price of one SMS for the balance test before a send: 10 or 14, +1 for replies.
int balanceTestPrice(const SmsOptions& options);

// Whether the last known balance is too low for anzahl SMS (the value of txtAnzahlSMS or
// txtAnzahlMultiSMS) at price each. An unknown balance (-1) never blocks.
bool isBalanceTooLow(qint32 credits, double anzahl, int price);

} // namespace MessageSize
