// SPDX-License-Identifier: GPL-3.0-or-later
#include "SentSmsModel.h"

namespace {
const QStringList Headers { QStringLiteral("Zeit"),    QStringLiteral("Weg"),     QStringLiteral("Name"),
                            QStringLiteral("Nummer"),  QStringLiteral("Text"),    QStringLiteral("Teile"),
                            QStringLiteral("Credits"), QStringLiteral("Ergebnis") };
} // namespace

SentSmsModel::SentSmsModel(SendRecord* record, QObject* parent)
    : QAbstractTableModel(parent)
    , m_record(record)
{
}

void SentSmsModel::setQuery(const SendRecord::Query& query)
{
    beginResetModel();
    m_query = query;
    m_entries = m_record ? m_record->search(query) : QList<SendRecord::Entry>();
    m_found = m_record ? qMax<qint64>(m_record->count(query), m_entries.size()) : 0;
    endResetModel();
}

int SentSmsModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_entries.size());
}

int SentSmsModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(Headers.size());
}

QVariant SentSmsModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= m_entries.size())
        return {};
    const SendRecord::Entry& e = m_entries.at(index.row());
    if (role == Qt::TextAlignmentRole && (index.column() == 5 || index.column() == 6))
        return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole)
        return {};
    switch (index.column()) {
    case 0:
        return e.time.toLocalTime().toString(QStringLiteral("dd.MM.yyyy HH:mm"));
    case 1:
        return SendRecord::roadLabel(e.road);
    case 2:
        return e.name;
    case 3:
        return e.number;
    case 4:
        // One line in the table; the whole text is shown below it.
        return role == Qt::ToolTipRole ? e.text : QString(e.text).replace(QLatin1String("\r\n"), QLatin1String(" "));
    case 5:
        return e.parts;
    case 6:
        return e.credits;
    default:
        return SendOutcome::label(e.state);
    }
}

QVariant SentSmsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= Headers.size())
        return {};
    return Headers.at(section);
}

void SentSmsModel::sort(int column, Qt::SortOrder order)
{
    static constexpr SendRecord::Column columns[]
        = { SendRecord::Column::Time,    SendRecord::Column::Road, SendRecord::Column::Name,
            SendRecord::Column::Number,  SendRecord::Column::Text, SendRecord::Column::Parts,
            SendRecord::Column::Credits, SendRecord::Column::State };
    if (column < 0 || column >= int(std::size(columns)))
        return;
    SendRecord::Query query = m_query;
    query.sortBy = columns[column];
    query.order = order;
    setQuery(query);
}
