// SPDX-License-Identifier: GPL-3.0-or-later
#include "CsvList.h"

#include "toolkit/Codepage.h"

#include <QCryptographicHash>
#include <QFileInfo>
#include <QMap>
#include <QRegularExpression>
#include <QStringDecoder>

#include <algorithm>
#include <array>
#include <cstring>

using namespace Qt::StringLiterals;

namespace CsvList {

namespace {

// How far the delimiter is looked for: enough lines to outvote a header or a stray line.
constexpr int DelimiterLines = 20;

struct Decoded
{
    QString text;
    QString encoding;
    QString failure;
};

// Whether the bytes are well-formed UTF-8 (no overlong forms, no surrogates, nothing past
// U+10FFFF). Stops at the first byte that can't be, which in a Windows-1252 file is soon.
bool isUtf8(const QByteArray& bytes)
{
    const auto* p = reinterpret_cast<const unsigned char*>(bytes.constData());
    const auto* const end = p + bytes.size();
    const auto continuation = [&end](const unsigned char* at, int count) {
        if (end - at < count)
            return false;
        for (int i = 0; i < count; ++i)
            if ((at[i] & 0xC0) != 0x80)
                return false;
        return true;
    };
    while (p < end) {
        const unsigned char c = *p;
        if (c < 0x80) {
            ++p;
            continue;
        }
        int more = 0;
        unsigned char low = 0x80, high = 0xBF; // the range of the second byte
        if (c >= 0xC2 && c <= 0xDF) {
            more = 1;
        } else if (c >= 0xE0 && c <= 0xEF) {
            more = 2;
            low = c == 0xE0 ? 0xA0 : 0x80;
            high = c == 0xED ? 0x9F : 0xBF;
        } else if (c >= 0xF0 && c <= 0xF4) {
            more = 3;
            low = c == 0xF0 ? 0x90 : 0x80;
            high = c == 0xF4 ? 0x8F : 0xBF;
        } else {
            return false;
        }
        if (!continuation(p + 1, more) || p[1] < low || p[1] > high)
            return false;
        p += more + 1;
    }
    return true;
}

Decoded decode(const QByteArray& bytes)
{
    const auto startsWith = [&bytes](const char* mark) {
        return bytes.startsWith(QByteArrayView(mark));
    };
    // What people save instead of a CSV file by mistake.
    if (startsWith("PK\x03\x04") || startsWith("\xD0\xCF\x11\xE0"))
        return { {},
                 {},
                 QStringLiteral("Die Datei ist eine Arbeitsmappe, keine CSV-Datei. Bitte in der "
                                "Tabellenkalkulation als „CSV“ speichern.") };
    if (startsWith("\xEF\xBB\xBF"))
        return { QString::fromUtf8(bytes.constData() + 3, bytes.size() - 3), QStringLiteral("UTF-8"), {} };
    const bool le = startsWith("\xFF\xFE");
    if (le || startsWith("\xFE\xFF")) {
        QStringDecoder decoder(le ? QStringDecoder::Utf16LE : QStringDecoder::Utf16BE);
        const QString text = decoder.decode(QByteArrayView(bytes).sliced(2));
        if (decoder.hasError() || bytes.size() % 2 != 0)
            return { {}, {}, QStringLiteral("Die Datei ist als Unicode-Text gekennzeichnet, ist aber keiner.") };
        return { text, le ? QStringLiteral("UTF-16LE") : QStringLiteral("UTF-16BE"), {} };
    }
    if (isUtf8(bytes))
        return { QString::fromUtf8(bytes), QStringLiteral("UTF-8"), {} };
    return { Codepage::fromWindows1252(bytes), QStringLiteral("Windows-1252"), {} };
}

// A text file holds no NUL and hardly a control character besides tabs and line ends.
bool looksLikeText(QStringView text)
{
    qsizetype controls = 0;
    for (const QChar c : text) {
        const char16_t u = c.unicode();
        if (u >= 0x20)
            continue;
        if (u == 0)
            return false;
        if (u != u'\t' && u != u'\n' && u != u'\r' && u != u'\f' && u != 0x1A)
            ++controls;
    }
    return controls * 100 <= text.size();
}

// The delimiter that splits the first lines most evenly: for each candidate, the count outside
// quotes that most lines share, and how many share it. A comma in a number or a name then loses
// to the ";" every line has the same number of.
QChar detectDelimiter(QStringView text, bool unicodeText)
{
    constexpr std::array<char16_t, 3> candidates = { u';', u'\t', u',' };
    std::array<QList<int>, 3> counts;
    std::array<int, 3> current = {};
    bool quoted = false;
    bool any = false;
    int lines = 0;
    const auto endLine = [&] {
        if (any) {
            for (size_t i = 0; i < candidates.size(); ++i)
                counts[i].append(current[i]);
            ++lines;
        }
        current = {};
        any = false;
    };
    for (qsizetype i = 0; i < text.size() && lines < DelimiterLines; ++i) {
        const char16_t c = text[i].unicode();
        if (c == u'"') {
            quoted = !quoted;
        } else if (!quoted && (c == u'\n' || c == u'\r')) {
            endLine();
            continue;
        } else if (!quoted) {
            for (size_t k = 0; k < candidates.size(); ++k)
                if (c == candidates[k])
                    ++current[k];
        }
        any = true;
    }
    endLine();
    QChar best = unicodeText ? QChar(u'\t') : QChar(u';');
    int bestShared = 0, bestCount = 0;
    for (size_t k = 0; k < candidates.size(); ++k) {
        // The most common non-zero count and how many lines have it.
        int shared = 0, count = 0;
        for (const int c : std::as_const(counts[k])) {
            if (c == 0)
                continue;
            const int n = int(counts[k].count(c));
            if (n > shared || (n == shared && c > count)) {
                shared = n;
                count = c;
            }
        }
        if (shared > bestShared || (shared == bestShared && shared > 0 && count > bestCount)) {
            best = QChar(candidates[k]);
            bestShared = shared;
            bestCount = count;
        }
    }
    return best;
}

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

// A header's column name as compared: lower case, blanks simplified.
QString headerWord(QStringView cell)
{
    return cell.toString().simplified().toCaseFolded();
}

// How well a column name fits a field: 1 an exact name, 2 a numbered one ("Mobiltelefon 2"),
// 3 a general telephone column, 0 not at all.
enum class Field { Name, FirstName, LastName, Number, Freitext1, Freitext2 };

int fit(Field field, const QString& word)
{
    static const QStringList names
        = { u"name"_s, u"anzeigename"_s, u"display name"_s, u"full name"_s, u"vollständiger name"_s };
    static const QStringList firstNames = { u"vorname"_s, u"first name"_s, u"given name"_s, u"firstname"_s };
    static const QStringList lastNames
        = { u"nachname"_s, u"last name"_s, u"family name"_s, u"lastname"_s, u"surname"_s, u"familienname"_s };
    static const QStringList numbers
        = { u"mobiltelefon"_s,  u"handy"_s,          u"mobil"_s,       u"mobilnummer"_s,
            u"mobile"_s,        u"mobile phone"_s,   u"cell"_s,        u"cell phone"_s,
            u"mobile number"_s, u"mobil-tel.-nr."_s, u"handynummer"_s, u"mobilfunknummer"_s,
            u"nummer"_s };
    // Could be a mobile number or not: taken when nothing better is there, and then asked about.
    static const QStringList generalNumbers
        = { u"telefon"_s, u"telefonnummer"_s, u"rufnummer"_s, u"phone"_s, u"phone number"_s, u"tel"_s, u"tel."_s };
    static const QStringList frei1 = { u"freitext1"_s, u"freitext 1"_s, u"frei1"_s, u"frei 1"_s };
    static const QStringList frei2 = { u"freitext2"_s, u"freitext 2"_s, u"frei2"_s, u"frei 2"_s };
    static const QRegularExpression numbered(u"^(.*\\D) ?\\d$"_s);

    const QStringList* list = nullptr;
    switch (field) {
    case Field::Name:
        list = &names;
        break;
    case Field::FirstName:
        list = &firstNames;
        break;
    case Field::LastName:
        list = &lastNames;
        break;
    case Field::Number:
        list = &numbers;
        break;
    case Field::Freitext1:
        list = &frei1;
        break;
    case Field::Freitext2:
        list = &frei2;
        break;
    }
    if (list->contains(word))
        return 1;
    if (field == Field::Number) {
        const QRegularExpressionMatch match = numbered.match(word);
        if (match.hasMatch() && numbers.contains(match.captured(1).trimmed()))
            return 2;
        if (generalNumbers.contains(word))
            return 3;
    }
    return 0;
}

// A column name that says what a column is, though it is none of ours (a work number, a fax).
bool knownOtherColumn(const QString& word)
{
    for (const char16_t* part : { u"telefon", u"phone", u"fax", u"e-mail", u"email", u"firma", u"company" })
        if (word.contains(QStringView(part)))
            return true;
    return false;
}

// "Phone 1 - Type" (or "- Label") and "Phone 1 - Value" of an address book export.
struct TypedColumn
{
    int index = -1; // the "1"
    bool value = false;
};
TypedColumn typedColumn(const QString& word)
{
    static const QRegularExpression form(u"^phone (\\d+) - (type|label|value)$"_s);
    const QRegularExpressionMatch match = form.match(word);
    if (!match.hasMatch())
        return {};
    return { match.captured(1).toInt(), match.captured(2) == u"value" };
}

// The best fitting column for a field: -1 for none; ambiguous when several fit equally well.
int bestColumn(const QStringList& words, Field field, bool* ambiguous, int* rank = nullptr)
{
    int best = -1, bestFit = 0, tied = 0;
    for (int i = 0; i < words.size(); ++i) {
        const int f = fit(field, words.at(i));
        if (f == 0)
            continue;
        if (best < 0 || f < bestFit) {
            best = i;
            bestFit = f;
            tied = 1;
        } else if (f == bestFit) {
            ++tied;
        }
    }
    if (tied > 1)
        *ambiguous = true;
    if (rank)
        *rank = bestFit;
    return best;
}

struct HeaderMapping
{
    bool recognised = false;
    bool sure = false;
    Mapping mapping;
};

HeaderMapping mapHeader(const QStringList& words)
{
    HeaderMapping h;
    bool ambiguous = false;
    Mapping& m = h.mapping;
    m.name = bestColumn(words, Field::Name, &ambiguous);
    m.firstName = bestColumn(words, Field::FirstName, &ambiguous);
    m.lastName = bestColumn(words, Field::LastName, &ambiguous);
    int numberRank = 0;
    m.number = bestColumn(words, Field::Number, &ambiguous, &numberRank);
    m.freitext1 = bestColumn(words, Field::Freitext1, &ambiguous);
    m.freitext2 = bestColumn(words, Field::Freitext2, &ambiguous);
    // Type and value columns pair up by their index, in the order of the types.
    QMap<int, int> types, values;
    bool other = false;
    for (int i = 0; i < words.size(); ++i) {
        const TypedColumn typed = typedColumn(words.at(i));
        if (typed.index >= 0)
            (typed.value ? values : types).insert(typed.index, i);
        other = other || knownOtherColumn(words.at(i));
    }
    for (auto it = types.cbegin(); it != types.cend(); ++it)
        if (values.contains(it.key()))
            m.typedNumbers.append({ it.value(), values.value(it.key()) });
    h.recognised = m.hasName() || m.hasNumber() || m.freitext1 >= 0 || m.freitext2 >= 0 || other;
    h.sure = m.hasName() && m.hasNumber() && !ambiguous && numberRank < 3;
    return h;
}

bool isMobileType(QStringView type)
{
    QString word = headerWord(type);
    while (word.startsWith(u'*'))
        word = word.mid(1).trimmed();
    static const QStringList mobile
        = { u"mobile"_s, u"mobil"_s, u"handy"_s, u"cell"_s, u"mobiltelefon"_s, u"mobile phone"_s };
    return mobile.contains(word);
}

// Values go into a .msms file, which has no quoting: a ";" would move the later fields and a
// line break would end the row there.
QString tableValue(QStringView value)
{
    value = value.trimmed();
    bool plain = true;
    for (const QChar c : value) {
        if (c == u';' || c == u'\r' || c == u'\n') {
            plain = false;
            break;
        }
    }
    if (plain)
        return value.toString();
    QString text = value.toString();
    text.replace(QStringLiteral("\r\n"), QStringLiteral(" "));
    text.replace(u'\r', u' ').replace(u'\n', u' ').replace(u';', u',');
    return text;
}

bool isScientific(QStringView text)
{
    static const QRegularExpression form(u"^\\d+([.,]\\d+)?[eE][+-]?\\d+$"_s);
    return form.match(text).hasMatch();
}

bool blank(QChar c)
{
    return c == u' ' || c == u'\t' || c == QChar(0x00A0) || c == QChar(0x202F) || c == QChar(0x2009);
}

bool separator(QChar c)
{
    return blank(c) || c == u'/' || c == u'-' || c == u'.' || c == u'(' || c == u')' || c == QChar(0x2010)
        || c == QChar(0x2011) || c == QChar(0x2013);
}

Result readText(const QByteArray& bytes, const Mapping* chosen)
{
    Result result;
    if (bytes.isEmpty()) {
        result.ok = true;
        result.delimiter = u';';
        result.encoding = QStringLiteral("UTF-8");
        result.mapping = chosen ? *chosen : Mapping::plain();
        return result;
    }
    const Decoded decoded = decode(bytes);
    if (!decoded.failure.isEmpty()) {
        result.failure = decoded.failure;
        return result;
    }
    const QString& text = decoded.text;
    if (!looksLikeText(text)) {
        result.failure = QStringLiteral("Die Datei ist keine Textdatei und kann nicht als Liste gelesen werden.");
        return result;
    }
    result.encoding = decoded.encoding;
    // "sep=;" on the first line names the delimiter for Excel, which shows the line to no one.
    QStringView body = text;
    static const QRegularExpression sepLine(u"^sep=(.)(\r\n|\r|\n|$)"_s, QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch sep = sepLine.match(body);
    if (sep.hasMatch()) {
        result.delimiter = sep.captured(1).at(0);
        body = body.sliced(sep.capturedEnd());
    } else {
        result.delimiter = detectDelimiter(text, decoded.encoding.startsWith(u"UTF-16"));
    }

    // Room for a row a line, counted where memchr finds them quickly.
    qsizetype lines = 1;
    for (const char* at = bytes.constData();
         (at = static_cast<const char*>(std::memchr(at, '\n', bytes.constEnd() - at))); ++at)
        ++lines;
    result.rows.reserve(lines);
    result.rowNumbers.reserve(lines);

    Reader reader(body, result.delimiter);
    QList<QStringView> fields;
    QList<QString> scratch;
    bool openQuote = false;
    int row = 0;

    // The first record that holds anything may be a header.
    bool more = false;
    while ((more = reader.next(&fields, &scratch, &openQuote))) {
        ++row;
        if (std::any_of(fields.cbegin(), fields.cend(), [](QStringView f) { return !f.trimmed().isEmpty(); }))
            break;
    }
    Mapping mapping = Mapping::plain();
    bool pending = more; // the first record is still to be taken as a row
    if (more) {
        QStringList words;
        for (const QStringView f : std::as_const(fields))
            words.append(headerWord(f));
        const HeaderMapping header = mapHeader(words);
        const auto takeHeader = [&] {
            result.hasHeader = true;
            pending = false;
            for (const QStringView f : std::as_const(fields))
                result.header.append(f.trimmed().toString());
            result.headerKey = QString::fromLatin1(
                QCryptographicHash::hash(words.join(u'\n').toUtf8(), QCryptographicHash::Sha1).toHex());
        };
        if (header.recognised) {
            takeHeader();
            mapping = header.mapping;
            result.sure = header.sure;
        } else if (std::count_if(fields.cbegin(), fields.cend(), [](QStringView f) { return !f.trimmed().isEmpty(); })
                       > 1
                   && std::none_of(fields.cbegin(), fields.cend(), [](QStringView f) {
                          return std::any_of(f.cbegin(), f.cend(), [](QChar c) { return c.isDigit(); });
                      })) {
            // Names no program uses, but no number in them either (and more than one, unlike a row
            // that lacks its number): a header still, whose columns the user has to name. Until then the first column
            // that holds a number in the next row is taken as the number, the first other one that holds anything as
            // the name.
            takeHeader();
            result.sure = false;
            Reader ahead = reader;
            QList<QStringView> next;
            QList<QString> nextScratch;
            bool ignored = false;
            mapping = {};
            if (ahead.next(&next, &nextScratch, &ignored)) {
                for (int i = 0; i < next.size(); ++i) {
                    if (mapping.number < 0 && !number(next.at(i)).number.isEmpty())
                        mapping.number = i;
                }
                for (int i = 0; i < next.size(); ++i) {
                    if (mapping.name < 0 && i != mapping.number && !next.at(i).trimmed().isEmpty())
                        mapping.name = i;
                }
            }
        }
    }
    if (chosen) {
        mapping = *chosen;
        result.sure = true;
    }
    result.mapping = mapping;

    const auto cell = [&fields](int column) {
        return column >= 0 && column < fields.size() ? fields.at(column).trimmed() : QStringView();
    };
    const auto takeRecord = [&] {
        if (std::all_of(fields.cbegin(), fields.cend(), [](QStringView f) { return f.trimmed().isEmpty(); }))
            return;
        QString name = tableValue(cell(mapping.name));
        if (name.isEmpty()) {
            const QStringView last = cell(mapping.lastName);
            name = tableValue(cell(mapping.firstName));
            if (!name.isEmpty() && !last.isEmpty())
                name += u' ';
            name += tableValue(last);
        }
        QStringView written = cell(mapping.number);
        QString typedValue;
        if (written.isEmpty()) {
            for (const auto& [typeColumn, valueColumn] : std::as_const(mapping.typedNumbers)) {
                // Several numbers of one type stand in one cell, " ::: " between them.
                const QList<QStringView> kinds = cell(typeColumn).split(u":::");
                const QList<QStringView> values = cell(valueColumn).split(u":::");
                for (qsizetype k = 0; k < kinds.size() && typedValue.isEmpty(); ++k)
                    if (isMobileType(kinds.at(k)))
                        typedValue = values.value(k, values.constFirst()).trimmed().toString();
                if (!typedValue.isEmpty())
                    break;
            }
            written = typedValue;
        }
        const Number n = number(written);
        if (n.number.isEmpty()) {
            result.doubtful.append({ row, name, tableValue(written), n.reason });
            return;
        }
        result.prefixAdded = result.prefixAdded || n.prefixAdded;
        result.rows.append(
            { name, n.number, tableValue(cell(mapping.freitext1)), tableValue(cell(mapping.freitext2)) });
        result.rowNumbers.append(row);
    };
    if (pending)
        takeRecord();
    while (reader.next(&fields, &scratch, &openQuote)) {
        ++row;
        takeRecord();
    }
    if (openQuote) {
        result.rows.clear();
        result.rowNumbers.clear();
        result.doubtful.clear();
        result.failure = QStringLiteral("In Zeile %1 beginnt ein Wert mit einem Anführungszeichen, das bis zum "
                                        "Ende der Datei nicht geschlossen wird.")
                             .arg(row + 1);
        return result;
    }
    result.ok = true;
    return result;
}

} // namespace

Mapping Mapping::plain()
{
    Mapping m;
    m.name = 0;
    m.number = 1;
    m.freitext1 = 2;
    m.freitext2 = 3;
    return m;
}

QString Mapping::toText() const
{
    QStringList parts;
    const auto add = [&parts](const char16_t* key, int column) {
        if (column >= 0)
            parts.append(QStringView(key) + u'=' + QString::number(column));
    };
    add(u"name", name);
    add(u"first", firstName);
    add(u"last", lastName);
    add(u"number", number);
    QStringList phones;
    for (const auto& [type, value] : typedNumbers)
        phones.append(QString::number(type) + u':' + QString::number(value));
    if (!phones.isEmpty())
        parts.append(u"phones="_s + phones.join(u','));
    add(u"frei1", freitext1);
    add(u"frei2", freitext2);
    return parts.join(u';');
}

std::optional<Mapping> Mapping::fromText(const QString& text)
{
    Mapping m;
    const auto column = [](QStringView value, int* to) {
        bool ok = false;
        *to = value.toInt(&ok);
        return ok && *to >= 0;
    };
    for (const QStringView part : QStringView(text).split(u';', Qt::SkipEmptyParts)) {
        const qsizetype equals = part.indexOf(u'=');
        if (equals < 0)
            return std::nullopt;
        const QStringView key = part.first(equals);
        const QStringView value = part.sliced(equals + 1);
        bool ok = true;
        if (key == u"phones") {
            for (const QStringView pair : value.split(u',')) {
                const qsizetype colon = pair.indexOf(u':');
                int type = -1, number = -1;
                ok = ok && colon > 0 && column(pair.first(colon), &type) && column(pair.sliced(colon + 1), &number);
                m.typedNumbers.append({ type, number });
            }
        } else {
            int* to = key == u"name" ? &m.name
                : key == u"first"    ? &m.firstName
                : key == u"last"     ? &m.lastName
                : key == u"number"   ? &m.number
                : key == u"frei1"    ? &m.freitext1
                : key == u"frei2"    ? &m.freitext2
                                     : nullptr;
            ok = to && column(value, to);
        }
        if (!ok)
            return std::nullopt;
    }
    return m;
}

Result read(const QByteArray& bytes)
{
    return readText(bytes, nullptr);
}

Result read(const QByteArray& bytes, const Mapping& mapping)
{
    return readText(bytes, &mapping);
}

Number number(QStringView written)
{
    written = written.trimmed();
    if (written.isEmpty())
        return { {}, QStringLiteral("Die Rufnummer fehlt."), false };
    // Nearly every number of a list kept for this program is written as the table holds it.
    if (written.size() > 2 && written.startsWith(u"00")
        && std::all_of(written.cbegin(), written.cend(), [](QChar c) { return c >= u'0' && c <= u'9'; })
        && written.size() <= 17 && written.size() >= 9 && written[2] != u'0')
        return { written.toString(), {}, false };
    const auto scientific = [&written] {
        return Number { {},
                        QStringLiteral(
                            "Die Rufnummer „%1“ ist von der Tabellenkalkulation als Zahl in "
                            "Exponentialschreibweise gespeichert worden; ihre letzten Ziffern sind verloren. "
                            "Bitte die Spalte als Text formatieren und die Nummern neu eingeben.")
                            .arg(written),
                        false };
    };
    // The digits are gathered in place: a list of a million rows has a million numbers.
    constexpr qsizetype Room = 24;
    std::array<char16_t, Room> digits;
    qsizetype count = 0;
    bool plus = false;
    const auto tooLong = [&written] {
        return Number { {}, QStringLiteral("Die Rufnummer „%1“ ist zu lang.").arg(written), false };
    };
    for (qsizetype i = 0; i < written.size(); ++i) {
        const QChar c = written[i];
        if (c >= u'0' && c <= u'9') {
            if (count == Room)
                return tooLong();
            digits[count++] = c.unicode();
        } else if (c == u'+' && count == 0 && !plus) {
            plus = true;
        } else if (c == u'(' && written.sliced(i).startsWith(u"(0)") && count > 1
                   && (plus || (digits[0] == u'0' && digits[1] == u'0'))) {
            // "+49 (0)171": the national zero, written for those who dial from within the country.
            i += 2;
        } else if (!separator(c)) {
            if ((c == u'E' || c == u'e') && isScientific(written))
                return scientific();
            return { {},
                     QStringLiteral("Die Rufnummer „%1“ enthält „%2“; erlaubt sind Ziffern, ein + am Anfang, "
                                    "Leerzeichen und / - ( ).")
                         .arg(written, c),
                     false };
        }
    }
    const QStringView gathered(digits.data(), count);
    Number n;
    if (plus) {
        if (gathered.startsWith(u'0'))
            return { {}, QStringLiteral("Die Rufnummer „%1“ hat nach dem + eine 0.").arg(written), false };
        n.number = QStringLiteral("00") + gathered;
    } else if (gathered.startsWith(u"00")) {
        n.number = gathered.toString();
    } else if (gathered.startsWith(u'0')) {
        n.number = QStringLiteral("0049") + gathered.sliced(1);
        n.prefixAdded = true;
    } else {
        return { {},
                 QStringLiteral("Die Rufnummer „%1“ beginnt weder mit 0 noch mit +; welches Land gemeint ist, "
                                "bleibt offen.")
                     .arg(written),
                 false };
    }
    // Past the "00": a country code (never beginning with 0) and the subscriber's number, at most
    // 15 digits together.
    const qsizetype significant = n.number.size() - 2;
    if (significant < 7 || n.number.at(2) == u'0')
        return { {},
                 QStringLiteral("Die Rufnummer „%1“ ist zu kurz oder hat keine Landesvorwahl.").arg(written),
                 false };
    if (significant > 15)
        return tooLong();
    return n;
}

bool isCsvPath(const QString& path)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    return suffix == u"csv" || suffix == u"tsv" || suffix == u"txt";
}

} // namespace CsvList
