// SPDX-License-Identifier: GPL-3.0-or-later
// The rounds of a benchmark that starts the program and a bare reference in turn and compares
// a time and a memory figure of each: collects them, prints each round, and ends with the
// medians, their spread set against the goals' margins, and the ratio line.
#pragma once

#include "BenchRounds.h"

#include <QList>

#include <cstdio>

struct SideBySide
{
    struct Figures
    {
        const char* bareTime;
        const char* clientTime;
        const char* bareMemory;
        const char* clientMemory;
        const char* timeRatio; // "start-up": also the word for its spread
        double timeMargin;
        double memoryMargin;
        const char* lastLine; // printf format taking the two median ratios
    };

    void add(qint64 bareMilliseconds, long bareKilobytes, qint64 clientMilliseconds, long clientKilobytes)
    {
        std::printf("round %d: bare %lld ms %.1f MiB, Quellbote %lld ms %.1f MiB\n", int(timeRatios.size()) + 1,
                    static_cast<long long>(bareMilliseconds), bareKilobytes / 1024.0,
                    static_cast<long long>(clientMilliseconds), clientKilobytes / 1024.0);
        std::fflush(stdout);
        bareTimes.append(double(bareMilliseconds));
        clientTimes.append(double(clientMilliseconds));
        bareMemory.append(bareKilobytes / 1024.0);
        clientMemory.append(clientKilobytes / 1024.0);
        timeRatios.append(double(clientMilliseconds) / double(qMax<qint64>(1, bareMilliseconds)));
        memoryRatios.append(double(clientKilobytes) / double(bareKilobytes));
    }

    void report(const Figures& f) const
    {
        BenchRounds::printFigure(f.bareTime, bareTimes, "%.0f");
        BenchRounds::printFigure(f.clientTime, clientTimes, "%.0f");
        BenchRounds::printFigure(f.bareMemory, bareMemory, "%.1f");
        BenchRounds::printFigure(f.clientMemory, clientMemory, "%.1f");
        const QByteArray timeRatio = QByteArray(f.timeRatio) + " \u00d7";
        BenchRounds::printFigure(timeRatio.constData(), timeRatios);
        BenchRounds::printFigure("memory \u00d7", memoryRatios);
        BenchRounds::judgeSpread(f.timeRatio, timeRatios, f.timeMargin, "\u00d7");
        BenchRounds::judgeSpread("memory", memoryRatios, f.memoryMargin, "\u00d7");
        std::printf(f.lastLine, BenchRounds::median(timeRatios), BenchRounds::median(memoryRatios));
    }

    QList<double> bareTimes, clientTimes, bareMemory, clientMemory, timeRatios, memoryRatios;
};
