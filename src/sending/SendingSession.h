// SPDX-License-Identifier: GPL-3.0-or-later
// What a send is, from the request to its outcome, without a window: the main window, the bulk
// log and quellbote-send drive it and observe it through its signals, and only draw.
//
// It owns the order of a bulk run (rows in table order, the text asked from its host afresh for
// every row, placeholders filled in), strictly one request at a time (the next is built while the
// one before is on its way and leaves as soon as that one's answer is read), the balance test,
// the route (gateway or the local server's folder), the reading of answers and the outcome of
// every SMS. A further message or run queues behind the one in hand.
#pragma once

#include "GatewayRequest.h"
#include "SendOutcome.h"
#include "StopList.h"
#include "bulk/RecipientTable.h"

#include <QObject>
#include <QPointer>
#include <QString>

#include <deque>
#include <functional>
#include <memory>
#include <optional>

class Inet;
class RunRecord;

class SendingSession : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(SendingSession)

public:
    // What only the driver knows.
    struct Host
    {
        // The message as the user has it now: a run reads it for every row, and the size that
        // decides a long SMS is taken from it.
        std::function<QString()> messageText;
        // Asked before a part goes out with the sender identity on but empty: true sends it.
        std::function<bool()> sendWithoutSender;
    };

    // What a send is made with, fixed when it starts.
    struct Send
    {
        QString password;
        bool isMultiSMSMode = false;
        int chkPrivat = 1; // check box values: only 1 counts as ticked
        int chkPublic = 0;
        std::optional<GatewayRequest::Schedule> schedule;
        // Numbers that get no SMS, read once when the send starts: a message or a run's row to
        // one of them is skipped before anything is made of it.
        StopList stopList;
    };

    // One part handed over and what became of it.
    struct Delivery
    {
        int run = 0; // the bulk run it belongs to; 0 for a single message
        int row = -1; // its row (0-based) in a run, -1 for a single message
        int part = 0;
        int parts = 1;
        QString number;
        QString name;
        SendOutcome::State state = SendOutcome::State::Sent;
        bool answered = false; // the gateway answered; answer holds its words
        QString answer;
        QString failure; // why no answer came, or why the job file wasn't written
        bool certificateRefused = false;
        bool handOff = false; // written to the server folder instead of the gateway
        bool declined = false; // kept back by the user at the question about the sender
    };

    // The outcome of one SMS (a message or a row), once every part of it has one.
    struct Outcome
    {
        int run = 0;
        int row = -1;
        QString number;
        QString name;
        QString text; // as it goes on the wire, all parts
        int parts = 1;
        SendOutcome::State state = SendOutcome::State::Sent;
        QString answer; // the gateway's words, the parts' joined by "; ", or why not
        bool stopListed = false; // skipped: the number is on the stop list, nothing was sent
    };

    explicit SendingSession(const Host& host, QObject* parent = nullptr);
    ~SendingSession() override;

    // The transfer that carries the requests; its proxy is the driver's to set.
    Inet* transfer() const { return m_inet; }

    // The balance test before a send: the warning's text when the last known balance (-1: not
    // known, which never stops a send) is below count SMS at the price of the test; empty
    // otherwise. bulk: a MultiSMS run, which has words of its own.
    static QString balanceRefusal(qint32 credits, double count, const MessageSize::SmsOptions& options, bool bulk);

    // Sends one message, its parts one after another. Returns its number for
    // messageHandedOver; parts that wait for an answer before them go out later. A number on the
    // send's stop list is skipped: it finishes at once, before this returns.
    int sendMessage(const Send& send, const QString& number, const QString& text, const QString& name);

    // A bulk run over rows, or only over those of only (0-based, in table order) when it isn't
    // empty. record, when given, gets every row's outcome as the run goes. Returns the run's
    // number (from 1).
    int startRun(const Send& send, const QList<RecipientRow>& rows, const QList<int>& only = {},
                 RunRecord* record = nullptr);
    // The rows not yet begun pass without a request; the one on its way goes on.
    void abortRun();
    // A run whose rows are still being handed over.
    bool isRunning() const;
    // Something is queued or on its way.
    bool isBusy() const;

signals:
    // Every part: its answer read, its transfer failed, or its job file written (or not).
    void delivered(const SendingSession::Delivery& delivery);
    // Every SMS, once all its parts have their outcome.
    void finished(const SendingSession::Outcome& outcome);
    void messageHandedOver(int message);
    void runStarted(int run, int rows);
    // A row (0-based, of the table) was handed over, or passed without a request when the run was
    // stopped; position counts from 1 and ends at the number of rows of the run.
    void rowPassed(int run, int position, int row, bool stopped);
    // A row without a number ends the run there; note says which.
    void runStopped(int run, const QString& note);
    // The last row of the run was handed over; answers may still come.
    void runFinished(int run);
    // Nothing queued, nothing on its way.
    void idle();

private:
    struct Job;
    struct Prepared;
    struct Tracking;

    void pump();
    // Makes the next request ready (or writes the next job file); false when nothing is left.
    bool prepareNext();
    bool prepareRow(Job& job);
    void preparePart(Job& job, const QString& number, const QString& name, const QString& text, int part, int parts,
                     int row);
    void sendPrepared();
    void handOff(Prepared& prepared);
    void transferEnded(int state);
    void handedOver(Job& job);
    void finishRun(Job& job);
    // One part's outcome joins its SMS's; the last one tells the SMS's.
    void account(Tracking& tracking, const Delivery& delivery);

    Host m_host;
    Inet* m_inet;
    std::deque<std::shared_ptr<Job>> m_jobs;
    std::unique_ptr<Prepared> m_prepared;
    std::unique_ptr<Prepared> m_inFlight;
    int m_lastMessage = 0;
    int m_lastRun = 0;
    bool m_pumping = false;
};
