// SPDX-License-Identifier: GPL-3.0-or-later
#include "mMoveEvent.h"

#include "WindowPlacement.h"

#include <QEvent>
#include <QPointer>
#include <QScreen>
#include <QWidget>

#include <algorithm>

namespace mMoveEvent {
namespace {
const auto CommandsName = QStringLiteral("mMoveEventCommands");

// The controls of a main window that side windows keep clear of; a child of the main window.
class Commands : public QObject
{
    Q_OBJECT

public:
    explicit Commands(QWidget* mainWindow)
        : QObject(mainWindow)
    {
        setObjectName(CommandsName);
    }
    QList<QPointer<QWidget>> widgets;
    std::function<void(int)> narrowTo;
};

Commands* commandsOf(QWidget* mainWindow)
{
    auto* commands = mainWindow->findChild<Commands*>(CommandsName, Qt::FindDirectChildrenOnly);
    return commands ? commands : new Commands(mainWindow); // owned by mainWindow
}

// Where the commands stand on the desktop now; empty where the main window has none.
QRect commandsRect(const QWidget* mainWindow)
{
    QRect united;
    const auto* commands = mainWindow->findChild<Commands*>(CommandsName, Qt::FindDirectChildrenOnly);
    if (!commands)
        return united;
    for (const QWidget* w : commands->widgets) {
        if (w && !w->isHidden())
            united |= QRect(mainWindow->geometry().topLeft() + w->mapTo(mainWindow, QPoint(0, 0)), w->size());
    }
    return united;
}

// The side window's frame; before it has ever been shown its frame is not known yet, and is
// taken to be as thick as the main window's.
QSize sideFrameSize(const QWidget* mainWindow, const QWidget* sideWindow)
{
    const QSize frame = sideWindow->frameGeometry().size();
    if (frame != sideWindow->size())
        return frame;
    return frame + (mainWindow->frameGeometry().size() - mainWindow->size());
}

QRect screenArea(const QWidget* mainWindow)
{
    const QScreen* screen = mainWindow->screen();
    return screen ? screen->availableGeometry() : QRect();
}

// Watches the main window's moves; it is a child of the side window, so it goes with it.
class Follower : public QObject
{
    Q_OBJECT

public:
    Follower(QWidget* mainWindow, QWidget* sideWindow)
        : QObject(sideWindow)
        , m_main(mainWindow)
        , m_side(sideWindow)
    {
        setObjectName(QStringLiteral("mMoveEvent"));
        mainWindow->installEventFilter(this);
    }
    ~Follower() override
    {
        if (m_main)
            m_main->removeEventFilter(this);
    }
    QWidget* mainWindow() const { return m_main; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        // The main window stays where the user has put it; only the side window follows.
        if (watched == m_main && event->type() == QEvent::Move && m_side) {
            const QRect area = screenArea(m_main);
            const QRect frame = m_main->frameGeometry();
            m_side->move(area.isValid() ? WindowPlacement::followMain(area, frame, sideFrameSize(m_main, m_side),
                                                                      commandsRect(m_main))
                                        : QPoint(frame.right() + 1, frame.top()));
        }
        return false;
    }

private:
    QPointer<QWidget> m_main;
    QPointer<QWidget> m_side;
};

Follower* followerOf(QWidget* mainWindow, QWidget* sideWindow)
{
    for (Follower* f : sideWindow->findChildren<Follower*>(QStringLiteral("mMoveEvent"), Qt::FindDirectChildrenOnly)) {
        if (f->mainWindow() == mainWindow)
            return f;
    }
    return nullptr;
}
} // namespace

bool installHook(QWidget* mainWindow, QWidget* sideWindow)
{
    if (!mainWindow || !sideWindow || followerOf(mainWindow, sideWindow))
        return false;
    new Follower(mainWindow, sideWindow); // owned by sideWindow
    return true;
}

void removeHook(QWidget* mainWindow, QWidget* sideWindow)
{
    if (mainWindow && sideWindow)
        delete followerOf(mainWindow, sideWindow);
}

void placeBeside(QWidget* mainWindow, QWidget* sideWindow)
{
    // Positions of windows include their frames, as the user sees them.
    QRect frame = mainWindow->frameGeometry();
    const QRect area = screenArea(mainWindow);
    if (!area.isValid()) {
        sideWindow->move(frame.right() + 1, frame.top());
        return;
    }
    const auto* commands = mainWindow->findChild<Commands*>(CommandsName, Qt::FindDirectChildrenOnly);
    const QSize sideFrame = sideFrameSize(mainWindow, sideWindow);
    if (commands && commands->narrowTo && frame.width() + sideFrame.width() > area.width()) {
        const bool asTall = sideWindow->height() == mainWindow->height();
        commands->narrowTo(area.width() - sideFrame.width() - (frame.width() - mainWindow->width()));
        frame = mainWindow->frameGeometry();
        if (asTall)
            sideWindow->resize(sideWindow->width(), mainWindow->height());
    }
    // Where the main window can't narrow enough, the side window gives up what it can.
    if (const int over = frame.width() + sideFrame.width() - area.width(); over > 0) {
        const int least = std::max(sideWindow->minimumSizeHint().width(), sideWindow->minimumWidth());
        const int width = std::max(least, sideWindow->width() - over);
        if (width < sideWindow->width())
            sideWindow->resize(width, sideWindow->height());
    }
    const WindowPlacement::Pair pair
        = WindowPlacement::besideMain(area, frame, sideFrameSize(mainWindow, sideWindow), commandsRect(mainWindow));
    if (pair.main != frame.topLeft())
        mainWindow->move(pair.main);
    sideWindow->move(pair.side);
}

void keepUncovered(QWidget* mainWindow, const QList<QWidget*>& commands)
{
    Commands* kept = commandsOf(mainWindow);
    kept->widgets.clear();
    for (QWidget* w : commands)
        kept->widgets << w;
}

void allowNarrowing(QWidget* mainWindow, std::function<void(int width)> narrowTo)
{
    commandsOf(mainWindow)->narrowTo = std::move(narrowTo);
}

} // namespace mMoveEvent

#include "mMoveEvent.moc"
