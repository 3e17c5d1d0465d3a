// SPDX-License-Identifier: GPL-3.0-or-later
// Recipient lists kept in a spreadsheet or exported from an address book, as CSV: the bytes of
// such a file turned into rows of the MultiSMS table. Finds the encoding, the delimiter and the
// header's columns by itself, writes numbers as the table holds them, and tells the rows it
// leaves out and why.
#pragma once

#include "RecipientTable.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <QStringView>

#include <optional>
#include <utility>

namespace CsvList {

// Which column (counted from 0, -1 for none) gives which value of a row.
struct Mapping
{
    int name = -1;
    // Joined with a blank; used where there is no name column, or a row's name is empty.
    int firstName = -1;
    int lastName = -1;
    int number = -1;
    // Pairs of a type and a value column ("Phone 1 - Type", "Phone 1 - Value"): a row's number is
    // the first value whose type is a mobile one. Used where the number column is none or empty.
    QList<std::pair<int, int>> typedNumbers;
    int freitext1 = -1;
    int freitext2 = -1;

    // The layout of a file without a header, as a .msms file has it.
    static Mapping plain();
    // As text to be stored under a header's key ("name=0;number=2;phones=5:6,7:8;frei1=3"), and
    // back; none for a text that is no mapping.
    QString toText() const;
    static std::optional<Mapping> fromText(const QString& text);
    bool hasNumber() const { return number >= 0 || !typedNumbers.isEmpty(); }
    bool hasName() const { return name >= 0 || firstName >= 0 || lastName >= 0; }
    bool operator==(const Mapping&) const = default;
};

// A row that is left out: its row in the file (the first row is 1, a header counts), the name
// and the number as written, and why.
struct Doubt
{
    int row = 0;
    QString name;
    QString number;
    QString reason;

    bool operator==(const Doubt&) const = default;
};

struct Result
{
    // False when the file can't be read as a list at all; failure then says why, in German.
    bool ok = false;
    QString failure;
    // The rows to send to (Tag 0: the table numbers them), each with its row in the file.
    QList<RecipientRow> rows;
    QList<int> rowNumbers;
    QList<Doubt> doubtful;
    // Whether a national number was given the German prefix.
    bool prefixAdded = false;

    bool hasHeader = false;
    // False when no name or no number column was found, or several columns could be either:
    // then the user should choose from header.
    bool sure = true;
    QStringList header;
    // Stands for the header's column names, whatever their case and blanks: a choice made for
    // one file can be kept for the next with the same header.
    QString headerKey;
    Mapping mapping;

    QString encoding; // "UTF-8", "UTF-16LE", "UTF-16BE" or "Windows-1252"
    QChar delimiter;
};

// Reads a whole file's bytes, the header's columns mapped by their names.
Result read(const QByteArray& bytes);
// The same with the columns chosen by the caller; a header row, when there is one, is no row.
Result read(const QByteArray& bytes, const Mapping& mapping);

// A number as people write it, in the form the table holds: "+49 171 1234567", "0171/1234567",
// "(0171) 123-4567" and "0049 (0)171 1234567" give "00491711234567". Empty with the reason when
// it can't be taken without guessing.
struct Number
{
    QString number;
    QString reason;
    bool prefixAdded = false; // a national number given "0049"
};
Number number(QStringView written);

// Whether a list at that path is read as CSV rather than as a .msms file.
bool isCsvPath(const QString& path);

} // namespace CsvList
