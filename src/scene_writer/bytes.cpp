#include "scene_writer/bytes.h"

#include <filesystem>
#include <stdexcept>

#include "process/save_file.h"

namespace engine {

void WriteBytes(const std::string& path, const std::string& bytes) {
    const std::filesystem::path folder = std::filesystem::path(path).parent_path();
    if (!folder.empty()) {
        std::filesystem::create_directories(folder);
    }
    const std::string failure = SaveFile(path, bytes);
    if (!failure.empty()) {
        throw std::runtime_error("can't write " + path + ": " + failure);
    }
}

}  // namespace engine
