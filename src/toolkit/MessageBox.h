// SPDX-License-Identifier: GPL-3.0-or-later
// The one way the program shows a message box. Tests install a handler that records every box
// and answers it from a script, so no dialog ever blocks a test run.
#pragma once

#include <QString>

#include <functional>

class QWidget;

namespace MessageBox {

enum class Icon { None, Information, Warning, Critical, Question };
enum class Buttons { Ok, OkCancel, YesNo, YesNoCancel };
enum class Answer { Ok, Cancel, Yes, No };

struct Box
{
    QString title;
    QString text;
    Icon icon = Icon::None;
    Buttons buttons = Buttons::Ok;
    QWidget* parent = nullptr; // the window the box comes over
};

// A handler may replace itself (or put the real dialog back) while it answers a box.
using Handler = std::function<Answer(const Box&)>;

// Shows the box modally and returns the button the user chose. An empty title shows the
// application's name. Closing the box by its frame counts as Cancel, or as No where
// there is no Cancel button, or as Ok for a box with Ok alone.
Answer show(QWidget* parent, const QString& text, Buttons buttons = Buttons::Ok, Icon icon = Icon::None,
            const QString& title = QString());

// Replaces the real dialog; an empty handler restores it.
void setHandler(Handler handler);

} // namespace MessageBox
