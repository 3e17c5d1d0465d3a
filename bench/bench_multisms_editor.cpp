// SPDX-License-Identifier: GPL-3.0-or-later
// The MultiSMS editor, driven as a user does, offscreen: "Öffnen" on a .msms file of 100 000 rows,
// timed from the click to the table's first paint with the rows, then the table scrolled from the
// first row to the last (the scroll bar dragged down in 200 steps, then Ende and Pos1), each step
// drawn before the next; the longest step counts, and a timer that wants to fire every
// millisecond watches the gaps in between. Several rounds in one process; the medians count. The
// last line reads "opened N rows in X ms, longest stall while scrolling Y ms".
//
// bench_multisms_editor [--rounds N] [--rows N]
#include "BenchRounds.h"
#include "MainWindowHarness.h"
#include "bulk/frmMultiSMS.h"
#include "toolkit/FileChooser.h"
#include "toolkit/MessageBox.h"
#include "toolkit/ToolbarButton.h"

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QScrollBar>
#include <QTableView>
#include <QTest>
#include <QTimer>

#include <cstdio>

namespace {
// Notes when the watched widget paints.
class PaintSeen : public QObject
{
public:
    explicit PaintSeen(QWidget* widget) { widget->installEventFilter(this); }
    bool seen = false;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            seen = true;
        return QObject::eventFilter(watched, event);
    }
};

// Runs the event loop until widget has painted.
void waitForPaint(QWidget* widget)
{
    PaintSeen paint(widget);
    widget->update();
    QElapsedTimer limit;
    limit.start();
    while (!paint.seen && limit.elapsed() < 10000)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 5);
}

struct Round
{
    qint64 openMs = 0;
    qint64 longestStepMs = 0;
    qint64 longestGapMs = 0;
    int rows = 0;
    bool reachedEnd = false;
};

Round runRound(frmMultiSMS* editor, QTableView* table, QAction* open)
{
    Round round;
    QElapsedTimer clock;
    clock.start();
    open->trigger();
    waitForPaint(table->viewport());
    round.openMs = clock.elapsed();
    round.rows = editor->table().rowCount();

    QElapsedTimer sinceTick;
    QTimer ticker;
    ticker.setInterval(1);
    QObject::connect(&ticker, &QTimer::timeout,
                     [&] { round.longestGapMs = qMax(round.longestGapMs, sinceTick.restart()); });
    sinceTick.start();
    ticker.start();
    QScrollBar* bar = table->verticalScrollBar();
    const auto step = [&](const std::function<void()>& move) {
        QElapsedTimer stepClock;
        stepClock.start();
        move();
        waitForPaint(table->viewport());
        round.longestStepMs = qMax(round.longestStepMs, stepClock.elapsed());
    };
    constexpr int Steps = 200;
    for (int i = 1; i <= Steps; ++i)
        step([bar, i] { bar->setValue(int(qint64(bar->maximum()) * i / Steps)); });
    table->setFocus();
    step([table] { QTest::keyClick(table, Qt::Key_End, Qt::ControlModifier); });
    round.reachedEnd = table->indexAt(QPoint(4, table->viewport()->height() - 4)).row() == round.rows - 1
        || bar->value() == bar->maximum();
    step([table] { QTest::keyClick(table, Qt::Key_Home, Qt::ControlModifier); });
    ticker.stop();
    return round;
}
} // namespace

int main(int argc, char* argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    if (qEnvironmentVariableIsEmpty("QUELLBOTE_SERVICE"))
        qputenv("QUELLBOTE_SERVICE", QUELLBOTE_SERVICE_PATH);
    QApplication app(argc, argv);
    const int rounds = BenchRounds::intArgument(argc, argv, "--rounds", 5);
    const int rows = BenchRounds::intArgument(argc, argv, "--rows", 100000);

    MainWindowHarness harness;
    harness.resetStore();
    if (!harness.startService()) {
        std::fprintf(stderr, "quellbote-service did not start\n");
        return 1;
    }
    harness.loadMain();
    const QString path = harness.folder() + QStringLiteral("/empfaenger.msms");
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly))
            return 1;
        for (int i = 0; i < rows; ++i)
            file.write("M\xfcller " + QByteArray::number(i) + ";0049171" + QByteArray::number(1000000 + i)
                       + ";Gru\xdf;Raum " + QByteArray::number(i % 50) + ";\r\n");
    }
    FileChooser::setHandler([&path](const FileChooser::Dialog&) { return path; });
    MessageBox::setHandler([](const MessageBox::Box&) { return MessageBox::Answer::Ok; });

    harness.child<ToolbarButton>("tbMultiSMS")->click();
    frmMultiSMS* editor = frmMultiSMS::loaded();
    auto* table = editor->findChild<QTableView*>(QStringLiteral("lvData"));
    auto* open = editor->findChild<QAction*>(QStringLiteral("open"));
    if (!table || !open) {
        std::fprintf(stderr, "the editor's table or its open key is missing\n");
        return 1;
    }
    editor->show();
    waitForPaint(table->viewport());

    QList<double> opens, steps, gaps;
    bool ok = true;
    int loadedRows = 0;
    for (int r = 0; r < rounds; ++r) {
        const Round round = runRound(editor, table, open);
        std::printf("round %d: opened %d rows in %lld ms, longest scroll step %lld ms, longest gap %lld ms%s\n", r + 1,
                    round.rows, static_cast<long long>(round.openMs), static_cast<long long>(round.longestStepMs),
                    static_cast<long long>(round.longestGapMs), round.reachedEnd ? "" : " (the last row not reached)");
        std::fflush(stdout);
        ok = ok && round.rows == rows && round.reachedEnd;
        loadedRows = round.rows;
        opens.append(double(round.openMs));
        steps.append(double(round.longestStepMs));
        gaps.append(double(round.longestGapMs));
    }
    std::printf("%d rows, %d rounds\n", rows, rounds);
    BenchRounds::printFigure("open ms", opens, "%.0f");
    BenchRounds::printFigure("longest scroll step ms", steps, "%.0f");
    BenchRounds::printFigure("longest gap of the event loop ms", gaps, "%.0f");
    // The goal is no stall over 50 ms; the margin is what the median leaves to it.
    BenchRounds::judgeSpread("longest scroll step", steps, qMax(0.0, 50.0 - BenchRounds::median(steps)), " ms");
    std::printf("opened %d rows in %.0f ms, longest stall while scrolling %.0f ms\n", loadedRows,
                BenchRounds::median(opens), BenchRounds::median(steps));
    harness.reset();
    return ok ? 0 : 1;
}
