#include "allocations.h"

#include <malloc.h>

#include <cstdlib>
#include <new>

// The benchmark's own operator new: it counts, so that a frame that allocates shows.

static std::int64_t count = 0;
static std::int64_t bytes = 0;

std::int64_t AllocationCount() {
    return count;
}
std::int64_t AllocatedBytes() {
    return bytes;
}

void* operator new(std::size_t size) {
    void* memory = std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    count++;
    bytes += static_cast<std::int64_t>(malloc_usable_size(memory));
    return memory;
}

void operator delete(void* memory) noexcept {
    if (memory != nullptr) {
        bytes -= static_cast<std::int64_t>(malloc_usable_size(memory));
    }
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    operator delete(memory);
}
