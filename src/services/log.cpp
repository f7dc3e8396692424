#include "services/log.h"

#include <cerrno>
#include <cstring>
#include <utility>

#include "platform/files.h"
#include "platform/message_box.h"
#include "platform/windows1250.h"

Log::Log() : fileName("defaultlog.txt") {
    file = OpenFile(fileName.c_str(), "w");
    if (file == nullptr) {
        MessageBoxA(nullptr, "Nelze zahájit logování"_1250, ":-(", MB_ICONEXCLAMATION);
    }
    Write(this, "Logging started...\n");
}

Log::~Log() {
    Write(this, "Logging ended...\n");
    if (file != nullptr) {
        std::fclose(file);
    }
}

bool Log::Write(Log* log, const char* text) {
    if (log == nullptr || log->file == nullptr) {
        return false;
    }
    const bool stamped = log->WriteTimeStamp();
    const bool printed = std::fprintf(log->file, "%s\n", text == nullptr ? "" : text) > 0;
    const bool written = std::fflush(log->file) == 0 && printed && stamped;
    if (!written && !std::exchange(log->failureReported, true)) {
        std::fprintf(stderr, "%s: error: can't be written: %s\n", log->fileName.c_str(),
                     std::strerror(errno));
    }
    return written;
}

bool Log::Write(Log* log, const unsigned char* text) {
    return Write(log, reinterpret_cast<const char*>(text));
}

bool Log::WriteTimeStamp() {
    GetLocalTime(&now);
    return std::fprintf(file, "%d.%d.%d %d:%d:%d ", now.wDay, now.wMonth, now.wYear, now.wHour, now.wMinute,
                        now.wSecond) > 0;
}
