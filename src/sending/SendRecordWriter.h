// SPDX-License-Identifier: GPL-3.0-or-later
// The send record's writer: entries written on a thread of their own, through a connection of
// their own, and the index that follows them; beside it the few SQL helpers both sides share.
#pragma once

#include "SendRecord.h"

#include <QList>
#include <QObject>
#include <QSqlDatabase>
#include <QString>
#include <QTimer>
#include <QVariant>

#include <memory>

class QSqlQuery;

namespace SendRecordSql {
// A connection name no other record of this process has.
QString newConnectionName();
QString errorOf(const QSqlQuery& sql);
// Ends the transaction sql's statement failed in; returns what failed.
QString rollback(QSqlQuery& sql);
// A text for a column that holds no NULL: Qt binds a null string as NULL.
QVariant textValue(const QString& text);
// Indexes the entries written since the index last caught up, in one transaction that holds the
// record's write lock, so that two instances never index an entry twice.
QString indexUnindexed(QSqlDatabase db);
} // namespace SendRecordSql

// Writes the entries on a thread of its own, through a connection of its own, each batch in one
// transaction; batches that come while one is written are written together after it. Entries are
// indexed once no more have come for a while: a bulk run pays only for the rows themselves, and
// the index catches up when it is through.
class SendRecordWriter : public QObject
{
public:
    SendRecordWriter(SendRecord* owner, const QString& path);

    // The rest runs on the writer's thread.
    QString open();
    // Indexes what is written and not yet indexed, by this instance or another.
    QString index();
    void enqueue(const QList<SendRecord::Entry>& entries);
    // Writes what is queued; the failure, the first time.
    QString writeQueued();
    // Ends the connection and gives the writer back to its owner's thread, to be deleted there.
    void close();

private:
    QString write(const QList<SendRecord::Entry>& entries);
    // Tells the owner, on its thread.
    void report(const QString& error);

    SendRecord* m_owner;
    QString m_path;
    QString m_connection;
    QList<SendRecord::Entry> m_queue;
    std::unique_ptr<QTimer> m_indexLater;
    bool m_writeQueued = false;
    bool m_failed = false;
};
