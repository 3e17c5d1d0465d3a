// SPDX-License-Identifier: GPL-3.0-or-later
// A writer killed at any moment of its write: a child process writes again and again and is
// killed after a wait that differs from one time to the next, from before its first write to deep
// in a later one. After each kill the file must be whole (or not there yet), never cut off.
#pragma once

#include <QString>

#include <csignal>
#include <functional>
#include <sys/wait.h>
#include <unistd.h>

// writeForever runs in the child and doesn't return; whole() is asked after each kill and names
// what is wrong, empty when the files are as they should be. Empty when every kill left them so.
inline QString killWhileWriting(const std::function<void()>& writeForever, const std::function<QString()>& whole,
                                int kills = 200)
{
    for (int i = 0; i < kills; ++i) {
        const pid_t child = fork();
        if (child == 0) {
            writeForever();
            _exit(0);
        }
        // 0.1 to about 8 ms, the steps prime to the writes' own rhythm.
        usleep(useconds_t(100 + (i * 7919) % 8000));
        kill(child, SIGKILL);
        int status = 0;
        waitpid(child, &status, 0);
        if (const QString problem = whole(); !problem.isEmpty())
            return QStringLiteral("after kill %1: ").arg(i + 1) + problem;
    }
    return {};
}
