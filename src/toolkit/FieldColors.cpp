// SPDX-License-Identifier: GPL-3.0-or-later
#include "FieldColors.h"

#include <QLineEdit>
#include <QVariant>

namespace FieldColors {
namespace {
const char* const StarsProperty = "quellboteStars";
const char* const BackgroundProperty = "quellboteBackground";

// Marks and stars share the field's style sheet, so each is written with the other.
void applyStyle(QWidget* field)
{
    QString style;
    if (field->property(StarsProperty).toBool())
        style += QStringLiteral("lineedit-password-character: 42; ");
    const QColor background = field->property(BackgroundProperty).value<QColor>();
    if (background.isValid())
        style += QStringLiteral("background-color: rgb(%1, %2, %3); ")
                     .arg(background.red())
                     .arg(background.green())
                     .arg(background.blue());
    field->setStyleSheet(style);
}
} // namespace

void setBackground(QWidget* field, const QColor& color)
{
    field->setProperty(BackgroundProperty, color);
    applyStyle(field);
}

void showAsStars(QLineEdit* field)
{
    field->setEchoMode(QLineEdit::Password);
    field->setProperty(StarsProperty, true);
    applyStyle(field);
}

} // namespace FieldColors
