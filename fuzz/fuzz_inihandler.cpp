// SPDX-License-Identifier: GPL-3.0-or-later
// oem.inf as it lies next to the program. The input is a section name, "\|", a key, "\|", and
// then the file's bytes; the reader is asked for that key and for a few the program reads. The
// bytes are read as they are: opening the file is tst_inihandler's.
#include "FuzzCheck.h"
#include "settings/iniHandler.h"

namespace {
// No value the file can give: what comes back when the key is absent or empty.
const QString Absent = QStringLiteral("\x01absent");

bool isBlank(QChar c)
{
    return c == u' ' || c == u'\t';
}

bool isAscii(const QString& text)
{
    for (const QChar c : text) {
        if (c.unicode() > 0x7F)
            return false;
    }
    return true;
}

QString read(const QByteArray& file, const QString& section, const QString& key)
{
    const QString value = iniHandler::GetIniValueFromBytes(file, section, key, Absent);
    if (value != Absent) {
        // A value is never empty, never starts or ends with a blank and never runs past its line.
        FUZZ_CHECK(!value.isEmpty());
        FUZZ_CHECK(value.size() <= iniHandler::MaxValueLength);
        FUZZ_CHECK(!isBlank(value.front()) && !isBlank(value.back()));
        FUZZ_CHECK(!value.contains(u'\n'));
    }
    return value;
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    FuzzedDataProvider input(data, size);
    const QString section = fuzz::field(input, 64);
    const QString key = fuzz::field(input, 64);
    const std::string bytes = input.ConsumeRemainingBytesAsString();
    const QByteArray file(bytes.data(), qsizetype(bytes.size()));

    const QString value = read(file, section, key);
    // Section and key are found in any case.
    if (isAscii(section) && isAscii(key)) {
        FUZZ_CHECK(read(file, section.toUpper(), key.toLower()) == value);
        FUZZ_CHECK(read(file, section.toLower(), key.toUpper()) == value);
    }
    // Without a default an absent key reads empty.
    if (value == Absent)
        FUZZ_CHECK(iniHandler::GetIniValueFromBytes(file, section, key).isEmpty());

    read(file, QStringLiteral("Strings"), QStringLiteral("ProductName"));
    read(file, QStringLiteral("URLs"), QStringLiteral("SendSMS"));
    read(file, QStringLiteral("Colors"), QStringLiteral("Header"));
    read(file, QStringLiteral("Files"), QStringLiteral("Updater"));
    return 0;
}
