// SPDX-License-Identifier: GPL-3.0-or-later
// A full disk for one test: every write of this process past `bytes` into a file fails, as on a
// full disk, until the returned guard goes. Unlike a read-only folder it stops root as well.
#pragma once

#include <QScopeGuard>

#include <csignal>
#include <sys/resource.h>

[[nodiscard]] inline auto diskFullAfter(rlim_t bytes)
{
    rlimit old {};
    getrlimit(RLIMIT_FSIZE, &old);
    // Past the limit the kernel would end the process with SIGXFSZ; ignored, the write fails.
    const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit limited = old;
    limited.rlim_cur = bytes;
    setrlimit(RLIMIT_FSIZE, &limited);
    return qScopeGuard([old, oldHandler] {
        setrlimit(RLIMIT_FSIZE, &old);
        std::signal(SIGXFSZ, oldHandler);
    });
}
