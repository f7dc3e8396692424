#include "import_scene/output_files.h"

#include <unistd.h>

#include <filesystem>
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
