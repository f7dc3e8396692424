#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

/// What the user hears besides errors: warnings, each of a kind once with what it is about, and notes.
struct Report {
    /// Warns; what is reported of more than a few subjects is summed up.
    /// @param subject what the warning is about, such as a node's name; may be empty
    void Warn(const std::string& text, const std::string& subject = "");
    void Note(const std::string& text);

    /// All warnings as lines without a prefix, in the order of their first occurrence.
    std::vector<std::string> Warnings() const;
    const std::vector<std::string>& Notes() const { return notes; }

private:
    std::vector<std::string> order;
    std::map<std::string, std::vector<std::string>> subjects;
    std::vector<std::string> notes;
};
