// SPDX-License-Identifier: GPL-3.0-or-later
// The service's news, shown once for each new news number. The window is loaded at start-up
// without showing; it shows itself when its page has loaded, and the page's own link closes it.
#pragma once

#include <QWidget>

class Inet;
class QVBoxLayout;
class WebView;

class frmNews : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmNews)

public:
    // The one news window; load() makes it, without showing it.
    static frmNews* load();
    static frmNews* loaded();
    ~frmNews() override;

    // Asks the service for the current news number and opens the news page when it is new to
    // the user (or always, for -1). Unloads the window when there is nothing new.
    void checkForInfo();

    // Made when there is a page to show, so that a start without news starts no browser.
    WebView* wBrowser = nullptr;
    Inet* iNet;

private:
    frmNews();
    void navigateToNews();
    void wBrowser_DocumentComplete(const QString& url);

    QVBoxLayout* m_layout;
};
