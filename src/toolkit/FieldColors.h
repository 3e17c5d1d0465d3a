// SPDX-License-Identifier: GPL-3.0-or-later
// The backgrounds that mark input fields (light red for a field in error, light yellow for two
// fields that differ), the red of warnings, and password fields that show "*" for every character.
// Marks and warnings stay readable on a dark desktop.
#pragma once

#include <QColor>

class QLineEdit;
class QPalette;
class QWidget;

namespace FieldColors {

inline const QColor LightRed { 255, 192, 192 };
inline const QColor LightYellow { 255, 255, 192 };

// An invalid colour gives the field its normal background back. Where the desktop's text would
// not be readable on the colour (a dark theme's light text), the field's text turns dark.
void setBackground(QWidget* field, const QColor& color = QColor());
inline void setMarked(QWidget* field, bool marked)
{
    setBackground(field, marked ? LightRed : QColor());
}

// The desktop's `text` where it is painted on a background of the program's own; on a dark
// desktop it turns dark where it would not be readable there.
QColor textOn(const QColor& background, const QColor& text, const QPalette& desktop);

// The text colour of a warning (a balance too low to send): dark red on a light window, a light
// red on a dark one.
QColor warningTextColour(const QPalette& palette);

// The field hides its text behind "*", one for each character.
void showAsStars(QLineEdit* field);

} // namespace FieldColors
