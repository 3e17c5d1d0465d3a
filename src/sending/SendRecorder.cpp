// SPDX-License-Identifier: GPL-3.0-or-later
#include "SendRecorder.h"

SendRecorder::SendRecorder(SendingSession* session, SendRecord* record, SendRecord::Road road, QObject* parent)
    : QObject(parent)
    , m_record(record)
    , m_road(road)
{
    connect(session, &SendingSession::finished, this, &SendRecorder::record);
}

int SendRecorder::creditsOf(const SendingSession::Outcome& outcome, int price)
{
    const bool billed = outcome.state == SendOutcome::State::Sent || outcome.state == SendOutcome::State::Unknown;
    return billed ? outcome.parts * price : 0;
}

void SendRecorder::record(const SendingSession::Outcome& outcome)
{
    if (!m_record)
        return;
    SendRecord::Entry entry;
    entry.road = m_road;
    entry.name = outcome.name;
    entry.number = outcome.number;
    entry.text = outcome.text;
    entry.parts = outcome.parts;
    entry.credits = creditsOf(outcome, m_price);
    entry.state = outcome.state;
    entry.answer = outcome.answer;
    m_record->add(entry);
}
