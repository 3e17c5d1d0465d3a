// SPDX-License-Identifier: GPL-3.0-or-later
#include "SendRecordWriter.h"

#include <QSqlError>
#include <QSqlQuery>

#ifdef Q_OS_LINUX
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>
#endif

#include <atomic>
#include <utility>

namespace {
// How long no entry must come before the index catches up.
constexpr int IndexDelayMs = 1000;
} // namespace

namespace SendRecordSql {

QString newConnectionName()
{
    static std::atomic<int> lastConnection { 0 };
    return QStringLiteral("sendrecord-%1").arg(++lastConnection);
}

QString errorOf(const QSqlQuery& sql)
{
    return sql.lastError().text();
}

QVariant textValue(const QString& text)
{
    return text.isNull() ? QVariant(QStringLiteral("")) : QVariant(text);
}

QString rollback(QSqlQuery& sql)
{
    const QString error = errorOf(sql);
    sql.finish();
    sql.exec(QStringLiteral("ROLLBACK"));
    return error;
}

QString indexUnindexed(QSqlDatabase db)
{
    QSqlQuery sql(db);
    if (!sql.exec(QStringLiteral("BEGIN IMMEDIATE")))
        return errorOf(sql);
    if (!sql.exec(
            QStringLiteral("SELECT (SELECT upto FROM entries_indexed), (SELECT coalesce(max(id), 0) FROM entries)"))
        || !sql.next())
        return rollback(sql);
    const qint64 upto = sql.value(0).toLongLong();
    const qint64 last = sql.value(1).toLongLong();
    sql.finish();
    if (last > upto) {
        sql.prepare(QStringLiteral("INSERT INTO entries_fts(rowid, number, name, text) "
                                   "SELECT id, number, name, text FROM entries WHERE id > ? AND id <= ?"));
        sql.addBindValue(upto);
        sql.addBindValue(last);
        if (!sql.exec())
            return rollback(sql);
        sql.prepare(QStringLiteral("UPDATE entries_indexed SET upto = ?"));
        sql.addBindValue(last);
        if (!sql.exec())
            return rollback(sql);
    }
    if (!sql.exec(QStringLiteral("COMMIT")))
        return rollback(sql);
    return {};
}

} // namespace SendRecordSql

using namespace SendRecordSql;

SendRecordWriter::SendRecordWriter(SendRecord* owner, const QString& path)
    : m_owner(owner)
    , m_path(path)
    , m_connection(newConnectionName())
{
}

QString SendRecordWriter::open()
{
#ifdef Q_OS_LINUX
    // The index costs a core its time, which a bulk run needs for its requests: the writer yields
    // to them (a nice thread still gets its share, so it never starves).
    setpriority(PRIO_PROCESS, pid_t(syscall(SYS_gettid)), 15);
#endif
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_connection);
    db.setDatabaseName(m_path);
    // The window and quellbote-send may write at the same time; the writer has time to wait its
    // turn, as nobody waits for it.
    db.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=5000"));
    if (!db.open())
        return db.lastError().text();
    QSqlQuery sql(db);
    if (!sql.exec(QStringLiteral("PRAGMA synchronous=NORMAL")))
        return errorOf(sql);
    m_indexLater = std::make_unique<QTimer>();
    m_indexLater->setSingleShot(true);
    m_indexLater->setInterval(IndexDelayMs);
    connect(m_indexLater.get(), &QTimer::timeout, this, [this] { report(index()); });
    // What an instance that was ended left unindexed.
    m_indexLater->start();
    return {};
}

QString SendRecordWriter::index()
{
    if (m_indexLater)
        m_indexLater->stop();
    if (m_failed)
        return {};
    const QString error = indexUnindexed(QSqlDatabase::database(m_connection, false));
    m_failed = !error.isEmpty();
    return error;
}

void SendRecordWriter::enqueue(const QList<SendRecord::Entry>& entries)
{
    m_queue += entries;
    if (m_writeQueued)
        return;
    m_writeQueued = true;
    QTimer::singleShot(0, this, [this] { report(writeQueued()); });
}

QString SendRecordWriter::writeQueued()
{
    m_writeQueued = false;
    const QList<SendRecord::Entry> entries = std::exchange(m_queue, {});
    if (entries.isEmpty() || m_failed)
        return {};
    const QString error = write(entries);
    m_failed = !error.isEmpty();
    if (!m_failed && m_indexLater)
        m_indexLater->start();
    return error;
}

void SendRecordWriter::close()
{
    index();
    m_indexLater.reset();
    {
        QSqlDatabase db = QSqlDatabase::database(m_connection, false);
        if (db.isValid())
            db.close();
    }
    QSqlDatabase::removeDatabase(m_connection);
    moveToThread(m_owner->thread());
}

QString SendRecordWriter::write(const QList<SendRecord::Entry>& entries)
{
    QSqlDatabase db = QSqlDatabase::database(m_connection, false);
    if (!db.transaction())
        return db.lastError().text();
    QSqlQuery sql(db);
    sql.prepare(QStringLiteral("INSERT INTO entries (time, road, name, number, text, parts, credits, outcome, "
                               "answer) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)"));
    for (const SendRecord::Entry& e : entries) {
        sql.addBindValue(e.time.toMSecsSinceEpoch());
        sql.addBindValue(SendRecord::roadName(e.road));
        sql.addBindValue(textValue(e.name));
        sql.addBindValue(textValue(e.number));
        sql.addBindValue(textValue(e.text));
        sql.addBindValue(e.parts);
        sql.addBindValue(e.credits);
        sql.addBindValue(SendOutcome::name(e.state));
        sql.addBindValue(textValue(e.answer));
        if (!sql.exec()) {
            const QString error = errorOf(sql);
            sql.finish();
            db.rollback();
            return error;
        }
    }
    if (!db.commit()) {
        const QString error = db.lastError().text();
        db.rollback();
        return error;
    }
    return {};
}

void SendRecordWriter::report(const QString& error)
{
    if (!error.isEmpty())
        QMetaObject::invokeMethod(
            m_owner, [owner = m_owner, error] { owner->fail(error); }, Qt::QueuedConnection);
}
