#pragma once

#include <cstdint>
#include <iosfwd>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "math/vector.h"

/// Where a finding is: a line of a text file or a byte of a binary one.
struct Place {
    std::string file;        ///< as the author would open it from where the tool was started
    int line = 0;            ///< from 1; 0 for none
    std::int64_t byte = -1;  ///< from the start of a binary file; -1 for none
};

/// One thing that is wrong or suspicious, and what to do about it.
struct Finding {
    const char* code = "";  ///< short and stable, for programs; docs/check_scene.md lists all of them
    bool isError = false;   ///< the world won't be what its author meant; otherwise a warning
    Place place;
    std::string text;
    bool isCause = false;  ///< of so much else that the world can't be judged before it is mended
};

/// What has been found so far.
struct Findings {
    std::vector<Finding> list;
    /// What else is worth a line: how far players get, what wasn't looked at.
    std::vector<std::string> notes;

    void Error(const char* code, const Place& place, const std::string& text) {
        list.push_back({code, true, place, text});
    }
    void Cause(const char* code, const Place& place, const std::string& text) {
        list.push_back({code, true, place, text, true});
    }
    void Warn(const char* code, const Place& place, const std::string& text) {
        list.push_back({code, false, place, text});
    }
    /// Causes with what else is wrong in their lines, errors, warnings; file by file in the order of their
    /// first finding, line by line, and within a line as they came, since what follows from a key is found
    /// after what is wrong with it. Each finding once.
    void Sort();
    bool HasCause() const;
    bool Has(std::string_view code) const;
    int ErrorCount() const;
};

/// One line for each finding, as compilers write them.
/// @param isNumbered whether the number of its mark in a plan stands at the end, from 1
/// @param isColoured with the colours of a terminal
void PrintFindings(std::ostream& out, const Findings& findings, bool isNumbered, bool isColoured);
/// An array of objects with "file", "line", "byte", "severity", "code" and "text"; line and byte only where
/// there is one.
nlohmann::ordered_json JsonOf(const Findings& findings);

/// The text in UTF-8: bytes that aren't, as names within worlds have them, are taken for Windows-1250.
/// What would steer a terminal becomes a question mark.
std::string Utf8(const std::string& text);

/// A number as people write it: without a row of zeros after the point.
std::string Shown(double value);
/// "(1, 2.5, 3)", to the hundredth.
std::string ShownPoint(Vector point);
/// "1 triangle", "2 triangles".
std::string Counted(std::int64_t count, const std::string& what);
