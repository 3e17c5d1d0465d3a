// SPDX-License-Identifier: GPL-3.0-or-later
#include "SendingSession.h"

#include "GatewayAnswer.h"
#include "RecipientText.h"
#include "bulk/RunRecord.h"
#include "handoff/xmlServer.h"
#include "settings/CUrlStore.h"
#include "settings/cOptionen.h"
#include "toolkit/Inet.h"

#include <QElapsedTimer>
#include <QTimer>

namespace {
const QString FormHeader = QStringLiteral("Content-Type: application/x-www-form-urlencoded");
// Job files go without a wait; the windows get their turn this often in a long run of them.
constexpr int HandOffSliceMs = 15;

// The outcome of an SMS to a number on the stop list: nothing was made of it, nothing cost.
SendingSession::Outcome stopListed(int run, int row, const QString& number, const QString& name, const QString& text)
{
    SendingSession::Outcome outcome;
    outcome.run = run;
    outcome.row = row;
    outcome.number = number;
    outcome.name = name;
    outcome.text = text;
    outcome.parts = 0;
    outcome.state = SendOutcome::State::Skipped;
    outcome.answer = StopList::reason();
    outcome.stopListed = true;
    return outcome;
}
} // namespace

// The bookkeeping of one run, kept until the last of its outcomes is known.
struct RunBook
{
    int run = 0;
    std::unique_ptr<RunRecord> record;
    int unfinished = 0; // rows begun whose outcome isn't known yet
    bool handedAll = false;

    void outcome(int row, SendOutcome::State state)
    {
        if (record)
            record->outcome(row, state);
    }
    void closeIfDone()
    {
        if (handedAll && unfinished == 0 && record) {
            record->finish();
            record.reset();
        }
    }
};

// One SMS (a message, or a run's row) until all its parts have their outcome.
struct SendingSession::Tracking
{
    SendingSession::Outcome outcome;
    int pending = 0;
    QStringList answers;
    std::shared_ptr<RunBook> book;
};

// A message or a run, in the order they were asked for.
struct SendingSession::Job
{
    bool isRun = false;
    int id = 0;
    Send send;
    // The SMS in hand: its parts, the next to go, and its row in a run.
    QStringList parts;
    int nextPart = 0;
    int row = -1;
    QString number;
    QString name;
    std::shared_ptr<Tracking> tracking;
    // A run's rows and where it stands.
    QList<RecipientRow> rows;
    QList<int> order;
    int next = 0;
    bool aborted = false;
    bool exhausted = false;
    bool finished = false;
    int outstanding = 0; // parts made ready but not yet handed over
    std::shared_ptr<RunBook> book;
};

// A part ready to go: its request, or its job file.
struct SendingSession::Prepared
{
    std::shared_ptr<Job> job;
    std::shared_ptr<Tracking> tracking;
    Delivery delivery;
    QString url;
    QString body;
    QString text;
    bool lastOfUnit = false;
    bool declined = false;
};

SendingSession::SendingSession(const Host& host, QObject* parent)
    : QObject(parent)
    , m_host(host)
    , m_inet(new Inet(this))
{
    m_inet->setObjectName(QStringLiteral("iNet"));
    connect(m_inet, &Inet::StateChanged, this, &SendingSession::transferEnded);
}

SendingSession::~SendingSession() = default;

QString SendingSession::balanceRefusal(qint32 credits, double count, const MessageSize::SmsOptions& options, bool bulk)
{
    if (!MessageSize::isBalanceTooLow(credits, count, MessageSize::balanceTestPrice(options)))
        return {};
    return bulk ? QStringLiteral("Sie verfügen nicht mehr über ein ausreichendes Guthaben um alle Nachrichten zu "
                                 "verschicken.")
                : QStringLiteral("Sie verfügen nicht mehr über ein ausreichendes Guthaben um diese Nachricht zu "
                                 "verschicken.");
}

int SendingSession::sendMessage(const Send& send, const QString& number, const QString& text, const QString& name)
{
    const int id = ++m_lastMessage;
    if (send.stopList.contains(number)) {
        const Outcome skipped = stopListed(0, -1, number, name, text);
        QPointer<SendingSession> self(this);
        emit finished(skipped);
        if (self)
            emit messageHandedOver(id);
        return id;
    }
    auto job = std::make_shared<Job>();
    job->id = id;
    job->send = send;
    job->number = number;
    job->name = name;
    // The parts are cut now, from this copy: the text box may be emptied by an answer meanwhile.
    job->parts = GatewayRequest::sendMessageParts(text, MessageSize::smsOptionsOf(Options()));
    job->tracking = std::make_shared<Tracking>();
    job->tracking->outcome = { 0, -1, number, name, text, int(job->parts.size()), SendOutcome::State::Sent, {} };
    job->tracking->pending = int(job->parts.size());
    m_jobs.push_back(job);
    pump();
    return job->id;
}

int SendingSession::startRun(const Send& send, const QList<RecipientRow>& rows, const QList<int>& only,
                             RunRecord* record)
{
    auto job = std::make_shared<Job>();
    job->isRun = true;
    job->id = ++m_lastRun;
    job->send = send;
    job->rows = rows;
    if (only.isEmpty()) {
        job->order.reserve(rows.size());
        for (int i = 0; i < rows.size(); ++i)
            job->order.append(i);
    } else {
        job->order = only;
    }
    job->book = std::make_shared<RunBook>();
    job->book->run = job->id;
    job->book->record.reset(record);
    m_jobs.push_back(job);
    emit runStarted(job->id, int(job->order.size()));
    pump();
    return job->id;
}

void SendingSession::abortRun()
{
    for (const std::shared_ptr<Job>& job : m_jobs)
        if (job->isRun)
            job->aborted = true;
}

bool SendingSession::isRunning() const
{
    for (const std::shared_ptr<Job>& job : m_jobs)
        if (job->isRun)
            return true;
    return m_prepared && m_prepared->job->isRun && !m_prepared->job->finished;
}

bool SendingSession::isBusy() const
{
    return !m_jobs.empty() || m_prepared || m_inFlight;
}

void SendingSession::pump()
{
    // Re-entered from a box the host shows, or from an answer read meanwhile: the outer pass goes on.
    if (m_pumping)
        return;
    m_pumping = true;
    QPointer<SendingSession> self(this);
    QElapsedTimer slice;
    slice.start();
    while (self) {
        if (!m_prepared && !prepareNext())
            break;
        if (!self)
            return;
        if (m_prepared) {
            // Strictly one request at a time: this one leaves when the answer before is read.
            if (m_inFlight)
                break;
            sendPrepared();
            continue;
        }
        if (slice.elapsed() >= HandOffSliceMs) {
            QTimer::singleShot(0, this, &SendingSession::pump);
            break;
        }
    }
    if (!self)
        return;
    m_pumping = false;
    if (!isBusy())
        emit idle();
}

bool SendingSession::prepareNext()
{
    while (!m_jobs.empty()) {
        const std::shared_ptr<Job> job = m_jobs.front();
        if (job->nextPart < job->parts.size()) {
            const int part = job->nextPart++;
            preparePart(*job, job->number, job->name, job->parts.at(part), part, int(job->parts.size()), job->row);
            if (m_prepared)
                m_prepared->job = job;
            return true;
        }
        if (job->isRun && !job->exhausted && prepareRow(*job))
            continue;
        m_jobs.pop_front();
        if (job->isRun) {
            job->exhausted = true;
            if (job->outstanding == 0)
                finishRun(*job);
        }
    }
    return false;
}

bool SendingSession::prepareRow(Job& job)
{
    const int count = int(job.order.size());
    while (job.next < count) {
        const int position = job.next + 1;
        const int row = job.order.at(job.next++);
        if (job.aborted || row >= job.rows.size()) {
            // Stopped: the rows left pass without a request.
            job.book->outcome(row, SendOutcome::State::Skipped);
            emit rowPassed(job.id, position, row, true);
            continue;
        }
        const RecipientRow& r = job.rows.at(row);
        const QString txtSMS = m_host.messageText ? m_host.messageText() : QString();
        const std::optional<RecipientText::RowMessage> message
            = RecipientText::rowMessage(txtSMS, r.Name, r.Nummer, r.Freitext1, r.Freitext2);
        if (!message) {
            emit runStopped(job.id, RecipientText::missingNumberNote(row + 1, r.Name));
            job.next = count;
            return false;
        }
        if (job.send.stopList.contains(message->number)) {
            // Nothing of it is made: the row is recorded as skipped, and the run goes on.
            const Outcome skipped = stopListed(job.id, row, message->number, message->name, message->text);
            job.book->outcome(row, SendOutcome::State::Skipped);
            emit finished(skipped);
            emit rowPassed(job.id, position, row, false);
            continue;
        }
        job.row = row;
        job.number = message->number;
        job.name = message->name;
        job.parts = GatewayRequest::sendMessageParts(message->text, MessageSize::smsOptionsOf(Options()));
        job.nextPart = 0;
        job.tracking = std::make_shared<Tracking>();
        job.tracking->outcome = {
            job.id, row, message->number, message->name, message->text, int(job.parts.size()), SendOutcome::State::Sent,
            {}
        };
        job.tracking->pending = int(job.parts.size());
        job.tracking->book = job.book;
        ++job.book->unfinished;
        return true;
    }
    return false;
}

void SendingSession::preparePart(Job& job, const QString& number, const QString& name, const QString& text, int part,
                                 int parts, int row)
{
    const cOptionen& o = Options();
    auto prepared = std::make_unique<Prepared>();
    prepared->tracking = job.tracking;
    prepared->text = text;
    prepared->lastOfUnit = part + 1 == parts;
    Delivery& d = prepared->delivery;
    d.run = job.isRun ? job.id : 0;
    d.row = row;
    d.part = part;
    d.parts = parts;
    d.number = number;
    d.name = name;
    d.handOff = o.xmlIsServerUsed();
    ++job.outstanding;
    if (!d.handOff && GatewayRequest::asksForSender(o.isAbsenderkennung(), o.Absenderkennung())) {
        QPointer<SendingSession> self(this);
        const bool send = m_host.sendWithoutSender && m_host.sendWithoutSender();
        if (!self)
            return;
        if (!send) {
            // The user kept this part back.
            prepared->declined = true;
            d.declined = true;
            d.state = SendOutcome::State::Refused;
            d.failure = QStringLiteral("Nicht versendet: Es ist kein Absender angegeben.");
        }
    }
    if (!d.handOff && !prepared->declined) {
        const QString txtSMS = m_host.messageText ? m_host.messageText() : QString();
        const GatewayRequest::SendRequest request
            = GatewayRequest::requestFor(o, job.send.password, number, name, text, txtSMS, job.send.isMultiSMSMode,
                                         job.send.chkPrivat, job.send.chkPublic, job.send.schedule);
        prepared->body = GatewayRequest::requestBody(request);
        prepared->url = GatewayRequest::requestUrl(job.send.schedule.has_value(), Urls().SendSMS(), Urls().CronSMS());
    }
    m_prepared = std::move(prepared);
}

void SendingSession::sendPrepared()
{
    std::unique_ptr<Prepared> prepared = std::move(m_prepared);
    const std::shared_ptr<Job> job = prepared->job;
    --job->outstanding;
    QPointer<SendingSession> self(this);
    if (prepared->declined || prepared->delivery.handOff) {
        // Nothing waits for an answer: the outcome is known at once.
        if (prepared->delivery.handOff)
            handOff(*prepared);
        handedOver(*job);
        if (!self)
            return;
        emit delivered(prepared->delivery);
        if (self)
            account(*prepared->tracking, prepared->delivery);
        return;
    }
    if (job->isRun && job->book->record && prepared->delivery.part == 0)
        job->book->record->sending(prepared->delivery.row);
    m_inFlight = std::move(prepared);
    m_inet->Execute(m_inFlight->url, QStringLiteral("POST"), m_inFlight->body, FormHeader);
    handedOver(*job);
}

void SendingSession::handOff(Prepared& prepared)
{
    Delivery& d = prepared.delivery;
    const xmlServer::WriteResult written
        = xmlServer::writeJob(Options(), prepared.job->send.password, d.number, prepared.text);
    if (!written.ok && !written.error.isEmpty()) {
        d.state = SendOutcome::State::Unreached;
        d.failure
            = QStringLiteral("Die SMS an %1 konnte nicht an den Quellbote Server übergeben werden: ").arg(d.number)
            + written.error;
    } else {
        d.state = SendOutcome::State::Sent;
    }
}

void SendingSession::handedOver(Job& job)
{
    if (m_prepared || job.nextPart < job.parts.size())
        return;
    // The last part of the message or row is on its way.
    if (!job.isRun) {
        emit messageHandedOver(job.id);
        return;
    }
    emit rowPassed(job.id, job.next, job.row, false);
    if (job.exhausted && job.outstanding == 0)
        finishRun(job);
}

void SendingSession::finishRun(Job& job)
{
    if (job.finished)
        return;
    job.finished = true;
    job.book->handedAll = true;
    emit runFinished(job.id);
    job.book->closeIfDone();
}

void SendingSession::transferEnded(int state)
{
    if (!m_inFlight || (state != Inet::icError && state != Inet::icResponseCompleted))
        return;
    std::unique_ptr<Prepared> ended = std::move(m_inFlight);
    Delivery d = ended->delivery;
    if (state == Inet::icResponseCompleted) {
        QString body;
        for (QString chunk = m_inet->GetChunk(1024); !chunk.isEmpty(); chunk = m_inet->GetChunk(1024))
            body += chunk;
        d.answered = true;
        d.answer = body;
        d.state = GatewayAnswer::readAnswer(body).accepted ? SendOutcome::State::Sent : SendOutcome::State::Refused;
    } else {
        d.failure = m_inet->FailureText();
        d.certificateRefused = m_inet->CertificateRefused();
        d.state = SendOutcome::ofFailedTransfer(m_inet->RequestLeft(), m_inet->ResponseCode());
    }
    QPointer<SendingSession> self(this);
    if (d.run > 0) {
        // In a run the next row's request leaves first; the log is drawn while it is on its way.
        pump();
        if (!self)
            return;
        emit delivered(d);
    } else {
        // A single message's answer comes in a box; the next part waits for it, as it always has.
        emit delivered(d);
        if (!self)
            return;
        pump();
    }
    if (self)
        account(*ended->tracking, d);
}

void SendingSession::account(Tracking& tracking, const Delivery& delivery)
{
    Outcome& o = tracking.outcome;
    o.state = tracking.answers.isEmpty() && tracking.pending == o.parts ? delivery.state
                                                                        : SendOutcome::worse(o.state, delivery.state);
    if (delivery.answered) {
        const QStringList items = GatewayAnswer::readAnswer(delivery.answer).items;
        tracking.answers.append(items.join(QStringLiteral("; ")));
    } else if (!delivery.failure.isEmpty()) {
        tracking.answers.append(delivery.failure);
    } else {
        tracking.answers.append(QString());
    }
    if (--tracking.pending > 0)
        return;
    o.answer = tracking.answers.join(QStringLiteral("; "));
    if (tracking.book) {
        --tracking.book->unfinished;
        tracking.book->outcome(o.row, o.state);
    }
    const std::shared_ptr<RunBook> book = tracking.book;
    emit finished(o);
    if (book)
        book->closeIfDone();
}
