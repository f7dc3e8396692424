#pragma once

#include <cstdint>
#include <memory>

/// A list of object ids with a fixed number of slots. -1 marks a free slot; ids are never removed, so
/// free slots lie after the occupied ones.
struct IdList {
    std::unique_ptr<std::int32_t[]> ids;  ///< `capacity` slots
    std::int32_t capacity = 0;

    IdList() : IdList(50) {}
    explicit IdList(std::int32_t newCapacity);
    /// False if the list is full, which changes nothing.
    bool Add(std::int32_t id);
    /// Keeps the first slots, as many as fit; new ones are free.
    void Resize(std::int32_t newCapacity);
    /// Gives the destination this capacity and adds the ids after those that it holds.
    void CopyTo(IdList& destination) const;
};
