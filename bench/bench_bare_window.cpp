// SPDX-License-Identifier: GPL-3.0-or-later
// The yardstick of bench_startup: a bare Qt Widgets window with a handful of ordinary controls.
// Prints "shown" when the window is on screen and, a second later, "peak <kB>".
#include "StartupProbe.h"

#include <QApplication>
#include <QFormLayout>
#include <QLineEdit>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QPushButton>

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QMainWindow window;
    auto* form = new QWidget(&window);
    auto* layout = new QFormLayout(form);
    layout->addRow(QStringLiteral("Empfängername"), new QLineEdit(form));
    layout->addRow(QStringLiteral("Rufnummer"), new QLineEdit(form));
    layout->addRow(QStringLiteral("Nachricht"), new QPlainTextEdit(form));
    layout->addRow(new QPushButton(QStringLiteral("Senden"), form));
    window.setCentralWidget(form);
    StartupProbe probe("QMainWindow");
    window.show();
    return QApplication::exec();
}
