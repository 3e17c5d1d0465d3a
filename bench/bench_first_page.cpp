// SPDX-License-Identifier: GPL-3.0-or-later
// The first web page of a start: the program comes up as it does (against quellbote-service on
// loopback, the demo account stored, the splash's pauses cut), idles a moment, and then
// "Telefonbuch" is clicked; timed from the click until the screen shows the page where the view
// stands as it stays (sampled every 4 ms, set against the last sample), and the memory of the
// program with its helper processes a second after the load.
// Beside it a bare Qt WebEngine program (bench_bare_webpage) shows the same page from the same
// service in a view of the same size, timed from its launch. The two run in turn, nine rounds unless told;
// the medians count. Run it under xvfb-run: the engine draws with OpenGL. The last line reads
// "first page X.X× and memory Y.Y× of a bare web engine window".
//
// bench_first_page [--rounds N] [--only client|bare]
#include "DemoInstallation.h"
#include "PagePaintProbe.h"
#include "SideBySide.h"
#include "sending/ApplicationSetup.h"
#include "sending/frmMain.h"
#include "sending/mStarter.h"
#include "settings/CUrlStore.h"
#include "settings/ProgramFolder.h"
#include "toolkit/Pause.h"
#include "toolkit/ToolbarButton.h"
#include "toolkit/WebView.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QProcess>
#include <QScreen>
#include <QTimer>

#include <cstdio>
#include <cstring>
#include <unistd.h>

namespace {
struct Showing
{
    qint64 milliseconds = -1;
    long memoryKilobytes = -1;
    QSize size;
};

// What the screen shows at rect, every fourth pixel of every fourth line.
QImage sample(const QRect& rect)
{
    const QImage image
        = QGuiApplication::primaryScreen()->grabWindow(0, rect.x(), rect.y(), rect.width(), rect.height()).toImage();
    QImage small(rect.width() / 4, rect.height() / 4, QImage::Format_RGB32);
    for (int y = 0; y < small.height() && y * 4 < image.height(); ++y)
        for (int x = 0; x < small.width() && x * 4 < image.width(); ++x)
            small.setPixel(x, y, image.pixel(x * 4, y * 4));
    return small;
}

// Whether two samples show the same, all but a few pixels (a caret, say).
bool same(const QImage& a, const QImage& b)
{
    if (a.size() != b.size())
        return false;
    qsizetype differ = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            differ += a.pixel(x, y) != b.pixel(x, y);
    return differ * 100 <= qsizetype(a.width()) * a.height();
}

// Starts program and samples the place it names ("rect") on the screen every few milliseconds
// until it reports its "memory", a second after its page has loaded and drawn. The page counts as
// drawn at the first sample that shows what the last one shows. The time counts from the launch,
// or from the program's "clicked" where it says one.
Showing measure(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    Showing result;
    QByteArray output;
    QElapsedTimer clock;
    QRect rect;
    QList<std::pair<qint64, QImage>> samples;
    QEventLoop loop;
    QTimer poll;
    poll.setInterval(4);
    QObject::connect(&poll, &QTimer::timeout, [&] { samples.append({ clock.elapsed(), sample(rect) }); });
    QObject::connect(&process, &QProcess::readyReadStandardOutput, [&] {
        output += process.readAllStandardOutput();
        qsizetype end;
        while ((end = output.indexOf('\n')) >= 0) {
            const QByteArray line = output.left(end);
            output.remove(0, end + 1);
            const QList<QByteArray> words = line.split(' ');
            if (line == "clicked") {
                clock.restart();
            } else if (words.value(0) == "rect" && words.size() == 5) {
                rect = QRect(words[1].toInt(), words[2].toInt(), words[3].toInt(), words[4].toInt());
                result.size = rect.size();
                poll.start();
            } else if (words.value(0) == "memory") {
                result.memoryKilobytes = words.value(1).toLong();
                poll.stop();
                if (rect.isValid()) {
                    const QImage settled = sample(rect);
                    for (const auto& [at, image] : samples) {
                        if (same(image, settled)) {
                            result.milliseconds = at;
                            break;
                        }
                    }
                }
                loop.quit();
            }
        }
    });
    QObject::connect(&process, &QProcess::finished, &loop, &QEventLoop::quit);
    QTimer::singleShot(60000, &loop, &QEventLoop::quit);
    clock.start();
    process.start(program, arguments);
    loop.exec();
    poll.stop();
    if (!process.waitForFinished(20000)) {
        process.kill();
        process.waitForFinished(5000);
    }
    return result;
}

// The client: the program's own start; once the main window has painted and a moment has passed,
// a click on "Telefonbuch".
int runClient(int argc, char* argv[], const QString& folder)
{
    QApplication app(argc, argv);
    ApplicationSetup::apply(app);
    Pause::setLengthForTesting(0);
    ProgramFolder::setPathForTesting(folder);
    PagePaintProbe probe;

    // The main window's first paint, then half a second of idling, as a user takes to click.
    class FirstPaint : public QObject
    {
    public:
        std::function<void()> then;

    protected:
        bool eventFilter(QObject* watched, QEvent* event) override
        {
            if (then && event->type() == QEvent::Paint && watched->inherits("frmMain")) {
                QTimer::singleShot(500, qApp, then);
                then = nullptr;
            }
            return QObject::eventFilter(watched, event);
        }
    } firstPaint;
    firstPaint.then = [&probe] {
        frmMain* main = frmMain::instance();
        auto* button = main ? main->findChild<ToolbarButton*>(QStringLiteral("tbPhonebook")) : nullptr;
        if (!button) {
            std::fprintf(stderr, "no Telefonbuch button\n");
            QCoreApplication::exit(1);
            return;
        }
        std::printf("clicked\n");
        std::fflush(stdout);
        button->click();
        QWidget* phonebook = nullptr;
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window->objectName() == u"frmPhonebook")
                phonebook = window;
        auto* web = phonebook ? phonebook->findChild<WebView*>(QStringLiteral("web")) : nullptr;
        if (!web) {
            std::fprintf(stderr, "the phonebook has no web view\n");
            QCoreApplication::exit(1);
            return;
        }
        PagePaintProbe::tellRect(web);
        QObject::connect(web, &WebView::documentComplete, [&probe](const QString&) { probe.pageLoaded(); });
    };
    qApp->installEventFilter(&firstPaint);
    mStarter::Main();
    return QApplication::exec();
}

} // namespace

int main(int argc, char* argv[])
{
    if (argc == 3 && std::strcmp(argv[1], "--client") == 0)
        return runClient(argc, argv, QString::fromLocal8Bit(argv[2]));

    if (qEnvironmentVariableIsEmpty("QUELLBOTE_SERVICE"))
        qputenv("QUELLBOTE_SERVICE", QUELLBOTE_SERVICE_PATH);
    // Chromium's sandbox refuses to run as root.
    if (geteuid() == 0)
        qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
    // As for bench_startup: a desktop session names no CA file of its own.
    qunsetenv("SSL_CERT_FILE");
    QGuiApplication app(argc, argv);
    const int roundCount = BenchRounds::intArgument(argc, argv, "--rounds", 9);
    const QString only = BenchRounds::textArgument(argc, argv, "--only");

    const DemoInstallation installation;
    if (!installation.isReady())
        return 1;
    // The page the phonebook shows for the demo account, as the program asks for it.
    ProgramFolder::setPathForTesting(installation.folder());
    const QString page = Urls().Phonebook() + QStringLiteral("?email=demo@quellbote.test&passwort=demo");

    SideBySide rounds;
    QSize size(380, 560);
    for (int round = 0; round < roundCount; ++round) {
        Showing bare, client;
        // The client goes first in the first round, so that the bare view learns its size.
        for (const bool bareTurn : { round % 2 != 0, round % 2 == 0 }) {
            if (bareTurn && only != u"client") {
                bare = measure(QStringLiteral(QUELLBOTE_BARE_WEBPAGE_PATH),
                               { page, QString::number(size.width()), QString::number(size.height()) });
            } else if (!bareTurn && only != u"bare") {
                client = measure(QCoreApplication::applicationFilePath(),
                                 { QStringLiteral("--client"), installation.folder() });
                if (client.size.isValid())
                    size = client.size;
            }
        }
        if (!only.isEmpty())
            continue;
        if (bare.memoryKilobytes < 0 || client.memoryKilobytes < 0 || bare.milliseconds < 0
            || client.milliseconds < 0) {
            std::fprintf(stderr, "a page did not report (bare %lld ms, client %lld ms)\n",
                         static_cast<long long>(bare.milliseconds), static_cast<long long>(client.milliseconds));
            return 1;
        }
        rounds.add(bare.milliseconds, bare.memoryKilobytes, client.milliseconds, client.memoryKilobytes);
    }
    if (!only.isEmpty())
        return 0;

    std::printf("page %s in %d x %d, %d rounds in turn\n", qPrintable(page), size.width(), size.height(), roundCount);
    // Goals: within 1.3× on both (a margin of 0.3).
    rounds.report({ "bare web engine program, ms from its launch to the page drawn",
                    "Quellbote, ms from the click to the page drawn",
                    "bare web engine program, MiB (PSS with its helpers)",
                    "Quellbote with the page, MiB (PSS with its helpers)", "first page", 0.3, 0.3,
                    "first page %.1f× and memory %.1f× of a bare web engine window\n" });
    return 0;
}
