// SPDX-License-Identifier: GPL-3.0-or-later
// A pane of the options dialog that shows a page of the service: the shop ("Credits kaufen")
// or the list of scheduled jobs ("Terminversand"). A loading text and a clip stand in for the
// page until it has loaded; the page has no context menu.
#pragma once

#include <QWidget>

class QLabel;
class WebView;

class OptionsWebPane : public QWidget
{
    Q_OBJECT

public:
    // names: the box, heading, loading text, animation and browser, as the dialog knows them.
    struct Names
    {
        const char* box;
        const char* heading;
        const char* loading;
        const char* animation;
        const char* browser;
    };
    OptionsWebPane(const Names& names, const QString& heading, const QString& loadingText, QWidget* parent = nullptr);

    // Loads the page anew; the clip plays until it has loaded.
    void load(const QString& url);
    // Leaves the page out of view until its next load.
    void hidePage();

    WebView* browser;
    QLabel* ani;
    QLabel* loadingLabel;

signals:
    // The page followed a "close://" link.
    void closeRequested();

private:
    // The page (or the view's word that there is none) in place of the loading text and clip.
    void showBrowser();
};
