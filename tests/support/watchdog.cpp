#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

// Part of every test program: a test that hangs leaves the stacks of its threads, if there is a gdb, and
// ends before ctest would end it without a word.

namespace {

char processNumber[16];
/// The standard error stream, also while a test captures it.
const int errors = fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 100);

void ShowStacks(int) {
    constexpr char told[] = "This test hangs.\n";
    static_cast<void>(write(errors, told, sizeof told - 1) == 0);
    prctl(PR_SET_PTRACER, PR_SET_PTRACER_ANY);
    const pid_t debugger = fork();
    if (debugger == 0) {
        dup2(errors, STDOUT_FILENO);
        dup2(errors, STDERR_FILENO);
        alarm(12);
        execlp("gdb", "gdb", "-nx", "-batch", "-p", processNumber, "-ex", "thread apply all backtrace",
               static_cast<char*>(nullptr));
        _exit(127);
    }
    waitpid(debugger, nullptr, 0);
    signal(SIGABRT, SIG_DFL);
    abort();
}

struct Watchdog : testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo&) override {
        std::snprintf(processNumber, sizeof processNumber, "%d", getpid());
        signal(SIGALRM, ShowStacks);
        alarm(TEST_SECONDS - 15);
    }
    void OnTestEnd(const testing::TestInfo&) override { alarm(0); }
};

const bool watches = [] {
    testing::UnitTest::GetInstance()->listeners().Append(new Watchdog);
    return true;
}();

}  // namespace
