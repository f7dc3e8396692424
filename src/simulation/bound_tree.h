#pragma once

#include <cstdint>
#include <memory>

#include "math/vector.h"
#include "simulation/id_marks.h"

/// Where a thing is and how far it reaches from there along each axis, world units.
struct Bound {
    Vector centre;
    Vector size;
};

/// What is asked of a tree: whether things lie near a point. A thing is as far from it as its centre, in a
/// space that is scaled axis by axis, and its own radius there is the length of its scaled size.
struct NearQuery {
    Vector scale{1.0f, 1.0f, 1.0f};  ///< from world into the scaled space; above 0
    Vector origin;                   ///< in the scaled space
    float reach = 0.0f;              ///< in the scaled space
};

/// Finds the few things near a point among many, in any order of space: no axis is special.
///
/// The things stand in an order in which neighbours are near each other in space. Some in a row share an
/// entry: the box of their centres and the largest of their sizes. Entries are bounded in the same way,
/// 16 by 16, up to a level of at most 16, so the tree needs no pointers, and the entries of a block are
/// tested side by side.
struct BoundTree {
    /// @param bounds `count` of them; one with coordinates that are no numbers of a sensible size is near
    /// everything
    /// @param ids of the things, in the same order; null if they are 0, 1, 2 ...
    /// @param leafSize how many things share an entry of the lowest level
    void Build(const Bound* bounds, const std::int32_t* ids, std::int32_t count, std::int32_t leafSize);
    /// Whether the limits of `FindNear` hold for this query.
    bool Covers(const NearQuery& query) const;
    /// Adds to `found` all things whose distance is below their radius + reach, and others near them. It
    /// passes over a thing only if distance² * 0.998 >= (radius + reach)², up to rounding, which is less
    /// than a millionth of what is compared: the distance to the box of an entry is at most that to each
    /// centre in it, and no radius is larger than that of the entry's size.
    void FindNear(const NearQuery& query, IdMarks& found) const;
    /// Bytes that the tree takes.
    std::int64_t Memory() const;

private:
    static constexpr std::int32_t width = 16;
    static constexpr std::int32_t maxLevels = 8;

    /// The entries of a block, side by side.
    struct Block {
        float low[3][width];
        float high[3][width];
        float size[3][width];
    };

    std::int32_t count = 0;
    std::int32_t leafSize = 1;
    std::int32_t levelCount = 0;
    std::int32_t entryCounts[maxLevels] = {};
    std::int32_t firstBlocks[maxLevels] = {};
    float largest = 0.0f;  ///< of all coordinates of centres
    std::unique_ptr<std::int32_t[]> order;
    std::unique_ptr<Block[]> blocks;  ///< level by level, the leaves first

    template <typename BoundAt>
    void FillLevel(std::int32_t level, std::int32_t perEntry, std::int32_t partCount, BoundAt boundAt);
    static void FindNearEntries(const Block& block, const NearQuery& query, std::int32_t (&isNear)[width]);
};
