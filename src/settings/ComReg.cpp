// SPDX-License-Identifier: GPL-3.0-or-later
#include "ComReg.h"

#include "ToolRegistry.h"

namespace ComReg {
namespace {
// CreateRegKey's disposition for a key that didn't exist before.
constexpr int CreatedNewKey = 1;
} // namespace

QString addinKey(const QString& application)
{
    return u"Software\\Microsoft\\Office\\" + application + u"\\Addins\\" + QString::fromUtf16(AddinName);
}

void RegisterAddin(const QString& application)
{
    const QString key = addinKey(application);
    if (ToolRegistry::CreateRegKey(key) != CreatedNewKey)
        return;
    // The store holds text values only; the two numbers go in as their decimal text.
    ToolRegistry::SaveRegString(key, QStringLiteral("FriendlyName"), QString::fromUtf16(AddinName));
    ToolRegistry::SaveRegString(key, QStringLiteral("Description"),
                                QStringLiteral("Mit Hilfe von Quellbote eine SMS aus Outlook heraus versenden."));
    ToolRegistry::SaveRegString(key, QStringLiteral("LoadBehavior"), QStringLiteral("3"));
    ToolRegistry::SaveRegString(key, QStringLiteral("CommandLineSafe"), QStringLiteral("0"));
}

} // namespace ComReg
