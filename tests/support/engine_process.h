#pragma once

#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "support/temporary_folder.h"
#include "support/virtual_display.h"
#include "support/wait_until.h"

/// The engine as its own process, in a group of its own, started in the present working directory as a user
/// would start it. What it writes to its standard error stream is kept in "stderr.txt" there. Killed if it
/// still runs at the end.
struct EngineProcess {
    pid_t id = -1;

    /// @param shellPrefix put in front of the program, such as "ulimit -v 200000;"
    explicit EngineProcess(const std::string& shellPrefix = "", const std::string& arguments = "") {
        if (std::filesystem::is_regular_file("defaultlog.txt")) {
            std::filesystem::remove("defaultlog.txt");
        }
        id = fork();
        if (id != 0) {
            return;
        }
        setpgid(0, 0);
        for (const int signal : {SIGINT, SIGHUP}) {
            ::signal(signal, SIG_DFL);  // the tests may run under nohup, or in the background of a script
        }
        const int errors = open("stderr.txt", O_WRONLY | O_CREAT | O_TRUNC, 0644);
        dup2(errors, STDERR_FILENO);
        // The engine's own exit code is 1, so a finding of the sanitizers takes another. The scene is left
        // to the end of the process by design, and would count as leaked.
        setenv("ASAN_OPTIONS", "exitcode=99:detect_leaks=0", 1);
        const std::string command = shellPrefix + " exec " + ENGINE_PROGRAM + " " + arguments;
        execl("/bin/sh", "sh", "-c", command.c_str(), static_cast<char*>(nullptr));
        _exit(127);
    }
    ~EngineProcess() {
        if (id > 0) {
            kill(id, SIGKILL);
            waitpid(id, nullptr, 0);
        }
    }
    EngineProcess(const EngineProcess&) = delete;
    EngineProcess& operator=(const EngineProcess&) = delete;

    /// Whether the process has ended; then with which code, or -1 if it died by a signal.
    bool HasEnded(int& code) {
        int status = 0;
        if (id <= 0 || waitpid(id, &status, WNOHANG) != id) {
            return false;
        }
        id = -1;
        code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        return true;
    }
    /// Waits for the end of the process; its exit code, or -1 if it doesn't end or dies by a signal.
    int WaitForExit() {
        int code = -1;
        WaitUntil([&] { return HasEnded(code); });
        return code;
    }

    /// Holds Escape until the process has ended, anew each second, since a window that isn't ready yet may
    /// swallow the press; the exit code as above.
    int EndByEscape(const VirtualDisplay& display) {
        int code = -1;
        WaitUntil([&] {
            display.Xdotool("keyup Escape keydown Escape");
            return WaitUntil([&] { return HasEnded(code); }, std::chrono::seconds(1));
        });
        display.Xdotool("keyup Escape");
        return code;
    }

    static std::string Log() { return ReadWholeFile("defaultlog.txt"); }
    static std::string Errors() { return ReadWholeFile("stderr.txt"); }

    /// Whether a text appears in the log in time.
    static bool WaitForLog(const std::string& text) {
        return WaitUntil([&] { return Log().find(text) != std::string::npos; });
    }
};

/// The log's entries without their time stamps: what stands after the second blank of each line. Empty
/// lines, which follow the first and the last entry, are left out.
inline std::vector<std::string> LogEntries(const std::string& log) {
    std::vector<std::string> entries;
    for (std::size_t start = 0; start < log.size();) {
        const std::size_t end = std::min(log.find('\n', start), log.size());
        const std::string line = log.substr(start, end - start);
        start = end + 1;
        const std::size_t date = line.find(' ');
        if (date == std::string::npos) {
            continue;
        }
        const std::size_t time = line.find(' ', date + 1);
        if (time != std::string::npos) {
            entries.push_back(line.substr(time + 1));
        }
    }
    return entries;
}
