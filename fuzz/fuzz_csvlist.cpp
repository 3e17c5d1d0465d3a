// SPDX-License-Identifier: GPL-3.0-or-later
// A CSV list as it comes from disk: the whole input is the file, read through CsvList::read. The
// rows it gives are written as a .msms file and loaded again; the bytes are also taken as one
// number as people write it.
#include "FuzzCheck.h"
#include "bulk/CsvList.h"
#include "bulk/RecipientTable.h"
#include "toolkit/Codepage.h"

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

// Every record ends at a line break or at the end, so there are never more rows than lines. A line
// break is a CR or LF byte in every encoding read, UTF-16 included.
qsizetype lineBound(const QByteArray& bytes)
{
    return bytes.count('\n') + bytes.count('\r') + 1;
}

void checkNumber(const CsvList::Number& n)
{
    if (n.number.isEmpty()) {
        FUZZ_CHECK(!n.reason.isEmpty());
        return;
    }
    FUZZ_CHECK(n.reason.isEmpty());
    FUZZ_CHECK(n.number.startsWith(QStringLiteral("00")) && n.number.at(2) != u'0');
    FUZZ_CHECK(n.number.size() >= 9 && n.number.size() <= 17);
    for (const QChar c : n.number)
        FUZZ_CHECK(c >= u'0' && c <= u'9');
    // A number in the table's form stays as it is.
    const CsvList::Number again = CsvList::number(n.number);
    FUZZ_CHECK(again.number == n.number && !again.prefixAdded);
}

void checkRead(const QByteArray& bytes)
{
    const CsvList::Result result = CsvList::read(bytes);
    if (!result.ok) {
        FUZZ_CHECK(!result.failure.isEmpty());
        FUZZ_CHECK(result.rows.isEmpty() && result.doubtful.isEmpty());
        return;
    }
    FUZZ_CHECK(result.rows.size() + result.doubtful.size() <= lineBound(bytes));
    FUZZ_CHECK(result.rowNumbers.size() == result.rows.size());
    FUZZ_CHECK(result.hasHeader == !result.headerKey.isEmpty());
    int last = 0;
    for (const int row : result.rowNumbers) {
        FUZZ_CHECK(row > last);
        last = row;
    }
    for (const CsvList::Doubt& d : result.doubtful)
        FUZZ_CHECK(d.row >= 1 && !d.reason.isEmpty());
    QString values;
    for (const RecipientRow& row : result.rows) {
        checkNumber({ row.Nummer, {}, false });
        for (const QString* value : { &row.Name, &row.Freitext1, &row.Freitext2 }) {
            FUZZ_CHECK(!value->contains(u';') && !value->contains(u'\r') && !value->contains(u'\n'));
            values += *value;
        }
    }

    // The mapping found, given back, reads the same rows.
    const CsvList::Result same = CsvList::read(bytes, result.mapping);
    FUZZ_CHECK(same.ok && same.rows == result.rows && same.doubtful == result.doubtful);

    // Saved as a .msms file and loaded again, the rows come back as they were.
    RecipientTable table;
    for (const RecipientRow& row : result.rows)
        table.addRow(row.Name, row.Nummer, row.Freitext1, row.Freitext2);
    const QString path = folder().filePath(QStringLiteral("list.msms"));
    FUZZ_CHECK(table.save(path));
    RecipientTable again;
    FUZZ_CHECK(again.load(path));
    if (Codepage::fromWindows1252(Codepage::toWindows1252(values)) == values)
        FUZZ_CHECK(again.rows() == table.rows());
    else
        FUZZ_CHECK(again.rows().size() == table.rows().size());
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    checkRead(bytes);
    if (size <= 64)
        checkNumber(CsvList::number(QString::fromUtf8(bytes)));
    return 0;
}
