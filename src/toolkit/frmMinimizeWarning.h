// SPDX-License-Identifier: GPL-3.0-or-later
// The hint that comes when the main window goes to the notification area.
#pragma once

#include <QWidget>

class frmMinimizeWarning : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmMinimizeWarning)

public:
    explicit frmMinimizeWarning(QWidget* parent = nullptr);
};
