#pragma once

#include <signal.h>
#include <sys/wait.h>

#include "support/wait_until.h"

/// Asks a child to end, ends it if it doesn't listen, and forgets its number.
inline void EndProcess(pid_t& process) {
    if (process <= 0) {
        return;
    }
    kill(process, SIGTERM);
    if (!WaitUntil([&] { return waitpid(process, nullptr, WNOHANG) != 0; }, std::chrono::seconds(5))) {
        kill(process, SIGKILL);
        waitpid(process, nullptr, 0);
    }
    process = -1;
}
