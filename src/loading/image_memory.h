#pragma once

#include <cstddef>
#include <memory>
#include <new>

/// More than this no image may ask for, whatever its header says.
inline constexpr std::size_t maxImageMemory = std::size_t{1} << 30;

/// While it lives, running out of memory gives null and doesn't reach the new-handler, which ends the
/// process: images come from outside and may ask for any amount.
struct NewHandlerSuspended {
    std::new_handler handler = std::set_new_handler(nullptr);

    NewHandlerSuspended() = default;
    ~NewHandlerSuspended() { std::set_new_handler(handler); }
    NewHandlerSuspended(const NewHandlerSuspended&) = delete;
    NewHandlerSuspended& operator=(const NewHandlerSuspended&) = delete;
};

/// Values that are not initialised, or null if there is no memory for them.
template <typename Value>
std::unique_ptr<Value[]> AllocateForImage(std::size_t count) {
    if (count > maxImageMemory / sizeof(Value)) {
        return nullptr;
    }
    const NewHandlerSuspended suspended;
    return std::unique_ptr<Value[]>(new (std::nothrow) Value[count]);
}
