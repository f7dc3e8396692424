// Makes a scene of a model: see --help.

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>
#include <fstream>
#include <new>
#include <optional>
#include <string>
#include <thread>

#include "import_scene/importing.h"

namespace {

int Fail(const Options& options, const char* text) {
    std::fprintf(stderr, "%s: error: %s\n", options.input.c_str(), text);
    return 1;
}

int Run(const Options& options) {
    try {
        Import(options);
    } catch (const WrongUsage& wrong) {
        std::fprintf(stderr, "import_scene: error: %s\n", wrong.what());
        return 2;
    } catch (const std::bad_alloc&) {
        return Fail(options, "there is not enough memory for what it says that it holds");
    } catch (const std::exception& failure) {
        return Fail(options, failure.what());
    }
    return 0;
}

/// Bytes of memory in use by a process; 0 if that can't be known.
std::uintmax_t MemoryOf(pid_t process) {
    std::ifstream file("/proc/" + std::to_string(process) + "/statm");
    std::uintmax_t all = 0;
    std::uintmax_t used = 0;
    file >> all >> used;
    return used * static_cast<std::uintmax_t>(sysconf(_SC_PAGESIZE));
}

/// Some hundred bytes of a file can ask for millions of nodes, while the largest honest models take some
/// fifty times their size.
/// @return the status of the process, or none after it had to be ended
std::optional<int> WaitFor(pid_t worker, const std::string& model) {
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(model, error);
    const std::uintmax_t most = (std::uintmax_t{4} << 30) + (error ? 0 : 50 * size);
    int status = 0;
    while (waitpid(worker, &status, WNOHANG) == 0) {
        if (MemoryOf(worker) > most) {
            kill(worker, SIGKILL);
            waitpid(worker, &status, 0);
            return {};
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return status;
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
    const std::optional<int> ended = WaitFor(worker, options.input);
    if (!ended) {
        return Fail(options,
                    "it takes gigabytes of memory, far more than its size: instances within instances");
    }
    const int status = *ended;
    if (WIFSIGNALED(status)) {
        const std::string text =
            std::string("reading it ended with \"") + strsignal(WTERMSIG(status)) +
            "\": the file is damaged, nests too deeply, or is too large for this machine";
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
