#include "memory_files.h"

#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <optional>
#include <utility>

namespace {

std::optional<std::vector<MemoryFile>> files;  ///< nothing: those of the disk
std::size_t sizeOfLast = 0;                    ///< of the file that was opened last

const MemoryFile* Find(std::string_view name) {
    const auto found = std::ranges::find(*files, name, &MemoryFile::name);
    return found == files->end() ? nullptr : &*found;
}

}  // namespace

MemoryFiles::MemoryFiles(std::vector<MemoryFile> list) {
    files = std::move(list);
}

MemoryFiles::~MemoryFiles() {
    files.reset();
}

// NOLINTBEGIN(bugprone-reserved-identifier): the linker makes these names
extern "C" {

std::FILE* __real_fopen(const char* name, const char* mode);
int __real_access(const char* name, int mode);
DIR* __real_opendir(const char* name);
int __real_fstat(int descriptor, struct stat* status);

std::FILE* __wrap_fopen(const char* name, const char* mode) {
    if (files.has_value() && mode[0] == 'r') {
        if (const MemoryFile* file = Find(name)) {
            sizeOfLast = file->bytes.size();
            // May be opened for an update, which no reader makes.
            return fmemopen(const_cast<char*>(file->bytes.data()), file->bytes.size(), mode);
        }
        errno = ENOENT;
        return nullptr;
    }
    if (std::string_view(name) == "defaultlog.txt") {
        return fopencookie(nullptr, mode, {});
    }
    return __real_fopen(name, mode);
}

/// Readers ask right after they have opened a file.
int __wrap_fstat(int descriptor, struct stat* status) {
    if (descriptor >= 0) {
        return __real_fstat(descriptor, status);
    }
    *status = {};
    status->st_mode = S_IFREG;
    status->st_size = static_cast<off_t>(sizeOfLast);
    return 0;
}

int __wrap_access(const char* name, int mode) {
    if (!files.has_value()) {
        return __real_access(name, mode);
    }
    errno = ENOENT;
    return Find(name) != nullptr ? 0 : -1;
}

DIR* __wrap_opendir(const char* name) {
    if (!files.has_value()) {
        return __real_opendir(name);
    }
    errno = ENOENT;
    return nullptr;
}
}
// NOLINTEND(bugprone-reserved-identifier)
