// SPDX-License-Identifier: GPL-3.0-or-later
#include "CTooltip.h"

#include <QApplication>
#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QStyle>

CTooltip::CTooltip(QObject* parent)
    : QObject(parent)
{
    m_delay.setSingleShot(true);
    m_visible.setSingleShot(true);
    connect(&m_delay, &QTimer::timeout, this, &CTooltip::showTip);
    connect(&m_visible, &QTimer::timeout, this, [this] {
        if (m_tip)
            m_tip->hide();
    });
}

CTooltip::~CTooltip()
{
    Destroy();
}

void CTooltip::Create(QWidget* parentControl)
{
    Destroy();
    m_popped = false;
    m_parent = parentControl;
    if (!m_parent)
        return;
    auto* tip = new QWidget(nullptr, Qt::ToolTip | Qt::FramelessWindowHint);
    tip->setObjectName(QStringLiteral("balloon"));
    tip->setAttribute(Qt::WA_ShowWithoutActivating);
    m_iconLabel = new QLabel(tip);
    m_titleLabel = new QLabel(tip);
    QFont bold = m_titleLabel->font();
    bold.setBold(true);
    m_titleLabel->setFont(bold);
    m_textLabel = new QLabel(tip);
    m_textLabel->setObjectName(QStringLiteral("tipText"));
    auto* layout = new QGridLayout(tip);
    layout->setContentsMargins(10, 8, 10, 8);
    layout->addWidget(m_iconLabel, 0, 0);
    layout->addWidget(m_titleLabel, 0, 1);
    layout->addWidget(m_textLabel, 1, 0, 1, 2);
    m_tip = tip;
    refresh();
    m_parent->installEventFilter(this);
    if (m_parent->underMouse())
        m_delay.start(m_delayTime);
}

void CTooltip::Destroy()
{
    m_delay.stop();
    m_visible.stop();
    if (m_parent)
        m_parent->removeEventFilter(this);
    delete m_tip;
    m_tip = nullptr;
    m_iconLabel = m_titleLabel = m_textLabel = nullptr;
}

bool CTooltip::isTipVisible() const
{
    return m_tip && m_tip->isVisible();
}

void CTooltip::setIcon(int icon)
{
    m_icon = icon;
    refresh();
}

void CTooltip::setForeColor(const QColor& color)
{
    m_foreColor = color;
    refresh();
}

void CTooltip::setTitle(const QString& title)
{
    m_title = title;
    refresh();
}

void CTooltip::setBackColor(const QColor& color)
{
    m_backColor = color;
    refresh();
}

void CTooltip::setTipText(const QString& text)
{
    m_tipText = text;
    refresh();
}

void CTooltip::refresh()
{
    if (!m_tip)
        return;
    const QStyle::StandardPixmap icons[] = { QStyle::SP_MessageBoxInformation, QStyle::SP_MessageBoxInformation,
                                             QStyle::SP_MessageBoxWarning, QStyle::SP_MessageBoxCritical };
    m_iconLabel->setVisible(m_icon >= 1 && m_icon <= 3);
    if (m_icon >= 1 && m_icon <= 3)
        m_iconLabel->setPixmap(m_tip->style()->standardIcon(icons[m_icon]).pixmap(16, 16));
    m_titleLabel->setText(m_title);
    m_titleLabel->setVisible(!m_title.isEmpty());
    // The text keeps its line breaks.
    m_textLabel->setText(QString(m_tipText).replace(QStringLiteral("\r\n"), QStringLiteral("\n")));
    QPalette palette = QApplication::palette();
    palette.setColor(QPalette::Window, m_backColor.isValid() ? m_backColor : palette.color(QPalette::ToolTipBase));
    palette.setColor(QPalette::WindowText, m_foreColor.isValid() ? m_foreColor : palette.color(QPalette::ToolTipText));
    m_tip->setPalette(palette);
    m_tip->setAutoFillBackground(true);
    m_tip->setStyleSheet(m_style == 1
                             ? QStringLiteral("#balloon { border: 1px solid palette(mid); border-radius: 8px; }")
                             : QStringLiteral("#balloon { border: 1px solid palette(mid); }"));
    m_tip->adjustSize();
}

void CTooltip::showTip()
{
    if (!m_tip || !m_parent)
        return;
    m_tip->adjustSize();
    const QRect target(m_parent->mapToGlobal(QPoint(0, 0)), m_parent->size());
    const int x = m_centered ? target.center().x() - m_tip->width() / 2 : target.left() + 8;
    m_tip->move(x, target.bottom() + 4);
    m_tip->show();
    m_popped = true;
    m_visible.start(m_visibleTime);
}

bool CTooltip::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_parent) {
        if (event->type() == QEvent::Enter && !m_popped)
            m_delay.start(m_delayTime);
        else if (event->type() == QEvent::Leave || event->type() == QEvent::MouseButtonPress) {
            m_delay.stop();
            m_popped = event->type() != QEvent::Leave && m_popped;
            if (m_tip)
                m_tip->hide();
        }
    }
    return QObject::eventFilter(watched, event);
}
