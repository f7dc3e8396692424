#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

/// A fresh folder that is the working directory for as long as the object lives, and gone afterwards.
struct TemporaryFolder {
    std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::path path;

    TemporaryFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "engine-test-XXXXXX").string();
        path = mkdtemp(pattern.data());
        std::filesystem::current_path(path);
    }
    ~TemporaryFolder() {
        std::filesystem::current_path(before);
        std::filesystem::remove_all(path);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
};

/// The bytes of a file; empty if there is none.
inline std::string ReadWholeFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

inline void WriteWholeFile(const std::filesystem::path& path, const std::string& bytes) {
    if (path.has_parent_path()) {
        std::filesystem::create_directories(path.parent_path());
    }
    std::ofstream(path, std::ios::binary) << bytes;
}
