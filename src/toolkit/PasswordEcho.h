// SPDX-License-Identifier: GPL-3.0-or-later
// Keeps a typed password from a screen reader. Qt 6.4 puts the characters typed into a password
// field into the field's accessibility events, and a screen reader speaks them one by one; while
// such a field has the keyboard, its events go on with each character masked, as the field shows
// it.
#pragma once

namespace PasswordEcho {
// Watches the keyboard focus from now on; called once the QApplication exists.
void install();
} // namespace PasswordEcho
