// SPDX-License-Identifier: GPL-3.0-or-later
#include "CsvText.h"

#include "toolkit/Codepage.h"

#include <QStringDecoder>

#include <array>

namespace CsvText {

namespace {
// How far the delimiter is looked for: enough lines to outvote a header or a stray line.
constexpr int DelimiterLines = 20;

// Whether the bytes are well-formed UTF-8 (no overlong forms, no surrogates, nothing past
// U+10FFFF). Stops at the first byte that can't be, which in a Windows-1252 file is soon.
bool isUtf8(const QByteArray& bytes)
{
    const auto* p = reinterpret_cast<const unsigned char*>(bytes.constData());
    const auto* const end = p + bytes.size();
    const auto continuation = [&end](const unsigned char* at, int count) {
        if (end - at < count)
            return false;
        for (int i = 0; i < count; ++i)
            if ((at[i] & 0xC0) != 0x80)
                return false;
        return true;
    };
    while (p < end) {
        const unsigned char c = *p;
        if (c < 0x80) {
            ++p;
            continue;
        }
        int more = 0;
        unsigned char low = 0x80, high = 0xBF; // the range of the second byte
        if (c >= 0xC2 && c <= 0xDF) {
            more = 1;
        } else if (c >= 0xE0 && c <= 0xEF) {
            more = 2;
            low = c == 0xE0 ? 0xA0 : 0x80;
            high = c == 0xED ? 0x9F : 0xBF;
        } else if (c >= 0xF0 && c <= 0xF4) {
            more = 3;
            low = c == 0xF0 ? 0x90 : 0x80;
            high = c == 0xF4 ? 0x8F : 0xBF;
        } else {
            return false;
        }
        if (!continuation(p + 1, more) || p[1] < low || p[1] > high)
            return false;
        p += more + 1;
    }
    return true;
}
} // namespace

Decoded decode(const QByteArray& bytes)
{
    const auto startsWith = [&bytes](const char* mark) {
        return bytes.startsWith(QByteArrayView(mark));
    };
    // What people save instead of a CSV file by mistake.
    if (startsWith("PK\x03\x04") || startsWith("\xD0\xCF\x11\xE0"))
        return { {},
                 {},
                 QStringLiteral("Die Datei ist eine Arbeitsmappe, keine CSV-Datei. Bitte in der "
                                "Tabellenkalkulation als „CSV“ speichern.") };
    if (startsWith("\xEF\xBB\xBF"))
        return { QString::fromUtf8(bytes.constData() + 3, bytes.size() - 3), QStringLiteral("UTF-8"), {} };
    const bool le = startsWith("\xFF\xFE");
    if (le || startsWith("\xFE\xFF")) {
        QStringDecoder decoder(le ? QStringDecoder::Utf16LE : QStringDecoder::Utf16BE);
        const QString text = decoder.decode(QByteArrayView(bytes).sliced(2));
        if (decoder.hasError() || bytes.size() % 2 != 0)
            return { {}, {}, QStringLiteral("Die Datei ist als Unicode-Text gekennzeichnet, ist aber keiner.") };
        return { text, le ? QStringLiteral("UTF-16LE") : QStringLiteral("UTF-16BE"), {} };
    }
    if (isUtf8(bytes))
        return { QString::fromUtf8(bytes), QStringLiteral("UTF-8"), {} };
    return { Codepage::fromWindows1252(bytes), QStringLiteral("Windows-1252"), {} };
}

// A text file holds no NUL and hardly a control character besides tabs and line ends.
bool looksLikeText(QStringView text)
{
    qsizetype controls = 0;
    for (const QChar c : text) {
        const char16_t u = c.unicode();
        if (u >= 0x20)
            continue;
        if (u == 0)
            return false;
        if (u != u'\t' && u != u'\n' && u != u'\r' && u != u'\f' && u != 0x1A)
            ++controls;
    }
    return controls * 100 <= text.size();
}

// The delimiter that splits the first lines most evenly: for each candidate, the count outside
// quotes that most lines share, and how many share it. A comma in a number or a name then loses
// to the ";" every line has the same number of.
QChar detectDelimiter(QStringView text, bool unicodeText)
{
    constexpr std::array<char16_t, 3> candidates = { u';', u'\t', u',' };
    std::array<QList<int>, 3> counts;
    std::array<int, 3> current = {};
    bool quoted = false;
    bool any = false;
    int lines = 0;
    const auto endLine = [&] {
        if (any) {
            for (size_t i = 0; i < candidates.size(); ++i)
                counts[i].append(current[i]);
            ++lines;
        }
        current = {};
        any = false;
    };
    for (qsizetype i = 0; i < text.size() && lines < DelimiterLines; ++i) {
        const char16_t c = text[i].unicode();
        if (c == u'"') {
            quoted = !quoted;
        } else if (!quoted && (c == u'\n' || c == u'\r')) {
            endLine();
            continue;
        } else if (!quoted) {
            for (size_t k = 0; k < candidates.size(); ++k)
                if (c == candidates[k])
                    ++current[k];
        }
        any = true;
    }
    endLine();
    QChar best = unicodeText ? QChar(u'\t') : QChar(u';');
    int bestShared = 0, bestCount = 0;
    for (size_t k = 0; k < candidates.size(); ++k) {
        // The most common non-zero count and how many lines have it.
        int shared = 0, count = 0;
        for (const int c : std::as_const(counts[k])) {
            if (c == 0)
                continue;
            const int n = int(counts[k].count(c));
            if (n > shared || (n == shared && c > count)) {
                shared = n;
                count = c;
            }
        }
        if (shared > bestShared || (shared == bestShared && shared > 0 && count > bestCount)) {
            best = QChar(candidates[k]);
            bestShared = shared;
            bestCount = count;
        }
    }
    return best;
}

} // namespace CsvText
