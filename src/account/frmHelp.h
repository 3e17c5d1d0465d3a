// SPDX-License-Identifier: GPL-3.0-or-later
// The online help: the service's help page under a heading, in a window of its own.
#pragma once

#include <QWidget>

class WebView;

class frmHelp : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmHelp)

public:
    // The one help window, created on first use and shown; closing it unloads it.
    static frmHelp* showHelp();
    static frmHelp* loaded();
    ~frmHelp() override;

    WebView* browser;

private:
    frmHelp();
};
