#pragma once

#include <algorithm>
#include <bit>
#include <cassert>
#include <cstdint>
#include <memory>

/// A set of ids that gives them back in rising order, whatever order they came in: a bit for each id, and
/// above them a bit for every 64 of those, so that both ways cost what is in the set.
struct IdMarks {
    /// For ids below `idCount`. The set is empty afterwards.
    void Resize(std::int32_t idCount) {
        const std::int32_t wordCount = idCount / 64 + 1;
        const std::int32_t blockCount = wordCount / 64 + 1;
        words = std::make_unique<std::uint64_t[]>(static_cast<std::size_t>(wordCount));
        blocks = std::make_unique<std::uint64_t[]>(static_cast<std::size_t>(blockCount));
        memory = static_cast<std::int64_t>(sizeof(std::uint64_t)) * (wordCount + blockCount);
        idLimit = idCount;
        firstBlock = blockCount;
        endBlock = 0;
    }
    /// Not between two calls of `Take` of which the first left something.
    void Add(std::int32_t id) {
        assert(id >= 0 && id < idLimit);
        const std::int32_t word = id / 64;
        const std::int32_t block = id / 4096;
        words[word] |= std::uint64_t{1} << (id % 64);
        blocks[block] |= std::uint64_t{1} << (word % 64);
        firstBlock = std::min(firstBlock, block);
        endBlock = std::max(endBlock, block + 1);
    }
    /// Takes the smallest ids out of the set, at most `most` of them.
    /// @return how many there were, 0 if the set is empty
    std::int32_t Take(std::int32_t* ids, std::int32_t most) {
        assert(most > 0);
        std::int32_t count = 0;
        while (count < most && firstBlock < endBlock) {
            std::uint64_t& block = blocks[firstBlock];
            if (block == 0) {
                firstBlock++;
                continue;
            }
            const std::int32_t word = 64 * firstBlock + std::countr_zero(block);
            std::uint64_t rest = words[word];
            while (rest != 0 && count < most) {
                ids[count++] = 64 * word + std::countr_zero(rest);
                rest &= rest - 1;
            }
            words[word] = rest;
            if (rest == 0) {
                block &= block - 1;
            }
        }
        return count;
    }
    /// Bytes that the set takes.
    std::int64_t Memory() const { return memory; }

private:
    std::unique_ptr<std::uint64_t[]> words;   ///< a bit for each id
    std::unique_ptr<std::uint64_t[]> blocks;  ///< a bit for each word that isn't 0
    std::int64_t memory = 0;
    std::int32_t idLimit = 0;     ///< above the largest id
    std::int32_t firstBlock = 0;  ///< all before it are 0
    std::int32_t endBlock = 0;    ///< all from it on are 0
};
