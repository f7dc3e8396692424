#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>
#include <unordered_set>

/// Letters and digits of ASCII are all that a name may hold that the engine reads in a text. Accents of
/// Latin letters go, everything else is dropped; empty if nothing is left.
std::string PlainName(const std::string& name);

/// Hands out names of which none is the end of another: the engine finds the block of an object, and a
/// texture that it has, by a text that ends in the name.
class NameList {
public:
    /// @param newLongest most characters of a name
    explicit NameList(std::size_t newLongest) : longest(newLongest) {}

    /// A name that nobody has, made from what is wished for, with a number after it if need be.
    std::string Take(const std::string& wish);

private:
    bool Reserve(const std::string& name);

    std::size_t longest;
    std::unordered_set<std::size_t> names;  ///< hashes
    std::unordered_set<std::size_t> ends;   ///< hashes of all ends of all names
    std::unordered_map<std::string, int> lastNumbers;
};
