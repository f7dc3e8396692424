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

/// Writes the files of a world in that way. A list of checksums beside them says what was written, so that
/// work done by hand isn't lost: throws, and writes nothing, if a file is there and isn't as it was
/// written.
/// @param listPath where the list is, or is to be
/// @param force writes over such files, too
void WriteWorld(std::vector<OutputFile> files, const std::string& listPath, bool force);
