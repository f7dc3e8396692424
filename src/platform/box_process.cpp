#include "platform/box_process.h"

#include <pthread.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/types.h>
#include <unistd.h>

#include <atomic>
#include <new>

namespace {

/// What this process and the forked one tell each other, in memory that they share.
struct Box {
    std::atomic<pid_t> process = 0;   ///< 0 while there is none
    std::atomic<bool> ended = false;  ///< set before `process` is read, read after that is set
};
static_assert(std::atomic<pid_t>::is_always_lock_free);

Box* box = nullptr;
bool boxExpected = false;

/// Runs in every process that is forked, before anything else.
void EnterChild() {
    if (!boxExpected) {
        return;
    }
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    for (const int ending : {SIGTERM, SIGINT, SIGHUP}) {
        if (signal(ending, SIG_DFL) == SIG_IGN) {
            signal(ending, SIG_IGN);
        }
    }
    box->process = getpid();
    if (box->ended) {
        _exit(255);  // no exit code of a box that was shown
    }
}

bool Prepare() {
    void* memory = mmap(nullptr, sizeof(Box), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) {
        return false;
    }
    box = new (memory) Box;
    return pthread_atfork(nullptr, nullptr, EnterChild) == 0;
}

}  // namespace

BoxProcess::BoxProcess() {
    static const bool prepared = Prepare();
    boxExpected = prepared;
}

BoxProcess::~BoxProcess() {
    boxExpected = false;
    if (box != nullptr) {
        box->process = 0;
    }
}

void EndBoxProcess() {
    if (box == nullptr) {
        return;
    }
    box->ended = true;
    const pid_t process = box->process;
    if (process > 0) {
        kill(process, SIGKILL);
    }
}
