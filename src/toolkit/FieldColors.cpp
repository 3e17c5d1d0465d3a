// SPDX-License-Identifier: GPL-3.0-or-later
#include "FieldColors.h"

#include "TextContrast.h"

#include <QApplication>
#include <QLineEdit>
#include <QPalette>
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
    if (background.isValid()) {
        style += QStringLiteral("background-color: rgb(%1, %2, %3); ")
                     .arg(background.red())
                     .arg(background.green())
                     .arg(background.blue());
        // The desktop's colours, not the field's own, which a style sheet may have changed.
        const QPalette desktop = QApplication::palette(field);
        const QColor text = desktop.color(QPalette::Text);
        const QColor readable = textOn(background, text, desktop);
        if (readable != text)
            style += QStringLiteral("color: rgb(%1, %2, %3); ")
                         .arg(readable.red())
                         .arg(readable.green())
                         .arg(readable.blue());
    }
    field->setStyleSheet(style);
}
} // namespace

void setBackground(QWidget* field, const QColor& color)
{
    field->setProperty(BackgroundProperty, color);
    applyStyle(field);
}

QColor textOn(const QColor& background, const QColor& text, const QPalette& desktop)
{
    const quint32 rgb = TextContrast::textOn(background.rgb() & 0xFFFFFF, text.rgb() & 0xFFFFFF,
                                             desktop.color(QPalette::Window).rgb() & 0xFFFFFF,
                                             desktop.color(QPalette::WindowText).rgb() & 0xFFFFFF);
    return rgb == (text.rgb() & 0xFFFFFF) ? text : QColor(QRgb(rgb));
}

QColor warningTextColour(const QPalette& palette)
{
    return QColor(QRgb(TextContrast::warningText(palette.color(QPalette::Window).rgb() & 0xFFFFFF,
                                                 palette.color(QPalette::WindowText).rgb() & 0xFFFFFF)));
}

void showAsStars(QLineEdit* field)
{
    field->setEchoMode(QLineEdit::Password);
    field->setProperty(StarsProperty, true);
    applyStyle(field);
}

} // namespace FieldColors
