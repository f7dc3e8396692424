#pragma once

#include <string>
#include <vector>

/// A file that is still in memory.
struct OutputFile {
    std::string path;
    std::string bytes;
};

/// Writes all files, or none: each appears whole, under its name, once all of them could be written.
/// Folders are made as needed. Throws std::runtime_error if that fails.
void WriteAll(const std::vector<OutputFile>& files);
