// SPDX-License-Identifier: GPL-3.0-or-later
// How the program's windows and controls present themselves to screen readers, where Qt's own
// accessibility interfaces fall short on Linux (AT-SPI).
#pragma once

namespace Accessibility {
// Installs the program's interfaces. Called once the QApplication exists (Qt installs its own
// then, and the one installed last is asked first) and before a screen reader has asked for the
// application object.
void install();
} // namespace Accessibility
