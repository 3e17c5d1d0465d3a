// SPDX-License-Identifier: GPL-3.0-or-later
// The rules of a recipient's number: the country code of a prefix key, the number of a send,
// taking apart a number from the phonebook or from the list of used numbers, and the live check
// of txtNummer. A key of cmbVorwahl is passed as text; an empty key means no entry is selected.
#pragma once

#include <QString>

namespace NumberRules {

// "0049" for a key beginning with G, "0043" for A, "0041" for S; empty for W and anything else.
QString countryCode(const QString& key);

// The number handed to sendMessage, from the selected key and the rest typed into txtNummer:
// the key's letter replaced by its country code ("G1520" and "1234" give "004915201234"), or
// txtNummer as it stands for "W". ok is false when the key's first letter is none of G, A, S, W.
struct SendNumber
{
    bool ok = false;
    QString number;
};
SendNumber sendNumber(const QString& cmbVorwahlKey, const QString& txtNummer);

// The server folder wants the number with its first "00" replaced by "+".
QString serverNumber(const QString& number);

// A number of the web phonebook in international form, taken apart by its beginning.
struct PhonebookNumber
{
    QString key; // "G171"; "W" when no country matched
    QString rest; // for txtNummer, every "/" removed; the whole number for "W"
    QString countryWord; // "Deutschland", "Österreich", "die Schweiz"; empty for "W"
};
PhonebookNumber splitPhonebookNumber(const QString& number);

// A whole number as a user writes it, prefix and all ("0171 1234567", "01711234567",
// "+49 171 1234567", "0043 664 1234567"), taken apart into the entry of cmbVorwahl and the rest
// for txtNummer, as if chosen and typed in the main window. Blanks and "/" go, a leading "+"
// stands for "00". A mobile prefix of the list is found by its longest match, written nationally
// ("0171") or internationally ("0049171"). Any other number in international form is "W" with
// the whole number; notMobileIn then names the country when its code is one of the list's. A
// number with no prefix to choose gives an empty key.
struct TypedNumber
{
    QString key;
    QString rest;
    QString notMobileIn; // "Deutschland", "Österreich", "die Schweiz"; empty otherwise
};
TypedNumber splitTypedNumber(const QString& typed);

// An entry of the list of used numbers carries the tag "<key>-<number>". Older entries wrote
// German keys with "V"; they read as "G".
struct UsedNumber
{
    QString key;
    QString number;
};
UsedNumber splitUsedNumberTag(const QString& tag);

// What the change handler of txtNummer shows: the field marked light red or not, and the warning
// of the header line (empty: none). The marks only inform; they never block a send.
struct NumberCheck
{
    bool marked = false;
    QString warningText;
};
NumberCheck checkNumber(const QString& cmbVorwahlKey, const QString& txtNummer);

// Whether txtNummer takes the focus back when it loses it.
bool keepsFocus(const QString& txtNummer);

} // namespace NumberRules
