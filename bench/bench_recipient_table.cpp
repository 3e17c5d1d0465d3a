// SPDX-License-Identifier: GPL-3.0-or-later
// Loads and saves a .msms file of 100 000 rows, beside a bare read of the same file split into
// lines and fields, and prints both as multiples of the bare read. The last line reads
// "load A.A× and save B.B× of a bare read".
#include "bulk/RecipientTable.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <cstdio>

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("big.msms"));
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly))
            return 1;
        for (int i = 0; i < 100000; ++i)
            file.write("M\xfcller " + QByteArray::number(i) + ";0171" + QByteArray::number(1000000 + i)
                       + ";Gru\xdf;Raum " + QByteArray::number(i % 50) + ";\r\n");
    }
    // The bare read: the bytes, decoded as Latin-1, cut at CR LF and at ";".
    QElapsedTimer timer;
    timer.start();
    qsizetype fields = 0;
    {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            return 1;
        const QString text = QString::fromLatin1(file.readAll());
        for (const QStringView line : QStringView(text).split(u"\r\n"))
            fields += line.split(u';').size();
    }
    const qint64 bareNs = timer.nsecsElapsed();
    RecipientTable table;
    timer.restart();
    const bool loaded = table.load(path);
    const qint64 loadNs = timer.nsecsElapsed();
    table.recalcMaxSizes();
    timer.restart();
    const bool saved = table.save(dir.filePath(QStringLiteral("out.msms")));
    const qint64 saveNs = timer.nsecsElapsed();
    std::printf("rows %d (%lld fields in the bare read), bare read %.0f ms, load %.0f ms (%s), save %.0f ms (%s)\n",
                table.rowCount(), static_cast<long long>(fields), bareNs / 1e6, loadNs / 1e6, loaded ? "ok" : "failed",
                saveNs / 1e6, saved ? "ok" : "failed");
    std::printf("load %.1f\u00d7 and save %.1f\u00d7 of a bare read\n", double(loadNs) / double(bareNs),
                double(saveNs) / double(bareNs));
    return loaded && saved ? 0 : 1;
}
