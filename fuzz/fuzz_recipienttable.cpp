// SPDX-License-Identifier: GPL-3.0-or-later
// A .msms file as it comes from disk: the whole input is the file, loaded through
// RecipientTable::load, and the same bytes as one line through parseLine. Loading and saving
// only take paths, so the files lie in memory where the system offers a folder there: a saved
// file is synced to disk, which held the harness at about a hundred inputs a second.
#include "FuzzCheck.h"
#include "bulk/RecipientTable.h"
#include "toolkit/Codepage.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

namespace {
const QTemporaryDir& folder()
{
    static const QTemporaryDir dir = [] {
        const QFileInfo memory(QStringLiteral("/dev/shm"));
        if (memory.isDir() && memory.isWritable())
            return QTemporaryDir(memory.filePath() + QStringLiteral("/quellbote-fuzz-XXXXXX"));
        return QTemporaryDir();
    }();
    return dir;
}

void writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    FUZZ_CHECK(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    FUZZ_CHECK(file.write(bytes) == bytes.size());
}

// Whether the values come back from the code page as they went in.
bool surviveCodepage(const QString& values)
{
    return Codepage::fromWindows1252(Codepage::toWindows1252(values)) == values;
}

void checkFileLoad(const QByteArray& bytes)
{
    const QString path = folder().filePath(QStringLiteral("fuzz.msms"));
    writeFile(path, bytes);

    RecipientTable table;
    if (!table.load(path)) {
        // A failed load leaves nothing of the file behind.
        FUZZ_CHECK(table.rows().isEmpty());
        FUZZ_CHECK(table.entryCounter() == 0);
        return;
    }
    const QList<RecipientRow>& rows = table.rows();
    FUZZ_CHECK(table.entryCounter() == rows.size());
    FUZZ_CHECK(table.rowCount() == rows.size());
    QString values;
    for (qsizetype i = 0; i < rows.size(); ++i) {
        const RecipientRow& row = rows[i];
        FUZZ_CHECK(row.Tag == i + 1);
        FUZZ_CHECK(row.Nummer.startsWith(QStringLiteral("00")));
        for (const QString* value : { &row.Name, &row.Nummer, &row.Freitext1, &row.Freitext2 }) {
            FUZZ_CHECK(!value->contains(u';'));
            FUZZ_CHECK(!value->contains(u'\r'));
            values += *value;
        }
    }
    const bool roundTrips = surviveCodepage(values);
    table.recalcMaxSizes();
    FUZZ_CHECK(table.getMaxNameSize() >= 0 && table.getMaxFrei1Size() >= 0 && table.getMaxFrei2Size() >= 0);

    // What was loaded is saved and loaded again unchanged: no value holds a ";" or a CR, and
    // every number now begins with "00".
    const QString copy = folder().filePath(QStringLiteral("copy.msms"));
    FileFailure failure;
    FUZZ_CHECK(table.save(copy, {}, &failure));
    RecipientTable again;
    FUZZ_CHECK(again.load(copy));
    if (roundTrips)
        FUZZ_CHECK(rows == again.rows());
    else
        FUZZ_CHECK(again.rows().size() == rows.size());
}

void checkSingleLine(const QString& line)
{
    RecipientTable table;
    table.setPrefixAdded(false);
    const bool parsed = table.parseLine(line);
    const QStringList fields = line.split(u';');
    const bool malformed = line.size() >= 4 && (fields.size() < 2 || fields.at(1).isEmpty());
    FUZZ_CHECK(parsed == !malformed);
    const qsizetype added = table.rows().size();
    FUZZ_CHECK(added == ((parsed && line.size() >= 4) ? 1 : 0));
    if (added == 1) {
        const RecipientRow& row = table.rows().constFirst();
        FUZZ_CHECK(row.Tag == 1 && table.entryCounter() == 1);
        FUZZ_CHECK(row.Name == fields.at(0));
        FUZZ_CHECK(row.Nummer.startsWith(QStringLiteral("00")));
        // The German prefix is put in front exactly when the number lacked the "00".
        FUZZ_CHECK(table.prefixAdded() == !fields.at(1).startsWith(QStringLiteral("00")));
    }
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    checkFileLoad(bytes);
    checkSingleLine(Codepage::fromWindows1252(bytes));
    return 0;
}
