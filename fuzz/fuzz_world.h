#pragma once

#include <string>

#include "common/windowless.h"
#include "memory_files.h"

// What the fuzzers share.

/// Replaces every occurrence: for words that end the process by design.
inline void Defuse(std::string& text, const std::string& word, const std::string& harmless) {
    for (std::size_t at = 0; (at = text.find(word, at)) != std::string::npos; at += harmless.size()) {
        text.replace(at, word.size(), harmless);
    }
}
