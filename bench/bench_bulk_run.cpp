// SPDX-License-Identifier: GPL-3.0-or-later
// How a bulk run of 10 000 rows against quellbote-service on loopback compares with a bare loop
// of the same POSTs sent one at a time with QNetworkAccessManager, and how long the window
// waits at most for its turn during the run. Both run in turn, several rounds in one process
// (the one that goes first changes from round to round); the medians count. Runs offscreen; the
// last line reads "throughput N % of the bare loop, longest stall M ms".
//
// bench_bulk_run [--rounds N] [--rows N] [--only bulk|bare] [--record off]: --only runs one side
// alone, for a profiler; --record off runs without the send record, as "kein Protokoll führen".
#include "BenchRounds.h"
#include "MainWindowHarness.h"
#include "bulk/frmMultiSMS.h"
#include "sending/SendRecord.h"
#include "settings/CUrlStore.h"
#include "toolkit/Inet.h"
#include "toolkit/MessageBox.h"
#include "toolkit/SmsTextEdit.h"
#include "toolkit/ToolbarButton.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTemporaryDir>
#include <QTimer>

#include <cstdio>

namespace {
const QString Text = QStringLiteral("Hallo %name%, Ihre Nummer ist %frei1%.");

// The window's turns: a timer that wants to fire every millisecond notes the longest gap. It runs
// beside the bare loop too, so that both pay for its wake-ups alike.
class StallWatch
{
public:
    StallWatch()
    {
        m_ticker.setInterval(1);
        QObject::connect(&m_ticker, &QTimer::timeout, [this] { m_longest = qMax(m_longest, m_sinceTick.restart()); });
        m_sinceTick.start();
        m_ticker.start();
    }
    qint64 longest() const { return m_longest; }

private:
    QTimer m_ticker;
    QElapsedTimer m_sinceTick;
    qint64 m_longest = 0;
};

// The same request bodies, one after another, each sent when the one before has its answer.
qint64 bareLoopMs(const QString& url, int rows)
{
    QNetworkAccessManager manager;
    const StallWatch watch;
    QElapsedTimer clock;
    clock.start();
    for (int i = 0; i < rows; ++i) {
        QNetworkRequest request { QUrl(url) };
        request.setHeader(QNetworkRequest::ContentTypeHeader, QByteArrayLiteral("application/x-www-form-urlencoded"));
        const QByteArray body = "email=demo@quellbote.test&kennwort=demo&firma=%20&empfaenger=0049171"
            + QByteArray::number(1000000 + i) + "&empfaengername=Kunde&private=true&public=false&version=2.4.92"
            + "&text=Hallo%20Kunde%20" + QByteArray::number(i) + "&absenderkennung=false&absender=&statusmeldung=false"
            + "&antwort=false&einlieferung=false&referer=Quellbote";
        QNetworkReply* reply = manager.post(request, body);
        QEventLoop loop;
        QObject::connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
        loop.exec();
        reply->readAll();
        reply->deleteLater();
    }
    return clock.elapsed();
}

struct BulkRound
{
    qint64 milliseconds = 0;
    qint64 longestStall = 0;
};

// One click on tbSend with the table filled, until the last answer is in.
BulkRound bulkRun(MainWindowHarness& harness)
{
    BulkRound result;
    const StallWatch watch;
    QElapsedTimer clock;
    clock.start();
    harness.child<ToolbarButton>("tbSend")->click();
    // The last answer comes after the run has returned.
    const Inet* iNet = harness.main()->findChild<Inet*>(QStringLiteral("iNet"));
    while (iNet->StillExecuting())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    result.milliseconds = clock.elapsed();
    result.longestStall = watch.longest();
    // The send record indexes the run's rows once it is through: not within the bare loop's time.
    if (SendRecord* record = harness.main()->sendRecord())
        record->catchUp();
    return result;
}
} // namespace

int main(int argc, char* argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    if (qEnvironmentVariableIsEmpty("QUELLBOTE_SERVICE"))
        qputenv("QUELLBOTE_SERVICE", QUELLBOTE_SERVICE_PATH);
    QApplication app(argc, argv);
    const int rounds = BenchRounds::intArgument(argc, argv, "--rounds", 5);
    const int rows = BenchRounds::intArgument(argc, argv, "--rows", 10000);
    const QString only = BenchRounds::textArgument(argc, argv, "--only");

    QTemporaryDir dir;
    QFile accounts(dir.filePath(QStringLiteral("accounts.json")));
    if (!accounts.open(QIODevice::WriteOnly))
        return 1;
    accounts.write(R"({"accounts": [{"email": "demo@quellbote.test", "password": "demo", "credits": 1000000000}]})");
    accounts.close();

    MainWindowHarness harness;
    harness.resetStore();
    if (BenchRounds::textArgument(argc, argv, "--record") == u"off")
        SendRecord::storeRetentionDays(SendRecord::NoRecord);
    if (!harness.startService({ QStringLiteral("--accounts"), accounts.fileName() })) {
        std::fprintf(stderr, "quellbote-service did not start\n");
        return 1;
    }
    harness.loadMain();

    harness.child<ToolbarButton>("tbMultiSMS")->click();
    RecipientTable& table = frmMultiSMS::loaded()->table();
    for (int i = 0; i < rows; ++i)
        table.addRow(QStringLiteral("Kunde %1").arg(i), QStringLiteral("0049171%1").arg(1000000 + i),
                     QString::number(i), QString());
    frmMultiSMS::loaded()->recalcMaxSizes();
    harness.child<SmsTextEdit>("txtSMS")->setText(Text);
    MessageBox::setHandler([](const MessageBox::Box&) { return MessageBox::Answer::Yes; });

    QList<double> ratios, bareTimes, bulkTimes, stalls;
    for (int round = 0; round < rounds; ++round) {
        qint64 bare = 0;
        BulkRound bulk;
        // The side that goes first alternates, so that neither always finds the service fresher.
        for (const bool bareTurn : { round % 2 == 0, round % 2 != 0 }) {
            if (bareTurn && only != u"bulk")
                bare = bareLoopMs(Urls().SendSMS(), rows);
            else if (!bareTurn && only != u"bare")
                bulk = bulkRun(harness);
        }
        std::printf("round %d: bare loop %lld ms, bulk run %lld ms, longest stall %lld ms\n", round + 1,
                    static_cast<long long>(bare), static_cast<long long>(bulk.milliseconds),
                    static_cast<long long>(bulk.longestStall));
        std::fflush(stdout);
        bareTimes.append(double(bare));
        bulkTimes.append(double(bulk.milliseconds));
        stalls.append(double(bulk.longestStall));
        if (bare > 0 && bulk.milliseconds > 0)
            ratios.append(100.0 * double(bare) / double(bulk.milliseconds));
    }
    if (!only.isEmpty())
        return 0;

    const int expected = 2 * rows * rounds;
    const int sent = int(harness.bodies(QStringLiteral("/smsv3/smsv3.php")).size());
    std::printf("requests the service received: %d (expected %d)\n", sent, expected);
    std::printf("%d rows, %d rounds, bare loop and bulk run in turn\n", rows, rounds);
    BenchRounds::printFigure("bare loop ms", bareTimes, "%.0f");
    BenchRounds::printFigure("bulk run ms", bulkTimes, "%.0f");
    BenchRounds::printFigure("throughput %", ratios, "%.1f");
    BenchRounds::printFigure("longest stall ms", stalls, "%.0f");
    // The goal is 95 % of the bare loop: 5 points of margin.
    BenchRounds::judgeSpread("throughput", ratios, 5.0, " points");
    std::printf("throughput %.0f %% of the bare loop, longest stall %.0f ms\n", BenchRounds::median(ratios),
                BenchRounds::highest(stalls));
    harness.reset();
    return sent == expected ? 0 : 1;
}
