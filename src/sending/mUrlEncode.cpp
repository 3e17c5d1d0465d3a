// SPDX-License-Identifier: GPL-3.0-or-later
#include "mUrlEncode.h"

#include "toolkit/Codepage.h"

namespace mUrlEncode {

QString percentEncode(const QString& text, bool plusForBlank)
{
    QString out;
    out.reserve(text.size() * 3);
    const QByteArray bytes = Codepage::toWindows1252(text);
    for (const char c : bytes) {
        const auto b = static_cast<unsigned char>(c);
        if ((b >= 'A' && b <= 'Z') || (b >= 'a' && b <= 'z') || (b >= '0' && b <= '9'))
            out += QLatin1Char(c);
        else if (b == ' ')
            out += plusForBlank ? QStringLiteral("+") : QStringLiteral("%20");
        else
            out += QLatin1Char('%') + QString::number(b, 16).toUpper().rightJustified(2, QLatin1Char('0'));
    }
    return out;
}

} // namespace mUrlEncode
