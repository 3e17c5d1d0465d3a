// SPDX-License-Identifier: GPL-3.0-or-later
// oem.inf as it lies next to the program. The input is a section name, "\|", a key, "\|", and
// then the file's bytes; the reader is asked for that key and for a few the program reads.
#include "FuzzCheck.h"
#include "settings/iniHandler.h"

#include <QFile>
#include <QTemporaryDir>

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

QString read(const QString& path, const QString& section, const QString& key)
{
    const QString value = iniHandler::GetIniValue(path, section, key, Absent);
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
    static const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("oem.inf"));

    FuzzedDataProvider input(data, size);
    const QString section = fuzz::field(input, 64);
    const QString key = fuzz::field(input, 64);
    const std::string file = input.ConsumeRemainingBytesAsString();
    {
        QFile out(path);
        FUZZ_CHECK(out.open(QIODevice::WriteOnly | QIODevice::Truncate));
        FUZZ_CHECK(out.write(file.data(), qint64(file.size())) == qint64(file.size()));
    }

    const QString value = read(path, section, key);
    // Section and key are found in any case.
    if (isAscii(section) && isAscii(key)) {
        FUZZ_CHECK(read(path, section.toUpper(), key.toLower()) == value);
        FUZZ_CHECK(read(path, section.toLower(), key.toUpper()) == value);
    }
    // Without a default an absent key reads empty.
    if (value == Absent)
        FUZZ_CHECK(iniHandler::GetIniValue(path, section, key).isEmpty());

    read(path, QStringLiteral("Strings"), QStringLiteral("ProductName"));
    read(path, QStringLiteral("URLs"), QStringLiteral("SendSMS"));
    read(path, QStringLiteral("Colors"), QStringLiteral("Header"));
    read(path, QStringLiteral("Files"), QStringLiteral("Updater"));
    return 0;
}
