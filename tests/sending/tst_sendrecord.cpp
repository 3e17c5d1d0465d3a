// SPDX-License-Identifier: GPL-3.0-or-later
#include "sending/SendRecord.h"
#include "sending/SendRecorder.h"
#include "settings/ToolRegistry.h"
#include "toolkit/Clock.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;
using State = SendOutcome::State;
using Road = SendRecord::Road;

namespace {
const QDateTime Now(QDate(2026, 11, 24), QTime(12, 0), Qt::UTC);

SendRecord::Entry entry(const QString& name, const QString& number, const QString& text, int daysAgo, int credits = 10,
                        State state = State::Sent)
{
    SendRecord::Entry e;
    e.time = Now.addDays(-daysAgo);
    e.name = name;
    e.number = number;
    e.text = text;
    e.credits = credits;
    e.state = state;
    return e;
}

QStringList namesOf(const QList<SendRecord::Entry>& entries)
{
    QStringList names;
    for (const SendRecord::Entry& e : entries)
        names.append(e.name);
    return names;
}
} // namespace

// The record of what went out: found again by a part of what the user remembers, kept as long as
// chosen, and never in the way of a send.
class TestSendRecord : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;

    QString path() const { return m_dir.filePath(u"sendrecord.sqlite"_s); }

private slots:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }

    void init()
    {
        Clock::setNow(Now);
        for (const QString& suffix : { QString(), u"-wal"_s, u"-shm"_s })
            QFile::remove(path() + suffix);
        QDir(path()).removeRecursively();
    }

    void cleanup() { Clock::setNow({}); }

    void search_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("fromDaysAgo"); // -1: open
        QTest::addColumn<int>("toDaysAgo");
        QTest::addColumn<int>("sortBy");
        QTest::addColumn<int>("order");
        QTest::addColumn<int>("limit");
        QTest::addColumn<int>("offset");
        QTest::addColumn<QStringList>("names");
        const int time = int(SendRecord::Column::Time);
        const int desc = Qt::DescendingOrder;
        QTest::newRow("everything, newest first")
            << QString() << -1 << -1 << time << desc << 1000 << 0
            << QStringList { u"Frau Berger"_s, u"Ömer"_s, u"Jan"_s, u"Frau Bergmann"_s };
        QTest::newRow("a part of the number")
            << u"1711234"_s << -1 << -1 << time << desc << 1000 << 0 << QStringList { u"Frau Berger"_s, u"Jan"_s };
        QTest::newRow("a name in other case")
            << u"BERGER"_s << -1 << -1 << time << desc << 1000 << 0 << QStringList { u"Frau Berger"_s };
        QTest::newRow("umlauts in other case")
            << u"öMER"_s << -1 << -1 << time << desc << 1000 << 0 << QStringList { u"Ömer"_s };
        QTest::newRow("words within the text") << u"rinnerung an"_s << -1 << -1 << time << desc << 1000 << 0
                                               << QStringList { u"Frau Berger"_s, u"Frau Bergmann"_s };
        QTest::newRow("two characters, no index")
            << u"wI"_s << -1 << -1 << time << desc << 1000 << 0 << QStringList { u"Ömer"_s };
        QTest::newRow("quotes and operators are only text")
            << u"\"AND* (x"_s << -1 << -1 << time << desc << 1000 << 0 << QStringList {};
        QTest::newRow("nothing like it") << u"Zahnarzt"_s << -1 << -1 << time << desc << 1000 << 0 << QStringList {};
        // Tuesday a week ago up to, not including, yesterday.
        QTest::newRow("a date range") << QString() << 8 << 1 << time << desc << 1000 << 0
                                      << QStringList { u"Ömer"_s, u"Jan"_s };
        QTest::newRow("text within a date range")
            << u"erinnerung"_s << 50 << 1 << time << desc << 1000 << 0 << QStringList { u"Frau Bergmann"_s };
        QTest::newRow("the end of a range doesn't count")
            << u"Erinnerung"_s << 8 << 0 << time << desc << 1000 << 0 << QStringList {};
        QTest::newRow("oldest first") << QString() << -1 << -1 << time << int(Qt::AscendingOrder) << 1000 << 0
                                      << QStringList { u"Frau Bergmann"_s, u"Jan"_s, u"Ömer"_s, u"Frau Berger"_s };
        QTest::newRow("by Credits, ties in the same order")
            << QString() << -1 << -1 << int(SendRecord::Column::Credits) << int(Qt::AscendingOrder) << 1000 << 0
            << QStringList { u"Ömer"_s, u"Jan"_s, u"Frau Bergmann"_s, u"Frau Berger"_s };
        QTest::newRow("a page") << QString() << -1 << -1 << time << desc << 2 << 1
                                << QStringList { u"Ömer"_s, u"Jan"_s };
    }

    void search()
    {
        QFETCH(QString, text);
        QFETCH(int, fromDaysAgo);
        QFETCH(int, toDaysAgo);
        QFETCH(int, sortBy);
        QFETCH(int, order);
        QFETCH(int, limit);
        QFETCH(int, offset);
        QFETCH(QStringList, names);
        SendRecord record(path(), SendRecord::KeepForever);
        record.add(entry(u"Frau Bergmann"_s, u"00491729876543"_s, u"Erinnerung an die Sitzung"_s, 40, 20));
        record.add(entry(u"Jan"_s, u"00491711234000"_s, u"Komme später, bin zu Hause"_s, 5, 10, State::Refused));
        record.add(entry(u"Ömer"_s, u"00436641234567"_s, u"Grüße aus Wien"_s, 3, 0, State::Unreached));
        record.add(entry(u"Frau Berger"_s, u"00491711234567"_s, u"Erinnerung an Ihren Termin am Dienstag"_s, 0, 20));
        SendRecord::Query query;
        query.text = text;
        if (fromDaysAgo >= 0)
            query.from = Now.addDays(-fromDaysAgo);
        if (toDaysAgo >= 0)
            query.to = Now.addDays(-toDaysAgo);
        query.sortBy = SendRecord::Column(sortBy);
        query.order = Qt::SortOrder(order);
        query.limit = limit;
        query.offset = offset;
        QCOMPARE(namesOf(record.search(query)), names);
        QCOMPARE(record.count(query), offset == 0 ? names.size() : 4);
        QVERIFY(record.lastError().isEmpty());
    }

    void indexedOnce_data()
    {
        QTest::addColumn<QString>("writer");
        QTest::newRow("another instance beside this one") << u"instance"_s;
        QTest::newRow("a record indexed as its entries were written") << u"older record"_s;
        QTest::newRow("an instance ended before it indexed") << u"ended"_s;
        QTest::newRow("every entry removed as too old, then new ones") << u"all removed"_s;
    }

    // Entries are indexed after they are written, by whichever instance comes first: each is found,
    // and found once.
    void indexedOnce()
    {
        QFETCH(QString, writer);
        const SendRecord::Entry written
            = entry(u"Frau Berger"_s, u"00491711234567"_s, u"Erinnerung an den Termin"_s, 1);
        std::unique_ptr<SendRecord> other;
        if (writer == u"all removed"_s) {
            {
                SendRecord old(path(), SendRecord::KeepForever);
                for (int i = 0; i < 5; ++i)
                    old.add(entry(u"Alt"_s, u"0049170"_s, u"Alter Text"_s, 400));
            }
            SendRecord record(path(), 30);
            record.add(written);
        } else if (writer == u"instance"_s) {
            other = std::make_unique<SendRecord>(path(), SendRecord::KeepForever);
            other->add(written);
            other->flush();
        } else {
            auto db = QSqlDatabase::addDatabase(u"QSQLITE"_s, u"writer"_s);
            db.setDatabaseName(path());
            QVERIFY(db.open());
            QSqlQuery sql(db);
            QStringList statements {
                u"CREATE TABLE entries (id INTEGER PRIMARY KEY, time INTEGER NOT NULL, road TEXT NOT NULL, "
                "name TEXT NOT NULL, number TEXT NOT NULL, text TEXT NOT NULL, parts INTEGER NOT NULL, "
                "credits INTEGER NOT NULL, outcome TEXT NOT NULL, answer TEXT NOT NULL)"_s,
                u"CREATE VIRTUAL TABLE entries_fts USING fts5(number, name, text, content='entries', "
                "content_rowid='id', tokenize='trigram')"_s,
            };
            if (writer == u"older record"_s)
                statements
                    << u"CREATE TRIGGER entries_added AFTER INSERT ON entries BEGIN INSERT INTO "
                       "entries_fts(rowid, number, name, text) VALUES (new.id, new.number, new.name, new.text); END"_s;
            else
                statements << u"CREATE TABLE entries_indexed (upto INTEGER NOT NULL)"_s
                           << u"INSERT INTO entries_indexed VALUES (0)"_s;
            statements << u"INSERT INTO entries VALUES (1, %1, 'single', 'Frau Berger', '00491711234567', "
                          "'Erinnerung an den Termin', 1, 10, 'sent', 'OK')"_s.arg(written.time.toMSecsSinceEpoch());
            for (const QString& statement : std::as_const(statements))
                QVERIFY2(sql.exec(statement), qPrintable(statement));
            sql.finish();
            db.close();
            db = {};
            QSqlDatabase::removeDatabase(u"writer"_s);
        }
        SendRecord record(path(), SendRecord::KeepForever);
        record.add(entry(u"Jan"_s, u"00491711234000"_s, u"Komme später"_s, 0));
        SendRecord::Query query;
        query.text = u"erinnerung"_s;
        QCOMPARE(namesOf(record.search(query)), QStringList { u"Frau Berger"_s });
        query.text = u"Komme"_s;
        if (other)
            QCOMPARE(namesOf(other->search(query)), QStringList { u"Jan"_s });
        other.reset();
        query.text = u"1711234"_s;
        QCOMPARE(namesOf(record.search(query)), (QStringList { u"Jan"_s, u"Frau Berger"_s }));
        QVERIFY(record.lastError().isEmpty());
    }

    // Each SMS as the sending object tells it, with what it cost.
    void recordedOutcome_data()
    {
        QTest::addColumn<int>("state");
        QTest::addColumn<int>("parts");
        QTest::addColumn<int>("credits");
        QTest::newRow("sent, three parts") << int(State::Sent) << 3 << 42;
        QTest::newRow("no answer: may have been billed") << int(State::Unknown) << 1 << 14;
        QTest::newRow("refused") << int(State::Refused) << 2 << 0;
        QTest::newRow("never left") << int(State::Unreached) << 1 << 0;
        QTest::newRow("skipped") << int(State::Skipped) << 1 << 0;
    }

    void recordedOutcome()
    {
        QFETCH(int, state);
        QFETCH(int, parts);
        QFETCH(int, credits);
        SendRecord record(path(), SendRecord::DefaultDays);
        SendingSession session({});
        SendRecorder recorder(&session, &record, Road::Bulk);
        recorder.setPrice(14);
        recorder.record({ 1, 4, u"00491711234567"_s, u"Anna"_s, u"Hallo Anna"_s, parts, State(state), u"OK"_s });
        const QList<SendRecord::Entry> entries = record.search({});
        QCOMPARE(entries.size(), 1);
        const SendRecord::Entry& e = entries.constFirst();
        QCOMPARE(e.credits, credits);
        QCOMPARE(int(e.state), state);
        QCOMPARE(e.road, Road::Bulk);
        QCOMPARE(e.time, Now);
        QCOMPARE(e.parts, parts);
        QCOMPARE(e.answer, u"OK"_s);
        QCOMPARE(e.text, u"Hallo Anna"_s);
    }

    void retention_data()
    {
        QTest::addColumn<int>("days");
        QTest::addColumn<QStringList>("left");
        const QStringList all { u"gestern"_s, u"vor 60 Tagen"_s, u"vor 200 Tagen"_s, u"vor 400 Tagen"_s };
        QTest::newRow("30 days") << 30 << all.mid(0, 1);
        QTest::newRow("90 days, the default") << 90 << all.mid(0, 2);
        QTest::newRow("a year") << 365 << all.mid(0, 3);
        QTest::newRow("always") << 0 << all;
        QTest::newRow("no record at all") << -1 << QStringList {};
    }

    // What is older than the choice is gone when the record opens; "no record" removes the file.
    void retention()
    {
        QFETCH(int, days);
        QFETCH(QStringList, left);
        {
            SendRecord record(path(), SendRecord::KeepForever);
            for (const auto& [name, age] : { std::pair { u"vor 400 Tagen"_s, 400 },
                                             { u"vor 200 Tagen"_s, 200 },
                                             { u"vor 60 Tagen"_s, 60 },
                                             { u"gestern"_s, 1 } })
                record.add(entry(name, u"0049171"_s, u"Text"_s, age));
        }
        SendRecord record(path(), days);
        record.add(entry(u"heute"_s, u"0049171"_s, u"Text"_s, 0));
        QCOMPARE(namesOf(record.search({})), days == SendRecord::NoRecord ? left : QStringList { u"heute"_s } + left);
        QCOMPARE(record.isRecording(), days != SendRecord::NoRecord);
        record.flush();
        QCOMPARE(QFile::exists(path()), days != SendRecord::NoRecord);
    }

    void storedRetention_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<int>("days");
        QTest::newRow("absent") << QString() << 90;
        QTest::newRow("a year") << u"365"_s << 365;
        QTest::newRow("no record") << u"-1"_s << -1;
        QTest::newRow("not a number") << u"immer"_s << 90;
        QTest::newRow("below -1") << u"-7"_s << 90;
    }

    void storedRetention()
    {
        QFETCH(QString, stored);
        QFETCH(int, days);
        ToolRegistry::SaveRegString(QString::fromUtf16(ToolRegistry::RootKey), u"SendRecordDays"_s, stored);
        QCOMPARE(SendRecord::storedRetentionDays(), days);
        ToolRegistry::SaveRegString(QString::fromUtf16(ToolRegistry::RootKey), u"SendRecordDays"_s, QString());
    }

    void cannotBeWritten_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::newRow("not a database") << u"garbage"_s;
        QTest::newRow("a folder in its place") << u"folder"_s;
        QTest::newRow("its folder can't be made") << u"no folder"_s;
        QTest::newRow("another program holds the write lock") << u"locked"_s;
    }

    // The send goes on: entries are dropped, the failure is told once.
    void cannotBeWritten()
    {
        QFETCH(QString, kind);
        QString file = path();
        if (kind == u"garbage") {
            QFile f(file);
            QVERIFY(f.open(QIODevice::WriteOnly));
            f.write(QByteArray(8192, 'x'));
        } else if (kind == u"folder") {
            QVERIFY(QDir(m_dir.path()).mkpath(u"sendrecord.sqlite"_s));
        } else if (kind == u"no folder") {
            QFile f(m_dir.filePath(u"datei"_s));
            QVERIFY(f.open(QIODevice::WriteOnly));
            file = f.fileName() + u"/sendrecord.sqlite"_s;
        }
        // A second connection, as another instance of the program, in the middle of its writing.
        {
            SendRecord created(file, SendRecord::KeepForever);
        }
        QSqlDatabase other = QSqlDatabase::addDatabase(u"QSQLITE"_s, u"other"_s);
        if (kind == u"locked") {
            other.setDatabaseName(file);
            QVERIFY(other.open());
            QVERIFY(QSqlQuery(other).exec(u"BEGIN IMMEDIATE"_s));
        }
        {
            SendRecord record(file, SendRecord::KeepForever);
            QSignalSpy failed(&record, &SendRecord::failed);
            record.add(entry(u"Anna"_s, u"0049171"_s, u"Hallo"_s, 0));
            record.flush();
            record.add(entry(u"Ben"_s, u"0049172"_s, u"Hallo"_s, 0));
            record.flush();
            QVERIFY(record.search({}).isEmpty());
            QVERIFY(!record.isRecording());
            QVERIFY(!record.lastError().isEmpty());
            QVERIFY(record.takeFailure());
            QVERIFY(!record.takeFailure());
            // Told at opening, or at the first write: never twice.
            QCOMPARE(failed.size(), kind == u"locked" ? 1 : 0);
        }
        if (kind == u"locked")
            QSqlQuery(other).exec(u"ROLLBACK"_s);
        other.close();
        other = {};
        QSqlDatabase::removeDatabase(u"other"_s);
    }

    void exportCsv()
    {
        SendRecord::Entry plain = entry(u"Jan"_s, u"00491711234567"_s, u"Bin gleich da"_s, 0);
        plain.time = QDateTime(QDate(2026, 3, 10), QTime(8, 5, 9), Qt::UTC);
        SendRecord::Entry odd
            = entry(u"Müller; Hans"_s, u"00436641234567"_s, u"Sag \"Hallo\"\r\nZeile 2"_s, 0, 0, State::Unknown);
        odd.time = QDateTime(QDate(2026, 7, 1), QTime(22, 30), Qt::UTC);
        odd.road = Road::Command;
        odd.parts = 2;
        odd.answer = u" Zeitüberschreitung"_s;
        QBuffer buffer;
        QVERIFY(buffer.open(QIODevice::WriteOnly));
        QVERIFY(SendRecord::exportCsv({ plain, odd }, &buffer));
        const QByteArray expected
            = "\xEF\xBB\xBF"
              "Zeit;Weg;Name;Nummer;Text;Teile;Credits;Ergebnis;Antwort\r\n"
              "10.03.2026 09:05:09;Einzel-SMS;Jan;00491711234567;Bin gleich da;1;10;versendet;\r\n"
              "02.07.2026 00:30:00;quellbote-send;\"Müller; Hans\";00436641234567;"
              "\"Sag \"\"Hallo\"\"\r\nZeile 2\";2;0;ungewiss;\" Zeitüberschreitung\"\r\n";
        QCOMPARE(buffer.data(), expected);
    }
};

QTEST_GUILESS_MAIN(TestSendRecord)
#include "tst_sendrecord.moc"
