#pragma once

#include <cstdio>
#include <string>

#include "platform/clock.h"

/// The program's one diagnostic text file, "defaultlog.txt" in the working directory, rewritten at each
/// run. One entry is one line: day.month.year hour:minute:second, unpadded, and the text. Each entry is
/// flushed at once, so whatever happened before a crash is in the file.
struct Log {
    std::FILE* file = nullptr;  ///< null if the file could not be opened: then nothing is written
    SYSTEMTIME now;             ///< scratch, refilled for every entry
    std::string fileName;

    /// Opens the file and writes the first entry. If that fails it shows a box and goes on without.
    Log();
    /// Writes the last entry and closes the file.
    ~Log();
    Log(const Log&) = delete;
    Log& operator=(const Log&) = delete;

    /// Writes one entry; false if it can't. The log may be null, and then nothing happens: no
    /// caller tests for it, which is why it comes as an argument.
    /// @param text Windows-1250 bytes; null counts as an empty text
    static bool Write(Log* log, const char* text);
    static bool Write(Log* log, const unsigned char* text);
    static bool Write(Log* log, const std::string& text) { return Write(log, text.c_str()); }

private:
    bool failureReported = false;  ///< on the standard error stream, once

    bool WriteTimeStamp();
};
