// SPDX-License-Identifier: GPL-3.0-or-later
// The outcome of each row of a bulk run, written as the run goes: a row is marked before its
// request leaves and again when its outcome is known. After a kill at any moment the record
// holds every outcome that was known, and a row that was on its way counts as unknown, so that a
// run can go on with exactly the rows that did not go out and never sends one twice.
//
// One record per list, named after its rows, so the same list opened again finds it. The file is
// appended to line by line, each line written straight to the system; a line cut off by a kill is
// ignored when the record is read.
#pragma once

#include "sending/SendOutcome.h"

#include <QFile>
#include <QHash>
#include <QList>
#include <QString>

#include <memory>

struct RecipientRow;

class RunRecord
{
public:
    // What a record holds.
    struct Contents
    {
        bool exists = false;
        // The run ended and every row it sent got its outcome.
        bool finished = false;
        // The message of the run, placeholders and all.
        QString text;
        int rowCount = 0;
        // The last known outcome of each row that has one; a row that was on its way when the
        // program ended counts as Unknown.
        QHash<int, SendOutcome::State> outcomes;

        // The rows (0-based) that have no outcome yet, or that was "not sent": those a run may
        // send again without asking. Rows whose outcome is unknown are not among them.
        QList<int> rowsToSend() const;
        // The rows whose request left without an answer.
        QList<int> rowsUnknown() const;
        // Whether a run on this list was ended before it was through (killed, crashed).
        bool interrupted() const { return exists && !finished; }
    };

    // The folder of the records: the user's data folder, or beside another store file.
    static QString folder();
    // The record of a list with these rows.
    static QString pathFor(const QList<RecipientRow>& rows);
    static Contents read(const QString& path);

    explicit RunRecord(const QString& path);
    ~RunRecord();
    RunRecord(const RunRecord&) = delete;
    RunRecord& operator=(const RunRecord&) = delete;

    // A new run of text over rowCount rows: the record starts afresh. False when it can't be
    // written; the run goes on without it.
    bool begin(const QString& text, int rowCount);
    // Goes on with the record as it stands (a run of the rows left over).
    bool resume();
    void sending(int row);
    void outcome(int row, SendOutcome::State state);
    // Every row of the run has its outcome. A list whose every row went out keeps no record.
    void finish();

    QString path() const { return m_path; }

private:
    void writeLine(const QByteArray& line);

    QString m_path;
    std::unique_ptr<QFile> m_file;
};
