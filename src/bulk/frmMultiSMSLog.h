// SPDX-License-Identifier: GPL-3.0-or-later
// "Ihre Nachrichten werden verschickt": the progress of a bulk run and the gateway's answers,
// newest on top. Its button stops the run, and hides the window once the run is over.
#pragma once

#include <QWidget>

class QLabel;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;
class QTimer;

class frmMultiSMSLog : public QWidget
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(frmMultiSMSLog)

public:
    // The one log window, loaded on first use; the main window unloads it at the end.
    static frmMultiSMSLog* instance();
    static frmMultiSMSLog* loaded();
    ~frmMultiSMSLog() override;

    bool abortRequested = false;

    // Puts the answer's parts on top of the log, each behind the current date and time.
    void logAnswer(const QString& answer);
    // Empties the log for a new run.
    void clearLog();
    // The run's progress: the bar's value and lblSend. Shown a moment later, together with the
    // answers that came meanwhile; showNow() brings everything up to date at once.
    void setProgress(int value, const QString& text);
    void showNow();
    // A line under everything logged so far.
    void appendNote(const QString& note);

    QPlainTextEdit* txtLog;
    QLabel* lblSend;
    QProgressBar* pBar;
    QPushButton* cmdClose;
    QLabel* ani;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    frmMultiSMSLog();
    void cmdClose_Click();
    // Answers and progress come faster than a window can be drawn for each; the window shows
    // them a few times a second, all that came meanwhile at once.
    void scheduleShow();

    QString m_pendingAnswers;
    int m_pendingValue = -1;
    QString m_pendingText;
    bool m_textPending = false;
    QTimer* m_show;
};
