// SPDX-License-Identifier: GPL-3.0-or-later
#include "Codepage.h"

#include <QStringDecoder>
#include <QStringEncoder>

#include <bitset>

namespace Codepage {

namespace {
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

QByteArray toWindows1252(const QString& text)
{
    QStringEncoder encoder(Name);
    if (!encoder.isValid())
        return text.toLatin1();
    QByteArray whole = encoder.encode(text);
    if (!encoder.hasError())
        return whole;
    // A character that the code page lacks becomes "?", a surrogate pair being one character,
    // and the rest stays exact. The text is mended first and then encoded in one pass: asking the
    // codec character by character needs a converter opened by name for each, which made a text
    // of a few hundred characters take milliseconds.
    const std::bitset<0x10000>& held = heldCharacters();
    QString mended;
    mended.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c.isHighSurrogate() && i + 1 < text.size()) {
            mended += u'?';
            ++i;
        } else {
            mended += held.test(c.unicode()) ? c : QChar(u'?');
        }
    }
    QStringEncoder again(Name);
    return again.encode(mended);
}

QString fromWindows1252(const QByteArray& bytes)
{
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
