// SPDX-License-Identifier: GPL-3.0-or-later
// The folder of the executable, where the branding file oem.inf and the updater lie.
#pragma once

#include <QString>

namespace ProgramFolder {
QString path();
// The branding file "oem.inf" in the program's folder.
QString oemFile();
// Whether the branding file exists: a test of the exact path, any failure meaning no.
bool oemFileExists();
// Tests point the program at a folder of their own; an empty path restores the real one.
void setPathForTesting(const QString& folder);
} // namespace ProgramFolder
