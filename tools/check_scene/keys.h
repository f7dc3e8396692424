#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "check_scene/text_file.h"

// The keys of the attribute language: what the engine looks for in each place, and what it reads there.

/// Where a key stands.
enum class KeyPlace { Settings, Object, Globals };

/// What an argument names, beyond being a number.
enum class Meaning { Number, Player };

struct Argument {
    std::string what;
    bool isWhole = true;  ///< read as an integer
    double low = 0.0;     ///< smallest sensible value
    double high = 0.0;    ///< largest sensible value
    Meaning meaning = Meaning::Number;
};

/// What a second occurrence in the same text means.
enum class Repeat {
    LastWins,
    LastWinsForItsNumber,  ///< for the player or the group that the first number names
    AddsUp,
    Allowed
};

struct Key {
    std::string name;         ///< with its asterisk
    bool needsBlank = false;  ///< is a key only with a blank right after it
    bool takesName = false;
    std::vector<Argument> arguments;
    Repeat repeat = Repeat::LastWins;
};

const std::vector<Key>& KeysOf(KeyPlace place);
/// "the settings", "an object's block", "the block GLOBALS".
std::string PlaceName(KeyPlace place);

/// One number as the engine reads it. Positions are those of the file.
struct NumberRead {
    double value = 0.0;
    std::size_t begin = 0;
    std::size_t end = 0;
    bool isMissing = false;  ///< the text ends before it; 0 is taken
};

/// A word after an asterisk.
struct KeyUse {
    const Key* key = nullptr;  ///< null if the engine passes over it
    std::string word;          ///< with its asterisk
    std::size_t position = 0;  ///< of the asterisk, in the file
    std::size_t end = 0;       ///< after the key
    std::vector<NumberRead> numbers;
    std::string name;           ///< for keys that take one
    std::size_t nameBegin = 0;  ///< position in the file

    bool Is(const char* keyName) const { return key != nullptr && key->name == keyName; }
    std::int32_t Whole(std::size_t i) const { return static_cast<std::int32_t>(numbers[i].value); }
};

/// All words with an asterisk from `begin` to `end`, in the order of the text, with what the engine reads
/// after those that are keys.
std::vector<KeyUse> FindKeyUses(const TextFile& file, std::size_t begin, std::size_t end, KeyPlace place);
