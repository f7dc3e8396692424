#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

// Files that ask for much more work than their size lets expect, unless every step of a load costs what it
// consumes: what is nested is looked at again and again, what is far away is searched for again and again,
// what is large in memory stands in a few bytes.

/// A kind of such files, which can be made in any size.
struct CostlyFiles {
    const char* name;  ///< in the form of an identifier
    /// Makes the files in the working directory, of about that many bytes in all.
    void (*write)(std::int64_t bytes);
    /// Takes them in, by the singletons `theEngine` and `theScene`.
    void (*load)();
};

const std::vector<CostlyFiles>& AllCostlyFiles();
