// SPDX-License-Identifier: GPL-3.0-or-later
#include "SendRecord.h"

#include "SendRecordWriter.h"
#include "settings/ToolRegistry.h"
#include "toolkit/Clock.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QIODevice>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QStandardPaths>
#include <QThread>
#include <QTimer>
#include <QVariant>

using namespace SendRecordSql;

namespace {
const QString RetentionValue = QStringLiteral("SendRecordDays");

// Searches of fewer characters than a trigram can't use the index and read the entries instead.
constexpr int IndexedLength = 3;
QString rootKey()
{
    return QString::fromUtf16(ToolRegistry::RootKey);
}

QString columnOf(SendRecord::Column column)
{
    switch (column) {
    case SendRecord::Column::Time:
        return QStringLiteral("time");
    case SendRecord::Column::Road:
        return QStringLiteral("road");
    case SendRecord::Column::Name:
        return QStringLiteral("name");
    case SendRecord::Column::Number:
        return QStringLiteral("number");
    case SendRecord::Column::Text:
        return QStringLiteral("text");
    case SendRecord::Column::Parts:
        return QStringLiteral("parts");
    case SendRecord::Column::Credits:
        return QStringLiteral("credits");
    case SendRecord::Column::State:
        return QStringLiteral("outcome");
    }
    return QStringLiteral("time");
}

SendRecord::Road roadOf(const QString& name)
{
    for (SendRecord::Road road : { SendRecord::Road::Single, SendRecord::Road::Bulk, SendRecord::Road::Scheduled,
                                   SendRecord::Road::HandOff, SendRecord::Road::Command })
        if (SendRecord::roadName(road) == name)
            return road;
    return SendRecord::Road::Single;
}

SendOutcome::State stateOf(const QString& name)
{
    return SendOutcome::fromName(name).value_or(SendOutcome::State::Unknown);
}

// The search text as one FTS5 phrase: any character may stand in it once quotes are doubled.
QString phraseOf(const QString& text)
{
    QString quoted = text;
    quoted.replace(u'"', QStringLiteral("\"\""));
    return u'"' + quoted + u'"';
}

QString likePatternOf(const QString& text)
{
    QString escaped = text;
    escaped.replace(u'\\', QStringLiteral("\\\\"))
        .replace(u'%', QStringLiteral("\\%"))
        .replace(u'_', QStringLiteral("\\_"));
    return u'%' + escaped + u'%';
}

// The FROM and WHERE clauses of a query and their values, in order.
struct Filter
{
    QString from = QStringLiteral(" FROM entries");
    QString where;
    QVariantList values;
    bool indexed = false; // the trigram index finds the entries
};

Filter filterOf(const SendRecord::Query& query)
{
    QStringList conditions;
    Filter filter;
    if (query.text.size() >= IndexedLength) {
        filter.from = QStringLiteral(" FROM entries_fts JOIN entries ON entries.id = entries_fts.rowid");
        filter.indexed = true;
        conditions.append(QStringLiteral("entries_fts MATCH ?"));
        filter.values.append(phraseOf(query.text));
    } else if (!query.text.isEmpty()) {
        conditions.append(QStringLiteral("(entries.number LIKE ? ESCAPE '\\' OR entries.name LIKE ? ESCAPE '\\' "
                                         "OR entries.text LIKE ? ESCAPE '\\')"));
        const QString pattern = likePatternOf(query.text);
        filter.values << pattern << pattern << pattern;
    }
    if (query.from.isValid()) {
        conditions.append(QStringLiteral("entries.time >= ?"));
        filter.values.append(query.from.toMSecsSinceEpoch());
    }
    if (query.to.isValid()) {
        conditions.append(QStringLiteral("entries.time < ?"));
        filter.values.append(query.to.toMSecsSinceEpoch());
    }
    // The index reads only the entries recorded within the range: the first and the last of it
    // are one look-up each in the index on time, as entries are recorded in the order of time.
    if (filter.indexed && query.from.isValid()) {
        conditions.append(
            QStringLiteral("entries_fts.rowid >= (SELECT id FROM entries WHERE time >= ? ORDER BY time, id LIMIT 1)"));
        filter.values.append(query.from.toMSecsSinceEpoch());
    }
    if (filter.indexed && query.to.isValid()) {
        conditions.append(QStringLiteral(
            "entries_fts.rowid <= (SELECT id FROM entries WHERE time < ? ORDER BY time DESC, id DESC LIMIT 1)"));
        filter.values.append(query.to.toMSecsSinceEpoch());
    }
    if (!conditions.isEmpty())
        filter.where = QStringLiteral(" WHERE ") + conditions.join(QStringLiteral(" AND "));
    return filter;
}

void bindAll(QSqlQuery& sql, const QVariantList& values)
{
    for (const QVariant& value : values)
        sql.addBindValue(value);
}

// A field as Excel reads it back: quoted when it holds the separator, a quote, a line break or
// blanks at its ends.
QString csvField(const QString& value)
{
    const bool quote = value.contains(u';') || value.contains(u'"') || value.contains(u'\n') || value.contains(u'\r')
        || value.startsWith(u' ') || value.endsWith(u' ');
    if (!quote)
        return value;
    QString doubled = value;
    doubled.replace(u'"', QStringLiteral("\"\""));
    return u'"' + doubled + u'"';
}

QString roadLabelOf(SendRecord::Road road)
{
    switch (road) {
    case SendRecord::Road::Single:
        return QStringLiteral("Einzel-SMS");
    case SendRecord::Road::Bulk:
        return QStringLiteral("MultiSMS");
    case SendRecord::Road::Scheduled:
        return QStringLiteral("Terminversand");
    case SendRecord::Road::HandOff:
        return QStringLiteral("Quellbote Server");
    case SendRecord::Road::Command:
        return QStringLiteral("quellbote-send");
    }
    return {};
}

} // namespace

QString SendRecord::roadLabel(Road road)
{
    return roadLabelOf(road);
}

QString SendRecord::roadName(Road road)
{
    switch (road) {
    case Road::Single:
        return QStringLiteral("single");
    case Road::Bulk:
        return QStringLiteral("bulk");
    case Road::Scheduled:
        return QStringLiteral("scheduled");
    case Road::HandOff:
        return QStringLiteral("handoff");
    case Road::Command:
        return QStringLiteral("command");
    }
    return {};
}

int SendRecord::storedRetentionDays()
{
    bool ok = false;
    const int days = ToolRegistry::GetRegString(rootKey(), RetentionValue).trimmed().toInt(&ok);
    return ok && days >= NoRecord ? days : DefaultDays;
}

void SendRecord::storeRetentionDays(int days)
{
    ToolRegistry::SaveRegString(rootKey(), RetentionValue, QString::number(days));
}

QString SendRecord::defaultPath()
{
    const QString fileName = QStringLiteral("sendrecord.sqlite");
    if (ToolRegistry::usesOwnStoreFile())
        return QFileInfo(ToolRegistry::storeFileName()).absoluteDir().filePath(fileName);
    // Named here rather than by the application's name, which the window sets to the product's.
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/Tarnholt/SMS/")
        + fileName;
}

SendRecord::SendRecord(const QString& path, int retentionDays, QObject* parent)
    : QObject(parent)
    , m_path(path)
    , m_connection(SendRecordSql::newConnectionName())
    , m_wanted(retentionDays != NoRecord)
{
    if (!m_wanted) {
        for (const QString& suffix : { QString(), QStringLiteral("-wal"), QStringLiteral("-shm") })
            QFile::remove(m_path + suffix);
        return;
    }
    if (!open())
        return;
    removeOlderThan(retentionDays);
    if (!isRecording())
        return;
    m_thread = std::make_unique<QThread>();
    m_writer = std::make_unique<SendRecordWriter>(this, m_path);
    m_writer->moveToThread(m_thread.get());
    m_thread->start();
    SendRecordWriter* writer = m_writer.get();
    QString error;
    QMetaObject::invokeMethod(
        writer, [writer, &error] { error = writer->open(); }, Qt::BlockingQueuedConnection);
    if (!error.isEmpty())
        fail(error);
}

SendRecord::~SendRecord()
{
    flush();
    if (m_thread) {
        SendRecordWriter* writer = m_writer.get();
        QMetaObject::invokeMethod(
            writer, [writer] { writer->close(); }, Qt::BlockingQueuedConnection);
        m_thread->quit();
        m_thread->wait();
    }
    m_writer.reset();
    {
        QSqlDatabase db = database();
        if (db.isValid())
            db.close();
    }
    QSqlDatabase::removeDatabase(m_connection);
}

QSqlDatabase SendRecord::database() const
{
    return QSqlDatabase::database(m_connection, false);
}

bool SendRecord::open()
{
    if (!QDir().mkpath(QFileInfo(m_path).absolutePath())) {
        fail(QStringLiteral("Der Ordner %1 kann nicht angelegt werden.").arg(QFileInfo(m_path).absolutePath()));
        return false;
    }
    const bool created = !QFileInfo::exists(m_path);
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_connection);
    if (!db.isValid()) {
        fail(QStringLiteral("Der SQLite-Treiber von Qt fehlt (libqt6sql6-sqlite)."));
        return false;
    }
    db.setDatabaseName(m_path);
    // Another instance (the window beside quellbote-send) may be writing: wait a little, not long.
    db.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=500"));
    if (!db.open()) {
        fail(db.lastError().text());
        return false;
    }
    QSqlQuery sql(db);
    for (const QString& pragma :
         { QStringLiteral("PRAGMA journal_mode=WAL"), QStringLiteral("PRAGMA synchronous=NORMAL") }) {
        if (!sql.exec(pragma)) {
            fail(errorOf(sql));
            return false;
        }
    }
    const QStringList statements {
        QStringLiteral("BEGIN IMMEDIATE"),
        QStringLiteral("CREATE TABLE IF NOT EXISTS entries (id INTEGER PRIMARY KEY, time INTEGER NOT NULL, "
                       "road TEXT NOT NULL, name TEXT NOT NULL, number TEXT NOT NULL, text TEXT NOT NULL, "
                       "parts INTEGER NOT NULL, credits INTEGER NOT NULL, outcome TEXT NOT NULL, "
                       "answer TEXT NOT NULL)"),
        QStringLiteral("CREATE INDEX IF NOT EXISTS entries_time ON entries(time)"),
        // The index of the search: every three characters of number, name and text, case aside.
        // Entries are indexed after they are written, up to the entry entries_indexed names.
        QStringLiteral("CREATE VIRTUAL TABLE IF NOT EXISTS entries_fts USING fts5(number, name, text, "
                       "content='entries', content_rowid='id', tokenize='trigram')"),
        QStringLiteral("CREATE TABLE IF NOT EXISTS entries_indexed (upto INTEGER NOT NULL)"),
        // A record whose entries were indexed as they were written has all of them indexed.
        QStringLiteral("INSERT INTO entries_indexed SELECT CASE WHEN EXISTS (SELECT 1 FROM sqlite_master WHERE "
                       "type = 'trigger' AND name = 'entries_added') THEN (SELECT coalesce(max(id), 0) FROM entries) "
                       "ELSE 0 END WHERE NOT EXISTS (SELECT 1 FROM entries_indexed)"),
        QStringLiteral("DROP TRIGGER IF EXISTS entries_added"),
        // Only entries already indexed are removed (removeOlderThan catches up first).
        QStringLiteral("CREATE TRIGGER IF NOT EXISTS entries_removed AFTER DELETE ON entries BEGIN "
                       "INSERT INTO entries_fts(entries_fts, rowid, number, name, text) "
                       "VALUES ('delete', old.id, old.number, old.name, old.text); END"),
        QStringLiteral("COMMIT"),
    };
    // A record in today's form needs nothing written, so it opens while another instance writes.
    if (!sql.exec(QStringLiteral("SELECT (SELECT count(*) FROM sqlite_master WHERE type = 'table' AND name = "
                                 "'entries_indexed') - (SELECT count(*) FROM sqlite_master WHERE type = 'trigger' "
                                 "AND name = 'entries_added')"))
        || !sql.next()) {
        fail(errorOf(sql));
        return false;
    }
    const bool current = sql.value(0).toInt() == 1;
    sql.finish();
    for (const QString& statement : current ? QStringList() : statements) {
        if (!sql.exec(statement)) {
            fail(rollback(sql));
            return false;
        }
    }
    // Names, numbers and texts of the user's contacts: for the user's eyes only. SQLite gives its
    // -wal and -shm files the same permissions.
    if (created)
        QFile::setPermissions(m_path, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    m_open = true;
    return true;
}

void SendRecord::fail(const QString& error)
{
    m_open = false;
    m_pending.clear();
    if (m_failed)
        return;
    m_failed = true;
    m_error = QStringLiteral("Das Versandprotokoll %1 kann nicht geschrieben werden: %2").arg(m_path, error);
    emit failed(m_error);
}

bool SendRecord::isRecording() const
{
    return m_wanted && m_open;
}

QString SendRecord::lastError() const
{
    return m_error;
}

bool SendRecord::takeFailure()
{
    if (!m_failed || m_failureTaken)
        return false;
    m_failureTaken = true;
    return true;
}

void SendRecord::add(const Entry& entry)
{
    if (!isRecording())
        return;
    m_pending.append(entry);
    // The local time is dear to read next to a request on loopback; the record keeps UTC anyway.
    if (!m_pending.constLast().time.isValid())
        m_pending.last().time = Clock::isPinned() ? Clock::now().toUTC() : QDateTime::currentDateTimeUtc();
    if (!m_flushQueued) {
        m_flushQueued = true;
        QTimer::singleShot(0, this, &SendRecord::handOver);
    }
}

void SendRecord::handOver()
{
    m_flushQueued = false;
    if (m_pending.isEmpty())
        return;
    if (!isRecording() || !m_writer) {
        m_pending.clear();
        return;
    }
    SendRecordWriter* writer = m_writer.get();
    QMetaObject::invokeMethod(
        writer, [writer, entries = std::exchange(m_pending, {})] { writer->enqueue(entries); }, Qt::QueuedConnection);
}

void SendRecord::flush()
{
    handOver();
    if (!isRecording() || !m_writer)
        return;
    SendRecordWriter* writer = m_writer.get();
    QString error;
    QMetaObject::invokeMethod(
        writer, [writer, &error] { error = writer->writeQueued(); }, Qt::BlockingQueuedConnection);
    if (!error.isEmpty())
        fail(error);
}

void SendRecord::catchUp()
{
    flush();
    if (!isRecording())
        return;
    QString error;
    if (m_writer) {
        SendRecordWriter* writer = m_writer.get();
        QMetaObject::invokeMethod(
            writer, [writer, &error] { error = writer->index(); }, Qt::BlockingQueuedConnection);
    } else {
        error = indexUnindexed(database());
    }
    if (!error.isEmpty())
        fail(error);
}

QList<SendRecord::Entry> SendRecord::search(const Query& query)
{
    const Filter filter = filterOf(query);
    // Only a search through the index needs it to have caught up; any other reads the entries.
    if (filter.indexed)
        catchUp();
    else
        flush();
    QList<Entry> entries;
    if (!isRecording())
        return entries;
    const QString order = query.order == Qt::AscendingOrder ? QStringLiteral(" ASC") : QStringLiteral(" DESC");
    // Entries are written in the order they are made, so the order of the index is that of time:
    // read in it, the index stops at the page's last entry instead of sorting every match.
    QString sortBy = QStringLiteral("entries_fts.rowid") + order;
    if (!filter.indexed || query.sortBy != Column::Time) {
        sortBy = QStringLiteral("entries.") + columnOf(query.sortBy);
        sortBy += order;
        sortBy += QStringLiteral(", entries.id");
        sortBy += order;
    }
    const QString statement = QStringLiteral("SELECT entries.id, entries.time, entries.road, entries.name, "
                                             "entries.number, entries.text, entries.parts, entries.credits, "
                                             "entries.outcome, entries.answer")
        + filter.from + filter.where + QStringLiteral(" ORDER BY ") + sortBy + QStringLiteral(" LIMIT ? OFFSET ?");
    QSqlQuery sql(database());
    sql.setForwardOnly(true);
    sql.prepare(statement);
    bindAll(sql, filter.values);
    sql.addBindValue(query.limit);
    sql.addBindValue(std::max(query.offset, 0));
    if (!sql.exec()) {
        // A search that fails says so once, but doesn't end the recording.
        if (!m_failed) {
            m_failed = true;
            m_error = QStringLiteral("Die Suche im Versandprotokoll ging nicht: %1").arg(errorOf(sql));
            emit failed(m_error);
        }
        return entries;
    }
    while (sql.next()) {
        Entry e;
        e.id = sql.value(0).toLongLong();
        e.time = QDateTime::fromMSecsSinceEpoch(sql.value(1).toLongLong(), Qt::UTC);
        e.road = roadOf(sql.value(2).toString());
        e.name = sql.value(3).toString();
        e.number = sql.value(4).toString();
        e.text = sql.value(5).toString();
        e.parts = sql.value(6).toInt();
        e.credits = sql.value(7).toInt();
        e.state = stateOf(sql.value(8).toString());
        e.answer = sql.value(9).toString();
        entries.append(e);
    }
    return entries;
}

qint64 SendRecord::count(const Query& query)
{
    const Filter filter = filterOf(query);
    if (filter.indexed)
        catchUp();
    else
        flush();
    if (!isRecording())
        return -1;
    QSqlQuery sql(database());
    sql.prepare(QStringLiteral("SELECT count(*)") + filter.from + filter.where);
    bindAll(sql, filter.values);
    if (!sql.exec() || !sql.next())
        return -1;
    return sql.value(0).toLongLong();
}

int SendRecord::removeOlderThan(int days)
{
    flush();
    if (days <= KeepForever || !isRecording())
        return 0;
    QSqlDatabase db = database();
    QSqlQuery sql(db);
    const auto failed = [this, &sql] {
        // Another instance writing just now is no failure: what is too old goes at the next start.
        const QString code = sql.lastError().nativeErrorCode();
        const QString error = rollback(sql);
        if (code != u"5" && code != u"6")
            fail(error);
        return 0;
    };
    if (!sql.exec(QStringLiteral("BEGIN IMMEDIATE")))
        return failed();
    // An entry not yet indexed stays until it is: the index can't forget what it never held.
    sql.prepare(QStringLiteral("DELETE FROM entries WHERE time < ? AND id <= (SELECT upto FROM entries_indexed)"));
    sql.addBindValue(Clock::now().toUTC().addDays(-days).toMSecsSinceEpoch());
    if (!sql.exec())
        return failed();
    const int removed = sql.numRowsAffected();
    // With the newest entries gone, SQLite gives their numbers again: the next entry must still
    // count as not indexed.
    if (!sql.exec(QStringLiteral("UPDATE entries_indexed SET upto = min(upto, (SELECT coalesce(max(id), 0) FROM "
                                 "entries))"))
        || !sql.exec(QStringLiteral("COMMIT")))
        return failed();
    return removed;
}

bool SendRecord::exportCsv(const QList<Entry>& entries, QIODevice* device)
{
    QString table = QStringLiteral("Zeit;Weg;Name;Nummer;Text;Teile;Credits;Ergebnis;Antwort\r\n");
    for (const Entry& e : entries) {
        const QStringList fields {
            e.time.toLocalTime().toString(QStringLiteral("dd.MM.yyyy HH:mm:ss")),
            roadLabelOf(e.road),
            csvField(e.name),
            csvField(e.number),
            csvField(e.text),
            QString::number(e.parts),
            QString::number(e.credits),
            SendOutcome::label(e.state),
            csvField(e.answer),
        };
        table += fields.join(u';') + QStringLiteral("\r\n");
    }
    const QByteArray bytes = QByteArrayLiteral("\xEF\xBB\xBF") + table.toUtf8();
    return device->write(bytes) == bytes.size();
}
