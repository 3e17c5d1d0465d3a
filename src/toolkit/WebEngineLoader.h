// SPDX-License-Identifier: GPL-3.0-or-later
// Loads the web engine module once, on first use.
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

class WebEngineFactory;

namespace WebEngineLoader {
// The module's factory, or nullptr when the module can't be loaded (errorString() says why).
WebEngineFactory* factory();
QString errorString();
// Tests look for the module in these folders only (none: where the program looks), as if it had
// not been looked for yet.
void setFoldersForTesting(const std::optional<QStringList>& folders);
} // namespace WebEngineLoader
