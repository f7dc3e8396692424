#include "import_scene/output_files.h"

#include <unistd.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <stdexcept>

#include "scene_writer/bytes.h"

namespace {

namespace fs = std::filesystem;

/// Files under names of their own beside those that they are to have; gone at the end if they are still
/// there.
struct PendingFiles {
    std::vector<std::string> paths;

    PendingFiles() = default;
    PendingFiles(const PendingFiles&) = delete;
    PendingFiles& operator=(const PendingFiles&) = delete;
    ~PendingFiles() {
        for (const std::string& path : paths) {
            std::error_code error;
            fs::remove(path, error);
        }
    }
};

std::string ChecksumOf(const std::string& bytes) {
    std::uint64_t sum = bytes.size();
    for (std::size_t i = 0; i < bytes.size(); i += 8) {
        std::uint64_t word = 0;
        std::memcpy(&word, &bytes[i], std::min<std::size_t>(8, bytes.size() - i));
        sum = (std::rotl(sum, 23) ^ word) * 0x9E3779B97F4A7C15ull;
        sum ^= sum >> 32;
    }
    char digits[17];
    std::snprintf(digits, sizeof digits, "%016llx", static_cast<unsigned long long>(sum));
    return digits;
}

std::string ReadWhole(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// What the importer has written into a folder: lines of a checksum and a path from there. A file may have
/// two, the one before and the one now, since the list is written first and an import may be killed then.
struct WrittenList {
    fs::path folder;
    std::set<std::string> lines;

    explicit WrittenList(const std::string& path) : folder(fs::path(path).parent_path()) {
        std::ifstream file(path);
        for (std::string line; std::getline(file, line);) {
            lines.insert(line);
        }
    }
    /// Lists the file as it is now and as it is to be.
    /// @return false if it is neither missing nor as it was written, nor what is to be written
    bool Update(const OutputFile& file) {
        const std::string ending = " " + fs::path(file.path).lexically_proximate(folder).string();
        const std::string after = ChecksumOf(file.bytes) + ending;
        const bool exists = fs::exists(file.path);
        const std::string before = exists ? ChecksumOf(ReadWhole(file.path)) + ending : after;
        const bool isOurs = before == after || lines.contains(before);
        const std::size_t start = after.size() - ending.size();
        std::erase_if(lines, [&](const std::string& line) {
            return line.size() > start && line.substr(start) == ending;
        });
        lines.insert({before, after});
        return isOurs;
    }
    std::string Text() const {
        std::string text;
        for (const std::string& line : lines) {
            text += line + "\n";
        }
        return text;
    }
};

}  // namespace

void WriteAll(const std::vector<OutputFile>& files) {
    PendingFiles pending;
    for (const OutputFile& file : files) {
        if (fs::is_directory(file.path)) {
            throw std::runtime_error("can't write " + file.path + ": it is a folder");
        }
        pending.paths.push_back(file.path + ".part" + std::to_string(getpid()));
        engine::WriteBytes(pending.paths.back(), file.bytes);
    }
    for (std::size_t i = 0; i < files.size(); i++) {
        fs::rename(pending.paths[i], files[i].path);
    }
}

void WriteWorld(std::vector<OutputFile> files, const std::string& listPath, bool force) {
    WrittenList list(listPath);
    std::string changed;
    for (const OutputFile& file : files) {
        if (!list.Update(file) && !force) {
            changed += (changed.empty() ? "" : ", ") + file.path;
        }
    }
    if (!changed.empty()) {
        throw std::runtime_error("not as import_scene wrote it, so nothing is written: " + changed +
                                 "; keep it under another name, or write over it with --force");
    }
    files.insert(files.begin(), {listPath, list.Text()});
    WriteAll(files);
}
