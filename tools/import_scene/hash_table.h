#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <vector>

/// A set of keys, each with the number under which it came in. A key is a record of 32-bit numbers.
template <typename Key>
class KeyNumbers {
public:
    std::vector<Key> keys;  ///< by number

    /// @param expected how many keys there may be; more are no harm
    explicit KeyNumbers(std::size_t expected) : slots(std::bit_ceil(2 * expected + 16), -1) {
        keys.reserve(expected);
    }

    /// The number of an equal key, or a new one.
    std::int32_t Add(const Key& key) {
        if (2 * keys.size() >= slots.size()) {
            Grow();
        }
        std::int32_t& slot = slots[SlotOf(key)];
        if (slot == -1) {
            slot = static_cast<std::int32_t>(keys.size());
            keys.push_back(key);
        }
        return slot;
    }

    /// The same for many keys in turn. Nearly every look into the table misses the caches, so that the
    /// places are asked for some keys ahead.
    /// @param numbers takes one for each key
    void AddAll(const std::vector<Key>& newKeys, std::vector<std::int32_t>& numbers) {
        constexpr std::size_t ahead = 16;
        numbers.resize(newKeys.size());
        for (std::size_t i = 0; i < newKeys.size(); i++) {
            if (i + ahead < newKeys.size()) {
                const std::uint64_t hash = HashOf(std::bit_cast<Words>(newKeys[i + ahead]));
                __builtin_prefetch(&slots[hash & (slots.size() - 1)]);
            }
            numbers[i] = Add(newKeys[i]);
        }
    }

private:
    using Words = std::array<std::uint32_t, sizeof(Key) / 4>;

    std::vector<std::int32_t> slots;

    static std::uint64_t HashOf(const Words& words) {
        std::uint64_t hash = 0;
        for (const std::uint32_t word : words) {
            hash = (std::rotl(hash, 23) ^ word) * 0x9E3779B97F4A7C15ull;
        }
        // Coordinates often end in zero bits, so the upper bits, which depend on all, come down once more.
        hash = (hash ^ hash >> 32) * 0xD6E8FEB86659FD93ull;
        return hash ^ hash >> 32;
    }
    std::size_t SlotOf(const Key& key) const {
        const auto words = std::bit_cast<Words>(key);
        std::size_t slot = HashOf(words) & (slots.size() - 1);
        while (slots[slot] != -1 && std::bit_cast<Words>(keys[slots[slot]]) != words) {
            slot = (slot + 1) & (slots.size() - 1);
        }
        return slot;
    }
    void Grow() {
        slots.assign(2 * slots.size(), -1);
        for (std::size_t i = 0; i < keys.size(); i++) {
            slots[SlotOf(keys[i])] = static_cast<std::int32_t>(i);
        }
    }
};
