#include "allocations.h"

#include <malloc.h>

#include <cstdlib>
#include <new>

namespace {

std::int64_t count = 0;

}  // namespace

// The benchmark's own operator new: it counts, so that a frame that allocates shows.

std::int64_t AllocationCount() {
    return count;
}

std::int64_t AllocatedBytes() {
    const struct mallinfo2 memory = mallinfo2();
    return static_cast<std::int64_t>(memory.uordblks + memory.hblkhd);
}

void* operator new(std::size_t size) {
    void* memory = std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    count++;
    return memory;
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
