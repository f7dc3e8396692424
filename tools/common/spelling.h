#pragma once

#include <string>
#include <vector>

/// The candidate that the word was probably meant to be; empty if none is near.
std::string Nearest(const std::string& word, const std::vector<std::string>& candidates);
/// The text for a finding: `: did you mean WORD?`, or nothing.
std::string DidYouMean(const std::string& word, const std::vector<std::string>& candidates);
