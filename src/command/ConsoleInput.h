// SPDX-License-Identifier: GPL-3.0-or-later
// Standard input of quellbote-send: a password, typed at a terminal without being shown or given
// as the first line of what a script pipes in, and the message text after it.
#pragma once

#include <QString>

class QTextStream;

namespace ConsoleInput {
// Whether standard input is a terminal a person types at.
bool isTerminal();
// One line, the password: at a terminal after prompt (on standard error) with the typing not
// shown; otherwise the first line of the input. Empty at the end of the input.
QString readPassword(const QString& prompt);
// Everything left on standard input, line breaks as CR LF, without one final line break.
QString readText();
} // namespace ConsoleInput
