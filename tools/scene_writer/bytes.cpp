#include "scene_writer/bytes.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>

void WriteBytes(const std::string& path, const std::string& bytes) {
    const std::filesystem::path folder = std::filesystem::path(path).parent_path();
    if (!folder.empty()) {
        std::filesystem::create_directories(folder);
    }
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file) {
        throw std::runtime_error("can't write " + path);
    }
}
