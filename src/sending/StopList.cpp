// SPDX-License-Identifier: GPL-3.0-or-later
#include "StopList.h"

#include "bulk/CsvList.h"
#include "settings/ProgramFolder.h"
#include "settings/ToolRegistry.h"
#include "settings/iniHandler.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStringDecoder>

namespace {

// The user's list: "count" and the entries under "1", "2", …, as the signatures are kept. One
// value per entry, as the store reads back no more than 1023 characters of a value.
QString storeKey()
{
    return QString::fromUtf16(ToolRegistry::RootKey) + QStringLiteral("\\Sperrliste");
}

int storedCount()
{
    bool ok = false;
    const int count = ToolRegistry::GetRegString(storeKey(), QStringLiteral("count")).toInt(&ok);
    return ok && count > 0 ? count : 0;
}

// A file of numbers as people save it: UTF-8 or UTF-16 with a byte order mark, or plain bytes,
// whose digits read the same in any code page.
QString decode(const QByteArray& bytes)
{
    const std::optional<QStringConverter::Encoding> marked = QStringConverter::encodingForData(bytes);
    QStringDecoder decoder(marked.value_or(QStringConverter::Utf8));
    return decoder.decode(bytes);
}

QStringList linesOf(const QString& text)
{
    static const QRegularExpression lineEnd(QStringLiteral("\r\n|\r|\n"));
    return text.split(lineEnd);
}

// A line without its comment ("#" to the end of the line) and the blanks around it; a line whose
// first character is ";" is a comment whole, as in an INI file.
QString withoutComment(const QString& line)
{
    QString text = line;
    const qsizetype hash = text.indexOf(u'#');
    if (hash >= 0)
        text.truncate(hash);
    text = text.trimmed();
    if (text.startsWith(u';'))
        return {};
    return text;
}

// The number a line of an imported file holds: the whole line, or else the first of its fields
// (cut at ";", "," or a tab, as a list without a header has them) that is a number.
QString numberOfLine(const QString& line)
{
    const QString whole = StopList::key(line);
    if (!whole.isEmpty())
        return whole;
    static const QRegularExpression delimiter(QStringLiteral("[;,\t]"));
    for (const QString& field : line.split(delimiter)) {
        const QString number = StopList::key(field);
        if (!number.isEmpty())
            return number;
    }
    return {};
}

} // namespace

StopList StopList::load()
{
    StopList list;
    QStringList names;
    for (int i = 1, count = storedCount(); i <= count; ++i)
        names.append(QString::number(i));
    for (const QString& entry : ToolRegistry::GetRegStrings(storeKey(), names)) {
        if (entry.trimmed().isEmpty())
            continue;
        list.m_user.append(entry);
        list.add(entry);
    }

    if (!ProgramFolder::oemFileExists())
        return list;
    const QString named
        = iniHandler::GetIniValue(ProgramFolder::oemFile(), QStringLiteral("Files"), QStringLiteral("Sperrliste"));
    if (named.isEmpty())
        return list;
    list.m_sharedFile = QDir::cleanPath(QDir(ProgramFolder::path()).absoluteFilePath(named));
    QFile file(list.m_sharedFile);
    if (!QFileInfo::exists(list.m_sharedFile)) {
        list.m_sharedFileError
            = QStringLiteral("Die Sperrliste %1 (in oem.inf unter [Files] Sperrliste genannt) gibt es nicht.")
                  .arg(QDir::toNativeSeparators(list.m_sharedFile));
        return list;
    }
    if (!file.open(QIODevice::ReadOnly)) {
        list.m_sharedFileError
            = QStringLiteral("Die Sperrliste %1 (in oem.inf unter [Files] Sperrliste genannt) kann nicht gelesen "
                             "werden: %2")
                  .arg(QDir::toNativeSeparators(list.m_sharedFile), file.errorString());
        return list;
    }
    for (const QString& line : linesOf(decode(file.readAll()))) {
        const QString entry = withoutComment(line);
        if (entry.isEmpty() || key(entry).isEmpty())
            continue;
        list.m_shared.append(entry);
        list.add(entry);
    }
    return list;
}

StopList StopList::of(const QStringList& userEntries, const QStringList& sharedEntries)
{
    StopList list;
    list.m_user = userEntries;
    list.m_shared = sharedEntries;
    for (const QString& entry : userEntries + sharedEntries)
        list.add(entry);
    return list;
}

void StopList::add(const QString& entry)
{
    const QString k = key(entry);
    if (!k.isEmpty())
        m_keys.insert(k);
}

bool StopList::contains(const QString& number) const
{
    if (m_keys.isEmpty())
        return false;
    const QString k = key(number);
    return !k.isEmpty() && m_keys.contains(k);
}

bool StopList::isEmpty() const
{
    return m_keys.isEmpty();
}

QStringList StopList::userEntries() const
{
    return m_user;
}

QStringList StopList::sharedEntries() const
{
    return m_shared;
}

QString StopList::sharedFile() const
{
    return m_sharedFile;
}

QString StopList::sharedFileError() const
{
    return m_sharedFileError;
}

bool StopList::saveUserEntries(const QStringList& entries)
{
    // A blank entry can't be stored (a blank text removes a value): it is no number anyway.
    QStringList kept;
    for (const QString& entry : entries)
        if (!entry.trimmed().isEmpty())
            kept.append(entry);
    // One write of the store for the whole list; the entries beyond the new end go.
    QList<std::pair<QString, QString>> values;
    for (int i = 1; i <= kept.size(); ++i)
        values.append({ QString::number(i), kept.at(i - 1) });
    for (int i = int(kept.size()) + 1, before = storedCount(); i <= before; ++i)
        values.append({ QString::number(i), QString() });
    values.append({ QStringLiteral("count"), kept.isEmpty() ? QString() : QString::number(kept.size()) });
    return ToolRegistry::SaveRegStrings(storeKey(), values);
}

StopList::Import StopList::importFile(const QString& path)
{
    Import result;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        result.error = QStringLiteral("Die Datei %1 kann nicht gelesen werden: %2")
                           .arg(QDir::toNativeSeparators(path), file.errorString());
        return result;
    }
    const QByteArray bytes = file.readAll();
    QSet<QString> seen;
    const auto take = [&result, &seen](const QString& number) {
        if (!seen.contains(number)) {
            seen.insert(number);
            result.numbers.append(number);
        }
    };
    // A list with a header: its number column, as the MultiSMS table would read it.
    const CsvList::Result list = CsvList::read(bytes);
    if (list.ok && list.hasHeader && list.mapping.hasNumber()) {
        result.refused = int(list.doubtful.size());
        for (const RecipientRow& row : list.rows) {
            const QString number = key(row.Nummer);
            if (number.isEmpty())
                ++result.refused;
            else
                take(number);
        }
        return result;
    }
    if (!list.ok) {
        // Not text at all: a workbook saved instead of a list, say.
        result.error = QStringLiteral("Die Datei %1 kann nicht gelesen werden: %2")
                           .arg(QDir::toNativeSeparators(path), list.failure);
        return result;
    }
    // Otherwise a number a line.
    for (const QString& line : linesOf(decode(bytes))) {
        const QString entry = withoutComment(line);
        if (entry.isEmpty())
            continue;
        const QString number = numberOfLine(entry);
        if (number.isEmpty())
            ++result.refused;
        else
            take(number);
    }
    return result;
}

QString StopList::key(const QString& written)
{
    return CsvList::number(written).number;
}

QString StopList::reason()
{
    return QStringLiteral("Die Nummer steht auf der Sperrliste.");
}
