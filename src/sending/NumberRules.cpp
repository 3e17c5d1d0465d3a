// SPDX-License-Identifier: GPL-3.0-or-later
#include "NumberRules.h"

#include "Prefixes.h"
#include "settings/tools.h"

namespace NumberRules {

namespace {
const QString& countryCodeOf(QChar letter)
{
    static const QString germany = QStringLiteral("0049");
    static const QString austria = QStringLiteral("0043");
    static const QString switzerland = QStringLiteral("0041");
    static const QString none;
    if (letter == u'G')
        return germany;
    if (letter == u'A')
        return austria;
    if (letter == u'S')
        return switzerland;
    return none;
}
} // namespace

QString countryCode(const QString& key)
{
    return key.isEmpty() ? QString() : countryCodeOf(key.front());
}

SendNumber sendNumber(const QString& cmbVorwahlKey, const QString& txtNummer)
{
    if (cmbVorwahlKey.isEmpty())
        return {};
    const QChar letter = cmbVorwahlKey.front();
    if (letter == u'W')
        return { true, txtNummer };
    const QString code = countryCodeOf(letter);
    if (code.isEmpty())
        return {};
    return { true, code + cmbVorwahlKey.mid(1) + txtNummer };
}

QString serverNumber(const QString& number)
{
    QString result = number;
    const qsizetype at = result.indexOf(u"00");
    if (at >= 0)
        result.replace(at, 2, QStringLiteral("+"));
    return result;
}

PhonebookNumber splitPhonebookNumber(const QString& number)
{
    struct Country
    {
        const char16_t* code;
        const char16_t* letter;
        const char16_t* word;
        qsizetype prefixLength;
    };
    // The one five-digit German prefix is looked for before the others.
    static const Country countries[] = {
        { u"00491520", u"G", u"Deutschland", 8 },
        { u"0049", u"G", u"Deutschland", 7 },
        { u"0043", u"A", u"Österreich", 7 },
        { u"0041", u"S", u"die Schweiz", 6 },
    };
    for (const Country& c : countries) {
        const QString start = QString::fromUtf16(c.code);
        if (!number.startsWith(start))
            continue;
        // Every occurrence of the country code in the prefix becomes the letter.
        QString key = number.left(c.prefixLength);
        key.replace(start.left(4), QString::fromUtf16(c.letter));
        QString rest = number.mid(c.prefixLength);
        rest.remove(u'/');
        return { key, rest, QString::fromUtf16(c.word) };
    }
    QString whole = number;
    whole.remove(u'/');
    return { QStringLiteral("W"), whole, QString() };
}

TypedNumber splitTypedNumber(const QString& typed)
{
    QString number = typed;
    number.remove(u' ');
    number.remove(u'/');
    if (number.startsWith(u'+'))
        number.replace(0, 1, QStringLiteral("00"));
    const bool international = number.startsWith(u"00");
    if (!international && !number.startsWith(u'0'))
        return { {}, number, {} };
    // The longest prefix of the list that the number begins with, in the form it is written in.
    TypedNumber found;
    qsizetype longest = 0;
    for (const PrefixEntry& entry : Prefixes::table()) {
        if (entry.key == u"W")
            continue;
        const QString start = international ? countryCode(entry.key) + entry.key.mid(1) : entry.text;
        if (start.size() > longest && number.startsWith(start)) {
            longest = start.size();
            found = { entry.key, number.mid(start.size()), {} };
        }
    }
    if (longest > 0)
        return found;
    if (!international)
        return { {}, number, {} };
    return { QStringLiteral("W"), number, splitPhonebookNumber(number).countryWord };
}

UsedNumber splitUsedNumberTag(const QString& tag)
{
    const qsizetype dash = tag.indexOf(u'-');
    QString key = dash < 0 ? tag : tag.left(dash);
    key.replace(u'V', u'G');
    // A tag holds one "-"; a number with a dash of its own keeps only its first piece.
    QString number;
    if (dash >= 0) {
        const qsizetype next = tag.indexOf(u'-', dash + 1);
        number = next < 0 ? tag.mid(dash + 1) : tag.mid(dash + 1, next - dash - 1);
    }
    return { key, number };
}

NumberCheck checkNumber(const QString& cmbVorwahlKey, const QString& txtNummer)
{
    NumberCheck check;
    if (cmbVorwahlKey == u"W" && txtNummer.size() > 1 && !txtNummer.startsWith(u"00")) {
        check.marked = true;
        check.warningText = QString::fromUtf16(u"Die Nummer muss mit der internationalen Vorwahl '00' beginnen.");
    }
    if (!tools::IsNumeric(txtNummer)) {
        check.marked = true;
        check.warningText = QString::fromUtf16(u"Die Rufnummer darf nur aus Ziffern bestehen.");
    }
    return check;
}

bool keepsFocus(const QString& txtNummer)
{
    return !tools::IsNumeric(txtNummer);
}

} // namespace NumberRules
