// SPDX-License-Identifier: GPL-3.0-or-later
#include "mAni2.h"

#include <QColor>
#include <QLabel>
#include <QPainter>
#include <QPixmap>
#include <QTimer>
#include <QtMath>

#include <array>

namespace mAni2 {

namespace {
// A ring of twelve dots with a bright one running round, in the colour of the window's head. It
// is drawn for the label's pixel ratio at each step, so that it stays sharp on any screen.
constexpr int Size = 48;
constexpr int Dots = 12;
constexpr int StepMs = 80;

QColor colourOf(int resourceId)
{
    switch (resourceId) {
    case 101:
        return QColor(0x1f, 0x5f, 0xae);
    case 102:
        return QColor(0x2e, 0x8b, 0x57);
    case 103:
        return QColor(0x6a, 0x4c, 0xaf);
    case 104:
        return QColor(0xc0, 0x39, 0x2b);
    default:
        return {};
    }
}

class Clip : public QTimer
{
public:
    Clip(QLabel* label, const QColor& colour)
        : QTimer(label)
        , m_label(label)
        , m_colour(colour)
    {
        setObjectName(QStringLiteral("clip"));
        setInterval(StepMs);
        connect(this, &QTimer::timeout, this, [this] {
            m_step = (m_step + 1) % Dots;
            draw();
        });
        draw();
        start();
    }

private:
    void draw()
    {
        const qreal ratio = m_label->devicePixelRatioF();
        QPixmap frame(QSize(Size, Size) * ratio);
        frame.setDevicePixelRatio(ratio);
        frame.fill(Qt::transparent);
        QPainter painter(&frame);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        // The dot of this step is bright, the two behind it fade out; the others are grey.
        constexpr std::array<int, 2> Fading = { 0xb0, 0x60 };
        constexpr qreal Middle = Size / 2.0;
        constexpr qreal Radius = Size / 3.0;
        for (int dot = 0; dot < Dots; ++dot) {
            const qreal angle = qDegreesToRadians(dot * 360.0 / Dots);
            const QPointF centre(Middle + Radius * qSin(angle), Middle - Radius * qCos(angle));
            const int behind = (m_step - dot + Dots) % Dots;
            QColor fill = behind <= int(Fading.size()) ? m_colour : QColor(0xd0, 0xd4, 0xdc);
            if (behind > 0 && behind <= int(Fading.size()))
                fill.setAlpha(Fading[size_t(behind - 1)]);
            painter.setBrush(fill);
            painter.drawEllipse(centre, 3.2, 3.2);
        }
        painter.end();
        m_label->setPixmap(frame);
    }

    QLabel* m_label;
    QColor m_colour;
    int m_step = 0;
};

Clip* clipOf(QLabel* control)
{
    return control->findChild<Clip*>(QStringLiteral("clip"), Qt::FindDirectChildrenOnly);
}
} // namespace

void startAnimation(QLabel* control, int resourceId)
{
    stopAnimation(control);
    const QColor colour = colourOf(resourceId);
    if (!colour.isValid())
        return;
    // The clip belongs to the label and goes with it.
    new Clip(control, colour);
}

void stopAnimation(QLabel* control)
{
    if (Clip* clip = clipOf(control)) {
        delete clip;
        control->clear();
    }
}

} // namespace mAni2
