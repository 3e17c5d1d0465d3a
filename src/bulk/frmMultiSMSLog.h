// SPDX-License-Identifier: GPL-3.0-or-later
// "Ihre Nachrichten werden verschickt": the progress of a bulk run and the gateway's answers,
// newest on top. Its button stops the run, and hides the window once the run is over. It draws
// what the sending tells of the run: every row's outcome is counted, sent, not sent, unknown and
// stopped by the stop list apart, and the rows that did not go out can be sent again.
#pragma once

#include "sending/SendingSession.h"

#include <QList>
#include <QPointer>
#include <QStringList>
#include <QWidget>

class QLabel;
class LogView;
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

    // Follows the runs of this sending from now on.
    void observe(SendingSession* sending);

    // Puts the answer's parts on top of the log, each behind the current date and time.
    void logAnswer(const QString& answer);
    // Empties the log for a new run of rows rows.
    void clearLog(int rows = 0);
    // The end of a run: "Vorgang abgeschlossen", and the figures when not every SMS went out.
    void finishRun();
    // The run's progress: the bar's value and lblSend. Shown a moment later, together with the
    // answers that came meanwhile; showNow() brings everything up to date at once.
    void setProgress(int value, const QString& text);
    void showNow();
    // A line under everything logged so far.
    void appendNote(const QString& note);

    // The rows (0-based) of the last run that did not go out, and those whose outcome is unknown.
    QList<int> rowsNotSent() const { return m_notSentRows; }
    QList<int> rowsUnknown() const { return m_unknownRows; }

    LogView* txtLog;
    QLabel* lblSend;
    QProgressBar* pBar;
    QPushButton* cmdClose;
    // Offered after a run with rows that did not go out.
    QPushButton* cmdResend;
    QLabel* ani;

signals:
    // The user asks to send the rows of the table that did not go out again; those of unknown
    // only if confirmed.
    void resendRequested(const QList<int>& notSent, const QList<int>& unknown);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    frmMultiSMSLog();
    void cmdClose_Click();
    void cmdResend_Click();
    void runStarted(int run, int rows);
    void rowPassed(int run, int position, int row, bool stopped);
    void delivered(const SendingSession::Delivery& delivery);
    void smsFinished(const SendingSession::Outcome& outcome);
    void runStopped(int run, const QString& note);
    void runFinished(int run);
    // A line on top of the log, behind the current date and time.
    void logLine(const QString& line);
    // Answers and progress come faster than a window can be drawn for each; the window shows
    // them a few times a second, all that came meanwhile at once.
    void scheduleShow();
    QString progressText(int position) const;
    QString closingText() const;
    void announceEnd();
    void layOutTop();
    // The stamp of the log's lines for this moment. Reading the local time is dear next to a
    // request on loopback; the stamp changes once a second, and is made anew only then.
    QString stampNow();

    QPointer<SendingSession> m_sending;
    int m_run = 0;
    // The lines of each answer and failure not yet shown, oldest first.
    QStringList m_pendingEntries;
    qint64 m_stampSecond = -1;
    QString m_stamp;
    int m_pendingValue = -1;
    QString m_pendingText;
    bool m_textPending = false;
    QTimer* m_show;
    int m_rows = 0;
    int m_sent = 0;
    int m_lostOnTheWay = 0; // not sent for want of a connection or a folder: not counted as sent
    int m_stopListed = 0; // skipped: the number is on the stop list
    QList<int> m_notSentRows;
    QList<int> m_unknownRows;
    bool m_finished = false;
};
