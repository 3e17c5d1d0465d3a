// SPDX-License-Identifier: GPL-3.0-or-later
// Hands an address to the user's default browser; when that fails, a box names the homepage.
#pragma once

#include <QString>

class QWidget;

namespace tools {
// False, after the error box, when no browser could be started.
bool OpenInBrowser(const QString& url, QWidget* parent = nullptr);
} // namespace tools
