// SPDX-License-Identifier: GPL-3.0-or-later
#include "RecipientText.h"

namespace RecipientText {

QString rowText(const QString& txtSMS, const QString& Name, const QString& Freitext1, const QString& Freitext2)
{
    QString text = txtSMS;
    text.replace(QStringLiteral("%name%"), Name);
    text.replace(QStringLiteral("%frei1%"), Freitext1);
    text.replace(QStringLiteral("%frei2%"), Freitext2);
    return text;
}

std::optional<QString> rowNumber(const QString& Nummer)
{
    if (Nummer.isEmpty())
        return std::nullopt;
    if (Nummer.startsWith(u"00"))
        return Nummer;
    return QStringLiteral("0049") + Nummer.mid(1);
}

std::optional<RowMessage> rowMessage(const QString& txtSMS, const QString& Name, const QString& Nummer,
                                     const QString& Freitext1, const QString& Freitext2)
{
    const std::optional<QString> number = rowNumber(Nummer);
    if (!number)
        return std::nullopt;
    return RowMessage { *number, rowText(txtSMS, Name, Freitext1, Freitext2), Name };
}

QString missingNumberNote(int row, const QString& Name)
{
    return QStringLiteral("!!!! Abbruch in Zeile %1 (%2): Die Rufnummer fehlt.").arg(row).arg(Name);
}

} // namespace RecipientText
