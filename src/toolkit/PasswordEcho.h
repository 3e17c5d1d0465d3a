// SPDX-License-Identifier: GPL-3.0-or-later
// Keeps a password from a screen reader. Qt 6.4 puts the text of a password field into the
// field's accessibility events, typed or set, and a screen reader speaks it; while such a field
// has the keyboard, or while the program sets its text, its events go on with the text masked, as
// the field shows it.
#pragma once

class QLineEdit;
class QString;

namespace PasswordEcho {
// Watches the keyboard focus from now on; called once the QApplication exists.
void install();
// Sets a password field's text, the events it sends masked.
void setText(QLineEdit* field, const QString& text);
} // namespace PasswordEcho
