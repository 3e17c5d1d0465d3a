// SPDX-License-Identifier: GPL-3.0-or-later
#include "PaneHeading.h"

#include <QLabel>

namespace PaneHeading {
QLabel* make(const QString& objectName, const QString& text, QWidget* parent)
{
    auto* label = new QLabel(text, parent);
    label->setObjectName(objectName);
    QFont font = label->font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * 1.2);
    label->setFont(font);
    return label;
}
} // namespace PaneHeading
