// Makes a scene of a model: see --help.

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstring>
#include <exception>
#include <new>
#include <stdexcept>
#include <string>

#include "import_scene/importing.h"

namespace {

int Fail(const Options& options, const char* text) {
    std::fprintf(stderr, "%s: error: %s\n", options.input.c_str(), text);
    return 1;
}

int Run(const Options& options) {
    try {
        Import(options);
    } catch (const std::invalid_argument& wrong) {
        std::fprintf(stderr, "import_scene: error: %s\n", wrong.what());
        return 2;
    } catch (const std::bad_alloc&) {
        return Fail(options, "there is not enough memory for what it says that it holds");
    } catch (const std::exception& failure) {
        return Fail(options, failure.what());
    }
    return 0;
}

/// The work is done in a process of its own: a damaged model can bring down the library that reads it, and
/// the user should be told even then.
int RunGuarded(const Options& options) {
    const pid_t worker = fork();
    if (worker == -1) {
        return Run(options);
    }
    if (worker == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);  // whoever ends the program means this one, too
        const int code = Run(options);
        std::fflush(nullptr);
        _exit(code);
    }
    int status = 0;
    waitpid(worker, &status, 0);
    if (WIFSIGNALED(status)) {
        const std::string text = std::string("reading it ended with \"") + strsignal(WTERMSIG(status)) +
                                 "\": the file is damaged, or too large for this machine";
        return Fail(options, text.c_str());
    }
    return WEXITSTATUS(status);
}

}  // namespace

int main(int argumentCount, char** arguments) {
    Options options;
    const int exitCode = ReadOptions(options, argumentCount, arguments);
    return exitCode >= 0 ? exitCode : RunGuarded(options);
}
