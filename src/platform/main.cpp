#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "platform/close_request.h"
#include "platform/command_line.h"
#include "platform/entry.h"
#include "platform/frame_limit.h"
#include "platform/window.h"

/// The process entry: does what the command line asks for around the program's own entry. The layer starts
/// what it needs when it is first asked for.
int main(int count, char** arguments) {
    const CommandLine commandLine = ReadCommandLine(count, arguments);
    if (commandLine.exitCode >= 0) {
        return commandLine.exitCode;
    }
    if (!commandLine.folder.empty() && chdir(commandLine.folder.c_str()) != 0) {
        std::fprintf(stderr, "%s: error: can't be entered: %s\n", commandLine.folder.c_str(),
                     std::strerror(errno));
        return wrongUsage;
    }
    if (commandLine.frames > 0) {
        LimitFrames(commandLine.frames, commandLine.screenshot);
    }
    CloseOnSignals();
    const int exitCode = WinMain(nullptr, nullptr, arguments[0], SW_SHOW);
    return FramesAreLimited() && LimitIsReached() ? 0 : exitCode;
}
