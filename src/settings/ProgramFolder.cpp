// SPDX-License-Identifier: GPL-3.0-or-later
#include "ProgramFolder.h"

#include "tools.h"

#include <QCoreApplication>

namespace ProgramFolder {
namespace {
QString& overridden()
{
    static QString folder;
    return folder;
}
} // namespace

QString path()
{
    return overridden().isEmpty() ? QCoreApplication::applicationDirPath() : overridden();
}

QString oemFile()
{
    return path() + QStringLiteral("/oem.inf");
}

bool oemFileExists()
{
    return tools::FileExists(oemFile());
}

void setPathForTesting(const QString& folder)
{
    overridden() = folder;
}
} // namespace ProgramFolder
