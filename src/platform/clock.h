#pragma once

#include "platform/types.h"

struct SYSTEMTIME {
    WORD wYear = 0;
    WORD wMonth = 0;  ///< 1 is January
    WORD wDayOfWeek = 0;
    WORD wDay = 0;
    WORD wHour = 0;
    WORD wMinute = 0;
    WORD wSecond = 0;
    WORD wMilliseconds = 0;
};

/// Local date and time.
void GetLocalTime(SYSTEMTIME* time);
/// A monotonic clock in milliseconds that wraps after 2^32 of them: only differences mean anything.
DWORD timeGetTime();
