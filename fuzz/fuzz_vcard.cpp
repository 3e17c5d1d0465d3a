// SPDX-License-Identifier: GPL-3.0-or-later
// vCard files, as address books and phones export them or as they arrive damaged. The input's
// last byte chooses. Even (a line feed, as a file ends): the rest is a file, read as it is, and
// the result must keep the rules every result keeps. Odd: the rest describes up to three cards,
// which are written out in the forms the reader knows (2.1, 3.0 and 4.0 parameters, quoted-
// printable with soft breaks, base64, charsets, folded lines, groups, tel: addresses, a photo,
// byte order marks, a card that lost its END) and must be read back exactly.
#include "FuzzCheck.h"
#include "settings/VCardReader.h"

#include <QStringDecoder>
#include <QStringEncoder>

#include <cctype>

namespace {

bool samePhones(const QList<VCardPhone>& a, const QList<VCardPhone>& b)
{
    if (a.size() != b.size())
        return false;
    for (qsizetype i = 0; i < a.size(); ++i) {
        if (a[i].number != b[i].number || a[i].types != b[i].types)
            return false;
    }
    return true;
}

bool sameContacts(const QList<VCardContact>& a, const QList<VCardContact>& b)
{
    if (a.size() != b.size())
        return false;
    for (qsizetype i = 0; i < a.size(); ++i) {
        if (a[i].displayName != b[i].displayName || !samePhones(a[i].phones, b[i].phones))
            return false;
    }
    return true;
}

bool hasAsciiLower(const QString& text)
{
    for (const QChar c : text) {
        if (c >= u'a' && c <= u'z')
            return true;
    }
    return false;
}

void checkResult(const VCardReader::Result& result)
{
    // Every card found ends as a contact or as a skipped one; a file without any counts as one.
    FUZZ_CHECK(result.skipped >= 0);
    FUZZ_CHECK(result.contacts.size() + result.skipped >= 1);
    for (const VCardContact& contact : result.contacts) {
        FUZZ_CHECK(contact.displayName == contact.displayName.trimmed());
        QString firstCell;
        for (const VCardPhone& phone : contact.phones) {
            FUZZ_CHECK(!phone.number.isEmpty());
            FUZZ_CHECK(phone.number == phone.number.trimmed());
            for (const QString& type : phone.types)
                FUZZ_CHECK(!type.isEmpty() && !hasAsciiLower(type));
            if (firstCell.isEmpty() && phone.isCell())
                firstCell = phone.number;
        }
        // Only a number typed as a cell phone is a mobile one; a contact without one offers none.
        FUZZ_CHECK(contact.mobileNumber() == firstCell);
    }
}

void checkFile(const QByteArray& bytes)
{
    const VCardReader::Result result = VCardReader::readBytes(bytes);
    checkResult(result);
    const VCardReader::Result again = VCardReader::readBytes(bytes);
    FUZZ_CHECK(again.skipped == result.skipped && sameContacts(again.contacts, result.contacts));
}

// Writes cards as the input describes them, and what the reader must make of them.
class Writer
{
public:
    explicit Writer(FuzzedDataProvider& input)
        : m_input(input)
    {
        static const QByteArray ends[] = { "\r\n", "\n", "\r" };
        m_eol = ends[m_input.ConsumeIntegralInRange(0, 2)];
        m_width = m_input.ConsumeIntegralInRange(0, 80);
        m_foldWith = m_input.ConsumeBool() ? ' ' : '\t';
    }

    void card()
    {
        const int version = m_input.ConsumeIntegralInRange(0, 2);
        line(m_input.ConsumeBool() ? "BEGIN:VCARD" : "begin:vcard");
        line(QByteArray("VERSION:") + (version == 0 ? "2.1" : version == 1 ? "3.0" : "4.0"));
        VCardContact contact;
        QString formatted, name, organisation;
        const int properties = m_input.ConsumeIntegralInRange(0, 6);
        for (int i = 0; i < properties; ++i) {
            switch (m_input.ConsumeIntegralInRange(0, 5)) {
            case 0: {
                const QString fn = text();
                value("FN", {}, escaped(fn));
                formatted = fn.trimmed();
                break;
            }
            case 1: {
                const QString family = text();
                const QString given = text();
                value("N", {}, escaped(family) + u';' + escaped(given) + QStringLiteral(";;;"));
                name = QStringList { given.trimmed(), family.trimmed() }.join(u' ').trimmed();
                break;
            }
            case 2: {
                const QString org = text();
                value("ORG", {}, escaped(org) + QStringLiteral(";Vertrieb"));
                organisation = org.trimmed();
                break;
            }
            case 3:
            case 4:
                phone(version, contact);
                break;
            default:
                photo();
            }
        }
        contact.displayName = !formatted.isEmpty() ? formatted : !name.isEmpty() ? name : organisation;
        // A card that lost its END, or whose END was cut short, is skipped.
        const int end = m_input.ConsumeIntegralInRange(0, 7);
        if (end == 0) {
            ++m_expected.skipped;
        } else {
            line(end == 1 ? "END:VCAR" : "END:VCARD");
            if (end == 1)
                ++m_expected.skipped;
            else
                m_expected.contacts.append(contact);
        }
        if (m_input.ConsumeBool())
            line("X-BETWEEN:" + word(8));
    }

    // The file, possibly behind a byte order mark, and what it holds.
    QByteArray file(VCardReader::Result* expected)
    {
        if (m_expected.contacts.isEmpty() && m_expected.skipped == 0)
            m_expected.skipped = 1;
        *expected = m_expected;
        const int mark = m_input.ConsumeIntegralInRange(0, 3);
        if (mark == 1)
            return "\xEF\xBB\xBF" + m_out;
        QStringDecoder utf8(QStringDecoder::Utf8);
        const QString text = utf8.decode(m_out);
        if (mark < 2 || utf8.hasError())
            return m_out;
        QStringEncoder utf16(mark == 2 ? QStringEncoder::Utf16LE : QStringEncoder::Utf16BE,
                             QStringEncoder::Flag::WriteBom);
        return utf16.encode(text);
    }

private:
    // A value of a name or organisation: any text but a CR, which no exporter leaves in one.
    QString text() { return fuzz::field(m_input, 40).remove(u'\r'); }

    static QString escaped(QString value)
    {
        value.replace(u'\\', QStringLiteral("\\\\"));
        value.replace(u';', QStringLiteral("\\;"));
        value.replace(u',', QStringLiteral("\\,"));
        return value.replace(u'\n', QStringLiteral("\\n"));
    }

    // Letters and digits only, so that it can't end a line or a parameter.
    QByteArray word(size_t maxLength)
    {
        QByteArray word = QByteArray::fromStdString(m_input.ConsumeRandomLengthString(maxLength));
        word.removeIf([](char c) { return !std::isalnum(static_cast<unsigned char>(c)); });
        return word;
    }

    // Writes one property with its value in a charset and transfer encoding the input picks.
    void value(QByteArray name, QList<QByteArray> parameters, const QString& text)
    {
        if (m_input.ConsumeBool())
            name = name.toLower();
        if (m_input.ConsumeBool())
            name = "item" + QByteArray::number(m_input.ConsumeIntegralInRange(1, 9)) + '.' + name;
        QByteArray bytes = text.toUtf8();
        switch (m_input.ConsumeIntegralInRange(0, 2)) {
        case 1:
            parameters.append("CHARSET=UTF-8");
            break;
        case 2: {
            const QByteArray latin1 = text.toLatin1();
            if (QString::fromLatin1(latin1) == text) {
                parameters.append("CHARSET=ISO-8859-1");
                bytes = latin1;
            }
            break;
        }
        default:
            break;
        }
        const int encoding = m_input.ConsumeIntegralInRange(0, 3);
        if (encoding == 1) {
            parameters.append(m_input.ConsumeBool() ? "ENCODING=QUOTED-PRINTABLE" : "QUOTED-PRINTABLE");
            quotedPrintable(name + ';' + parameters.join(';') + ':', bytes);
            return;
        }
        if (encoding == 2) {
            parameters.append(m_input.ConsumeBool() ? "ENCODING=b" : "ENCODING=BASE64");
            bytes = bytes.toBase64();
        }
        line(name + (parameters.isEmpty() ? QByteArray() : ';' + parameters.join(';')) + ':' + bytes);
    }

    void phone(int version, VCardContact& contact)
    {
        static const char digits[] = "0123456789+- /()";
        QString number;
        const size_t length = m_input.ConsumeIntegralInRange<size_t>(0, 16);
        for (size_t i = 0; i < length; ++i)
            number += QLatin1Char(digits[m_input.ConsumeIntegralInRange<size_t>(0, sizeof digits - 2)]);
        QStringList types;
        QList<QByteArray> words;
        const int typeCount = m_input.ConsumeIntegralInRange(0, 3);
        for (int i = 0; i < typeCount; ++i) {
            QByteArray type = word(6);
            const QByteArray upper = type.toUpper();
            // Not a word the reader takes for an encoding.
            if (type.isEmpty() || upper == "B" || upper == "BASE64")
                type = m_input.ConsumeBool() ? "cell" : "HOME";
            types.append(QString::fromLatin1(type.toUpper()));
            words.append(type);
        }
        // 3.0's list, 2.1's bare words, one TYPE each, 4.0's quoted list.
        QList<QByteArray> parameters;
        switch (words.isEmpty() ? -1 : m_input.ConsumeIntegralInRange(0, 3)) {
        case 0:
            parameters.append("TYPE=" + words.join(','));
            break;
        case 1:
            parameters = words;
            break;
        case 2:
            for (const QByteArray& type : words)
                parameters.append("TYPE=" + type);
            break;
        case 3:
            parameters.append("TYPE=\"" + words.join(',') + '"');
            break;
        default:
            break;
        }
        // 4.0 writes a tel: address, perhaps with an extension.
        QString written = number;
        if (version == 2 && m_input.ConsumeBool()) {
            parameters.prepend("VALUE=uri");
            written = QStringLiteral("tel:") + number + (m_input.ConsumeBool() ? QStringLiteral(";ext=12") : QString());
        }
        value("TEL", parameters, written);
        if (!number.trimmed().isEmpty())
            contact.phones.append(VCardPhone { number.trimmed(), types });
    }

    // A picture, which the reader passes over: base64 over many folded lines, and in 2.1 a blank
    // line after it.
    void photo()
    {
        const std::string picture = m_input.ConsumeRandomLengthString(300);
        const QByteArray data = QByteArray::fromStdString(picture).toBase64();
        line("PHOTO;ENCODING=" + QByteArray(m_input.ConsumeBool() ? "b" : "BASE64") + ";TYPE=JPEG:" + data);
        if (m_input.ConsumeBool())
            m_out += m_eol;
    }

    // A content line, folded every m_width bytes: the next line starts with a blank or a tab.
    void line(const QByteArray& content)
    {
        if (m_width == 0 || content.size() <= m_width) {
            m_out += content + m_eol;
            return;
        }
        m_out += content.first(m_width);
        for (qsizetype at = m_width; at < content.size(); at += qMax(1, m_width - 1))
            m_out += m_eol + m_foldWith + content.mid(at, qMax(1, m_width - 1));
        m_out += m_eol;
    }

    // Quoted-printable, with a soft break every m_width characters (never inside an "=XX"). The
    // colon is always encoded, so that no continuation line reads as an END.
    void quotedPrintable(const QByteArray& header, const QByteArray& bytes)
    {
        const bool all = m_input.ConsumeBool();
        const char* hex = m_input.ConsumeBool() ? "0123456789ABCDEF" : "0123456789abcdef";
        QByteArray encoded;
        qsizetype lineLength = header.size();
        m_out += header;
        for (const char c : bytes) {
            const auto u = static_cast<unsigned char>(c);
            QByteArray piece(1, c);
            if (all || u < 0x21 || u > 0x7E || c == '=' || c == ':')
                piece = QByteArray("=") + hex[u >> 4] + hex[u & 0xF];
            if (m_width > 0 && lineLength + piece.size() > m_width && lineLength > 0) {
                m_out += '=' + m_eol;
                lineLength = 0;
            }
            m_out += piece;
            lineLength += piece.size();
        }
        m_out += m_eol;
    }

    FuzzedDataProvider& m_input;
    QByteArray m_eol;
    int m_width = 0;
    char m_foldWith = ' ';
    QByteArray m_out;
    VCardReader::Result m_expected;
};

void checkWritten(FuzzedDataProvider& input)
{
    Writer writer(input);
    const int cards = input.ConsumeIntegralInRange(0, 3);
    for (int i = 0; i < cards; ++i)
        writer.card();
    VCardReader::Result expected;
    const QByteArray file = writer.file(&expected);
    const VCardReader::Result result = VCardReader::readBytes(file);
    checkResult(result);
    if (result.skipped != expected.skipped || !sameContacts(result.contacts, expected.contacts)) {
        std::fprintf(stderr, "file: %s\nskipped %d, expected %d\n", file.toHex(' ').constData(), result.skipped,
                     expected.skipped);
        const auto print = [](const char* what, const QList<VCardContact>& contacts) {
            std::fprintf(stderr, "%s:\n", what);
            for (const VCardContact& c : contacts) {
                std::fprintf(stderr, "  [%s]", qPrintable(c.displayName));
                for (const VCardPhone& p : c.phones)
                    std::fprintf(stderr, " [%s %s]", qPrintable(p.number), qPrintable(p.types.join(u',')));
                std::fprintf(stderr, "\n");
            }
        };
        print("read", result.contacts);
        print("expected", expected.contacts);
        FUZZ_CHECK(false);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    FuzzedDataProvider input(data, size);
    if (input.ConsumeBool()) {
        checkWritten(input);
    } else {
        const std::string bytes = input.ConsumeRemainingBytesAsString();
        checkFile(QByteArray(bytes.data(), qsizetype(bytes.size())));
    }
    return 0;
}
