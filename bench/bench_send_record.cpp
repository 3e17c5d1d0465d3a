// SPDX-License-Identifier: GPL-3.0-or-later
// The send record with a million entries: how long the searches the window offers take (a name,
// a part of a number, a word of the text, a date range, a word found nearly everywhere, two
// characters), newest first, a page of 200 each; and what recording costs per SMS when every
// SMS of a bulk run is handed over on a turn of the event loop of its own, the worst case, set against
// the time a bulk run takes per row at best; the writing itself runs on the record's own thread,
// and its pace is shown beside. The medians of the rounds count.
// The last line reads "search: slowest median A ms in N entries against 100 ms (two characters, without the
// index: C ms); recording B µs per SMS, …": a search of one or two characters reads every entry.
//
// bench_send_record [--rounds N] [--entries N] [--file PATH]; with --file an existing record of
// that size is searched again instead of being filled anew.
#include "BenchRounds.h"
#include "sending/SendRecord.h"
#include "toolkit/Clock.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <cstdio>

namespace {
constexpr double SearchGoalMs = 100.0;
// A bulk run's row at best: the round trip of its request on loopback (bench_bulk_run).
constexpr double RowUs = 430.0;

const char* const Surnames[] = { "Berger",  "Müller",   "Schmidt", "Schneider", "Fischer",    "Weber",   "Meyer",
                                 "Wagner",  "Becker",   "Schulz",  "Hoffmann",  "Koch",       "Richter", "Klein",
                                 "Wolf",    "Schröder", "Neumann", "Schwarz",   "Zimmermann", "Braun",   "Krüger",
                                 "Hofmann", "Hartmann", "Lange",   "Schmitt",   "Werner",     "Krause",  "Meier" };
const char* const Texts[] = {
    "Erinnerung an Ihren Termin am %1 um %2 Uhr. Bitte sagen Sie ab, falls Sie verhindert sind.",
    "Ihre Bestellung %3 liegt zur Abholung bereit. Öffnungszeiten Mo-Fr 8-18 Uhr.",
    "Guten Tag %4, Ihr Fahrzeug ist fertig und kann ab %2 Uhr abgeholt werden.",
    "Die Sitzung am %1 fällt aus. Neuer Termin folgt.",
    "Ihr Rückruf ist für %1, %2 Uhr eingeplant. Viele Grüße, Ihr Praxisteam",
    "Zahlungserinnerung: Rechnung %3 ist seit dem %1 fällig.",
};

SendRecord::Entry makeEntry(QRandomGenerator& random, const QDateTime& time)
{
    SendRecord::Entry e;
    e.time = time;
    e.road = random.bounded(4) == 0 ? SendRecord::Road::Bulk : SendRecord::Road::Single;
    const QString surname = QString::fromUtf8(Surnames[random.bounded(int(std::size(Surnames)))]);
    e.name = (random.bounded(2) ? QStringLiteral("Frau ") : QStringLiteral("Herr ")) + surname
        + QString::number(random.bounded(1000));
    e.number = QStringLiteral("004917%1%2").arg(random.bounded(10)).arg(random.bounded(1000000, 9999999));
    e.text = QString::fromUtf8(Texts[random.bounded(int(std::size(Texts)))])
                 .replace(QStringLiteral("%1"), time.addDays(3).toString(QStringLiteral("dd.MM.")))
                 .replace(QStringLiteral("%2"), QString::number(8 + random.bounded(10)) + QStringLiteral(":30"))
                 .replace(QStringLiteral("%3"), QString::number(random.bounded(100000, 999999)))
                 .replace(QStringLiteral("%4"), e.name);
    e.parts = 1;
    e.credits = 10;
    e.answer = QStringLiteral("Ihre SMS wurde erfolgreich versendet.");
    return e;
}
} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    const int rounds = BenchRounds::intArgument(argc, argv, "--rounds", 7);
    const int entryCount = BenchRounds::intArgument(argc, argv, "--entries", 1000000);
    QString path;
    for (int i = 1; i + 1 < argc; ++i)
        if (qstrcmp(argv[i], "--file") == 0)
            path = QString::fromLocal8Bit(argv[i + 1]);
    QTemporaryDir dir;
    const bool fill = path.isEmpty() || !QFileInfo::exists(path);
    if (path.isEmpty())
        path = dir.filePath(QStringLiteral("sendrecord.sqlite"));

    const QDateTime start = QDateTime(QDate(2026, 1, 1), QTime(8, 0), Qt::UTC);
    const qint64 stepMs = 365LL * 24 * 3600 * 1000 / entryCount;
    Clock::setNow(start.addDays(366));
    QRandomGenerator random(4711);

    // Recording: every SMS on an event-loop turn of its own, as a bulk run's answers come.
    QList<double> recordUs; // on the sending thread
    QList<double> writtenUs; // until the last entry is written
    QList<double> indexedUs; // and indexed, which waits for a pause in the sending
    {
        QTemporaryDir recordDir;
        for (int r = 0; r < rounds; ++r) {
            SendRecord record(recordDir.filePath(QStringLiteral("round%1.sqlite").arg(r)), SendRecord::KeepForever);
            QList<SendRecord::Entry> entries;
            for (int i = 0; i < 10000; ++i)
                entries.append(makeEntry(random, start.addMSecs(i * stepMs)));
            QElapsedTimer timer;
            timer.start();
            for (const SendRecord::Entry& e : std::as_const(entries)) {
                record.add(e);
                QCoreApplication::processEvents();
            }
            recordUs.append(double(timer.nsecsElapsed()) / 1000.0 / entries.size());
            record.flush();
            writtenUs.append(double(timer.nsecsElapsed()) / 1000.0 / entries.size());
            record.catchUp();
            indexedUs.append(double(timer.nsecsElapsed()) / 1000.0 / entries.size());
        }
    }

    SendRecord record(path, SendRecord::KeepForever);
    if (!record.isRecording()) {
        std::fprintf(stderr, "%s\n", qPrintable(record.lastError()));
        return 1;
    }
    if (fill) {
        QElapsedTimer timer;
        timer.start();
        for (int i = 0; i < entryCount; ++i) {
            record.add(makeEntry(random, start.addMSecs(i * stepMs)));
            if (i % 10000 == 9999)
                record.flush();
        }
        record.catchUp();
        std::printf("filled %d entries in %.1f s\n", entryCount, timer.elapsed() / 1000.0);
    }

    struct Search
    {
        const char* what;
        SendRecord::Query query;
    };
    SendRecord::Query base;
    base.limit = 200;
    QList<Search> searches;
    const auto add = [&](const char* what, const QString& text, const QDateTime& from = {}, const QDateTime& to = {}) {
        SendRecord::Query q = base;
        q.text = text;
        q.from = from;
        q.to = to;
        searches.append({ what, q });
    };
    add("everything, newest first", {});
    add("a name", QStringLiteral("berger123"));
    add("a part of a number", QStringLiteral("1712345"));
    add("a word of the text", QStringLiteral("Fahrzeug"));
    add("a word in nearly every entry", QStringLiteral("Uhr"));
    add("nothing like it", QStringLiteral("Zahnarzt"));
    add("two characters", QStringLiteral("qx"));
    add("a week in March", {}, QDateTime(QDate(2026, 3, 2), QTime(0, 0), Qt::UTC),
        QDateTime(QDate(2026, 3, 9), QTime(0, 0), Qt::UTC));
    add("a name in a week in March", QStringLiteral("Berger"), QDateTime(QDate(2026, 3, 2), QTime(0, 0), Qt::UTC),
        QDateTime(QDate(2026, 3, 9), QTime(0, 0), Qt::UTC));

    double slowest = 0;
    double unindexed = 0;
    for (const Search& s : std::as_const(searches)) {
        QList<double> ms;
        qsizetype found = 0;
        for (int r = 0; r < rounds; ++r) {
            QElapsedTimer timer;
            timer.start();
            found = record.search(s.query).size();
            ms.append(double(timer.nsecsElapsed()) / 1e6);
        }
        const QByteArray label = QByteArray(s.what) + " (" + QByteArray::number(found) + " shown), ms";
        BenchRounds::printFigure(label.constData(), ms);
        // Fewer than three characters can't use the trigram index: told apart.
        double& figure = s.query.text.isEmpty() || s.query.text.size() >= 3 ? slowest : unindexed;
        figure = std::max(figure, BenchRounds::median(ms));
    }
    BenchRounds::printFigure("recording per SMS on the sending thread, µs", recordUs);
    BenchRounds::printFigure("until written by the record's thread, per SMS, µs", writtenUs);
    BenchRounds::printFigure("until written and indexed, per SMS, µs", indexedUs);
    const double perSms = BenchRounds::median(recordUs);
    std::printf("search: slowest median %.1f ms in %d entries against %.0f ms (two characters, without the index: "
                "%.0f ms); recording %.1f µs per SMS, %.1f %% of a bulk run's row at best (%.0f µs)\n",
                slowest, entryCount, SearchGoalMs, unindexed, perSms, 100.0 * perSms / RowUs, RowUs);
    return slowest <= SearchGoalMs ? 0 : 1;
}
