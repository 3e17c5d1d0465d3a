// SPDX-License-Identifier: GPL-3.0-or-later
// Loads and saves a .msms file of 100 000 rows and prints how long each took.
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
    RecipientTable table;
    QElapsedTimer timer;
    timer.start();
    const bool loaded = table.load(path);
    const qint64 loadMs = timer.restart();
    table.recalcMaxSizes();
    const bool saved = table.save(dir.filePath(QStringLiteral("out.msms")));
    const qint64 saveMs = timer.elapsed();
    std::printf("rows %d, load %lld ms (%s), save %lld ms (%s)\n", table.rowCount(), loadMs, loaded ? "ok" : "failed",
                saveMs, saved ? "ok" : "failed");
    return loaded && saved ? 0 : 1;
}
