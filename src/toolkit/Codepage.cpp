// SPDX-License-Identifier: GPL-3.0-or-later
#include "Codepage.h"

#include <QStringDecoder>
#include <QStringEncoder>

#include <bitset>
#include <cstring>

namespace Codepage {
// Windows-1252 and Latin-1 differ only in the bytes 0x80 to 0x9F. Text without those (and, going
// out, without characters beyond U+00FF) converts as Latin-1, which Qt does without a converter of
// its own; that is nearly every request and file, and it saves opening one for each.
bool sameAsLatin1(QStringView text)
{
    // Four characters at a time: none may have bits above the low byte, and none may be 0x80 to
    // 0x9F (its top three bits of the low byte 100).
    const char16_t* c = text.utf16();
    const char16_t* end = c + text.size();
    constexpr quint64 ones = 0x0001000100010001, highs = 0x8000800080008000;
    for (; end - c >= 4; c += 4) {
        quint64 word;
        std::memcpy(&word, c, sizeof word);
        if (word & 0xFF00FF00FF00FF00)
            return false;
        const quint64 c1 = (word & 0x00E000E000E000E0) ^ 0x0080008000800080; // a zero lane is a C1 character
        if ((c1 - ones) & ~c1 & highs)
            return false;
    }
    for (; c != end; ++c) {
        if (*c > 0xFF || char16_t(*c - 0x80) < 0x20)
            return false;
    }
    return true;
}

namespace {
bool sameAsLatin1(QByteArrayView bytes)
{
    // Eight bytes at a time: none may be 0x80 to 0x9F, whose top three bits are 100.
    const char* b = bytes.data();
    const char* end = b + bytes.size();
    constexpr quint64 ones = 0x0101010101010101, highs = 0x8080808080808080;
    for (; end - b >= 8; b += 8) {
        quint64 word;
        std::memcpy(&word, b, sizeof word);
        const quint64 c1 = (word & 0xE0E0E0E0E0E0E0E0) ^ 0x8080808080808080; // a zero byte is one of them
        if ((c1 - ones) & ~c1 & highs)
            return false;
    }
    for (; b != end; ++b) {
        if (quint8(quint8(*b) - 0x80) < 0x20)
            return false;
    }
    return true;
}

const char* const Name = "windows-1252";

// The characters the code page holds: those its 256 bytes stand for and that are written back as
// the same byte. Worked out once, from the codec itself.
const std::bitset<0x10000>& heldCharacters()
{
    static const std::bitset<0x10000> held = [] {
        std::bitset<0x10000> set;
        for (int b = 0; b < 256; ++b) {
            const QByteArray byte(1, char(b));
            QStringDecoder decoder(Name, QStringConverter::Flag::Stateless);
            const QString character = decoder.decode(byte);
            if (decoder.hasError() || character.size() != 1)
                continue;
            QStringEncoder encoder(Name, QStringConverter::Flag::Stateless);
            const QByteArray back = encoder.encode(character);
            if (!encoder.hasError() && back == byte)
                set.set(character.at(0).unicode());
        }
        return set;
    }();
    return held;
}
} // namespace

bool holds(char32_t character)
{
    return character < 0x10000 && heldCharacters().test(character);
}

QString withReplacements(const QString& text)
{
    if (sameAsLatin1(text))
        return text;
    const std::bitset<0x10000>& held = heldCharacters();
    QString mended;
    mended.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c.isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate()) {
            mended += u'?';
            ++i;
        } else {
            mended += held.test(c.unicode()) ? c : QChar(u'?');
        }
    }
    return mended;
}

QByteArray toWindows1252(const QString& text)
{
    if (sameAsLatin1(text))
        return text.toLatin1();
    // Stateless: a high surrogate at the end is a character of its own, not one held back for more.
    QStringEncoder encoder(Name, QStringConverter::Flag::Stateless);
    if (!encoder.isValid())
        return text.toLatin1();
    QByteArray whole = encoder.encode(text);
    if (!encoder.hasError())
        return whole;
    // A character that the code page lacks becomes "?", and the rest stays exact. The text is
    // mended first and then encoded in one pass: asking the codec character by character needs a
    // converter opened by name for each, which made a text of a few hundred characters take
    // milliseconds.
    QStringEncoder again(Name, QStringConverter::Flag::Stateless);
    return again.encode(withReplacements(text));
}

QString fromWindows1252(const QByteArray& bytes)
{
    if (sameAsLatin1(bytes))
        return QString::fromLatin1(bytes);
    QStringDecoder decoder(Name);
    if (!decoder.isValid())
        return QString::fromLatin1(bytes);
    return decoder.decode(bytes);
}

QUrl toUrl(const QString& url)
{
    const auto isHex = [&url](qsizetype i) {
        if (i >= url.size())
            return false;
        const char16_t c = url.at(i).unicode();
        return (c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'F') || (c >= u'a' && c <= u'f');
    };
    QByteArray encoded;
    encoded.reserve(url.size());
    for (qsizetype i = 0; i < url.size(); ++i) {
        const char16_t c = url.at(i).unicode();
        if (c == u'%' && !(isHex(i + 1) && isHex(i + 2))) {
            // QUrl would otherwise take the whole address for unescaped and escape every "%",
            // the ones written here among them.
            encoded += "%25";
        } else if (c < 0x80) {
            encoded += char(c);
        } else {
            // A surrogate pair is one character, and one "?" if the code page lacks it.
            const qsizetype length = url.at(i).isHighSurrogate() && i + 1 < url.size() ? 2 : 1;
            encoded += toWindows1252(url.mid(i, length)).toPercentEncoding();
            i += length - 1;
        }
    }
    return QUrl::fromEncoded(encoded, QUrl::TolerantMode);
}

} // namespace Codepage
