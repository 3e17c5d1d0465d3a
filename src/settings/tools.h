// SPDX-License-Identifier: GPL-3.0-or-later
// Small helpers used all over the program.
#pragma once

#include <QString>

namespace tools {

// Check box values: 0 unticked, 1 ticked, 2 grey.
inline constexpr int Unchecked = 0;
inline constexpr int Checked = 1;
inline constexpr int Grayed = 2;

// A check box value as a boolean: only 1 is true, the grey state 2 is not.
constexpr bool CheckBoxValueToBool(int value)
{
    return value == Checked;
}

constexpr int BoolToCheckBoxValue(bool value)
{
    return value ? Checked : Unchecked;
}

// "true" or "false", the words used in requests and in the store.
QString BoolToText(bool value);

// The greater of two 16-bit integers.
constexpr qint16 Max(qint16 a, qint16 b)
{
    return a > b ? a : b;
}

// The loose number test, as the program has always used it for numbers typed by the user.
// It passes, after blanks (any white space) at both ends are dropped:
//   - an optional sign "+" or "-",
//   - then the digits 0 to 9, among which "." and "," may stand anywhere as decimal or
//     thousands separators ("1.234,5", "1,234.5", ",5", "5.", "1,,2" all pass), with at least
//     one digit,
//   - then an optional exponent: "e", "E", "d" or "D", an optional sign and at least one digit,
// and the value it stands for fits into a double ("1e308" passes, "1e309" fails).
// Everything else fails: an empty or all-blank text, a sign alone, a separator alone, letters,
// a second sign, a sign at the end, blanks inside the number ("00 49", "+ 1"), other white space
// inside, digits of other scripts, hexadecimal, currency signs, brackets.
bool IsNumeric(const QString& text);

// The value of a text that passes IsNumeric; *ok is false and 0 returned for any other text.
// Where a "," stands in the number it is the decimal separator and every "." a thousands
// separator; otherwise a single "." is the decimal separator and several are thousands
// separators.
double NumericValue(const QString& text, bool* ok = nullptr);

// IsNumeric followed by a conversion to a 16-bit integer, rounded half to even: *ok is false for
// a text that isn't numeric or doesn't fit in 16 bits.
qint16 NumericToInt16(const QString& text, bool* ok = nullptr);

// Whether a file (not a folder) exists at exactly this path; any failure means no.
bool FileExists(const QString& path);

// The text without the blanks at its ends; other white space (CR, LF, tabs) stays.
QString TrimBlanks(const QString& text);

} // namespace tools
