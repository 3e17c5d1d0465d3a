// SPDX-License-Identifier: GPL-3.0-or-later
// Loads and saves a .msms file of a million rows, beside a bare read and a bare write of the same
// file, in turn, several rounds in one process; the medians count. The bare read takes the bytes,
// decodes them as Latin-1 and cuts them at CR LF and at ";". The bare write joins the same values,
// held as plain strings, with ";" and CR LF, encodes them as Latin-1 and replaces the file through
// QSaveFile, as the program's save does. Also loads the same rows from a CSV file as Excel writes
// it (Windows-1252, ";", a header row, numbers as people type them) and reports the heap the loaded
// table holds per row. The last line reads "load A.A× of a bare read and save B.B× of a bare write,
// CSV load C.C× of the .msms load, N rows".
//
// bench_recipient_table [--rounds N] [--rows N]; eleven rounds unless told, as each takes well under a second.
#include "BenchRounds.h"
#include "bulk/RecipientTable.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QSaveFile>
#include <QTemporaryDir>

#include <cstdio>
#include <malloc.h>

namespace {
struct PlainRow
{
    QString values[4];
};

qint64 bareReadNs(const QString& path, qsizetype* fields)
{
    QElapsedTimer timer;
    timer.start();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return -1;
    const QString text = QString::fromLatin1(file.readAll());
    *fields = 0;
    for (const QStringView line : QStringView(text).split(u"\r\n"))
        *fields += line.split(u';').size();
    return timer.nsecsElapsed();
}

qint64 bareWriteNs(const QString& path, const QList<PlainRow>& rows)
{
    QElapsedTimer timer;
    timer.start();
    QString text;
    text.reserve(rows.size() * 48);
    for (const PlainRow& row : rows) {
        for (const QString& value : row.values)
            text += value + u';';
        text += u"\r\n";
    }
    const QByteArray bytes = text.toLatin1();
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) || file.write(bytes) != bytes.size() || !file.commit())
        return -1;
    return timer.nsecsElapsed();
}

size_t heapInUse()
{
    return mallinfo2().uordblks;
}
} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    const int rounds = BenchRounds::intArgument(argc, argv, "--rounds", 11);
    const int rowCount = BenchRounds::intArgument(argc, argv, "--rows", 1000000);
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("big.msms"));
    const QString csvPath = dir.filePath(QStringLiteral("big.csv"));
    QList<PlainRow> plain;
    plain.reserve(rowCount);
    {
        QFile file(path);
        QFile csv(csvPath);
        if (!file.open(QIODevice::WriteOnly) || !csv.open(QIODevice::WriteOnly))
            return 1;
        csv.write("Name;Mobiltelefon;Freitext1;Freitext2\r\n");
        for (int i = 0; i < rowCount; ++i) {
            const QByteArray line = "M\xfcller " + QByteArray::number(i) + ";0049171" + QByteArray::number(1000000 + i)
                + ";Gru\xdf;Raum " + QByteArray::number(i % 50) + ";\r\n";
            file.write(line);
            // The same row with the number as typed: nationally, in groups.
            csv.write("M\xfcller " + QByteArray::number(i) + ";0171 " + QByteArray::number(1000000 + i)
                      + ";Gru\xdf;Raum " + QByteArray::number(i % 50) + "\r\n");
            const QList<QByteArray> fields = line.split(';');
            PlainRow row;
            for (int f = 0; f < 4; ++f)
                row.values[f] = QString::fromLatin1(fields[f]);
            plain.append(row);
        }
    }

    QList<double> loadRatios, saveRatios, bareReads, loads, bareWrites, saves, csvLoads, csvRatios;
    bool ok = true;
    size_t bytesPerRow = 0;
    for (int round = 0; round < rounds; ++round) {
        qsizetype fields = 0;
        qint64 bareRead = 0, load = 0, bareWrite = 0, save = 0, csvLoad = 0;
        const bool bareFirst = round % 2 == 0;
        for (const bool bareTurn : { bareFirst, !bareFirst }) {
            if (bareTurn) {
                bareRead = bareReadNs(path, &fields);
                bareWrite = bareWriteNs(dir.filePath(QStringLiteral("bare.msms")), plain);
            } else {
                RecipientTable table;
                const size_t before = heapInUse();
                QElapsedTimer timer;
                timer.start();
                ok = table.load(path) && ok;
                load = timer.nsecsElapsed();
                bytesPerRow = table.rowCount() ? (heapInUse() - before) / size_t(table.rowCount()) : 0;
                table.recalcMaxSizes();
                timer.restart();
                ok = table.save(dir.filePath(QStringLiteral("out.msms"))) && ok;
                save = timer.nsecsElapsed();
                ok = table.rowCount() == rowCount && ok;
                const QList<RecipientRow> msmsRows = table.rows();
                RecipientTable fromCsv;
                timer.restart();
                ok = fromCsv.loadCsv(csvPath) && ok;
                csvLoad = timer.nsecsElapsed();
                ok = fromCsv.rows() == msmsRows && ok;
            }
        }
        ok = bareRead > 0 && bareWrite > 0 && fields > 0 && ok;
        std::printf("round %d: bare read %.0f ms, load %.0f ms, bare write %.0f ms, save %.0f ms, CSV load %.0f ms\n",
                    round + 1, bareRead / 1e6, load / 1e6, bareWrite / 1e6, save / 1e6, csvLoad / 1e6);
        std::fflush(stdout);
        bareReads.append(bareRead / 1e6);
        loads.append(load / 1e6);
        bareWrites.append(bareWrite / 1e6);
        saves.append(save / 1e6);
        csvLoads.append(csvLoad / 1e6);
        csvRatios.append(double(csvLoad) / double(load));
        loadRatios.append(double(load) / double(bareRead));
        saveRatios.append(double(save) / double(bareWrite));
    }
    QFile out(dir.filePath(QStringLiteral("out.msms")));
    QFile in(path);
    ok = ok && out.open(QIODevice::ReadOnly) && in.open(QIODevice::ReadOnly) && out.readAll() == in.readAll();

    std::printf("%d rows, %d rounds, bare and program in turn; saved file %s the loaded one, CSV rows %s\n", rowCount,
                rounds, ok ? "equals" : "DIFFERS FROM", ok ? "the same" : "NOT THE SAME");
    std::printf("heap held by the loaded table: %zu bytes per row\n", bytesPerRow);
    BenchRounds::printFigure("bare read ms", bareReads, "%.0f");
    BenchRounds::printFigure("load ms", loads, "%.0f");
    BenchRounds::printFigure("bare write ms", bareWrites, "%.0f");
    BenchRounds::printFigure("save ms", saves, "%.0f");
    BenchRounds::printFigure("load ×", loadRatios);
    BenchRounds::printFigure("save ×", saveRatios);
    BenchRounds::printFigure("CSV load ms", csvLoads, "%.0f");
    BenchRounds::printFigure("CSV load × of .msms load", csvRatios);
    // Goals: load within 1.5× (a margin of 0.5), save within 1.2× (0.2).
    BenchRounds::judgeSpread("load", loadRatios, 0.5, "×");
    BenchRounds::judgeSpread("save", saveRatios, 0.2, "×");
    // Goal: a CSV list within 2× of the .msms load of the same rows (a margin of 1.0).
    BenchRounds::judgeSpread("CSV load", csvRatios, 1.0, "×");
    std::printf("load %.1f\u00d7 of a bare read and save %.1f\u00d7 of a bare write, CSV load %.1f\u00d7 of the .msms "
                "load, %d rows\n",
                BenchRounds::median(loadRatios), BenchRounds::median(saveRatios), BenchRounds::median(csvRatios),
                rowCount);
    return ok ? 0 : 1;
}
