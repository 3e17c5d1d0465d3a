// SPDX-License-Identifier: GPL-3.0-or-later
#include <QCoreApplication>

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    return 0;
}
