#pragma once

#include <string>
#include <utility>
#include <vector>

#include "check_scene/findings.h"

/// A text file as the engine reads it, with the places of its lines.
struct TextFile {
    std::string shownName;  ///< for findings
    std::string text;
    std::vector<std::size_t> lineStarts;
    /// From after each "/*" to its "*/".
    std::vector<std::pair<std::size_t, std::size_t>> longComments;

    /// False if it can't be opened.
    bool Read(const std::string& name, const std::string& newShownName);
    /// From 1.
    int LineOf(std::size_t position) const;
    Place At(std::size_t position) const { return {shownName, LineOf(position), -1}; }
    /// Whether the position stands after the mark of a comment, as other languages have them: the engine
    /// knows none.
    bool IsInComment(std::size_t position) const;
};
