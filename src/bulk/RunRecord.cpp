// SPDX-License-Identifier: GPL-3.0-or-later
#include "RunRecord.h"

#include "RecipientTable.h"
#include "settings/ToolRegistry.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace {
constexpr char Magic[] = "QUELLBOTE-RUN 1";

// The text of a run on one line: "%", tab and line breaks escaped.
QByteArray escaped(const QString& text)
{
    return text.toUtf8().replace('%', "%25").replace('\t', "%09").replace('\r', "%0D").replace('\n', "%0A");
}

QString unescaped(const QByteArray& line)
{
    return QString::fromUtf8(QByteArray::fromPercentEncoding(line));
}

} // namespace

QList<int> RunRecord::Contents::rowsToSend() const
{
    QList<int> rows;
    for (int row = 0; row < rowCount; ++row) {
        const auto known = outcomes.constFind(row);
        if (known == outcomes.cend() || SendOutcome::isNotSent(*known))
            rows.append(row);
    }
    return rows;
}

QList<int> RunRecord::Contents::rowsUnknown() const
{
    QList<int> rows;
    for (int row = 0; row < rowCount; ++row)
        if (outcomes.value(row, SendOutcome::State::Sent) == SendOutcome::State::Unknown)
            rows.append(row);
    return rows;
}

QString RunRecord::folder()
{
    // A store of its own (a server's --config) keeps its records beside it. Otherwise the user's
    // data folder of Tarnholt/SMS, named here rather than by the application's name, which the
    // window sets to the product's: the window and the command find the same records.
    if (ToolRegistry::usesOwnStoreFile())
        return QFileInfo(ToolRegistry::storeFileName()).absolutePath() + QStringLiteral("/runs");
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/Tarnholt/SMS/runs");
}

QString RunRecord::pathFor(const QList<RecipientRow>& rows)
{
    QCryptographicHash hash(QCryptographicHash::Sha1);
    for (const RecipientRow& row : rows) {
        for (const QString* field : { &row.Name, &row.Nummer, &row.Freitext1, &row.Freitext2 }) {
            hash.addData(field->toUtf8());
            hash.addData(QByteArrayView("\x1f", 1));
        }
        hash.addData(QByteArrayView("\x1e", 1));
    }
    return folder() + u'/' + QString::fromLatin1(hash.result().toHex()) + QStringLiteral(".run");
}

RunRecord::Contents RunRecord::read(const QString& path)
{
    Contents contents;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return contents;
    const QByteArray all = file.readAll();
    // A line without its end was cut off by a kill.
    const QList<QByteArray> lines = all.left(all.lastIndexOf('\n') + 1).split('\n');
    if (lines.isEmpty() || !lines.first().startsWith(Magic))
        return contents;
    const QList<QByteArray> head = lines.first().split('\t');
    if (head.size() < 3)
        return contents;
    contents.exists = true;
    contents.rowCount = head.at(1).toInt();
    contents.text = unescaped(head.at(2));
    for (qsizetype i = 1; i < lines.size(); ++i) {
        const QList<QByteArray> f = lines.at(i).split('\t');
        bool ok = false;
        const int row = f.value(1).toInt(&ok);
        if (f.first() == "S" && ok) {
            // On its way: unknown until its outcome follows.
            contents.outcomes.insert(row, SendOutcome::State::Unknown);
        } else if (f.first() == "O" && ok) {
            if (const std::optional<SendOutcome::State> state = SendOutcome::fromName(QString::fromLatin1(f.value(2))))
                contents.outcomes.insert(row, *state);
        } else if (f.first() == "R") {
            contents.finished = false;
        } else if (f.first() == "E") {
            contents.finished = true;
        }
    }
    return contents;
}

RunRecord::RunRecord(const QString& path)
    : m_path(path)
{
}

RunRecord::~RunRecord() = default;

bool RunRecord::begin(const QString& text, int rowCount)
{
    QDir().mkpath(QFileInfo(m_path).absolutePath());
    m_file = std::make_unique<QFile>(m_path);
    // Unbuffered: every line is with the system once written, whatever happens to the program.
    if (!m_file->open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered)) {
        m_file.reset();
        return false;
    }
    writeLine(QByteArray(Magic) + '\t' + QByteArray::number(rowCount) + '\t' + escaped(text));
    return true;
}

bool RunRecord::resume()
{
    m_file = std::make_unique<QFile>(m_path);
    if (!m_file->open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered)) {
        m_file.reset();
        return false;
    }
    writeLine("R");
    return true;
}

void RunRecord::sending(int row)
{
    writeLine("S\t" + QByteArray::number(row));
}

void RunRecord::outcome(int row, SendOutcome::State state)
{
    writeLine("O\t" + QByteArray::number(row) + '\t' + SendOutcome::name(state).toLatin1());
}

void RunRecord::finish()
{
    if (!m_file)
        return;
    writeLine("E");
    m_file.reset();
    // A list whose every row went out, in this run or the ones before, has nothing left to go on
    // with.
    const Contents contents = read(m_path);
    if (contents.rowsToSend().isEmpty() && contents.rowsUnknown().isEmpty())
        QFile::remove(m_path);
}

void RunRecord::writeLine(const QByteArray& line)
{
    if (m_file)
        m_file->write(line + '\n');
}
