// SPDX-License-Identifier: GPL-3.0-or-later
// What a start of the program costs next to a bare Qt Widgets window (bench_bare_window), side by
// side in one run: the time from the process's start until the main window first paints, and
// the peak resident memory a second later. The client starts as the program does, against a
// quellbote-service on loopback with the demo account stored; the splash's fixed pauses are cut
// to nothing, so that the time is the program's own work. The two are started in turn (the one
// that goes first changes from round to round), eleven rounds unless told; the medians count.
// The last line reads "start-up X.X× and memory Y.Y× of a bare Qt window".
//
// Runs on the platform of the environment: under xvfb-run it measures what a desktop costs
// (OpenGL included), without a display it runs offscreen. SSL_CERT_FILE is taken out of the
// starts' environment, as a desktop session has none; with it the program reads the system's CA
// store whole at its first request (see Inet), which --keep-ssl-cert-file measures.
//
// bench_startup [--rounds N] [--keep-ssl-cert-file] [--only client|bare]
#include "BenchRounds.h"
#include "ServiceProcess.h"
#include "StartupProbe.h"
#include "sending/ApplicationSetup.h"
#include "sending/mStarter.h"
#include "settings/ProgramFolder.h"
#include "toolkit/Pause.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace {
struct Start
{
    qint64 milliseconds = -1;
    long peakKilobytes = -1;
};

// Starts program, waits for its "shown" and "peak" lines.
Start measure(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    QElapsedTimer clock;
    clock.start();
    process.start(program, arguments);
    Start result;
    QByteArray output;
    while (process.waitForReadyRead(30000)) {
        output += process.readAll();
        if (result.milliseconds < 0 && output.contains("shown\n"))
            result.milliseconds = clock.elapsed();
        const qsizetype peak = output.indexOf("peak ");
        if (peak >= 0 && output.indexOf('\n', peak) > 0) {
            result.peakKilobytes = output.mid(peak + 5, output.indexOf('\n', peak) - peak - 5).toLong();
            break;
        }
    }
    process.waitForFinished(10000);
    return result;
}

// The client: the program's own start, with its folder pointed at the benchmark's. Its store is
// the one the parent prepared (XDG_CONFIG_HOME).
int runClient(int argc, char* argv[], const QString& folder)
{
    QApplication app(argc, argv);
    ApplicationSetup::apply(app);
    Pause::setLengthForTesting(0);
    ProgramFolder::setPathForTesting(folder);
    StartupProbe probe("frmMain");
    mStarter::Main();
    return QApplication::exec();
}

// The demo account as the first-start wizard stores it, and the news already read: the everyday
// start, which shows no web page.
bool writeStore(const QString& configFolder)
{
    QDir(configFolder).mkpath(QStringLiteral("Tarnholt"));
    QFile store(configFolder + QStringLiteral("/Tarnholt/SMS.conf"));
    return store.open(QIODevice::WriteOnly)
        && store.write("[General]\neMail=demo@quellbote.test\nPassword=demo\nfirstStartHasRun=true\n"
                       "infoVersion=32767\n")
        > 0;
}
} // namespace

int main(int argc, char* argv[])
{
    if (argc == 3 && std::strcmp(argv[1], "--client") == 0)
        return runClient(argc, argv, QString::fromLocal8Bit(argv[2]));

    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    if (qEnvironmentVariableIsEmpty("QUELLBOTE_SERVICE"))
        qputenv("QUELLBOTE_SERVICE", QUELLBOTE_SERVICE_PATH);
    QCoreApplication app(argc, argv);

    ServiceProcess service;
    if (!service.isRunning()) {
        std::fprintf(stderr, "quellbote-service did not start\n");
        return 1;
    }
    QTemporaryDir folder;
    service.writeOemInf(folder.path());
    const QString configFolder = folder.filePath(QStringLiteral("config"));
    if (!writeStore(configFolder)) {
        std::fprintf(stderr, "the store could not be written\n");
        return 1;
    }
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(configFolder));

    const int rounds = BenchRounds::intArgument(argc, argv, "--rounds", 11);
    const QString only = BenchRounds::textArgument(argc, argv, "--only");
    bool keepCertFile = false;
    for (int i = 1; i < argc; ++i)
        keepCertFile = keepCertFile || std::strcmp(argv[i], "--keep-ssl-cert-file") == 0;
    if (!keepCertFile)
        qunsetenv("SSL_CERT_FILE");

    QList<double> bareTimes, clientTimes, bareMemory, clientMemory, timeRatios, memoryRatios;
    for (int round = 0; round < rounds; ++round) {
        Start bare, client;
        for (const bool bareTurn : { round % 2 == 0, round % 2 != 0 }) {
            if (bareTurn && only != u"client")
                bare = measure(QStringLiteral(QUELLBOTE_BARE_WINDOW_PATH), {});
            else if (!bareTurn && only != u"bare")
                client
                    = measure(QCoreApplication::applicationFilePath(), { QStringLiteral("--client"), folder.path() });
        }
        if (!only.isEmpty())
            continue;
        if (bare.peakKilobytes < 0 || client.peakKilobytes < 0) {
            std::fprintf(stderr, "a start did not report (bare %lld ms, client %lld ms)\n",
                         static_cast<long long>(bare.milliseconds), static_cast<long long>(client.milliseconds));
            return 1;
        }
        std::printf("round %d: bare %lld ms %.1f MiB, Quellbote %lld ms %.1f MiB\n", round + 1,
                    static_cast<long long>(bare.milliseconds), bare.peakKilobytes / 1024.0,
                    static_cast<long long>(client.milliseconds), client.peakKilobytes / 1024.0);
        std::fflush(stdout);
        bareTimes.append(double(bare.milliseconds));
        clientTimes.append(double(client.milliseconds));
        bareMemory.append(bare.peakKilobytes / 1024.0);
        clientMemory.append(client.peakKilobytes / 1024.0);
        timeRatios.append(double(client.milliseconds) / double(qMax<qint64>(1, bare.milliseconds)));
        memoryRatios.append(double(client.peakKilobytes) / double(bare.peakKilobytes));
    }
    if (!only.isEmpty())
        return 0;

    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    std::printf("platform %s, SSL_CERT_FILE %s, %d starts each in turn\n",
                platform.isEmpty() ? "default" : platform.constData(), keepCertFile ? "kept" : "taken out", rounds);
    BenchRounds::printFigure("bare Qt window, ms to the first paint", bareTimes, "%.0f");
    BenchRounds::printFigure("Quellbote, ms to the main window's first paint", clientTimes, "%.0f");
    BenchRounds::printFigure("bare Qt window, peak MiB", bareMemory, "%.1f");
    BenchRounds::printFigure("Quellbote, peak MiB", clientMemory, "%.1f");
    BenchRounds::printFigure("start-up ×", timeRatios);
    BenchRounds::printFigure("memory ×", memoryRatios);
    // Goals: start-up within 1.5× (a margin of 0.5), memory within 1.3× (0.3).
    BenchRounds::judgeSpread("start-up", timeRatios, 0.5, "×");
    BenchRounds::judgeSpread("memory", memoryRatios, 0.3, "×");
    std::printf("start-up %.1f× and memory %.1f× of a bare Qt window\n", BenchRounds::median(timeRatios),
                BenchRounds::median(memoryRatios));
    return 0;
}
