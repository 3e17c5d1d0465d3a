// SPDX-License-Identifier: GPL-3.0-or-later
// Job files for the local server program over any field values. The input holds the eight
// fields of one form, separated by "\|"; its last byte picks the form. The document is built in
// memory (writing it to the folders is tst_handoff's) and, where the values make well-formed
// XML, parsed again.
#include "FuzzCheck.h"
#include "handoff/xmlServer.h"
#include "toolkit/Codepage.h"

#include <QCryptographicHash>
#include <QXmlStreamReader>

#include <utility>

namespace {
using Fields = QList<std::pair<QString, QString>>; // element name and the value written into it

// What a reader gives back for each value. The bytes are Windows-1252 ("?" for a character it
// lacks) while the file declares ISO-8859-1, so a euro sign, written as 0x80, reads back as
// U+0080; and XML turns every CR LF and every lone CR into LF. The values go through the code
// page in one piece, which gives the same bytes as one by one (the code page maps each character
// on its own) for a fraction of the time.
QStringList asRead(const QStringList& values)
{
    const QChar separator = u'\x01'; // never in a value that is compared
    QString read = QString::fromLatin1(Codepage::toWindows1252(values.join(separator)));
    read.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    read.replace(u'\r', u'\n');
    return read.split(separator);
}

bool xmlCharacters(const QString& value)
{
    for (const QChar c : value) {
        if (c.unicode() < 0x20 && c != u'\t' && c != u'\n' && c != u'\r')
            return false;
    }
    return true;
}

// A value written without escaping keeps the file well-formed only without markup in it.
bool plainValue(const QString& value)
{
    return xmlCharacters(value) && !value.contains(u'&') && !value.contains(u'<')
        && !value.contains(QStringLiteral("]]>"));
}

// The elements of the document in order, each with the text directly inside it; empty on a
// parse error.
Fields parse(const QByteArray& document)
{
    Fields elements;
    QList<qsizetype> open;
    QXmlStreamReader reader(document);
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isStartElement()) {
            open.append(elements.size());
            elements.append({ reader.name().toString(), QString() });
        } else if (reader.isCharacters() && !open.isEmpty()) {
            elements[open.constLast()].second += reader.text();
        } else if (reader.isEndElement()) {
            open.removeLast();
        }
    }
    if (reader.hasError()) {
        std::fprintf(stderr, "XML error: %s\n", qPrintable(reader.errorString()));
        return {};
    }
    return elements;
}

QByteArray lowBytes(const QString& text)
{
    QByteArray bytes;
    for (const QChar c : text)
        bytes += char(c.unicode() & 0xFF);
    return bytes;
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    FuzzedDataProvider input(data, size);
    const bool group = input.ConsumeBool();
    QStringList v;
    for (int i = 0; i < 8; ++i)
        v.append(fuzz::field(input, 128));

    // The first field is login or group, the eighth version or secret key.
    const QByteArray document = group
        ? xmlServer::groupDocument(v[0], v[1], v[2], v[3], v[4], v[5], v[6], v[7])
        : xmlServer::singleAccountDocument(v[0], v[1], v[2], v[3], v[4], v[5], v[6], v[7]);

    QString text = v[group ? 4 : 5];
    text.replace(QChar(0x20AC), u'E');
    const QString to = xmlServer::recipient(v[group ? 2 : 3]);
    Fields expected;
    QStringList plain; // the values written as they stand
    if (group) {
        const QString hash = QString::fromLatin1(
            QCryptographicHash::hash(lowBytes(v[0] + v[1] + to + v[3] + text + v[5] + v[6] + v[7]),
                                     QCryptographicHash::Md5)
                .toHex());
        expected = { { QStringLiteral("SMS"), {} },         { QStringLiteral("group"), v[0] },
                     { QStringLiteral("user"), v[1] },      { QStringLiteral("to"), to },
                     { QStringLiteral("from"), v[3] },      { QStringLiteral("text"), text },
                     { QStringLiteral("application"), {} }, { QStringLiteral("name"), v[5] },
                     { QStringLiteral("version"), v[6] },   { QStringLiteral("hash"), hash } };
        plain = { v[0], v[1], to, v[3], v[5], v[6] };
    } else {
        expected = { { QStringLiteral("SMS"), {} },        { QStringLiteral("login"), v[0] },
                     { QStringLiteral("password"), v[1] }, { QStringLiteral("user"), v[2] },
                     { QStringLiteral("to"), to },         { QStringLiteral("from"), v[4] },
                     { QStringLiteral("text"), text },     { QStringLiteral("application"), {} },
                     { QStringLiteral("name"), v[6] },     { QStringLiteral("version"), v[7] } };
        plain = { v[0], v[1], v[2], to, v[4], v[6], v[7] };
    }
    bool wellFormed = xmlCharacters(text);
    for (const QString& value : plain)
        wellFormed = wellFormed && plainValue(value);
    if (!wellFormed)
        return 0;

    const Fields parsed = parse(document);
    FUZZ_CHECK(parsed.size() == expected.size());
    QStringList values;
    for (const auto& [name, value] : expected)
        values.append(value);
    const QStringList read = asRead(values);
    for (qsizetype i = 0; i < expected.size(); ++i) {
        FUZZ_CHECK(parsed[i].first == expected[i].first);
        // <SMS> and <application> hold only the line breaks and tabs of the layout.
        if (expected[i].first == u"SMS" || expected[i].first == u"application")
            FUZZ_CHECK(parsed[i].second.trimmed().isEmpty());
        else
            FUZZ_CHECK(parsed[i].second == read[i]);
    }
    return 0;
}
