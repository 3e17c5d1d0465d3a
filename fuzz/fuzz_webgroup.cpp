// SPDX-License-Identifier: GPL-3.0-or-later
// The text a web group download returns, put into a recipient table that already holds rows.
// The input's last byte picks the download's charset (Windows-1252, or UTF-8 where the server
// names it), the two before it whether the table had added the prefix and how many rows it
// holds; those rows' four fields come first, separated by "\|", and the rest is the text.
#include "FuzzCheck.h"
#include "bulk/RecipientTable.h"
#include "toolkit/Codepage.h"

namespace {

// What views of the table are told.
struct Notices
{
    int resets = 0;
    int others = 0;

    explicit Notices(RecipientTable& table)
    {
        QObject::connect(&table, &QAbstractItemModel::modelAboutToBeReset, [this] { ++resets; });
        const auto other = [this] {
            ++others;
        };
        QObject::connect(&table, &QAbstractItemModel::rowsAboutToBeInserted, other);
        QObject::connect(&table, &QAbstractItemModel::rowsAboutToBeRemoved, other);
        QObject::connect(&table, &QAbstractItemModel::dataChanged, other);
        QObject::connect(&table, &QAbstractItemModel::layoutAboutToBeChanged, other);
    }
};
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    FuzzedDataProvider input(data, size);
    const bool utf8 = input.ConsumeBool();
    const bool prefixBefore = input.ConsumeBool();
    const int rowsBefore = input.ConsumeIntegralInRange(0, 3);

    RecipientTable table;
    for (int i = 0; i < rowsBefore; ++i) {
        const QString name = fuzz::field(input, 24);
        const QString number = fuzz::field(input, 24);
        const QString free1 = fuzz::field(input, 24);
        table.addRow(name, number, free1, fuzz::field(input, 24));
    }
    table.setPrefixAdded(prefixBefore);
    table.recalcMaxSizes();
    const QList<RecipientRow> before = table.rows();
    const qint16 nameSize = table.getMaxNameSize();
    const qint16 frei1Size = table.getMaxFrei1Size();
    const qint16 frei2Size = table.getMaxFrei2Size();
    const std::string bytes = input.ConsumeRemainingBytesAsString();
    const QString text = utf8 ? fuzz::text(bytes) : Codepage::fromWindows1252(QByteArray::fromStdString(bytes));

    // The same lines through parseLine into an empty table, and what makes the text no group: a
    // line of 4 or more characters without a ";" or with an empty number field.
    RecipientTable lineByLine;
    bool malformed = false;
    bool prefixNeeded = false;
    qsizetype rowCount = 0;
    for (const QString& raw : text.split(u'\n')) {
        const QString line = fuzz::blanksTrimmed(raw);
        if (line.size() < 4)
            continue;
        const QStringList fields = line.split(u';');
        if (fields.size() < 2 || fields.at(1).isEmpty()) {
            malformed = true;
            break;
        }
        ++rowCount;
        prefixNeeded = prefixNeeded || !fields.at(1).startsWith(QStringLiteral("00"));
        FUZZ_CHECK(lineByLine.parseLine(line));
    }

    Notices notices(table);
    const bool loaded = table.loadGroup(text);
    FUZZ_CHECK(loaded == !malformed);
    FUZZ_CHECK(notices.others == 0);
    if (!loaded) {
        // Nothing of the text, and the table as it was: rows, counter, prefix and figures.
        FUZZ_CHECK(notices.resets == 0);
        FUZZ_CHECK(table.rows() == before);
        FUZZ_CHECK(table.entryCounter() == rowsBefore);
        FUZZ_CHECK(table.prefixAdded() == prefixBefore);
        FUZZ_CHECK(table.getMaxNameSize() == nameSize && table.getMaxFrei1Size() == frei1Size
                   && table.getMaxFrei2Size() == frei2Size);
        return 0;
    }
    FUZZ_CHECK(notices.resets == 1);
    const QList<RecipientRow>& rows = table.rows();
    FUZZ_CHECK(rows.size() == rowCount && table.rowCount() == rowCount);
    FUZZ_CHECK(table.entryCounter() == rowCount);
    FUZZ_CHECK(rows == lineByLine.rows());
    FUZZ_CHECK(table.prefixAdded() == (prefixBefore || prefixNeeded));
    for (qsizetype i = 0; i < rows.size(); ++i) {
        FUZZ_CHECK(rows[i].Tag == i + 1);
        FUZZ_CHECK(rows[i].Nummer.startsWith(QStringLiteral("00")));
        for (const QString* value : { &rows[i].Name, &rows[i].Nummer, &rows[i].Freitext1, &rows[i].Freitext2 })
            FUZZ_CHECK(!value->contains(u'\n') && !value->contains(u';'));
    }
    // The same group again gives the same table, numbered from 1 again.
    FUZZ_CHECK(table.loadGroup(text));
    FUZZ_CHECK(table.rows() == lineByLine.rows());
    return 0;
}
