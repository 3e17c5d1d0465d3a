// SPDX-License-Identifier: GPL-3.0-or-later
// Puts every SMS a sending object finishes into the send record, with the road it went and the
// Credits it cost: the front end that drives the sending says which road and at what price, the
// recorder does the rest.
#pragma once

#include "SendRecord.h"
#include "SendingSession.h"

#include <QObject>
#include <QPointer>

class SendRecorder : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(SendRecorder)

public:
    // Records session's outcomes into record from now on; neither is owned.
    SendRecorder(SendingSession* session, SendRecord* record, SendRecord::Road road, QObject* parent = nullptr);

    // The road and the price of one SMS (txtKostenProSMS, MessageSize::updateCost) for the
    // outcomes that finish from now on: set before each send.
    void setRoad(SendRecord::Road road) { m_road = road; }
    void setPrice(int price) { m_price = price; }

    // Credits of an outcome: its parts at price when it was sent or may have been; none otherwise.
    static int creditsOf(const SendingSession::Outcome& outcome, int price);

    // One outcome into the record.
    void record(const SendingSession::Outcome& outcome);

private:
    QPointer<SendRecord> m_record;
    SendRecord::Road m_road;
    int m_price = 0;
};
