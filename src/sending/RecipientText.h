// SPDX-License-Identifier: GPL-3.0-or-later
// A row of a MultiSMS run: its personal text and its number in international form.
#pragma once

#include <QString>

#include <optional>

namespace RecipientText {

// txtSMS with "%name%", then "%frei1%", then "%frei2%" replaced, each on the result of the one
// before, case-sensitive.
QString rowText(const QString& txtSMS, const QString& Name, const QString& Freitext1, const QString& Freitext2);

// Nummer as it stands when it begins with "00", otherwise "0049" and Nummer without its first
// character. No number for an empty Nummer.
std::optional<QString> rowNumber(const QString& Nummer);

// What a bulk run sends to one row: its number, its text and its name.
struct RowMessage
{
    QString number;
    QString text;
    QString name;
};
// For the row with those values; none when its number is empty, which ends the run there.
std::optional<RowMessage> rowMessage(const QString& txtSMS, const QString& Name, const QString& Nummer,
                                     const QString& Freitext1, const QString& Freitext2);
// The log's line for a row that ends the run (row counted from 1).
QString missingNumberNote(int row, const QString& Name);

} // namespace RecipientText
