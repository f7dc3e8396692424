#include "process/command_line.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "process/options.h"

namespace {

constexpr int defaultFrames = 100;  // what falls at the start has come to rest by then

constexpr const char* beforeOptions =
    R"(usage: engine [FOLDER]
       engine [FOLDER] [--screenshot FILE] [--frames N] [--from X,Y,Z --to X,Y,Z]
       engine [FOLDER] --watch [--from-start]
       engine [FOLDER] --record RUN
       engine [FOLDER] --replay RUN [--record RUN] [--then-play | --verify | --film PATH | --screenshot FILE | --frames N]

Walks through the world that settings.atr in FOLDER, or in the present folder, describes. The log of the
run, defaultlog.txt, is written there. Escape ends the program.

)";

constexpr const char* afterOptions = R"(
With --frames or --screenshot nobody has to be there: messages go to the standard error stream and not into
boxes, and mouse and joystick are left alone.

Exit codes: 1 when the program has ended, as by Escape; 0 when the frames of --frames or --screenshot have
been shown, and the picture is written, or when all of RUN was played and everything moved as recorded; 2 for
a damaged RUN and for arguments that can't be right.

Examples:
  engine worlds/castle
  engine worlds/castle --screenshot castle.png
  engine worlds/castle --watch
  engine worlds/castle --record fall.run
  engine worlds/castle --replay fall.run --verify
  engine worlds/castle --screenshot plan.png --from 0,0,300 --to 0,0,0
  xvfb-run -a -s "-screen 0 1280x1024x24" engine worlds/castle --screenshot castle.png --frames 1
)";

/// A place of the viewpoint; `isGiven` is set with it.
StoreOption IntoPlace(float (&place)[3], bool& isGiven) {
    return [&isGiven, store = IntoPoint(place[0], place[1], place[2])](const std::string& value) {
        isGiven = true;
        return store(value);
    };
}

}  // namespace

CommandLine ReadCommandLine(int count, char** arguments) {
    CommandLine commandLine;
    Viewpoint viewpoint;
    bool hasFrom = false;
    bool hasTo = false;
    const Program program{
        "engine",
        beforeOptions,
        {{"frames", "N", "end after N frames", Into(commandLine.frames, 1)},
         {"screenshot", "FILE",
          "write the last of these frames to FILE as a PNG image; N is 100 unless --frames says so",
          Into(commandLine.screenshot)},
         {"from", "X,Y,Z",
          "take the picture from this place, in the world's coordinates and over the whole window,",
          IntoPlace(viewpoint.from, hasFrom)},
         {"to", "X,Y,Z", "and look at that one", IntoPlace(viewpoint.to, hasTo)},
         {"record", "RUN", "write what keyboard, mouse and joystick give into the file RUN",
          Into(commandLine.record)},
         {"replay", "RUN", "play that again, up to its end or to Escape", Into(commandLine.replay)},
         {"then-play", nullptr, "go on from its end with the real devices", Into(commandLine.thenPlay)},
         {"verify", nullptr,
          "show nothing, as fast as it goes and without a display: does everything still\n"
          "move as it did when RUN was recorded?",
          Into(commandLine.verify)},
         {"film", "PATH",
          "write all of its frames: into the folder PATH as PNG images with numbers, or, where\n"
          "ffmpeg is installed, into a video, whose name ends in .mp4",
          Into(commandLine.film)},
         {"watch", nullptr,
          "load the world anew when its files change, and go on where everything stands then;\n"
          "F5 begins at the start",
          Into(commandLine.watch)},
         {"from-start", nullptr, "begin at the start at each change", Into(commandLine.fromStart)}},
        afterOptions};
    const auto refuse = [&](const std::string& reason) {
        commandLine.exitCode = RefuseArguments(program, reason);
        return commandLine;
    };
    const Arguments rest = ReadArguments(program, count, arguments);
    commandLine.exitCode = rest.exitCode;
    if (rest.exitCode >= 0) {
        return commandLine;
    }
    if (rest.plain.size() > 1) {
        return refuse("more than one folder: " + rest.plain[1]);
    }
    if (!rest.plain.empty()) {
        commandLine.folder = rest.plain[0];
    }
    if (hasFrom || hasTo) {
        if (!hasFrom || !hasTo || commandLine.screenshot.empty() ||
            std::ranges::equal(viewpoint.from, viewpoint.to)) {
            return refuse("--from and --to need each other, two places and --screenshot");
        }
        commandLine.viewpoint = viewpoint;
    }
    const bool limited = !commandLine.screenshot.empty() || commandLine.frames > 0;
    if (commandLine.replay.empty() &&
        (commandLine.thenPlay || commandLine.verify || !commandLine.film.empty())) {
        return refuse("--then-play, --verify and --film are about the run of --replay");
    }
    if ((commandLine.verify && (commandLine.thenPlay || limited || !commandLine.film.empty())) ||
        (!commandLine.replay.empty() && commandLine.viewpoint)) {
        return refuse(
            "--from doesn't go with --replay, nor do --then-play, --frames and --screenshot with --verify");
    }
    const bool otherwiseBusy = limited || !commandLine.record.empty() || !commandLine.replay.empty();
    if (commandLine.watch ? otherwiseBusy : commandLine.fromStart) {
        return refuse("--watch goes with --from-start alone, and that with --watch");
    }
    // The program may change into another folder before it reads and writes.
    for (std::string* path :
         {&commandLine.screenshot, &commandLine.record, &commandLine.replay, &commandLine.film}) {
        std::error_code failure;  // of a present folder that was deleted
        *path = path->empty() ? "" : std::filesystem::absolute(*path, failure).string();
        if (failure) {
            return refuse("the present folder can't be found: " + failure.message());
        }
    }
    if (!commandLine.screenshot.empty()) {
        commandLine.frames = commandLine.frames == 0 ? defaultFrames : commandLine.frames;
    }
    return commandLine;
}
