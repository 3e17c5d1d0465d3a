// SPDX-License-Identifier: GPL-3.0-or-later
// "Telefonbuch": the user's phonebook, a page of the service, in a side window at the main
// window's right edge that follows it. A click on an entry puts its name and number into the
// main window's recipient fields and closes the phonebook.
#pragma once

#include <QWidget>

class frmMain;
class WebView;

class frmPhonebook : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmPhonebook)

public:
    explicit frmPhonebook(frmMain* main);
    ~frmPhonebook() override;

    WebView* web;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void web_BeforeNavigate(const QString& url, bool* cancel);

    frmMain* m_main;
};
