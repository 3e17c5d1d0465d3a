// SPDX-License-Identifier: GPL-3.0-or-later
#include "CsvHeader.h"

#include <QMap>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace CsvHeader {

using CsvList::Mapping;

namespace {
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
} // namespace

QString headerWord(QStringView cell)
{
    return cell.toString().simplified().toCaseFolded();
}

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

} // namespace CsvHeader
