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
#include "DemoInstallation.h"
#include "SideBySide.h"
#include "StartupProbe.h"
#include "sending/ApplicationSetup.h"
#include "sending/mStarter.h"
#include "settings/ProgramFolder.h"
#include "toolkit/Pause.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QProcess>

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

    const DemoInstallation installation;
    if (!installation.isReady())
        return 1;

    const int roundCount = BenchRounds::intArgument(argc, argv, "--rounds", 11);
    const QString only = BenchRounds::textArgument(argc, argv, "--only");
    bool keepCertFile = false;
    for (int i = 1; i < argc; ++i)
        keepCertFile = keepCertFile || std::strcmp(argv[i], "--keep-ssl-cert-file") == 0;
    if (!keepCertFile)
        qunsetenv("SSL_CERT_FILE");

    SideBySide rounds;
    for (int round = 0; round < roundCount; ++round) {
        Start bare, client;
        for (const bool bareTurn : { round % 2 == 0, round % 2 != 0 }) {
            if (bareTurn && only != u"client")
                bare = measure(QStringLiteral(QUELLBOTE_BARE_WINDOW_PATH), {});
            else if (!bareTurn && only != u"bare")
                client = measure(QCoreApplication::applicationFilePath(),
                                 { QStringLiteral("--client"), installation.folder() });
        }
        if (!only.isEmpty())
            continue;
        if (bare.peakKilobytes < 0 || client.peakKilobytes < 0) {
            std::fprintf(stderr, "a start did not report (bare %lld ms, client %lld ms)\n",
                         static_cast<long long>(bare.milliseconds), static_cast<long long>(client.milliseconds));
            return 1;
        }
        rounds.add(bare.milliseconds, bare.peakKilobytes, client.milliseconds, client.peakKilobytes);
    }
    if (!only.isEmpty())
        return 0;

    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    std::printf("platform %s, SSL_CERT_FILE %s, %d starts each in turn\n",
                platform.isEmpty() ? "default" : platform.constData(), keepCertFile ? "kept" : "taken out", roundCount);
    // Goals: start-up within 1.5× (a margin of 0.5), memory within 1.3× (0.3).
    rounds.report({ "bare Qt window, ms to the first paint", "Quellbote, ms to the main window's first paint",
                    "bare Qt window, peak MiB", "Quellbote, peak MiB", "start-up", 0.5, 0.3,
                    "start-up %.1f× and memory %.1f× of a bare Qt window\n" });
    return 0;
}
