// SPDX-License-Identifier: GPL-3.0-or-later
#include "VCardReader.h"

#include "toolkit/Codepage.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

#include <optional>

namespace VCardReader {
namespace {

// One content line of a card, split into what the reader needs.
struct Property
{
    QByteArray name; // upper case, without its group ("item1.TEL" is "TEL")
    QStringList types;
    QByteArray charset;
    bool quotedPrintable = false;
    bool base64 = false;
    QByteArray value; // the raw bytes after the colon
};

// The colon that ends the name and parameters; a colon inside a quoted parameter value
// (TYPE="a:b") doesn't count. -1 when there is none.
qsizetype headerEnd(QByteArrayView line)
{
    bool quoted = false;
    for (qsizetype i = 0; i < line.size(); ++i) {
        if (line[i] == '"')
            quoted = !quoted;
        else if (line[i] == ':' && !quoted)
            return i;
    }
    return -1;
}

bool isQuotedPrintable(QByteArrayView line)
{
    const qsizetype end = headerEnd(line);
    return end > 0 && line.first(end).toByteArray().toUpper().contains("QUOTED-PRINTABLE");
}

bool isEndOfCard(QByteArrayView line)
{
    return line.trimmed().compare("END:VCARD", Qt::CaseInsensitive) == 0;
}

// Physical lines into content lines: a line that starts with a blank or a tab continues the one
// before it (less that one character), and in a quoted-printable value a line that ends with "="
// goes on in the next line whatever that starts with. Blank lines end a content line.
QList<QByteArray> contentLines(QByteArrayView bytes)
{
    QList<QByteArray> lines;
    QByteArray current;
    bool open = false;
    bool quotedPrintable = false;
    // Files written with a lone CR as line end (old Macs) have no LF at all.
    const char lineEnd = bytes.contains('\n') ? '\n' : '\r';
    qsizetype start = 0;
    while (start < bytes.size()) {
        qsizetype end = bytes.indexOf(lineEnd, start);
        if (end < 0)
            end = bytes.size();
        QByteArrayView line = bytes.sliced(start, end - start);
        start = end + 1;
        if (line.endsWith('\r'))
            line.chop(1);

        if (open && quotedPrintable && current.endsWith('=') && !isEndOfCard(line)) {
            current.chop(1);
            current += line;
            continue;
        }
        if (open && !line.isEmpty() && (line[0] == ' ' || line[0] == '\t')) {
            current += line.sliced(1);
            continue;
        }
        if (open)
            lines.append(current);
        open = !line.trimmed().isEmpty();
        current = open ? line.toByteArray() : QByteArray();
        quotedPrintable = open && isQuotedPrintable(line);
    }
    if (open)
        lines.append(current);
    return lines;
}

// Splits at a separator outside double quotes.
QList<QByteArrayView> splitOutsideQuotes(QByteArrayView text, char separator)
{
    QList<QByteArrayView> parts;
    bool quoted = false;
    qsizetype from = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == '"') {
            quoted = !quoted;
        } else if (text[i] == separator && !quoted) {
            parts.append(text.sliced(from, i - from));
            from = i + 1;
        }
    }
    parts.append(text.sliced(from));
    return parts;
}

QByteArrayView unquoted(QByteArrayView value)
{
    value = value.trimmed();
    if (value.size() >= 2 && value.front() == '"' && value.back() == '"')
        return value.sliced(1, value.size() - 2);
    return value;
}

// Parameters come as "TYPE=CELL,VOICE", "TYPE=cell;TYPE=voice", 4.0's TYPE="cell,voice", or
// bare as in 2.1: "TEL;CELL;VOICE", "N;QUOTED-PRINTABLE".
std::optional<Property> parseProperty(const QByteArray& line)
{
    const qsizetype end = headerEnd(line);
    if (end <= 0)
        return std::nullopt;
    const QList<QByteArrayView> header = splitOutsideQuotes(QByteArrayView(line).first(end), ';');
    Property property;
    property.name = header.constFirst().trimmed().toByteArray().toUpper();
    const qsizetype dot = property.name.lastIndexOf('.');
    if (dot >= 0)
        property.name.remove(0, dot + 1);
    if (property.name.isEmpty())
        return std::nullopt;

    for (qsizetype i = 1; i < header.size(); ++i) {
        const QByteArrayView parameter = header.at(i).trimmed();
        const qsizetype equals = parameter.indexOf('=');
        const QByteArray key = equals < 0 ? QByteArray() : parameter.first(equals).trimmed().toByteArray().toUpper();
        const QByteArrayView value = unquoted(equals < 0 ? parameter : parameter.sliced(equals + 1));
        if (key == "CHARSET") {
            property.charset = value.toByteArray();
            continue;
        }
        if (!key.isEmpty() && key != "TYPE" && key != "ENCODING")
            continue;
        for (const QByteArrayView item : splitOutsideQuotes(value, ',')) {
            const QByteArray word = unquoted(item).toByteArray().toUpper();
            if (word == "QUOTED-PRINTABLE")
                property.quotedPrintable = true;
            else if (word == "BASE64" || word == "B")
                property.base64 = true;
            else if (!word.isEmpty() && key != "ENCODING")
                property.types.append(QString::fromLatin1(word));
        }
    }
    property.value = line.mid(end + 1);
    return property;
}

int hexDigit(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    return -1;
}

// "=XX" is one byte; an "=" that isn't followed by two hex digits stays as it is, and one at
// the very end is a soft line break with nothing after it.
QByteArray decodeQuotedPrintable(QByteArrayView in)
{
    QByteArray out;
    out.reserve(in.size());
    for (qsizetype i = 0; i < in.size(); ++i) {
        if (in[i] != '=') {
            out += in[i];
            continue;
        }
        if (i + 2 < in.size() && hexDigit(in[i + 1]) >= 0 && hexDigit(in[i + 2]) >= 0) {
            out += char(hexDigit(in[i + 1]) * 16 + hexDigit(in[i + 2]));
            i += 2;
        } else if (i + 1 < in.size()) {
            out += '=';
        }
    }
    return out;
}

// The card's declared character set where Qt knows it and the bytes fit it; otherwise UTF-8,
// and where the bytes aren't valid UTF-8, the Windows code page that older exporters write.
QString decodeText(const QByteArray& bytes, const QByteArray& charset)
{
    if (!charset.isEmpty()) {
        QStringDecoder declared(charset.constData(), QStringDecoder::Flag::Stateless);
        if (declared.isValid()) {
            QString text = declared.decode(bytes);
            if (!declared.hasError())
                return text;
        }
    }
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = utf8.decode(bytes);
    if (!utf8.hasError())
        return text;
    return Codepage::fromWindows1252(bytes);
}

QString valueText(const Property& property)
{
    QByteArray bytes = property.value;
    if (property.quotedPrintable)
        bytes = decodeQuotedPrintable(bytes);
    else if (property.base64)
        bytes = QByteArray::fromBase64(bytes);
    return decodeText(bytes, property.charset);
}

// Removes the escapes "\\", "\;", "\,", "\:" and "\n"; a backslash before anything else stays,
// as 2.1 cards don't escape it. With split, an unescaped ";" separates components.
QStringList unescape(const QString& value, bool split)
{
    QStringList parts;
    QString current;
    for (qsizetype i = 0; i < value.size(); ++i) {
        const QChar c = value.at(i);
        if (c == u'\\' && i + 1 < value.size()) {
            const QChar next = value.at(i + 1);
            if (next == u'n' || next == u'N') {
                current += u'\n';
                ++i;
                continue;
            }
            if (next == u'\\' || next == u';' || next == u',' || next == u':') {
                current += next;
                ++i;
                continue;
            }
        }
        if (split && c == u';') {
            parts.append(current);
            current.clear();
            continue;
        }
        current += c;
    }
    parts.append(current);
    return parts;
}

// A number as written, or the number of a "tel:" address without its parameters (";ext=...").
QString telephoneNumber(const QString& value)
{
    QString number = unescape(value, false).constFirst().trimmed();
    if (number.startsWith(u"tel:", Qt::CaseInsensitive)) {
        number.remove(0, 4);
        const qsizetype parameters = number.indexOf(u';');
        if (parameters >= 0)
            number.truncate(parameters);
    }
    return number.trimmed();
}

// Collects a card's properties until its END.
class CardBuilder
{
public:
    void take(const Property& property)
    {
        if (property.name == "FN") {
            m_formattedName = unescape(valueText(property), false).constFirst().trimmed();
        } else if (property.name == "N") {
            const QStringList parts = unescape(valueText(property), true);
            QStringList name;
            if (parts.size() > 1 && !parts.at(1).trimmed().isEmpty())
                name.append(parts.at(1).trimmed());
            if (!parts.constFirst().trimmed().isEmpty())
                name.append(parts.constFirst().trimmed());
            m_name = name.join(u' ');
        } else if (property.name == "ORG") {
            m_organisation = unescape(valueText(property), true).constFirst().trimmed();
        } else if (property.name == "TEL") {
            const QString number = telephoneNumber(valueText(property));
            if (!number.isEmpty())
                m_contact.phones.append(VCardPhone { number, property.types });
        }
    }

    VCardContact finish()
    {
        m_contact.displayName = !m_formattedName.isEmpty() ? m_formattedName
            : !m_name.isEmpty()                            ? m_name
                                                           : m_organisation;
        return std::move(m_contact);
    }

private:
    VCardContact m_contact;
    QString m_formattedName;
    QString m_name;
    QString m_organisation;
};

bool isCardMarker(const Property& property, const char* name)
{
    return property.name == name && QByteArrayView(property.value).trimmed().compare("VCARD", Qt::CaseInsensitive) == 0;
}

// Byte order marks: UTF-8's is dropped, UTF-16 text (as some Windows programs export it) is
// turned into UTF-8 first.
QByteArray withoutByteOrderMark(const QByteArray& bytes)
{
    if (bytes.startsWith("\xEF\xBB\xBF"))
        return bytes.mid(3);
    const bool littleEndian = bytes.startsWith("\xFF\xFE");
    if (littleEndian || bytes.startsWith("\xFE\xFF")) {
        QStringDecoder utf16(littleEndian ? QStringDecoder::Utf16LE : QStringDecoder::Utf16BE);
        return QString(utf16.decode(QByteArrayView(bytes).sliced(2))).toUtf8();
    }
    return bytes;
}

void append(Result& into, Result&& from)
{
    into.contacts.append(std::move(from.contacts));
    into.skipped += from.skipped;
}

} // namespace

bool isVCardFileName(const QString& fileName)
{
    const QString suffix = QFileInfo(fileName).suffix();
    return suffix.compare(u"vcf", Qt::CaseInsensitive) == 0 || suffix.compare(u"vcard", Qt::CaseInsensitive) == 0;
}

Result readBytes(const QByteArray& bytes)
{
    Result result;
    std::optional<CardBuilder> card;
    bool anyCard = false;
    for (const QByteArray& line : contentLines(withoutByteOrderMark(bytes))) {
        const std::optional<Property> property = parseProperty(line);
        if (!property)
            continue;
        if (isCardMarker(*property, "BEGIN")) {
            // A card that is still open here lost its END.
            if (card)
                ++result.skipped;
            card.emplace();
            anyCard = true;
        } else if (card && isCardMarker(*property, "END")) {
            result.contacts.append(card->finish());
            card.reset();
        } else if (card) {
            card->take(*property);
        }
    }
    if (card)
        ++result.skipped;
    if (!anyCard)
        result.skipped = 1;
    return result;
}

Result readFile(const QString& fileName)
{
    QFile file(fileName);
    if (!QFileInfo(fileName).isFile() || file.size() > MaxFileSize || !file.open(QIODevice::ReadOnly))
        return Result { {}, 1 };
    return readBytes(file.readAll());
}

Result read(const QString& path)
{
    const QFileInfo info(path);
    if (info.isFile())
        return isVCardFileName(path) ? readFile(path) : Result {};
    Result result;
    if (!info.isDir())
        return result;
    const QFileInfoList files = QDir(path).entryInfoList(QDir::Files, QDir::Name);
    for (const QFileInfo& file : files) {
        if (isVCardFileName(file.fileName()))
            append(result, readFile(file.filePath()));
    }
    return result;
}

} // namespace VCardReader
