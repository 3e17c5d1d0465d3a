// SPDX-License-Identifier: GPL-3.0-or-later
// What a start of the program costs next to a bare Qt Widgets window (bench_bare_window), side by
// side in one run: the time from the process's start until the main window first paints, and
// the peak resident memory a second later. The client starts as the program does, against a
// quellbote-service on loopback with the demo account stored; the splash's fixed pauses are cut
// to nothing, so that the time is the program's own work. Each is started Rounds times; the
// medians count. The last line reads "start-up X.X× and memory Y.Y× of a bare Qt window".
//
// Runs on the platform of the environment: under xvfb-run it measures what a desktop costs
// (OpenGL included), without a display it runs offscreen.
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
constexpr int Rounds = 5;

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

template<typename T> T median(QList<T> values)
{
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
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

    QList<qint64> bareTimes, clientTimes;
    QList<long> bareMemory, clientMemory;
    for (int round = 0; round < Rounds; ++round) {
        const Start bare = measure(QStringLiteral(QUELLBOTE_BARE_WINDOW_PATH), {});
        const Start client
            = measure(QCoreApplication::applicationFilePath(), { QStringLiteral("--client"), folder.path() });
        if (bare.peakKilobytes < 0 || client.peakKilobytes < 0) {
            std::fprintf(stderr, "a start did not report (bare %lld ms, client %lld ms)\n",
                         static_cast<long long>(bare.milliseconds), static_cast<long long>(client.milliseconds));
            return 1;
        }
        bareTimes.append(bare.milliseconds);
        clientTimes.append(client.milliseconds);
        bareMemory.append(bare.peakKilobytes);
        clientMemory.append(client.peakKilobytes);
    }

    const qint64 bareMs = median(bareTimes), clientMs = median(clientTimes);
    const long bareKb = median(bareMemory), clientKb = median(clientMemory);
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    std::printf("platform %s, %d starts each, medians\n", platform.isEmpty() ? "default" : platform.constData(),
                Rounds);
    std::printf("bare Qt window: %lld ms to the first paint, peak %.1f MiB\n", static_cast<long long>(bareMs),
                bareKb / 1024.0);
    std::printf("Quellbote:      %lld ms to the main window, peak %.1f MiB\n", static_cast<long long>(clientMs),
                clientKb / 1024.0);
    std::printf("start-up %.1f× and memory %.1f× of a bare Qt window\n", double(clientMs) / double(bareMs),
                double(clientKb) / double(bareKb));
    return 0;
}
