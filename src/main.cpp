// SPDX-License-Identifier: GPL-3.0-or-later
#include "sending/mStarter.h"

#include <QApplication>

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("Tarnholt"));
    QCoreApplication::setApplicationName(QStringLiteral("SMS"));
    mStarter::Main();
    return QApplication::exec();
}
