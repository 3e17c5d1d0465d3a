// SPDX-License-Identifier: GPL-3.0-or-later
// The main function of window tests whose windows may hold a web view: the pseudo-schemes are
// registered and the web engine prepared before the application exists, as the program does.
#pragma once

#include "toolkit/WebView.h"

#include <QApplication>
#include <QTest>

#define QUELLBOTE_GUI_TEST_MAIN(TestObject)                                                                            \
    int main(int argc, char* argv[])                                                                                   \
    {                                                                                                                  \
        WebView::registerSchemes();                                                                                    \
        QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);                                                    \
        QApplication app(argc, argv);                                                                                  \
        app.setAttribute(Qt::AA_Use96Dpi, true);                                                                       \
        TestObject test;                                                                                               \
        QTEST_SET_MAIN_SOURCE_PATH                                                                                     \
        return QTest::qExec(&test, argc, argv);                                                                        \
    }
