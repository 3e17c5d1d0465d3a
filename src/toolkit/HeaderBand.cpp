// SPDX-License-Identifier: GPL-3.0-or-later
#include "HeaderBand.h"

#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QLinearGradient>
#include <QVBoxLayout>

HeaderBand::HeaderBand(const QString& title, const QString& text, const QString& picture, QWidget* parent)
    : QWidget(parent)
    , m_title(new QLabel(title, this))
    , m_text(new QLabel(text, this))
    , m_picture(new QLabel(this))
{
    setObjectName(QStringLiteral("header"));
    QPalette band = palette();
    QLinearGradient gradient(0, 0, 0, 64);
    gradient.setColorAt(0, QColor(0x2b, 0x6c, 0xb0));
    gradient.setColorAt(1, QColor(0x1b, 0x4f, 0x86));
    band.setBrush(QPalette::Window, gradient);
    band.setColor(QPalette::WindowText, Qt::white);
    setPalette(band);
    setAutoFillBackground(true);

    QFont bold = m_title->font();
    bold.setBold(true);
    bold.setPointSizeF(bold.pointSizeF() * 1.35);
    m_title->setFont(bold);
    m_text->setWordWrap(true);
    if (!picture.isEmpty())
        m_picture->setPixmap(QIcon(picture).pixmap(40, 40));
    m_picture->setVisible(!picture.isEmpty());

    auto* texts = new QVBoxLayout;
    texts->setSpacing(2);
    texts->addWidget(m_title);
    texts->addWidget(m_text);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(14, 8, 14, 8);
    layout->addLayout(texts, 1);
    layout->addWidget(m_picture, 0, Qt::AlignVCenter);
}
