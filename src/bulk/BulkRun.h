// SPDX-License-Identifier: GPL-3.0-or-later
// A bulk run: the main window's message to every row of the MultiSMS table, one row after the
// other, with the row's values put into the text, its progress shown in the log window and a
// way to stop it. Requests go out strictly one after another; while one is under way the
// windows stay live, so that answers are logged and the run can be stopped.
#pragma once

#include <QString>

#include <functional>

class RecipientTable;
class frmMultiSMSLog;
class QWidget;

class BulkRun
{
public:
    // What the run needs of the main window.
    struct Host
    {
        // txtSMS, read afresh for every row.
        std::function<QString()> messageText;
        // One row's transaction; returns once its last request is on its way.
        std::function<void(const QString& number, const QString& text, const QString& name)> sendMessage;
        std::function<void()> refreshCredits;
        // False once the main window is gone; the run then ends at once.
        std::function<bool()> alive;
        // Where the log window comes up when it isn't shown yet.
        std::function<void(QWidget*)> placeWindow;
    };

    // Whether a run is under way; a second one doesn't start from inside the first.
    static bool isRunning();
    // The row (0-based) whose requests go out now; -1 outside a run.
    static int currentRow();

    // Walks the table. A row whose number is empty ends the run there, with a line in the log
    // that names it; the rows before it stay sent. table may go away during the run (its window
    // closed): the rows left then pass without a request.
    static void run(const RecipientTable* table, frmMultiSMSLog* log, const Host& host);
};
