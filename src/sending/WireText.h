// SPDX-License-Identifier: GPL-3.0-or-later
// A message as the gateway gets it. The gateway takes Windows-1252; a character beyond it goes
// out as one "?". These functions find such characters before the send, count the message as it
// goes on the wire, offer plain letters in their place, and word the notice about them.
#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

namespace WireText {

// The text as it goes on the wire: each character Windows-1252 lacks becomes one "?". A
// surrogate pair (an emoji, say) is one character and gives one "?".
QString wireForm(const QString& text);
// The length of the wire form, without making it: the text's characters, a surrogate pair one.
qsizetype wireLength(QStringView text);
// Whether every character of text goes out as it is.
bool isSendable(QStringView text);
// The characters of text that can't go out, each once, in the order they first occur; a
// surrogate pair is one character.
QStringList unsendable(const QString& text);
// text with each character that can't go out replaced by its nearest plain letters ("Ł" by "L",
// a typographic hyphen by "-"); one that has none, such as an emoji or a Chinese character, is
// removed. Every character that Windows-1252 holds stays as it is.
QString transliterate(const QString& text);
// The German sentence that names characters which can't go out; empty for none. Characters
// invisible on their own (a joiner, a combining mark, a special space) are named by their code.
QString unsendableNotice(const QStringList& characters);

} // namespace WireText
