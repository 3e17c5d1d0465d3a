// SPDX-License-Identifier: GPL-3.0-or-later
#include "mSignaturen.h"

#include "ToolRegistry.h"
#include "tools.h"

namespace mSignaturen {
namespace {
QString key()
{
    return QString::fromUtf16(ToolRegistry::RootKey) + QStringLiteral("\\Signaturen");
}
} // namespace

QStringList LoadSignaturen()
{
    bool ok = false;
    const qint16 count = tools::NumericToInt16(ToolRegistry::GetRegString(key(), QStringLiteral("count")), &ok);
    QStringList signatures;
    for (int i = 1; ok && i <= count; ++i)
        signatures.append(ToolRegistry::GetRegString(key(), QString::number(i)));
    return signatures;
}

void SaveSignaturen(const QStringList& signatures)
{
    ToolRegistry::SaveRegString(key(), QStringLiteral("count"), QString::number(signatures.size()));
    for (int i = 1; i <= signatures.size(); ++i)
        ToolRegistry::SaveRegString(key(), QString::number(i), signatures.at(i - 1));
}

} // namespace mSignaturen
