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

/// Records or replays, if that is asked for; false, and a message, if the file isn't fit for it.
bool StartRun(const CommandLine& commandLine) {
    const ReplayEnd end = commandLine.verify     ? ReplayEnd::Verify
                          : commandLine.thenPlay ? ReplayEnd::ThenPlay
                                                 : ReplayEnd::Close;
    const auto goesWell = [](const std::string& path, const std::string& wrong) {
        if (!wrong.empty()) {
            std::fprintf(stderr, "%s: error: %s\n", path.c_str(), wrong.c_str());
        }
        return wrong.empty();
    };
    // The replayed one has been read when the recorded one, which may be the same, is begun.
    return (commandLine.replay.empty() ||
            goesWell(commandLine.replay, ReplayRun(commandLine.replay, end))) &&
           (commandLine.record.empty() || goesWell(commandLine.record, RecordRun(commandLine.record)));
}

}  // namespace

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
    const std::string& picture = commandLine.screenshot;
    const std::string reason = picture.empty() ? "" : ReasonNotToSave(picture);
    if (!reason.empty()) {
        std::fprintf(stderr, "%s: error: can't be written: %s\n", picture.c_str(), reason.c_str());
        return wrongUsage;
    }
    if (!StartRun(commandLine)) {
        return wrongUsage;
    }
    const std::string filmed = commandLine.film.empty() ? "" : StartFilm(commandLine.film);
    if (!filmed.empty()) {
        std::fprintf(stderr, "%s: error: %s\n", commandLine.film.c_str(), filmed.c_str());
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
