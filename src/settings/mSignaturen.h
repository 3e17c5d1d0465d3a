// SPDX-License-Identifier: GPL-3.0-or-later
// Stored text snippets for messages, kept under the Signaturen key as "count" and "1", "2", ...
// A signature is known by its place in the list.
#pragma once

#include <QStringList>

namespace mSignaturen {
// As many texts as "count" says; a missing value gives an empty text. A "count" that is no
// number gives no signatures.
QStringList LoadSignaturen();
// Writes "count" and each text; an empty text removes its value, and values above the count stay.
void SaveSignaturen(const QStringList& signatures);
} // namespace mSignaturen
