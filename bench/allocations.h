#pragma once

#include <cstdint>

/// How often the process has asked operator new for memory so far.
std::int64_t AllocationCount();
/// Bytes that operator new has given out and not got back, as the allocator counts them.
std::int64_t AllocatedBytes();
