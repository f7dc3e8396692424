#include "process/save_file.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>

namespace {

/// 0, or the number of the error.
int WriteAt(const std::string& path, std::string_view bytes) {
    std::FILE* file = std::fopen(path.c_str(), "wb");
    if (file == nullptr) {
        return errno;
    }
    errno = 0;
    const bool written = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    const int failure = written ? 0 : errno;
    return std::fclose(file) == 0 ? failure : errno;  // the last of the bytes are written here
}

}  // namespace

std::string SaveFile(const std::string& path, std::string_view bytes) {
    struct stat before {};
    const bool exists = stat(path.c_str(), &before) == 0;
    std::error_code ignored;
    const std::string place = exists ? std::filesystem::canonical(path, ignored).string() : path;
    if (!exists || S_ISREG(before.st_mode)) {
        const std::string beside = place + ".part";
        const int failure = WriteAt(beside, bytes);
        if (failure == 0) {
            if (exists) {
                chmod(beside.c_str(), before.st_mode & 07777u);
            }
            if (std::rename(beside.c_str(), place.c_str()) == 0) {
                return {};
            }
        }
        std::remove(beside.c_str());
        if (failure != 0 && failure != EACCES && failure != EPERM) {
            return std::strerror(failure);
        }
    }
    const int failure = WriteAt(path, bytes);
    return failure != 0 ? std::strerror(failure) : "";
}

std::string ReasonNotToSave(const std::string& path) {
    struct stat status {};
    const bool exists = stat(path.c_str(), &status) == 0;
    if (exists && S_ISDIR(status.st_mode)) {
        return std::strerror(EISDIR);
    }
    const std::string place = exists ? path : (std::filesystem::path(path).parent_path() / ".").string();
    return access(place.c_str(), W_OK) == 0 ? "" : std::strerror(errno);
}
