#include "scene/id_list.h"

#include <algorithm>
#include <cassert>
#include <utility>

IdList::IdList(std::int32_t newCapacity) {
    Resize(newCapacity);
}

bool IdList::Add(std::int32_t id) {
    // Free slots lie after the others, and files may go on adding to a full list.
    if (capacity > 0 && ids[capacity - 1] != -1) {
        return false;
    }
    for (std::int32_t slot = 0; slot < capacity; slot++) {
        if (ids[slot] == -1) {
            ids[slot] = id;
            return true;
        }
    }
    return false;
}

void IdList::Resize(std::int32_t newCapacity) {
    assert(newCapacity >= 0);
    auto resized = std::make_unique_for_overwrite<std::int32_t[]>(static_cast<std::size_t>(newCapacity));
    const std::int32_t kept = std::min(capacity, newCapacity);
    std::copy_n(ids.get(), kept, resized.get());
    std::fill(resized.get() + kept, resized.get() + newCapacity, -1);
    ids = std::move(resized);
    capacity = newCapacity;
}

void IdList::CopyTo(IdList& destination) const {
    if (destination.capacity != capacity) {
        destination.Resize(capacity);
    }
    for (std::int32_t slot = 0; slot < capacity; slot++) {
        destination.Add(ids[slot]);
    }
}
