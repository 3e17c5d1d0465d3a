// SPDX-License-Identifier: GPL-3.0-or-later
// "Kein Internet": comes when the version check at start can't reach the service. Retry closes
// it, Beenden ends the program at once, Einstellungen opens the options.
#pragma once

#include <QDialog>

#include <functional>

class frmNoInternet : public QDialog
{
    Q_OBJECT

public:
    explicit frmNoInternet(QWidget* parent = nullptr);

    // Shows the window modally, owned by the main window.
    static void showBlocking(QWidget* owner);

    // Opens the options dialog; until that exists there is nothing to open.
    static void setOptionsOpener(std::function<void(QWidget*)> opener);
    // Tests replace the immediate end of the program.
    static void setExitHandlerForTesting(std::function<void()> handler);
};
