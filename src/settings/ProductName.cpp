// SPDX-License-Identifier: GPL-3.0-or-later
#include "ProductName.h"

#include "ProgramFolder.h"
#include "iniHandler.h"

namespace {
QString& productName()
{
    static QString name = QString::fromUtf16(DefaultProductName);
    return name;
}
} // namespace

QString ProductName()
{
    return productName();
}

void setProductName(const QString& name)
{
    productName() = name;
}

QString readProductName()
{
    const QString fallback = QString::fromUtf16(DefaultProductName);
    if (!ProgramFolder::oemFileExists())
        return fallback;
    return iniHandler::GetIniValue(ProgramFolder::oemFile(), QStringLiteral("Strings"), QStringLiteral("ProductName"),
                                   fallback);
}
