#include <vector>

#include "platform/message_box.h"

// What all fuzzers have in common: no boxes, which would take most of the time, and inputs of any length
// from the start. The texts of this program only become interesting where they are longer than a few words,
// and the library's own schedule keeps them short for hours.

int MessageBoxA(HWND, const char*, const char*, UINT) {
    return 1;
}

// Freed memory comes back soon, and call stacks are shorter: fresh pages would take half of the time.
// NOLINTNEXTLINE(bugprone-reserved-identifier)
extern "C" const char* __asan_default_options() {
    return "quarantine_size_mb=8:malloc_context_size=8";
}

extern "C" int LLVMFuzzerInitialize(int* argumentCount, char*** arguments) {
    static char anyLength[] = "-len_control=0";
    static char longest[] = "-max_len=4096";
    static std::vector<char*> all(*arguments, *arguments + *argumentCount);
    all.insert(all.begin() + 1, {anyLength, longest});  // the user's come later and win
    *argumentCount = static_cast<int>(all.size());
    all.push_back(nullptr);
    *arguments = all.data();
    return 0;
}
