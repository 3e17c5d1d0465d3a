// SPDX-License-Identifier: GPL-3.0-or-later
// The memory a program holds with its helper processes (the web engine's renderer, GPU and
// utility processes): the proportional set size of the process and all its descendants, so that
// pages they share are counted once. Read from /proc; Linux only, as the benchmarks are.
#pragma once

#include <QDir>
#include <QFile>
#include <QHash>
#include <QList>

#include <unistd.h>

namespace ProcessTreeMemory {

inline long fieldKilobytes(const QString& file, const char* field)
{
    QFile status(file);
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith(field))
            return line.mid(qstrlen(field)).trimmed().split(' ').value(0).toLong();
    return 0;
}

// The processes below pid, children first found through /proc/PID/stat's parent field.
inline QList<int> descendants(int pid)
{
    QHash<int, QList<int>> children;
    const QStringList entries = QDir(QStringLiteral("/proc")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString& entry : entries) {
        bool ok = false;
        const int child = entry.toInt(&ok);
        if (!ok)
            continue;
        QFile stat(QStringLiteral("/proc/%1/stat").arg(child));
        if (!stat.open(QIODevice::ReadOnly))
            continue;
        const QByteArray text = stat.readAll();
        // "pid (comm) state ppid ...": the name may hold blanks, so the fields count from its ")".
        const QList<QByteArray> fields = text.mid(text.lastIndexOf(')') + 2).split(' ');
        if (fields.size() > 1)
            children[fields.at(1).toInt()].append(child);
    }
    QList<int> found;
    QList<int> queue { pid };
    while (!queue.isEmpty()) {
        const int parent = queue.takeFirst();
        for (int child : children.value(parent)) {
            found.append(child);
            queue.append(child);
        }
    }
    return found;
}

// Kilobytes of proportional set size of this process and its descendants.
inline long treeKilobytes(int pid = int(getpid()))
{
    long total = fieldKilobytes(QStringLiteral("/proc/%1/smaps_rollup").arg(pid), "Pss:");
    for (int child : descendants(pid))
        total += fieldKilobytes(QStringLiteral("/proc/%1/smaps_rollup").arg(child), "Pss:");
    return total;
}

} // namespace ProcessTreeMemory
