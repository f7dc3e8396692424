#pragma once

#include <sys/wait.h>

#include <cstdio>
#include <string>

/// What a shell command wrote to its standard output, and its exit code (-1 if a signal ended it).
struct CommandResult {
    std::string output;
    int exitCode = -1;
};

inline CommandResult RunCommand(const std::string& command) {
    CommandResult result;
    std::FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) {
        return result;
    }
    char buffer[4096];
    for (std::size_t count; (count = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;) {
        result.output.append(buffer, count);
    }
    const int status = pclose(pipe);
    if (WIFEXITED(status)) {
        result.exitCode = WEXITSTATUS(status);
    }
    return result;
}
