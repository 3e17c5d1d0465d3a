// SPDX-License-Identifier: GPL-3.0-or-later
#include "ToolbarButton.h"

#include "FieldColors.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFocusRect>

namespace {
constexpr int PictureSize = 20;

// 20 pixels beside the usual font; with a larger desktop font the pictures grow with the text.
int pictureSize(const QFontMetrics& fm)
{
    return qMax(PictureSize, qRound(fm.height() * 1.15));
}
constexpr int Gap = 6;
constexpr int Margin = 5;

// The same event as if the left button had been used: every mouse button works the button.
QMouseEvent asLeftButton(const QMouseEvent* event, Qt::MouseButtons buttons)
{
    return QMouseEvent(event->type(), event->position(), event->scenePosition(), event->globalPosition(),
                       Qt::LeftButton, buttons, event->modifiers(), event->pointingDevice());
}
} // namespace

ToolbarButton::ToolbarButton(QWidget* parent)
    : ToolbarButton(Arrangement::PictureLeft, parent)
{
}

ToolbarButton::ToolbarButton(Arrangement arrangement, QWidget* parent)
    : QAbstractButton(parent)
    , m_arrangement(arrangement)
    , m_backColor(palette().color(QPalette::Button))
{
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setCursor(Qt::PointingHandCursor);
    QAbstractButton::setText(QStringLiteral("Quellbote"));
    setAccessibleName(text());
}

void ToolbarButton::setCaption(const QString& caption)
{
    setText(caption);
    setAccessibleName(caption.trimmed().isEmpty() ? toolTip() : caption.trimmed());
    updateGeometry();
    update();
}

void ToolbarButton::setPicture(const QIcon& picture)
{
    m_picture = picture;
    updateGeometry();
    update();
}

void ToolbarButton::setPictureHover(const QIcon& picture)
{
    m_pictureHover = picture;
    update();
}

void ToolbarButton::setPictureDisabled(const QIcon& picture)
{
    m_pictureDisabled = picture;
    update();
}

void ToolbarButton::setThemedBackColor(const QColor& color)
{
    m_backColor = color;
    update();
}

QIcon ToolbarButton::currentPicture() const
{
    if (!isEnabled())
        return m_pictureDisabled.isNull() ? m_picture : m_pictureDisabled;
    // Under the mouse the hover picture shows; a button without one shows an empty picture box.
    if (m_hot || isDown())
        return m_pictureHover;
    return m_picture;
}

QSize ToolbarButton::sizeHint() const
{
    const QFontMetrics fm(font());
    const int picture = pictureSize(fm);
    const int textWidth = text().isEmpty() ? 0 : fm.horizontalAdvance(text());
    if (m_arrangement == Arrangement::PictureLeft) {
        const int width = Margin * 2 + picture + (textWidth ? Gap + textWidth : 0);
        return { width, qMax(picture, fm.height()) + Margin * 2 };
    }
    return { qMax(picture + 8, textWidth) + Margin * 2, picture + 8 + Gap + fm.height() + Margin * 2 };
}

void ToolbarButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF frame = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_backColor);
    painter.drawRect(rect());
    if (isEnabled() && (m_hot || isDown())) {
        // Raised under the mouse, sunken while pressed.
        const QColor light = palette().color(QPalette::Light);
        const QColor dark = palette().color(QPalette::Mid);
        painter.setBrush(isDown() ? m_backColor.darker(112) : m_backColor.lighter(104));
        painter.setPen(QPen(isDown() ? dark : dark.lighter(115), 1));
        painter.drawRoundedRect(frame, 4, 4);
        painter.setPen(QPen(isDown() ? dark : light, 1));
        painter.drawLine(frame.topLeft() + QPointF(4, 1), frame.topRight() + QPointF(-4, 1));
    }
    const QIcon picture = currentPicture();
    const QFontMetrics fm(font());
    QRect pictureRect;
    QRect textRect;
    const int side = pictureSize(fm);
    if (m_arrangement == Arrangement::PictureLeft) {
        pictureRect = QRect(Margin, (height() - side) / 2, side, side);
        textRect = QRect(pictureRect.right() + Gap, 0, width() - pictureRect.right() - Gap - Margin, height());
    } else {
        pictureRect = QRect((width() - side) / 2, Margin + 4, side, side);
        textRect = QRect(0, pictureRect.bottom() + Gap, width(), fm.height() + 2);
    }
    if (!picture.isNull())
        picture.paint(&painter, pictureRect, Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
    // A back colour of the window's own (white, light blue) keeps its caption readable where the
    // desktop's button text is light.
    if (isEnabled()) {
        painter.setPen(
            FieldColors::textOn(m_backColor, palette().color(QPalette::Active, QPalette::ButtonText), palette()));
    } else {
        painter.setPen(palette().color(QPalette::Disabled, QPalette::ButtonText));
    }
    painter.drawText(textRect,
                     (m_arrangement == Arrangement::PictureLeft ? Qt::AlignLeft : Qt::AlignHCenter) | Qt::AlignVCenter,
                     text());
    if (hasFocus()) {
        QStyleOptionFocusRect option;
        option.initFrom(this);
        option.rect = rect().adjusted(2, 2, -2, -2);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
    }
}

void ToolbarButton::enterEvent(QEnterEvent* event)
{
    m_hot = true;
    update();
    QAbstractButton::enterEvent(event);
}

void ToolbarButton::leaveEvent(QEvent* event)
{
    m_hot = false;
    update();
    QAbstractButton::leaveEvent(event);
}

void ToolbarButton::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        animateClick();
        return;
    }
    QAbstractButton::keyPressEvent(event);
}

void ToolbarButton::mousePressEvent(QMouseEvent* event)
{
    QMouseEvent left = asLeftButton(event, event->buttons() | Qt::LeftButton);
    QAbstractButton::mousePressEvent(&left);
    event->setAccepted(left.isAccepted());
}

void ToolbarButton::mouseReleaseEvent(QMouseEvent* event)
{
    QMouseEvent left = asLeftButton(event, event->buttons() & ~Qt::LeftButton);
    QAbstractButton::mouseReleaseEvent(&left);
    event->setAccepted(left.isAccepted());
}

bool ToolbarButton::hitButton(const QPoint& pos) const
{
    // A press can only begin on the button; once it has, the whole screen counts as the button,
    // so that the click comes even when the mouse is let go elsewhere.
    return isDown() || rect().contains(pos);
}

namespace {
// What a screen reader is told of a TreeButton: a button that is pressed while it is the chosen
// one, whose one action is a click.
class AccessibleTreeButton : public QAccessibleWidget
{
public:
    explicit AccessibleTreeButton(TreeButton* button)
        : QAccessibleWidget(button, QAccessible::Button)
    {
    }

    QAccessible::State state() const override
    {
        QAccessible::State s = QAccessibleWidget::state();
        s.checkable = true;
        s.checked = button()->isChosen();
        s.pressed = button()->isDown();
        return s;
    }
    QString text(QAccessible::Text t) const override
    {
        return t == QAccessible::Name && button()->accessibleName().isEmpty() ? button()->text()
                                                                              : QAccessibleWidget::text(t);
    }
    QStringList actionNames() const override
    {
        return button()->isEnabled() ? QStringList { pressAction() } : QStringList();
    }
    void doAction(const QString& action) override
    {
        if (action == pressAction() && button()->isEnabled())
            button()->animateClick();
    }

private:
    TreeButton* button() const { return static_cast<TreeButton*>(widget()); }
};

QAccessibleInterface* treeButtonFactory(const QString& className, QObject* object)
{
    if (className == u"TreeButton" && object && object->isWidgetType())
        return new AccessibleTreeButton(static_cast<TreeButton*>(object));
    return nullptr;
}
} // namespace

TreeButton::TreeButton(QWidget* parent)
    : ToolbarButton(Arrangement::PictureAbove, parent)
{
    static const bool installed = [] {
        QAccessible::installFactory(treeButtonFactory);
        return true;
    }();
    Q_UNUSED(installed);
}

void TreeButton::setChosen(bool chosen)
{
    if (m_chosen == chosen)
        return;
    m_chosen = chosen;
    QAccessible::State changed;
    changed.checked = true;
    QAccessibleStateChangeEvent event(this, changed);
    QAccessible::updateAccessibility(&event);
}
