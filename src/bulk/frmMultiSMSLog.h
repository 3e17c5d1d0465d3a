// SPDX-License-Identifier: GPL-3.0-or-later
// "Ihre Nachrichten werden verschickt": the progress of a bulk run and the gateway's answers,
// newest on top. Its button stops the run, and hides the window once the run is over.
#pragma once

#include <QSet>
#include <QStringList>
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
    // A request of row (0-based) that brought no answer: on top of the log, with the reason; the
    // row no longer counts as sent, also when its failure comes after the run's end.
    void logFailure(int row, const QString& number, const QString& name, const QString& reason);
    // Empties the log for a new run of rows rows.
    void clearLog(int rows = 0);
    // The rows of this run whose requests failed so far.
    int failedRows() const { return int(m_failedRows.size()); }
    // The end of a run: "Vorgang abgeschlossen", and how many rows did not go out, if any did not.
    void finishRun();
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
    QString closingText() const;
    void layOutTop();
    // The stamp of the log's lines for this moment. Reading the local time is dear next to a
    // request on loopback; the stamp changes once a second, and is made anew only then.
    QString stampNow();

    // The lines of each answer and failure not yet shown, oldest first.
    QStringList m_pendingEntries;
    qint64 m_stampSecond = -1;
    QString m_stamp;
    int m_pendingValue = -1;
    QString m_pendingText;
    bool m_textPending = false;
    QTimer* m_show;
    QSet<int> m_failedRows;
    int m_rows = 0;
    bool m_finished = false;
};
