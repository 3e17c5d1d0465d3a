// SPDX-License-Identifier: GPL-3.0-or-later
// The bold heading that opens each pane of a dialog.
#pragma once

#include <QString>

class QLabel;
class QWidget;

namespace PaneHeading {
QLabel* make(const QString& objectName, const QString& text, QWidget* parent);
}
