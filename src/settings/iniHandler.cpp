// SPDX-License-Identifier: GPL-3.0-or-later
#include "iniHandler.h"

#include <QFile>
#include <QStringDecoder>

namespace iniHandler {
namespace {

QString stripTrailingBlanks(QString text)
{
    qsizetype end = text.size();
    while (end > 0 && (text.at(end - 1) == u' ' || text.at(end - 1) == u'\t'))
        --end;
    text.truncate(end);
    return text;
}

// The file's bytes as text: UTF-8 where they are valid, otherwise the Windows code page such a
// file was written in.
QString decode(const QByteArray& bytes)
{
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = utf8(bytes);
    if (!utf8.hasError())
        return text.startsWith(QChar(0xFEFF)) ? text.mid(1) : text;
    QStringDecoder cp1252("windows-1252");
    return cp1252.isValid() ? QString(cp1252(bytes)) : QString::fromLatin1(bytes);
}

} // namespace

QString GetIniValue(const QString& file, const QString& section, const QString& key, const QString& defaultValue)
{
    QFile f(file);
    return GetIniValueFromBytes(f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray(), section, key, defaultValue);
}

QString GetIniValueFromBytes(const QByteArray& bytes, const QString& section, const QString& key,
                             const QString& defaultValue)
{
    const QString text = decode(bytes);
    bool inSection = false;
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (QString line : lines) {
        if (line.endsWith(QLatin1Char('\r')))
            line.chop(1);
        const QString trimmed = line.trimmed();
        if (trimmed.startsWith(QLatin1Char('['))) {
            const qsizetype close = trimmed.indexOf(QLatin1Char(']'));
            const QString name = trimmed.mid(1, close < 0 ? -1 : close - 1).trimmed();
            inSection = name.compare(section, Qt::CaseInsensitive) == 0;
            continue;
        }
        if (!inSection || trimmed.startsWith(QLatin1Char(';')))
            continue;
        const qsizetype eq = line.indexOf(QLatin1Char('='));
        if (eq < 0)
            continue;
        if (line.left(eq).trimmed().compare(key, Qt::CaseInsensitive) != 0)
            continue;
        QString value = line.mid(eq + 1);
        // Leading blanks go as well: "Key = Value" reads as "Value".
        while (!value.isEmpty() && (value.front() == u' ' || value.front() == u'\t'))
            value.remove(0, 1);
        value = stripTrailingBlanks(value.left(MaxValueLength));
        if (value.isEmpty())
            return defaultValue;
        return value;
    }
    return defaultValue;
}

} // namespace iniHandler
