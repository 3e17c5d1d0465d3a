// SPDX-License-Identifier: GPL-3.0-or-later
// The sending without a window, against the service: every road ends in an honest outcome, a
// request that may have been taken is never sent a second time, and a run's record holds each
// row's outcome.
#include "ServiceProcess.h"
#include "TestStore.h"
#include "bulk/RunRecord.h"
#include "sending/SendingSession.h"
#include "settings/ProgramFolder.h"
#include "toolkit/Inet.h"

#include <QDir>
#include <QEventLoop>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using SendOutcome::State;

namespace {
const QString SendPath = u"/smsv3/smsv3.php"_s;
}

class TestSendingSession : public QObject
{
    Q_OBJECT

    QTemporaryDir m_folder;
    std::unique_ptr<ServiceProcess> m_service;

    // Sends until nothing is left and returns every SMS's outcome.
    static QList<SendingSession::Outcome> finish(SendingSession& session, const std::function<void()>& start)
    {
        QList<SendingSession::Outcome> outcomes;
        QObject::connect(&session, &SendingSession::finished, &session,
                         [&outcomes](const SendingSession::Outcome& o) { outcomes.append(o); });
        QEventLoop loop;
        QObject::connect(&session, &SendingSession::idle, &loop, &QEventLoop::quit);
        start();
        if (session.isBusy())
            loop.exec();
        return outcomes;
    }

private slots:
    void initTestCase() { ProgramFolder::setPathForTesting(m_folder.path()); }

    void init()
    {
        TestStore::reset();
        TestStore::put(u"eMail"_s, u"demo@quellbote.test"_s);
        reloadOptionsForTesting();
        m_service = std::make_unique<ServiceProcess>();
        QVERIFY(m_service->isRunning());
        m_service->pointProgramAt(m_folder.path());
    }

    void outcomes_data()
    {
        QTest::addColumn<QString>("fault"); // of the send address, "gone" for a stopped service
        QTest::addColumn<QString>("folder"); // of the server route: "", "there" or "missing"
        QTest::addColumn<QString>("number");
        QTest::addColumn<State>("state");
        QTest::addColumn<int>("requests"); // received by the service, per SMS
        QTest::addColumn<bool>("stopped"); // the number is on the send's stop list
        const QString good = u"00491711234567"_s;
        QTest::newRow("taken") << QString() << QString() << good << State::Sent << 1 << false;
        QTest::newRow("refused by the gateway")
            << QString() << QString() << u"0049171x"_s << State::Refused << 1 << false;
        QTest::newRow("service gone") << u"gone"_s << QString() << good << State::Unreached << 0 << false;
        // The service took the request and closed without a word: maybe billed, and never sent
        // again behind the user's back.
        QTest::newRow("dropped after the request") << u"drop"_s << QString() << good << State::Unknown << 1 << false;
        QTest::newRow("answer after the time-out")
            << u"slow:2000"_s << QString() << good << State::Unknown << 1 << false;
        QTest::newRow("server folder") << QString() << u"there"_s << good << State::Sent << 0 << false;
        QTest::newRow("server folder missing") << QString() << u"missing"_s << good << State::Unreached << 0 << false;
        // Nothing is made of an SMS to a stopped number, on either road.
        QTest::newRow("on the stop list") << QString() << QString() << good << State::Skipped << 0 << true;
        QTest::newRow("on the stop list, server folder")
            << QString() << u"there"_s << good << State::Skipped << 0 << true;
    }

    void outcomes()
    {
        QFETCH(QString, fault);
        QFETCH(QString, folder);
        QFETCH(QString, number);
        QFETCH(State, state);
        QFETCH(int, requests);
        QFETCH(bool, stopped);
        QTemporaryDir server;
        if (!folder.isEmpty()) {
            Options().setXmlIsServerUsed(true);
            Options().setXmlSingleUser(u"True"_s);
            Options().setXmlUser(u"U1"_s);
            Options().setXmlPfad(server.path() + (folder == u"there" ? u""_s : u"/fehlt"_s));
        }
        if (fault == u"gone")
            m_service->stop();
        else if (!fault.isEmpty())
            QVERIFY(m_service->setFault(SendPath, fault));

        SendingSession::Host host;
        host.messageText = [] {
            return u"Hallo %name%"_s;
        };
        SendingSession session(host);
        session.transfer()->setTimeoutMsForTesting(600);
        SendingSession::Send send;
        send.password = u"demo"_s;
        if (stopped)
            send.stopList = StopList::of({ u"0171 1234567"_s });

        // One message, then a run of two rows with its record.
        const QList<SendingSession::Outcome> single
            = finish(session, [&] { session.sendMessage(send, number, u"Hallo"_s, u"Anna"_s); });
        QCOMPARE(single.size(), 1);
        QCOMPARE(single.first().state, state);
        QCOMPARE(single.first().stopListed, stopped);
        const QList<RecipientRow> rows { { u"Anna"_s, number, {}, {}, 1 }, { u"Ben"_s, number, {}, {}, 2 } };
        const QString path = RunRecord::pathFor(rows);
        auto record = std::make_unique<RunRecord>(path);
        QVERIFY(record->begin(u"Hallo %name%"_s, 2));
        send.isMultiSMSMode = true;
        const QList<SendingSession::Outcome> run
            = finish(session, [&] { session.startRun(send, rows, {}, record.release()); });
        QCOMPARE(run.size(), 2);
        QCOMPARE(run.at(1).state, state);
        QCOMPARE(run.at(1).name, u"Ben"_s);

        if (fault != u"gone")
            QCOMPARE(m_service->requests(SendPath).size(), 3 * requests);
        QCOMPARE(QDir(server.path()).entryList(QDir::Files).size(), folder == u"there" && !stopped ? 3 : 0);
        // A run whose every row went out leaves no record; otherwise the record knows each row.
        const RunRecord::Contents contents = RunRecord::read(path);
        QCOMPARE(contents.exists, state != State::Sent);
        if (contents.exists) {
            QVERIFY(contents.finished);
            QCOMPARE(contents.outcomes.value(1), state);
            QCOMPARE(contents.rowsUnknown().size(), state == State::Unknown ? 2 : 0);
        }
    }

    // A record cut off by a kill: the row that was on its way is unknown, the rows after it have
    // no outcome, and the line the kill cut off counts for nothing.
    void recordAfterAKill()
    {
        const QString path = m_folder.filePath(u"killed.run"_s);
        {
            RunRecord record(path);
            QVERIFY(record.begin(u"Zeile\teins\r\n100%"_s, 5));
            record.sending(0);
            record.outcome(0, State::Sent);
            record.sending(1);
            record.outcome(1, State::Refused);
            record.sending(2);
        }
        QFile file(path);
        QVERIFY(file.open(QIODevice::Append));
        file.write("O\t2\tse");
        file.close();
        const RunRecord::Contents contents = RunRecord::read(path);
        QVERIFY(contents.interrupted());
        QCOMPARE(contents.text, u"Zeile\teins\r\n100%"_s);
        QCOMPARE(contents.rowsToSend(), (QList<int> { 1, 3, 4 }));
        QCOMPARE(contents.rowsUnknown(), QList<int> { 2 });
    }
};

QTEST_GUILESS_MAIN(TestSendingSession)
#include "tst_sendingsession.moc"
