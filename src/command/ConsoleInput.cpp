// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConsoleInput.h"

#include <QFile>
#include <QTextStream>

#include <cstdio>

#ifdef Q_OS_WIN
#include <io.h>
#include <windows.h>
#else
#include <termios.h>
#include <unistd.h>
#endif

namespace ConsoleInput {
namespace {
QTextStream& input()
{
    static QFile file;
    static QTextStream stream;
    if (!file.isOpen()) {
        (void)file.open(stdin, QIODevice::ReadOnly);
        stream.setDevice(&file);
    }
    return stream;
}

// Hides what is typed at the terminal while it lives.
class HiddenTyping
{
public:
    HiddenTyping()
    {
#ifdef Q_OS_WIN
        m_handle = GetStdHandle(STD_INPUT_HANDLE);
        if (GetConsoleMode(m_handle, &m_mode))
            m_hidden = SetConsoleMode(m_handle, m_mode & ~DWORD(ENABLE_ECHO_INPUT));
#else
        if (tcgetattr(STDIN_FILENO, &m_mode) == 0) {
            termios hidden = m_mode;
            hidden.c_lflag &= ~tcflag_t(ECHO);
            m_hidden = tcsetattr(STDIN_FILENO, TCSAFLUSH, &hidden) == 0;
        }
#endif
    }
    ~HiddenTyping()
    {
        if (!m_hidden)
            return;
#ifdef Q_OS_WIN
        SetConsoleMode(m_handle, m_mode);
#else
        tcsetattr(STDIN_FILENO, TCSAFLUSH, &m_mode);
#endif
    }
    HiddenTyping(const HiddenTyping&) = delete;
    HiddenTyping& operator=(const HiddenTyping&) = delete;

private:
    bool m_hidden = false;
#ifdef Q_OS_WIN
    HANDLE m_handle = nullptr;
    DWORD m_mode = 0;
#else
    termios m_mode {};
#endif
};
} // namespace

bool isTerminal()
{
#ifdef Q_OS_WIN
    return _isatty(_fileno(stdin)) != 0;
#else
    return isatty(STDIN_FILENO) != 0;
#endif
}

QString readPassword(const QString& prompt)
{
    if (!isTerminal())
        return input().readLine();
    QTextStream err(stderr);
    err << prompt;
    err.flush();
    QString line;
    {
        const HiddenTyping hidden;
        line = input().readLine();
    }
    err << '\n';
    return line;
}

QString readText()
{
    QString text = input().readAll();
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    if (text.endsWith(u'\n'))
        text.chop(1);
    text.replace(u'\n', QStringLiteral("\r\n"));
    return text;
}
} // namespace ConsoleInput
