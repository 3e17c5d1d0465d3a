// SPDX-License-Identifier: GPL-3.0-or-later
// The single-byte code page of requests (bodies and URLs) and data files: Windows-1252. A
// character the code page can't hold becomes "?".
#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>

namespace Codepage {
QByteArray toWindows1252(const QString& text);
QString fromWindows1252(const QByteArray& bytes);
// Whether the code page holds the character, given as its code point.
bool holds(char32_t character);
// text as its Windows-1252 bytes read back: each character the code page lacks becomes one "?".
// A surrogate pair (an emoji, say) is one character; so is a surrogate standing alone.
QString withReplacements(const QString& text);
// Whether text's Windows-1252 bytes are its Latin-1 bytes: it holds no character beyond U+00FF
// and none of U+0080 to U+009F, where the two differ.
bool sameAsLatin1(QStringView text);
// An address as the program writes it, ready for the wire: every character beyond ASCII becomes
// "%" and its Windows-1252 byte, as in the bodies. Escapes already in it stay as they are, a "%"
// that starts none becomes "%25", and the rest is escaped as QUrl's tolerant parsing does (a
// blank becomes "%20").
QUrl toUrl(const QString& url);
} // namespace Codepage
