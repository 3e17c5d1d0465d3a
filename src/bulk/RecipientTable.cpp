// SPDX-License-Identifier: GPL-3.0-or-later
#include "RecipientTable.h"

#include "CsvList.h"
#include "sending/WireText.h"
#include "settings/tools.h"
#include "toolkit/Codepage.h"

#include <QFile>
#include <QSaveFile>

#include <algorithm>
#include <cstring>

RecipientTable::RecipientTable(QObject* parent)
    : QAbstractTableModel(parent)
{
}

void RecipientTable::Clear()
{
    beginResetModel();
    m_rows.clear();
    m_entryCounter = 0;
    endResetModel();
}

bool RecipientTable::parseInto(QStringView line, QList<RecipientRow>* rows)
{
    if (line.size() < 4)
        return true;
    // The fields are found where they stand: only the ones kept become strings of their own, and
    // the line is never split into a list (a file of a million rows would make a million lists).
    const auto fieldEnd = [line](qsizetype from) {
        const qsizetype at = from > line.size() ? -1 : line.indexOf(u';', from);
        return at < 0 ? line.size() : at;
    };
    const qsizetype end0 = fieldEnd(0);
    if (end0 == line.size())
        return false; // one field only
    const qsizetype end1 = fieldEnd(end0 + 1);
    const QStringView number = line.sliced(end0 + 1, end1 - end0 - 1);
    if (number.isEmpty())
        return false;
    RecipientRow row;
    row.Name = line.first(end0).toString();
    row.Tag = ++m_entryCounter;
    if (number.startsWith(u"00")) {
        row.Nummer = number.toString();
    } else {
        // The first character goes whatever it is: "491711234567" becomes "004991711234567".
        m_prefixAdded = true;
        row.Nummer = QStringLiteral("0049") + number.mid(1);
    }
    // A line of exactly three fields keeps neither free text.
    if (end1 < line.size()) {
        const qsizetype end2 = fieldEnd(end1 + 1);
        if (end2 < line.size()) {
            const qsizetype end3 = fieldEnd(end2 + 1);
            row.Freitext1 = line.sliced(end1 + 1, end2 - end1 - 1).toString();
            row.Freitext2 = line.sliced(end2 + 1, end3 - end2 - 1).toString();
        }
    }
    rows->append(std::move(row));
    return true;
}

bool RecipientTable::parseLine(const QString& line)
{
    QList<RecipientRow> parsed;
    if (!parseInto(line, &parsed))
        return false;
    if (parsed.isEmpty())
        return true;
    const int at = int(m_rows.size());
    beginInsertRows({}, at, at);
    m_rows.append(parsed);
    endInsertRows();
    return true;
}

void RecipientTable::recalcMaxSizes()
{
    // Lengths as the values go on the wire, where an emoji is one character. That length is never
    // more than the value's size, so a value no longer than the maximum so far isn't scanned.
    const auto longest = [](qint16 maximum, const QString& value) {
        return value.size() <= maximum ? maximum : qMax(maximum, qint16(WireText::wireLength(value)));
    };
    m_maxNameSize = m_maxFrei1Size = m_maxFrei2Size = 0;
    for (const RecipientRow& row : m_rows) {
        m_maxNameSize = longest(m_maxNameSize, row.Name);
        m_maxFrei1Size = longest(m_maxFrei1Size, row.Freitext1);
        m_maxFrei2Size = longest(m_maxFrei2Size, row.Freitext2);
    }
}

void RecipientTable::addRow(const QString& Name, const QString& Nummer, const QString& Freitext1,
                            const QString& Freitext2)
{
    const int at = int(m_rows.size());
    beginInsertRows({}, at, at);
    m_rows.append({ Name, Nummer, Freitext1, Freitext2, ++m_entryCounter });
    endInsertRows();
}

void RecipientTable::removeRow(int row)
{
    if (row < 0 || row >= m_rows.size())
        return;
    beginRemoveRows({}, row, row);
    m_rows.removeAt(row);
    endRemoveRows();
}

int RecipientTable::rowOfTag(qint32 tag) const
{
    for (int i = 0; i < m_rows.size(); ++i) {
        if (m_rows.at(i).Tag == tag)
            return i;
    }
    return -1;
}

void RecipientTable::setRowValues(int row, const QString& Name, const QString& Nummer, const QString& Freitext1,
                                  const QString& Freitext2)
{
    if (row < 0 || row >= m_rows.size())
        return;
    RecipientRow& r = m_rows[row];
    r.Name = Name;
    r.Nummer = Nummer;
    r.Freitext1 = Freitext1;
    r.Freitext2 = Freitext2;
    emit dataChanged(index(row, 0), index(row, 3));
}

bool RecipientTable::load(const QString& path)
{
    QFile file(path);
    QString text;
    qsizetype lines = 0;
    bool ok = file.open(QIODevice::ReadOnly);
    if (ok) {
        const QByteArray bytes = file.readAll();
        // Counted in the bytes, where memchr finds each CR quicker than a scan of the text.
        for (const char* at = bytes.constData();
             (at = static_cast<const char*>(std::memchr(at, '\r', bytes.constEnd() - at))); ++at)
            ++lines;
        text = Codepage::fromWindows1252(bytes);
    }
    ok = ok && file.error() == QFileDevice::NoError;

    beginResetModel();
    m_rows.clear();
    m_entryCounter = 0;
    if (ok) {
        // A line ends at CR or at CR LF; a lone LF belongs to the line.
        m_rows.reserve(lines + 1);
        qsizetype start = 0;
        const qsizetype n = text.size();
        while (ok && start < n) {
            qsizetype end = text.indexOf(u'\r', start);
            if (end < 0)
                end = n;
            ok = parseInto(QStringView(text).sliced(start, end - start), &m_rows);
            start = end + 1;
            if (start < n && end < n && text.at(start) == u'\n')
                ++start;
        }
    }
    if (!ok) {
        // A failed load never leaves a part of the file behind.
        m_rows.clear();
        m_entryCounter = 0;
    }
    endResetModel();
    return ok;
}

bool RecipientTable::loadCsv(const QString& path, const CsvList::Mapping* mapping, CsvList::Result* result)
{
    QFile file(path);
    CsvList::Result read;
    if (!file.open(QIODevice::ReadOnly)) {
        read.failure = QStringLiteral("Die Datei kann nicht geöffnet werden: %1").arg(file.errorString());
    } else {
        const QByteArray bytes = file.readAll();
        if (file.error() != QFileDevice::NoError)
            read.failure = QStringLiteral("Die Datei kann nicht gelesen werden: %1").arg(file.errorString());
        else
            read = mapping ? CsvList::read(bytes, *mapping) : CsvList::read(bytes);
    }
    const bool ok = loadCsv(read);
    if (result)
        *result = std::move(read);
    return ok;
}

bool RecipientTable::loadCsv(CsvList::Result& read)
{
    beginResetModel();
    m_entryCounter = 0;
    if (read.ok) {
        m_rows = std::move(read.rows);
        for (RecipientRow& row : m_rows)
            row.Tag = ++m_entryCounter;
        m_prefixAdded = m_prefixAdded || read.prefixAdded;
        // Handed over to the table; the caller finds them there.
        read.rows.clear();
    } else {
        m_rows.clear();
    }
    endResetModel();
    return read.ok;
}

bool RecipientTable::loadGroup(const QString& text)
{
    const qint32 counter = m_entryCounter;
    const bool prefix = m_prefixAdded;
    m_entryCounter = 0;
    QList<RecipientRow> rows;
    const QStringList lines = text.split(u'\n');
    for (const QString& line : lines) {
        if (!parseInto(tools::TrimBlanks(line), &rows)) {
            m_entryCounter = counter;
            m_prefixAdded = prefix;
            return false;
        }
    }
    beginResetModel();
    m_rows = rows;
    endResetModel();
    return true;
}

bool RecipientTable::save(const QString& path, const std::function<void(int, int)>& progress,
                          FileFailure* failure) const
{
    const int maximum = int(m_rows.size()) + 3;
    if (progress)
        progress(0, maximum);
    QSaveFile file(path);
    // Unbuffered, so that a write the disk cuts short shows here; through Qt's buffer a full disk
    // could pass for a written file.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        if (failure)
            *failure = FileFailure::of(file, path);
        return false;
    }
    const auto reportRow = [&progress, maximum, rows = int(m_rows.size())](int value) {
        if (progress && (value % 1024 == 0 || value == rows))
            progress(value, maximum);
    };
    // Where every value converts as Latin-1 (nearly every file) the rows go straight into the
    // file's bytes, without the text held twice; otherwise the text is converted whole.
    const bool latin1 = std::all_of(m_rows.cbegin(), m_rows.cend(), [](const RecipientRow& row) {
        return Codepage::sameAsLatin1(row.Name) && Codepage::sameAsLatin1(row.Nummer)
            && Codepage::sameAsLatin1(row.Freitext1) && Codepage::sameAsLatin1(row.Freitext2);
    });
    QByteArray bytes;
    int value = 0;
    if (latin1) {
        bytes.reserve(m_rows.size() * 48);
        const auto append = [&bytes](const QString& field) {
            const qsizetype at = bytes.size();
            bytes.resize(at + field.size() + 1);
            char* out = bytes.data() + at;
            for (const QChar c : field)
                *out++ = char(c.unicode());
            *out = ';';
        };
        for (const RecipientRow& row : m_rows) {
            append(row.Name);
            append(row.Nummer);
            append(row.Freitext1);
            append(row.Freitext2);
            bytes += "\r\n";
            reportRow(++value);
        }
    } else {
        QString text;
        text.reserve(m_rows.size() * 48);
        for (const RecipientRow& row : m_rows) {
            text
                += row.Name + u';' + row.Nummer + u';' + row.Freitext1 + u';' + row.Freitext2 + QStringLiteral(";\r\n");
            reportRow(++value);
        }
        bytes = Codepage::toWindows1252(text);
    }
    if (file.write(bytes) != bytes.size() || !file.commit()) {
        if (failure)
            *failure = FileFailure::of(file, path);
        return false;
    }
    if (progress)
        progress(maximum, maximum);
    return true;
}

int RecipientTable::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int RecipientTable::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : 4;
}

const QString* RecipientTable::textOf(const QModelIndex& index) const
{
    if (!index.isValid() || index.row() >= m_rows.size())
        return nullptr;
    const RecipientRow& row = m_rows.at(index.row());
    switch (index.column()) {
    case 0:
        return &row.Name;
    case 1:
        return &row.Nummer;
    case 2:
        return &row.Freitext1;
    case 3:
        return &row.Freitext2;
    default:
        return nullptr;
    }
}

bool RecipientTable::hasUnsendable(const QModelIndex& index) const
{
    // The number is checked as a number elsewhere; the others go into the message.
    const QString* text = index.column() != 1 ? textOf(index) : nullptr;
    return text && !WireText::isSendable(*text);
}

QVariant RecipientTable::data(const QModelIndex& index, int role) const
{
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        if (const QString* text = textOf(index))
            return *text;
        return {};
    case Qt::ToolTipRole:
    case Qt::AccessibleDescriptionRole:
        // Worked out for the cell asked for only: a table may have a million rows.
        if (hasUnsendable(index))
            return WireText::unsendableNotice(WireText::unsendable(*textOf(index)));
        return {};
    default:
        return {};
    }
}

QVariant RecipientTable::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    static const QStringList captions = { QStringLiteral("Name"), QStringLiteral("Nummer"), QStringLiteral("Freitext1"),
                                          QStringLiteral("Freitext2") };
    return captions.value(section);
}
