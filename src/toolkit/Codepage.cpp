// SPDX-License-Identifier: GPL-3.0-or-later
#include "Codepage.h"

#include <QStringDecoder>
#include <QStringEncoder>

namespace Codepage {

QByteArray toWindows1252(const QString& text)
{
    QStringEncoder encoder("windows-1252");
    if (!encoder.isValid())
        return text.toLatin1();
    QByteArray whole = encoder.encode(text);
    if (!encoder.hasError())
        return whole;
    QByteArray bytes;
    bytes.reserve(text.size());
    // Character by character, so that one that the code page lacks becomes "?" and the rest
    // stays exact.
    for (qsizetype i = 0; i < text.size(); ++i) {
        const qsizetype length = text.at(i).isHighSurrogate() && i + 1 < text.size() ? 2 : 1;
        QStringEncoder one("windows-1252", QStringConverter::Flag::Stateless);
        const QByteArray b = one.encode(QStringView(text).mid(i, length));
        bytes += (one.hasError() || b.size() != 1) ? QByteArray("?") : b;
        i += length - 1;
    }
    return bytes;
}

QString fromWindows1252(const QByteArray& bytes)
{
    QStringDecoder decoder("windows-1252");
    if (!decoder.isValid())
        return QString::fromLatin1(bytes);
    return decoder.decode(bytes);
}

} // namespace Codepage
