#include "platform/files.h"

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>

#include "platform/run.h"

namespace {

bool Exists(const std::string& path) {
    return access(path.c_str(), F_OK) == 0;
}

char SmallLetter(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

/// The entry of a folder with that name in any case, the first in the order of bytes if there are
/// several; empty if there is none.
std::string FindEntry(const std::string& folder, const std::string& name) {
    DIR* entries = opendir(folder.empty() ? "." : folder.c_str());
    if (entries == nullptr) {
        return {};
    }
    std::string found;
    while (const dirent* entry = readdir(entries)) {
        if (EqualButForCase(entry->d_name, name) && (found.empty() || entry->d_name < found)) {
            found = entry->d_name;
        }
    }
    closedir(entries);
    return found;
}

/// Some editors call it "Unicode". Every second byte of plain letters is 0 there, so no word of it is
/// found.
void ReportUtf16(const char* fileName, const std::string& text) {
    static std::string lastReported;  // the settings are read twice
    const std::string start = text.substr(0, 2);
    const bool isUtf16 =
        start == "\xFF\xFE" || start == "\xFE\xFF" || start.find('\0') != std::string::npos;
    if (!isUtf16 || lastReported == fileName) {
        return;
    }
    lastReported = fileName;
    std::fprintf(
        stderr,
        "%s: error: this is UTF-16, in which no key is found: save it as plain text (UTF-8 or ANSI)\n",
        fileName);
}

}  // namespace

std::string LowerCase(std::string text) {
    std::ranges::transform(text, text.begin(), SmallLetter);
    return text;
}

bool EqualButForCase(const std::string& left, const std::string& right) {
    return std::ranges::equal(left, right, {}, SmallLetter, SmallLetter);
}

std::string ResolveFileName(const char* fileName) {
    std::string name = fileName;
    std::replace(name.begin(), name.end(), '\\', '/');
    if (name.empty() || Exists(name)) {
        return name;
    }

    std::string resolved;
    for (std::size_t start = 0; start < name.size();) {
        const std::size_t end = std::min(name.find('/', start), name.size());
        std::string component = name.substr(start, end - start);
        if (!component.empty() && !Exists(resolved + component)) {
            component = FindEntry(resolved, component);
            if (component.empty()) {
                return name;
            }
        }
        resolved += component;
        if (end < name.size()) {
            resolved += '/';
        }
        start = end + 1;
    }
    return resolved;
}

std::FILE* OpenFile(const char* fileName, const char* mode) {
    // "t" asks for text mode, which is no different from binary mode here and not in every fopen.
    std::string knownMode = mode;
    std::erase(knownMode, 't');

    const std::string name = ResolveFileName(fileName);
    if (knownMode.starts_with('r')) {
        NoteRunFile(name);
    }
    std::FILE* file = std::fopen(name.c_str(), knownMode.c_str());
    if (file == nullptr) {
        return nullptr;
    }
    struct stat status {};
    if (fstat(fileno(file), &status) == 0 && S_ISDIR(status.st_mode)) {
        std::fclose(file);
        return nullptr;
    }
    return file;
}

std::int64_t FileSize(std::FILE* file) {
    struct stat status {};
    return fstat(fileno(file), &status) == 0 && S_ISREG(status.st_mode) ? status.st_size : 0;
}

std::unique_ptr<TextStream> OpenTextFile(const char* fileName) {
    std::FILE* file = OpenFile(fileName, "r");
    if (file == nullptr) {
        return nullptr;
    }
    auto stream = std::make_unique<TextStream>();
    std::string& text = stream->text;
    std::setvbuf(file, nullptr, _IONBF, 0);  // it is read at once
    text.resize(static_cast<std::size_t>(FileSize(file)));
    text.resize(std::fread(text.data(), 1, text.size(), file));
    // What isn't a plain file has no size, and a file may have grown meanwhile.
    char buffer[4096];
    for (std::size_t count; (count = std::fread(buffer, 1, sizeof buffer, file)) > 0;) {
        text.append(buffer, count);
    }
    std::fclose(file);
    ReportUtf16(fileName, text);

    std::size_t length = std::min(text.find('\r'), text.size());
    for (std::size_t i = length; i < text.size(); i++) {
        if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') {
            continue;
        }
        text[length++] = text[i];
    }
    text.resize(length);
    return stream;
}
