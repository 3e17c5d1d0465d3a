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

} // namespace RecipientText
