// SPDX-License-Identifier: GPL-3.0-or-later
// Reads contacts from vCard files as address books and phones export them: versions 2.1, 3.0
// and 4.0, one card or many to a file, or a folder of such files. Reading never fails as a
// whole: a card that can't be read (cut off, interrupted by the next card, a file that holds
// no card at all) is skipped and counted, and the rest is read.
#pragma once

#include "VCardContact.h"

#include <QByteArray>
#include <QList>
#include <QString>

namespace VCardReader {

struct Result
{
    QList<VCardContact> contacts;
    // Cards that could not be read; a file without any card counts as one.
    int skipped = 0;
};

// Files larger than this are not read at all but counted as one skipped card.
inline constexpr qint64 MaxFileSize = 256 * 1024 * 1024;

// Whether a file name is that of a vCard file: ".vcf" or ".vcard", in any case.
bool isVCardFileName(const QString& fileName);

// The cards of one file's content, in their order.
Result readBytes(const QByteArray& bytes);
Result readFile(const QString& fileName);
// A vCard file, or every vCard file directly inside a folder (in the order of their names).
// Anything else gives an empty result.
Result read(const QString& path);

} // namespace VCardReader
