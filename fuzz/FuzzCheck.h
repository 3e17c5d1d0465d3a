// SPDX-License-Identifier: GPL-3.0-or-later
// Shared by the fuzz harnesses: a check that aborts, so that libFuzzer keeps the input that broke
// a rule, and the ways a harness turns its bytes into texts.
#pragma once

#include <QString>
#include <QStringList>

#include <cstdio>
#include <cstdlib>
#include <fuzzer/FuzzedDataProvider.h>

#define FUZZ_CHECK(condition)                                                                                          \
    do {                                                                                                               \
        if (!(condition)) {                                                                                            \
            std::fprintf(stderr, "%s:%d: check failed: %s\n", __FILE__, __LINE__, #condition);                         \
            std::abort();                                                                                              \
        }                                                                                                              \
    } while (false)

namespace fuzz {

// Texts reach the rules through a decoder, so the bytes are read as UTF-8: every character a
// decoder can give, and no lone surrogates, which none gives.
inline QString text(const std::string& bytes)
{
    return QString::fromUtf8(bytes.data(), qsizetype(bytes.size()));
}

// The next field of a multi-field input: bytes up to a backslash that is followed by any other
// character than a backslash ("\\" stands for one backslash). Seeds separate fields with "\|".
inline QString field(FuzzedDataProvider& input, size_t maxLength = 256)
{
    return text(input.ConsumeRandomLengthString(maxLength));
}

// One of the items a list box offers, or a typed text: the rules see both.
inline QString listOrTyped(FuzzedDataProvider& input, const QStringList& items)
{
    if (!items.isEmpty() && input.ConsumeBool())
        return items.at(input.ConsumeIntegralInRange<qsizetype>(0, items.size() - 1));
    return field(input, 16);
}

// A text without the blanks at its ends, as the readers trim them: blanks only, not tabs or line
// breaks, as QString::trimmed would.
inline QString blanksTrimmed(QString text)
{
    while (text.startsWith(u' '))
        text.remove(0, 1);
    while (text.endsWith(u' '))
        text.chop(1);
    return text;
}

} // namespace fuzz
