// SPDX-License-Identifier: GPL-3.0-or-later
#include "CsvList.h"

#include "CsvHeader.h"
#include "CsvText.h"

#include <QCryptographicHash>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <cstring>

using namespace Qt::StringLiterals;

namespace CsvList {

namespace {

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
    const CsvText::Decoded decoded = CsvText::decode(bytes);
    if (!decoded.failure.isEmpty()) {
        result.failure = decoded.failure;
        return result;
    }
    const QString& text = decoded.text;
    if (!CsvText::looksLikeText(text)) {
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
        result.delimiter = CsvText::detectDelimiter(text, decoded.encoding.startsWith(u"UTF-16"));
    }

    // Room for a row a line, counted where memchr finds them quickly.
    qsizetype lines = 1;
    for (const char* at = bytes.constData();
         (at = static_cast<const char*>(std::memchr(at, '\n', bytes.constEnd() - at))); ++at)
        ++lines;
    result.rows.reserve(lines);
    result.rowNumbers.reserve(lines);

    CsvText::Reader reader(body, result.delimiter);
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
            words.append(CsvHeader::headerWord(f));
        const CsvHeader::HeaderMapping header = CsvHeader::mapHeader(words);
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
            CsvText::Reader ahead = reader;
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
                    if (CsvHeader::isMobileType(kinds.at(k)))
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
