#include "services/log.h"

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
    log->WriteTimeStamp();
    std::fprintf(log->file, "%s\n", text == nullptr ? "" : text);
    std::fflush(log->file);
    return true;
}

bool Log::Write(Log* log, const unsigned char* text) {
    return Write(log, reinterpret_cast<const char*>(text));
}

bool Log::WriteTimeStamp() {
    GetLocalTime(&now);
    return std::fprintf(file, "%d.%d.%d %d:%d:%d ", now.wDay, now.wMonth, now.wYear, now.wHour, now.wMinute,
                        now.wSecond) > 0;
}
