// SPDX-License-Identifier: GPL-3.0-or-later
// The record of what went out: one entry per SMS that left the program (or was meant to), kept in
// an SQLite file in the user's data folder, so that "did the reminder go out on Tuesday, and what
// did it say?" has an answer. Never the password. A record that can't be opened or written never
// stops a send: the failure is told once, and later entries are dropped.
#pragma once

#include "SendOutcome.h"

#include <QDateTime>
#include <QList>
#include <QObject>
#include <QString>

#include <memory>

class QIODevice;
class QSqlDatabase;
class QThread;
class SendRecordWriter;

class SendRecord : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(SendRecord)

public:
    // The way an SMS went: "single", "bulk", "scheduled", "handoff", "command".
    enum class Road { Single, Bulk, Scheduled, HandOff, Command };
    static QString roadName(Road road);
    // The same in German words for the user: "Einzel-SMS", "MultiSMS", "Terminversand", ...
    static QString roadLabel(Road road);

    struct Entry
    {
        qint64 id = 0; // given by the record, in the order of recording
        QDateTime time; // UTC, to the millisecond
        Road road = Road::Single;
        QString name;
        QString number;
        QString text;
        int parts = 1;
        int credits = 0;
        SendOutcome::State state = SendOutcome::State::Sent;
        QString answer; // the gateway's words, or why there were none
    };

    enum class Column { Time, Road, Name, Number, Text, Parts, Credits, State };

    struct Query
    {
        // Matched against number, name and text: a part of any of them, case aside.
        QString text;
        // UTC; an invalid time leaves that end open. from counts, to doesn't.
        QDateTime from;
        QDateTime to;
        Column sortBy = Column::Time;
        Qt::SortOrder order = Qt::DescendingOrder;
        int limit = 1000; // -1: all
        int offset = 0;
    };

    // The retention choices: days kept, 0 keeps everything, -1 keeps no record at all.
    static constexpr int KeepForever = 0;
    static constexpr int NoRecord = -1;
    static constexpr int DefaultDays = 90;
    // The store's value "SendRecordDays" under the root key: the days, or the default when it is
    // absent or no number of days.
    static int storedRetentionDays();
    static void storeRetentionDays(int days);

    // The record's file: beside the store file when one was named (the command's --config),
    // otherwise in the user's data folder of Tarnholt/SMS, whatever name the program shows.
    static QString defaultPath();

    // Opens (or creates) the record at path and removes what is older than retentionDays;
    // NoRecord removes the file and records nothing.
    explicit SendRecord(const QString& path = defaultPath(), int retentionDays = storedRetentionDays(),
                        QObject* parent = nullptr);
    ~SendRecord() override;

    // Whether entries are written: the record is open and wanted.
    bool isRecording() const;
    // Why the record failed; empty while it works.
    QString lastError() const;
    // True once after the record has failed, for the owner to tell the user once.
    bool takeFailure();

    // Keeps an entry. Entries are handed over together at the next turn of the event loop (or by
    // flush, search and the end of the record) and written on a thread of the record's own, so
    // that a bulk run doesn't wait for the index or the disk.
    void add(const Entry& entry);
    void flush();
    // Writes what is kept and indexes what is written. The index otherwise follows a second after
    // the last entry (or at the end of the record), so that a bulk run doesn't wait for it;
    // searches through the index catch up first.
    void catchUp();

    QList<Entry> search(const Query& query);
    // How many entries the query finds without its limit and offset; -1 when the record failed.
    qint64 count(const Query& query);
    // Removes the entries older than days days (none for KeepForever or less); returns how many.
    int removeOlderThan(int days);

    // The entries as a table Excel opens by a double-click: UTF-8 with byte order mark, ";"
    // between the fields, quoted where needed, CR LF, a German header line.
    static bool exportCsv(const QList<Entry>& entries, QIODevice* device);

signals:
    // Once, when the record fails (at opening or later).
    void failed(const QString& error);

private:
    friend class SendRecordWriter;

    bool open();
    // The entries made so far go to the writer.
    void handOver();
    void fail(const QString& error);
    QSqlDatabase database() const;

    QString m_path;
    QString m_connection;
    bool m_wanted = true;
    bool m_open = false;
    bool m_failed = false;
    bool m_failureTaken = false;
    bool m_flushQueued = false;
    QString m_error;
    QList<Entry> m_pending;
    std::unique_ptr<QThread> m_thread;
    std::unique_ptr<SendRecordWriter> m_writer;
};
