// SPDX-License-Identifier: GPL-3.0-or-later
// Loads the web engine module once, on first use.
#pragma once

#include <QString>

class WebEngineFactory;

namespace WebEngineLoader {
// The module's factory, or nullptr when the module can't be loaded (errorString() says why).
WebEngineFactory* factory();
QString errorString();
} // namespace WebEngineLoader
