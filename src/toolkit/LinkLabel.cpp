// SPDX-License-Identifier: GPL-3.0-or-later
#include "LinkLabel.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFocusRect>

namespace {
constexpr int Pad = 2;
}

LinkLabel::LinkLabel(const QString& text, QWidget* parent)
    : QAbstractButton(parent)
{
    setText(text);
    setAccessibleName(text);
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::TabFocus);
    QFont underlined = font();
    underlined.setUnderline(true);
    setFont(underlined);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void LinkLabel::setWordWrap(bool wrap)
{
    m_wordWrap = wrap;
    QSizePolicy policy = sizePolicy();
    policy.setHeightForWidth(wrap);
    setSizePolicy(policy);
    updateGeometry();
}

int LinkLabel::textFlags() const
{
    return Qt::AlignLeft | Qt::AlignVCenter | (m_wordWrap ? Qt::TextWordWrap : 0);
}

QSize LinkLabel::sizeHint() const
{
    const QFontMetrics fm(font());
    return QSize(fm.horizontalAdvance(text()), fm.height()) + QSize(Pad * 2, Pad * 2);
}

QSize LinkLabel::minimumSizeHint() const
{
    if (!m_wordWrap)
        return sizeHint();
    const QFontMetrics fm(font());
    return { fm.averageCharWidth() * 12, fm.height() + Pad * 2 };
}

int LinkLabel::heightForWidth(int width) const
{
    const QFontMetrics fm(font());
    return fm.boundingRect(QRect(0, 0, width - Pad * 2, 10000), textFlags(), text()).height() + Pad * 2;
}

void LinkLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::Link));
    painter.drawText(rect().adjusted(Pad, Pad, -Pad, -Pad), textFlags(), text());
    if (hasFocus()) {
        QStyleOptionFocusRect option;
        option.initFrom(this);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
    }
}

void LinkLabel::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        click();
        return;
    }
    QAbstractButton::keyPressEvent(event);
}
