// SPDX-License-Identifier: GPL-3.0-or-later
// A CSV file's bytes as text: the encoding found by itself (a byte order mark, well-formed
// UTF-8, else Windows-1252), the delimiter the first lines share, and the records one by one.
#pragma once

#include <QByteArray>
#include <QChar>
#include <QList>
#include <QString>
#include <QStringView>

namespace CsvText {

// The text and the name of its encoding; failure says in German why the bytes are no text.
struct Decoded
{
    QString text;
    QString encoding;
    QString failure;
};
Decoded decode(const QByteArray& bytes);

// A text file holds no NUL and hardly a control character besides tabs and line ends.
bool looksLikeText(QStringView text);

// The delimiter that splits the first lines most evenly (";", a tab or ","); where none does, a
// tab for a Unicode text and ";" for others.
QChar detectDelimiter(QStringView text, bool unicodeText);

// Reads the records of a CSV text one after another: fields split at the delimiter, a quoted
// field may hold delimiters, line breaks and doubled quotes; a record ends at CR LF, LF or CR.
class Reader
{
public:
    Reader(QStringView text, QChar delimiter)
        : m_text(text)
        , m_delimiter(delimiter)
    {
    }

    // The next record's fields, as views into the text or into scratch where a value had to be
    // put together. False at the end, and when a quote stays open to the end (openQuote is set).
    bool next(QList<QStringView>* fields, QList<QString>* scratch, bool* openQuote)
    {
        fields->clear();
        scratch->clear();
        const qsizetype n = m_text.size();
        if (m_pos >= n)
            return false;
        for (;;) {
            QStringView value;
            if (m_pos < n && m_text[m_pos] == u'"') {
                const qsizetype start = m_pos + 1;
                qsizetype at = start;
                bool doubled = false;
                for (;;) {
                    const qsizetype quote = m_text.indexOf(u'"', at);
                    if (quote < 0) {
                        *openQuote = true;
                        m_pos = n;
                        return false;
                    }
                    if (quote + 1 < n && m_text[quote + 1] == u'"') {
                        doubled = true;
                        at = quote + 2;
                        continue;
                    }
                    value = m_text.sliced(start, quote - start);
                    m_pos = quote + 1;
                    break;
                }
                // Text after the closing quote belongs to the value, as spreadsheets read it.
                const qsizetype rest = fieldEnd(m_pos);
                if (doubled || rest > m_pos) {
                    QString joined = value.toString();
                    if (doubled)
                        joined.replace(QStringLiteral("\"\""), QStringLiteral("\""));
                    joined += m_text.sliced(m_pos, rest - m_pos);
                    scratch->append(joined);
                    value = scratch->constLast();
                    m_pos = rest;
                }
            } else {
                const qsizetype end = fieldEnd(m_pos);
                value = m_text.sliced(m_pos, end - m_pos);
                m_pos = end;
            }
            fields->append(value);
            if (m_pos >= n)
                return true;
            const QChar c = m_text[m_pos++];
            if (c == m_delimiter)
                continue;
            if (c == u'\r' && m_pos < n && m_text[m_pos] == u'\n')
                ++m_pos;
            return true;
        }
    }

private:
    qsizetype fieldEnd(qsizetype from) const
    {
        const QChar* p = m_text.data() + from;
        const QChar* const end = m_text.data() + m_text.size();
        const char16_t delimiter = m_delimiter.unicode();
        while (p < end) {
            const char16_t c = p->unicode();
            if (c == delimiter || c == u'\n' || c == u'\r')
                break;
            ++p;
        }
        return p - m_text.data();
    }

    QStringView m_text;
    QChar m_delimiter;
    qsizetype m_pos = 0;
};

} // namespace CsvText
