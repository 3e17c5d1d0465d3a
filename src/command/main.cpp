// SPDX-License-Identifier: GPL-3.0-or-later
// quellbote-send NUMBER [TEXT]: the program's sending for scripts and servers.
#include "SendCommand.h"

#include <QCoreApplication>
#include <QTextStream>

#include <cstdio>

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("Tarnholt"));
    QCoreApplication::setApplicationName(QStringLiteral("SMS"));
    QTextStream out(stdout);
    QTextStream err(stderr);
    SendCommand command(out, err);
    const int status = command.run(QCoreApplication::arguments().mid(1));
    out.flush();
    err.flush();
    return status;
}
