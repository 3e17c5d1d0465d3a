// SPDX-License-Identifier: GPL-3.0-or-later
// The backgrounds that mark input fields (light red for a field in error, light yellow for two
// fields that differ), and password fields that show "*" for every character.
#pragma once

#include <QColor>

class QLineEdit;
class QWidget;

namespace FieldColors {

inline const QColor LightRed { 255, 192, 192 };
inline const QColor LightYellow { 255, 255, 192 };

// An invalid colour gives the field its normal background back.
void setBackground(QWidget* field, const QColor& color = QColor());
inline void setMarked(QWidget* field, bool marked)
{
    setBackground(field, marked ? LightRed : QColor());
}

// The field hides its text behind "*", one for each character.
void showAsStars(QLineEdit* field);

} // namespace FieldColors
