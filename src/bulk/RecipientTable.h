// SPDX-License-Identifier: GPL-3.0-or-later
// The recipients of a MultiSMS run: rows of name, number and two free values, in the order they
// came, with the longest value of each column for the size display. Reads and writes .msms
// files (Windows-1252, one row a line, a ";" after every field) and serves as the editor's model.
#pragma once

#include "toolkit/FileFailure.h"

#include <QAbstractTableModel>
#include <QList>
#include <QString>

#include <functional>

namespace CsvList {
struct Mapping;
struct Result;
} // namespace CsvList

struct RecipientRow
{
    QString Name;
    QString Nummer;
    QString Freitext1;
    QString Freitext2;
    qint32 Tag = 0; // the row's identity while the table lives

    bool operator==(const RecipientRow&) const = default;
};

class RecipientTable : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit RecipientTable(QObject* parent = nullptr);

    // Removes every row and sets entryCounter back; figures and prefixAdded stay.
    void Clear();
    // Adds at most one row. False for a malformed line of 4 or more characters: one without ";",
    // or one whose number field is empty. A short line is skipped and is no failure.
    bool parseLine(const QString& line);
    // Recomputes the three figures.
    void recalcMaxSizes();

    qint16 getMaxNameSize() const { return m_maxNameSize; }
    qint16 getMaxFrei1Size() const { return m_maxFrei1Size; }
    qint16 getMaxFrei2Size() const { return m_maxFrei2Size; }
    bool prefixAdded() const { return m_prefixAdded; }
    void setPrefixAdded(bool added) { m_prefixAdded = added; }
    qint32 entryCounter() const { return m_entryCounter; }

    const QList<RecipientRow>& rows() const { return m_rows; }
    // Appends a row as typed, with the next Tag.
    void addRow(const QString& Name, const QString& Nummer, const QString& Freitext1, const QString& Freitext2);
    void removeRow(int row);
    // The row with that Tag, -1 when there is none.
    int rowOfTag(qint32 tag) const;
    void setRowValues(int row, const QString& Name, const QString& Nummer, const QString& Freitext1,
                      const QString& Freitext2);

    // Loads a .msms file: all or nothing. On a failure the table is empty and entryCounter 0.
    bool load(const QString& path);
    // Loads a CSV list: all or nothing, as load. What the list's header was taken for, the rows
    // left out and, on a failure, why, are told in result (whose rows are handed to the table;
    // its rowNumbers give each one's row in the file); mapping, when given, stands for the one
    // the header gives. A national number that was given the German prefix sets prefixAdded.
    bool loadCsv(const QString& path, const CsvList::Mapping* mapping = nullptr, CsvList::Result* result = nullptr);
    // The same for a list already read: its rows move into the table, all or nothing.
    bool loadCsv(CsvList::Result& read);
    // Replaces the rows by a web group's data: lines split at LF, blanks trimmed from their ends
    // (a CR stays and ends up in a field past the free texts). All or nothing: on a failure the
    // table, its counter and prefixAdded stay as they were.
    bool loadGroup(const QString& text);
    // Writes the rows, reporting progress (value, maximum) as it goes; the file is replaced whole
    // or not at all. failure tells why it wasn't.
    bool save(const QString& path, const std::function<void(int, int)>& progress = {},
              FileFailure* failure = nullptr) const;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    // A Name, Freitext1 or Freitext2 with characters that can't go out has a tooltip and an
    // accessible description that name them.
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    // Whether the cell's value, which goes into the message, holds characters that can't go out.
    bool hasUnsendable(const QModelIndex& index) const;

private:
    // The value of a cell, nullptr outside the table.
    const QString* textOf(const QModelIndex& index) const;
    // Parses one line into rows, without telling the views.
    bool parseInto(QStringView line, QList<RecipientRow>* rows);

    QList<RecipientRow> m_rows;
    qint32 m_entryCounter = 0;
    qint16 m_maxNameSize = 0;
    qint16 m_maxFrei1Size = 0;
    qint16 m_maxFrei2Size = 0;
    bool m_prefixAdded = false;
};
