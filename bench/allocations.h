#pragma once

#include <cstdint>

/// How often the process has asked operator new for memory so far.
std::int64_t AllocationCount();
/// Bytes that the allocator has given out and not got back.
std::int64_t AllocatedBytes();
