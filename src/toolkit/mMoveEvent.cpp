// SPDX-License-Identifier: GPL-3.0-or-later
#include "mMoveEvent.h"

#include <QEvent>
#include <QPointer>
#include <QScreen>
#include <QWidget>

namespace mMoveEvent {
namespace {
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
        if (watched == m_main && event->type() == QEvent::Move && m_side)
            placeBeside(m_main, m_side);
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

void placeBeside(const QWidget* mainWindow, QWidget* sideWindow)
{
    // Positions of windows include their frames, as the user sees them.
    const QRect frame = mainWindow->frameGeometry();
    QPoint at(frame.left() + frame.width(), frame.top());
    // Where the place beside doesn't fit on the screen, the side window stays whole on it, as
    // near to that place as it can be, and goes on following.
    if (const QScreen* screen = mainWindow->screen()) {
        const QRect area = screen->availableGeometry();
        const QSize size = sideWindow->frameGeometry().size();
        at.setX(qMax(area.left(), qMin(at.x(), area.left() + area.width() - size.width())));
        at.setY(qMax(area.top(), qMin(at.y(), area.top() + area.height() - size.height())));
    }
    sideWindow->move(at);
}

} // namespace mMoveEvent

#include "mMoveEvent.moc"
