#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>

#include "app/reload.h"
#include "platform/entry.h"
#include "platform/run.h"
#include "platform/window.h"
#include "process/close_request.h"
#include "process/command_line.h"
#include "process/film.h"
#include "process/frame_limit.h"
#include "process/options.h"
#include "process/save_file.h"

namespace {

/// True for an empty reason; any other goes to the standard error stream.
bool IsFit(const std::string& path, const char* fault, const std::string& reason) {
    if (!reason.empty()) {
        std::fprintf(stderr, "%s: error: %s%s\n", path.c_str(), fault, reason.c_str());
    }
    return reason.empty();
}

/// Enters the folder, and begins what is asked for around the play; false, and a message, if that can't be.
bool Begin(const CommandLine& asked) {
    constexpr const char* unwritable = "can't be written: ";
    const ReplayEnd end = asked.verify     ? ReplayEnd::Verify
                          : asked.thenPlay ? ReplayEnd::ThenPlay
                                           : ReplayEnd::Close;
    const bool isEntered = asked.folder.empty() || chdir(asked.folder.c_str()) == 0;
    // The replayed run has been read when the recorded one, which may be the same, is begun.
    return IsFit(asked.folder, "can't be entered: ", isEntered ? "" : std::strerror(errno)) &&
           (asked.screenshot.empty() ||
            IsFit(asked.screenshot, unwritable, ReasonNotToSave(asked.screenshot))) &&
           (asked.replay.empty() || IsFit(asked.replay, "", ReplayRun(asked.replay, end))) &&
           (asked.record.empty() || IsFit(asked.record, unwritable, RecordRun(asked.record))) &&
           (asked.film.empty() || IsFit(asked.film, unwritable, StartFilm(asked.film)));
}

}  // namespace

/// The process entry: does what the command line asks for around the program's own entry. The layer starts
/// what it needs when it is first asked for.
int main(int count, char** arguments) {
    const CommandLine commandLine = ReadCommandLine(count, arguments);
    if (commandLine.exitCode >= 0) {
        return commandLine.exitCode;
    }
    if (!Begin(commandLine)) {
        return wrongUsage;
    }
    if (commandLine.watch) {
        WatchWorld(commandLine.fromStart);
    }
    if (commandLine.frames > 0) {
        LimitFrames(commandLine.frames, commandLine.screenshot);
    }
    theViewpoint = commandLine.viewpoint;
    CloseOnSignals();
    std::signal(SIGPIPE, SIG_IGN);  // a message that nobody reads is no reason to end
    const int exitCode = WinMain(nullptr, nullptr, arguments[0], SW_SHOW);
    const std::string unfilmed = EndFilm();
    const std::string undone = unfilmed.empty() ? WhatIsUndone() : unfilmed;
    if (!undone.empty()) {
        std::fprintf(stderr, "%s\n", undone.c_str());
    }
    if (!commandLine.replay.empty() && !commandLine.thenPlay && !FramesAreLimited()) {
        return undone.empty() ? ReplayExitCode() : exitCode;
    }
    return FramesAreLimited() && undone.empty() ? 0 : exitCode;
}
