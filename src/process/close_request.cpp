#include "process/close_request.h"

#include <signal.h>
#include <time.h>
#include <unistd.h>

#include <atomic>

namespace {

constexpr int closingSignals[] = {SIGTERM, SIGINT, SIGHUP};
constexpr int exitCode = 1;

// What a signal handler touches has to be free of locks.
std::atomic<bool> requested = false;
std::atomic<bool> taken = false;
std::atomic<long> firstSignal = 0;  // milliseconds; 0 while none has come
static_assert(std::atomic<bool>::is_always_lock_free && std::atomic<long>::is_always_lock_free);

/// Who ends a program often signals twice in a row: a terminal that goes sends SIGHUP from shell and
/// system, a session SIGTERM and SIGHUP. All within this time count as one.
constexpr long oneRequest = 300;  // milliseconds

long Milliseconds() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return now.tv_sec * 1000 + now.tv_nsec / 1000000 + 1;
}

void OnSignal(int) {
    long first = 0;
    const long now = Milliseconds();
    const bool isFirst = firstSignal.compare_exchange_strong(first, now);
    if (!isFirst && now - first > oneRequest) {
        _exit(exitCode);  // the display guard puts the mode back
    }
    requested = true;
}

}  // namespace

void CloseOnSignals() {
    struct sigaction action {};
    action.sa_handler = OnSignal;
    action.sa_flags = SA_RESTART;
    for (const int signal : closingSignals) {
        sigaddset(&action.sa_mask, signal);
    }
    for (const int signal : closingSignals) {
        struct sigaction before {};
        sigaction(signal, nullptr, &before);
        if (before.sa_handler != SIG_IGN) {  // as under nohup, or in the background of a script
            sigaction(signal, &action, nullptr);
        }
    }
}

void RequestClose() {
    requested = true;
}

bool CloseIsRequested() {
    return requested;
}

bool TakeCloseRequest() {
    return requested && !taken.exchange(true);
}
