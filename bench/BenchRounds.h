// SPDX-License-Identifier: GPL-3.0-or-later
// What the benchmarks share: a measure taken once per round, for the program and for its
// reference in turn within one process, and its median and spread over the rounds. The spread is
// set against the margin a goal leaves, so that a figure close to its goal says whether the rounds
// could tell it from noise.
#pragma once

#include <QList>
#include <QString>

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace BenchRounds {

template<typename T> T median(QList<T> values)
{
    if (values.isEmpty())
        return T();
    std::sort(values.begin(), values.end());
    const qsizetype n = values.size();
    return n % 2 ? values.at(n / 2) : T((values.at(n / 2 - 1) + values.at(n / 2)) / 2);
}

template<typename T> T lowest(const QList<T>& values)
{
    return values.isEmpty() ? T() : *std::min_element(values.begin(), values.end());
}

template<typename T> T highest(const QList<T>& values)
{
    return values.isEmpty() ? T() : *std::max_element(values.begin(), values.end());
}

// "median 1.23 (1.20–1.31 over 7 rounds)"
inline void printFigure(const char* what, const QList<double>& values, const char* format = "%.2f")
{
    char buffer[64];
    std::printf("%s: median ", what);
    std::printf(format, median(values));
    std::snprintf(buffer, sizeof buffer, format, lowest(values));
    std::printf(" (%s", buffer);
    std::snprintf(buffer, sizeof buffer, format, highest(values));
    std::printf("\u2013%s over %d rounds)\n", buffer, int(values.size()));
}

// Says whether the rounds' spread (highest less lowest) is wider than the margin of the goal: the
// distance between the goal and the value that would be perfect (a ratio of 1.0, say).
inline void judgeSpread(const char* what, const QList<double>& values, double margin, const char* unit = "")
{
    const double spread = highest(values) - lowest(values);
    if (spread > margin)
        std::printf("%s: the spread between rounds (%.2f%s) is wider than the goal's margin (%.2f%s); one run "
                    "can't tell a change of that size from noise\n",
                    what, spread, unit, margin, unit);
    else
        std::printf("%s: spread between rounds %.2f%s, within the goal's margin of %.2f%s\n", what, spread, unit,
                    margin, unit);
}

// The value of "--name N" among the arguments, fallback when it isn't given.
inline int intArgument(int argc, char* argv[], const char* name, int fallback)
{
    for (int i = 1; i + 1 < argc; ++i)
        if (std::strcmp(argv[i], name) == 0)
            return std::atoi(argv[i + 1]);
    return fallback;
}

// The value of "--name TEXT" among the arguments, empty when it isn't given.
inline QString textArgument(int argc, char* argv[], const char* name)
{
    for (int i = 1; i + 1 < argc; ++i)
        if (std::strcmp(argv[i], name) == 0)
            return QString::fromLocal8Bit(argv[i + 1]);
    return {};
}

} // namespace BenchRounds
