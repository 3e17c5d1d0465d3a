// SPDX-License-Identifier: GPL-3.0-or-later
// The entries of the send record that a search found, as a table: time, road, name, number,
// text, parts, Credits and outcome. Sorting asks the record anew, so that the order holds for
// every entry, not only for those shown.
#pragma once

#include "SendRecord.h"

#include <QAbstractTableModel>

class SentSmsModel : public QAbstractTableModel
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(SentSmsModel)

public:
    explicit SentSmsModel(SendRecord* record, QObject* parent = nullptr);

    // Searches the record; the entries found replace those shown.
    void setQuery(const SendRecord::Query& query);
    const SendRecord::Query& query() const { return m_query; }
    const QList<SendRecord::Entry>& entries() const { return m_entries; }
    // How many entries the search finds in all; more than are shown when the limit cuts them.
    qint64 found() const { return m_found; }

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    void sort(int column, Qt::SortOrder order) override;

private:
    SendRecord* m_record;
    SendRecord::Query m_query;
    QList<SendRecord::Entry> m_entries;
    qint64 m_found = 0;
};
