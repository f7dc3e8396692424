#pragma once

#include <unistd.h>

#include <chrono>

/// Asks again and again until the condition holds; false if it never does within the time. The time is
/// long because it only passes in full when a test fails.
template <typename Condition>
bool WaitUntil(Condition condition, std::chrono::seconds limit = std::chrono::seconds(20)) {
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
        usleep(2000);
    }
    return true;
}
