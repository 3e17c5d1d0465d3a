// SPDX-License-Identifier: GPL-3.0-or-later
#include "CMD5.h"

#include <QByteArray>

#include <array>
#include <cstdint>
#include <vector>

namespace {
constexpr std::array<std::uint32_t, 64> K
    = { 0xd76aa478, 0xe8c7b756, 0x242070db, 0xc1bdceee, 0xf57c0faf, 0x4787c62a, 0xa8304613, 0xfd469501,
        0x698098d8, 0x8b44f7af, 0xffff5bb1, 0x895cd7be, 0x6b901122, 0xfd987193, 0xa679438e, 0x49b40821,
        0xf61e2562, 0xc040b340, 0x265e5a51, 0xe9b6c7aa, 0xd62f105d, 0x02441453, 0xd8a1e681, 0xe7d3fbc8,
        0x21e1cde6, 0xc33707d6, 0xf4d50d87, 0x455a14ed, 0xa9e3e905, 0xfcefa3f8, 0x676f02d9, 0x8d2a4c8a,
        0xfffa3942, 0x8771f681, 0x6d9d6122, 0xfde5380c, 0xa4beea44, 0x4bdecfa9, 0xf6bb4b60, 0xbebfbc70,
        0x289b7ec6, 0xeaa127fa, 0xd4ef3085, 0x04881d05, 0xd9d4d039, 0xe6db99e5, 0x1fa27cf8, 0xc4ac5665,
        0xf4292244, 0x432aff97, 0xab9423a7, 0xfc93a039, 0x655b59c3, 0x8f0ccc92, 0xffeff47d, 0x85845dd1,
        0x6fa87e4f, 0xfe2ce6e0, 0xa3014314, 0x4e0811a1, 0xf7537e82, 0xbd3af235, 0x2ad7d2bb, 0xeb86d391 };
constexpr std::array<int, 16> Shifts = { 7, 12, 17, 22, 5, 9, 14, 20, 4, 11, 16, 23, 6, 10, 15, 21 };

constexpr std::uint32_t rotateLeft(std::uint32_t x, int n)
{
    return (x << n) | (x >> (32 - n));
}
} // namespace

QString CMD5::MD5(const QString& message) const
{
    // One byte per character: its low 8 bits, without a code page.
    const qsizetype length = message.size();
    // Whole 16-word blocks: the message, byte 0x80, and the bit length in the last two words.
    const qsizetype wordCount = ((length + 8) / 64 + 1) * 16;
    std::vector<std::uint32_t> words(size_t(wordCount), 0);
    for (qsizetype i = 0; i < length; ++i)
        words[size_t(i / 4)] |= std::uint32_t(message.at(i).unicode() & 0xFF) << (8 * (i % 4));
    words[size_t(length / 4)] |= std::uint32_t(0x80) << (8 * (length % 4));
    words[size_t(wordCount - 2)] = std::uint32_t(length) << 3;
    words[size_t(wordCount - 1)] = std::uint32_t(quint64(length) >> 29);

    std::uint32_t a0 = 0x67452301, b0 = 0xefcdab89, c0 = 0x98badcfe, d0 = 0x10325476;
    for (qsizetype block = 0; block < wordCount; block += 16) {
        std::uint32_t a = a0, b = b0, c = c0, d = d0;
        for (int i = 0; i < 64; ++i) {
            std::uint32_t f = 0;
            int g = 0;
            if (i < 16) {
                f = (b & c) | (~b & d);
                g = i;
            } else if (i < 32) {
                f = (d & b) | (~d & c);
                g = (5 * i + 1) % 16;
            } else if (i < 48) {
                f = b ^ c ^ d;
                g = (3 * i + 5) % 16;
            } else {
                f = c ^ (b | ~d);
                g = (7 * i) % 16;
            }
            const std::uint32_t rotated
                = rotateLeft(a + f + K[size_t(i)] + words[size_t(block + g)], Shifts[size_t((i / 16) * 4 + i % 4)]);
            a = d;
            d = c;
            c = b;
            b = b + rotated;
        }
        a0 += a;
        b0 += b;
        c0 += c;
        d0 += d;
    }
    QString hex;
    for (const std::uint32_t word : { a0, b0, c0, d0 }) {
        for (int byte = 0; byte < 4; ++byte)
            hex += QStringLiteral("%1").arg((word >> (8 * byte)) & 0xFF, 2, 16, QLatin1Char('0'));
    }
    return hex.toLower();
}
