#include "simulation/bound_tree.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <cmath>
#include <cstddef>

namespace {

/// Coordinates from here on are as good as none: the thing is near everything.
constexpr float largestCoordinate = 1e7f;

float Larger(float a, float b) {
    return a > b ? a : b;
}

/// @param v no NaN in it
float LargestComponent(Vector v) {
    return Larger(Larger(std::fabs(v.x), std::fabs(v.y)), std::fabs(v.z));
}

/// Of NaN nothing is within a limit.
bool IsWithin(Vector v, float limit) {
    return std::fabs(v.x) < limit && std::fabs(v.y) < limit && std::fabs(v.z) < limit;
}

bool IsOrdinary(const Bound& bound) {
    return IsWithin(bound.centre, largestCoordinate) && IsWithin(bound.size, INFINITY);
}

/// What bounds some things in a row.
struct Box {
    Vector low{INFINITY, INFINITY, INFINITY};
    Vector high{-INFINITY, -INFINITY, -INFINITY};
    Vector size;

    void Add(const Box& other) {
        low = Vector(std::min(low.x, other.low.x), std::min(low.y, other.low.y),
                     std::min(low.z, other.low.z));
        high = Vector(Larger(high.x, other.high.x), Larger(high.y, other.high.y),
                      Larger(high.z, other.high.z));
        size = Vector(Larger(size.x, other.size.x), Larger(size.y, other.size.y),
                      Larger(size.z, other.size.z));
    }
};

Box BoxOf(const Bound& bound) {
    if (!IsOrdinary(bound)) {
        return {Vector(), Vector(), Vector(INFINITY, INFINITY, INFINITY)};
    }
    return {bound.centre, bound.centre, bound.size};
}

/// A thing and the number by which it is sorted.
struct Sorted {
    std::uint64_t key;
    std::int32_t place;  ///< among the bounds
};

/// Of a number that isn't negative: 1 more for one of twice the size.
int Exponent(float value) {
    return static_cast<int>(std::bit_cast<std::uint32_t>(value) >> 23);
}

/// The 16 bits of a coordinate with room for two more coordinates between them.
std::uint64_t Spread(std::uint64_t bits) {
    bits = (bits | bits << 16) & 0x0000FF0000FFu;
    bits = (bits | bits << 8) & 0x00F00F00F00Fu;
    bits = (bits | bits << 4) & 0x0C30C30C30C3u;
    return (bits | bits << 2) & 0x249249249249u;
}

/// Neighbours in space get keys near each other: the bits of the coordinates take turns. Above them stands
/// the size in steps of 8 times, so that a few large things don't spoil the entries of small ones.
std::uint64_t Key(const Bound& bound, Vector low, float cellsPerUnit, int largestExponent) {
    if (!IsOrdinary(bound)) {
        return std::uint64_t{15} << 48;
    }
    const Vector cell = (bound.centre - low) * cellsPerUnit;
    const auto clamped = [](float value) {
        return Spread(static_cast<std::uint64_t>(value < 65535.0f ? value : 65535.0f));
    };
    const float size = LargestComponent(bound.size);
    const int smaller = (largestExponent - Exponent(size)) / 3;
    return static_cast<std::uint64_t>(14 - std::min(smaller, 14)) << 48 | clamped(cell.x) << 2 |
           clamped(cell.y) << 1 | clamped(cell.z);
}

/// By key and, of equal keys, as they come: byte by byte from the lowest one up, except those that are the
/// same in all keys.
void Sort(std::unique_ptr<Sorted[]>& items, std::int32_t count) {
    constexpr int bytes = 7;
    std::int32_t starts[bytes][256] = {};
    for (std::int32_t i = 0; i < count; i++) {
        for (int byte = 0; byte < bytes; byte++) {
            starts[byte][items[i].key >> (8 * byte) & 255]++;
        }
    }
    auto sorted = std::make_unique_for_overwrite<Sorted[]>(static_cast<std::size_t>(count));
    for (int byte = 0; byte < bytes; byte++) {
        const auto digit = [byte](const Sorted& item) { return item.key >> (8 * byte) & 255; };
        if (starts[byte][digit(items[0])] == count) {
            continue;
        }
        std::int32_t next = 0;
        for (std::int32_t& start : starts[byte]) {
            const std::int32_t length = start;
            start = next;
            next += length;
        }
        for (std::int32_t i = 0; i < count; i++) {
            sorted[starts[byte][digit(items[i])]++] = items[i];
        }
        std::swap(items, sorted);
    }
}

std::int32_t DivideUp(std::int32_t dividend, std::int32_t divisor) {
    return (dividend + divisor - 1) / divisor;
}

}  // namespace

template <typename BoxAt>
void BoundTree::FillLevel(std::int32_t level, std::int32_t perEntry, std::int32_t partCount, BoxAt boxAt) {
    for (std::int32_t entry = 0; entry < entryCounts[level]; entry++) {
        Box box;
        const std::int32_t end = std::min(partCount, (entry + 1) * perEntry);
        for (std::int32_t part = entry * perEntry; part < end; part++) {
            box.Add(boxAt(part));
        }
        Block& block = blocks[firstBlocks[level] + entry / width];
        const std::int32_t slot = entry % width;
        const Vector rows[3] = {box.low, box.high, box.size};
        float(*const targets[3])[width] = {block.low, block.high, block.size};
        for (int row = 0; row < 3; row++) {
            targets[row][0][slot] = rows[row].x;
            targets[row][1][slot] = rows[row].y;
            targets[row][2][slot] = rows[row].z;
        }
    }
}

void BoundTree::Build(const Bound* bounds, const std::int32_t* ids, std::int32_t newCount,
                      std::int32_t newLeafSize) {
    if (newCount != count || newLeafSize != leafSize || order == nullptr) {
        count = newCount;
        leafSize = newLeafSize;
        order = std::make_unique_for_overwrite<std::int32_t[]>(static_cast<std::size_t>(count));
        levelCount = 0;
        std::int32_t blockCount = 0;
        std::int32_t entries = DivideUp(count, leafSize);
        while (true) {
            entryCounts[levelCount] = entries;
            firstBlocks[levelCount] = blockCount;
            levelCount++;
            blockCount += DivideUp(entries, width);
            if (entries <= width) {
                break;
            }
            entries = DivideUp(entries, width);
        }
        blocks = std::make_unique<Block[]>(static_cast<std::size_t>(blockCount));
    }
    if (count == 0) {
        return;
    }

    Box all;
    for (std::int32_t i = 0; i < count; i++) {
        if (IsOrdinary(bounds[i])) {
            all.Add(BoxOf(bounds[i]));
        }
    }
    largest = Larger(LargestComponent(all.low), LargestComponent(all.high));
    const Vector span = all.high - all.low;
    const float longest = Larger(LargestComponent(span), 1e-30f);
    const int largestExponent = Exponent(LargestComponent(all.size));
    auto items = std::make_unique_for_overwrite<Sorted[]>(static_cast<std::size_t>(count));
    for (std::int32_t i = 0; i < count; i++) {
        items[i] = {Key(bounds[i], all.low, 65535.0f / longest, largestExponent), i};
    }
    Sort(items, count);
    FillLevel(0, leafSize, count, [&](std::int32_t i) { return BoxOf(bounds[items[i].place]); });
    for (std::int32_t i = 0; i < count; i++) {
        order[i] = ids == nullptr ? items[i].place : ids[items[i].place];
    }
    for (std::int32_t level = 1; level < levelCount; level++) {
        const Block* below = blocks.get() + firstBlocks[level - 1];
        FillLevel(level, width, entryCounts[level - 1], [below](std::int32_t entry) {
            const Block& block = below[entry / width];
            const std::int32_t i = entry % width;
            return Box{Vector(block.low[0][i], block.low[1][i], block.low[2][i]),
                       Vector(block.high[0][i], block.high[1][i], block.high[2][i]),
                       Vector(block.size[0][i], block.size[1][i], block.size[2][i])};
        });
    }
}

bool BoundTree::Covers(const NearQuery& query) const {
    const auto within = [](float value, float low, float high) { return value > low && value < high; };
    const Vector scale = query.scale;
    // The scaled coordinates then stay below 1e8, so that no square overflows.
    return within(scale.x, 1e-5f, 1e5f) && within(scale.y, 1e-5f, 1e5f) && within(scale.z, 1e-5f, 1e5f) &&
           IsWithin(query.origin, largestCoordinate) && within(query.reach, 1e-6f, 1e7f) &&
           largest * LargestComponent(scale) < 5e7f;
}

void BoundTree::FindNearEntries(const Block& block, const NearQuery& query, std::int32_t (&isNear)[width]) {
    const Vector scale = query.scale;
    const Vector origin = query.origin;
    const float reachSquared = query.reach * query.reach;
    // An axis along which the origin lies within the box counts nothing. All lengths are twice as long
    // here, so that this takes no choice, and the compiler can compute on several entries at once.
    const auto away2 = [](float below, float above) {
        const float away = Larger(below, above);
        return away + std::fabs(away);
    };
    for (std::int32_t i = 0; i < width; i++) {
        const Vector away(
            away2(block.low[0][i] * scale.x - origin.x, origin.x - block.high[0][i] * scale.x),
            away2(block.low[1][i] * scale.y - origin.y, origin.y - block.high[1][i] * scale.y),
            away2(block.low[2][i] * scale.z - origin.z, origin.z - block.high[2][i] * scale.z));
        const Vector size =
            Vector(block.size[0][i] * scale.x, block.size[1][i] * scale.y, block.size[2][i] * scale.z);
        const float sizeSquared = size.Dot(size);
        // distance >= size + reach, with squares instead of roots. An infinite size is false in it.
        const float rest = away.Dot(away) * 0.2495f - (sizeSquared + reachSquared);
        isNear[i] = 1 - (static_cast<std::int32_t>(rest >= 0.0f) &
                         static_cast<std::int32_t>(rest * rest >= 4.0f * reachSquared * sizeSquared));
    }
}

void BoundTree::FindNear(const NearQuery& query, IdMarks& found) const {
    assert(query.scale.x > 0.0f && query.scale.y > 0.0f && query.scale.z > 0.0f);
    struct Place {
        std::int32_t level;
        std::int32_t block;
    };
    if (count == 0) {
        return;
    }
    Place open[maxLevels * width];
    std::int32_t openCount = 0;
    open[openCount++] = {levelCount - 1, 0};
    std::int32_t isNear[width];
    while (openCount > 0) {
        const auto [level, block] = open[--openCount];
        FindNearEntries(blocks[firstBlocks[level] + block], query, isNear);
        const std::int32_t inBlock = std::min(width, entryCounts[level] - block * width);
        for (std::int32_t slot = 0; slot < inBlock; slot++) {
            if (isNear[slot] == 0) {
                continue;
            }
            const std::int32_t entry = block * width + slot;
            if (level > 0) {
                open[openCount++] = {level - 1, entry};
                continue;
            }
            const std::int32_t end = std::min(count, (entry + 1) * leafSize);
            for (std::int32_t i = entry * leafSize; i < end; i++) {
                found.Add(order[i]);
            }
        }
    }
}

std::int64_t BoundTree::Memory() const {
    const std::int64_t blockCount = levelCount == 0 ? 0 : firstBlocks[levelCount - 1] + 1;
    return count * static_cast<std::int64_t>(sizeof(std::int32_t)) +
           blockCount * static_cast<std::int64_t>(sizeof(Block));
}
