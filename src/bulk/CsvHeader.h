// SPDX-License-Identifier: GPL-3.0-or-later
// A CSV file's header row read by its column names: which column gives the name, the number and
// the free texts, in German and English, as spreadsheets and address books (Outlook, Google,
// Thunderbird) name them.
#pragma once

#include "CsvList.h"

#include <QString>
#include <QStringList>
#include <QStringView>

namespace CsvHeader {

// A header's column name as compared: lower case, blanks simplified.
QString headerWord(QStringView cell);

// The columns found for a header's words: recognised when the row looks like a header at all,
// sure when a name and a mobile number column were found without a doubt.
struct HeaderMapping
{
    bool recognised = false;
    bool sure = false;
    CsvList::Mapping mapping;
};
HeaderMapping mapHeader(const QStringList& words);

// Whether a type column's value ("Mobile", "* Handy") names a mobile number.
bool isMobileType(QStringView type);

} // namespace CsvHeader
