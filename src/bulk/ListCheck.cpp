// SPDX-License-Identifier: GPL-3.0-or-later
#include "ListCheck.h"

#include "sending/GatewayRequest.h"
#include "sending/RecipientText.h"
#include "sending/WireText.h"

#include <QHash>

namespace ListCheck {

namespace {
// An international number: "00", a country code that doesn't begin with 0, up to 15 digits.
constexpr int ShortestNumber = 7;
constexpr int LongestNumber = 15;

bool allDigits(QStringView text)
{
    for (const QChar c : text) {
        if (c < u'0' || c > u'9')
            return false;
    }
    return true;
}

// Why the run can't send to Nummer, which it would send to as sent.
QString problemOf(const QString& Nummer, const std::optional<QString>& sent)
{
    if (!sent)
        return QStringLiteral("Keine Nummer: der Versand endet an dieser Zeile.");
    const QStringView digits = QStringView(*sent).mid(2);
    if (!allDigits(digits))
        return QStringLiteral("Die Nummer „%1“ enthält Zeichen, die keine Ziffern sind.").arg(Nummer);
    if (!Nummer.startsWith(u'0'))
        return QStringLiteral("Die Nummer „%1“ beginnt weder mit 00 noch mit 0 und ginge an %2.").arg(Nummer, *sent);
    if (digits.startsWith(u'0'))
        return QStringLiteral("Die Nummer „%1“ hat nach 00 keine Ländervorwahl.").arg(Nummer);
    if (digits.size() < ShortestNumber)
        return QStringLiteral("Die Nummer „%1“ ist zu kurz.").arg(Nummer);
    if (digits.size() > LongestNumber)
        return QStringLiteral("Die Nummer „%1“ hat mehr als %2 Ziffern.").arg(Nummer).arg(LongestNumber);
    return {};
}
} // namespace

QString numberProblem(const QString& Nummer)
{
    return problemOf(Nummer, RecipientText::rowNumber(Nummer));
}

Preview preview(const RecipientRow& row, const Context& context)
{
    Preview p;
    p.number = RecipientText::rowNumber(row.Nummer).value_or(QString());
    p.text = RecipientText::rowText(context.txtSMS, row.Name, row.Freitext1, row.Freitext2);
    p.size = int(WireText::wireLength(p.text));
    p.parts = int(GatewayRequest::sendMessageParts(p.text, context.options).size());
    p.credits = p.parts * context.pricePerSms;
    if (!WireText::isSendable(p.text))
        p.lost = WireText::unsendable(p.text);
    return p;
}

QString previewLine(const Preview& preview)
{
    QString line
        = QStringLiteral("%1 Zeichen, %2 SMS, %3 Credits").arg(preview.size).arg(preview.parts).arg(preview.credits);
    if (!preview.lost.isEmpty())
        line += QStringLiteral(". ") + WireText::unsendableNotice(preview.lost);
    return line;
}

QList<Finding> check(const QList<RecipientRow>& rows, const Context& context)
{
    QList<Finding> findings;
    QHash<QString, int> firstRowOf;
    // Without placeholders every row gets the same text: measured once.
    const bool personal = context.txtSMS.contains(QStringLiteral("%name%"))
        || context.txtSMS.contains(QStringLiteral("%frei1%")) || context.txtSMS.contains(QStringLiteral("%frei2%"));
    std::optional<Preview> common;
    for (int i = 0; i < rows.size(); ++i) {
        const RecipientRow& row = rows.at(i);
        const std::optional<QString> number = RecipientText::rowNumber(row.Nummer);
        const QString problem = problemOf(row.Nummer, number);
        if (!number) {
            findings.append({ i, Kind::NoNumber, problem });
        } else {
            if (!problem.isEmpty())
                findings.append({ i, Kind::BadNumber, problem });
            const auto known = firstRowOf.constFind(*number);
            if (known != firstRowOf.constEnd())
                findings.append(
                    { i, Kind::Duplicate, QStringLiteral("Dieselbe Nummer wie Zeile %1.").arg(*known + 1) });
            else
                firstRowOf.insert(*number, i);
            if (context.stopped && context.stopped(*number))
                findings.append(
                    { i, Kind::Stopped,
                      QStringLiteral("Die Nummer steht auf der Sperrliste: die Zeile wird übersprungen.") });
        }
        if (!personal && !common)
            common = preview(row, context);
        const Preview p = personal ? preview(row, context) : *common;
        if (!p.lost.isEmpty())
            findings.append({ i, Kind::LosesCharacters, WireText::unsendableNotice(p.lost) });
        if (p.parts > context.expectedParts)
            findings.append({ i, Kind::MoreParts,
                              QStringLiteral("Der Text wird %1 SMS lang, angezeigt sind %2.")
                                  .arg(p.parts)
                                  .arg(context.expectedParts) });
    }
    return findings;
}

} // namespace ListCheck
