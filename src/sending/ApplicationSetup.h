// SPDX-License-Identifier: GPL-3.0-or-later
// What the program sets on its application object before the first window: where its settings
// live, how the desktop knows it, and that Qt's own texts speak German.
#pragma once

class QApplication;

namespace ApplicationSetup {
void apply(QApplication& app);
} // namespace ApplicationSetup
