#include "process/command_line.h"

#include <getopt.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>

namespace {

constexpr int usual = 0;            // exit code
constexpr int defaultFrames = 100;  // what falls at the start has come to rest by then

constexpr const char* help =
    R"(usage: engine [FOLDER]
       engine [FOLDER] [--screenshot FILE] [--frames N] [--from X,Y,Z --to X,Y,Z]

Walks through the world that settings.atr in FOLDER, or in the present folder, describes. The log of the
run, defaultlog.txt, is written there. Escape ends the program.

  --frames N         end after N frames
  --screenshot FILE  write the last of these frames to FILE as a PNG image; N is 100 unless --frames tells
  --from X,Y,Z       take the picture from this place, in the world's coordinates and over the whole window,
  --to X,Y,Z         and look at that one
  --help             show this text
  --version          show the version

With --frames or --screenshot nobody has to be there: messages go to the standard error stream and not into
boxes, and mouse and joystick are left alone.

Exit codes: 1 when the program has ended, as by Escape; 0 when the frames of --frames or --screenshot have
been shown, and the picture is written; 2 for arguments that can't be right.

Examples:
  engine worlds/castle
  engine worlds/castle --screenshot castle.png
  engine worlds/castle --screenshot plan.png --from 0,0,300 --to 0,0,0
  xvfb-run -a -s "-screen 0 1280x1024x24" engine worlds/castle --screenshot castle.png --frames 1
)";

CommandLine End(int exitCode) {
    CommandLine ended;
    ended.exitCode = exitCode;
    return ended;
}

CommandLine Refuse(const char* reason, const char* argument) {
    std::fprintf(stderr, "engine: error: %s%s\n", reason, argument);
    std::fputs("engine --help tells what can be given.\n", stderr);
    return End(wrongUsage);
}

bool ReadNumber(const char* text, int& number) {
    const char* end = text + std::strlen(text);
    const auto [stop, failure] = std::from_chars(text, end, number);
    return failure == std::errc() && stop == end;
}

/// Three numbers with commas between them.
bool ReadPoint(const char* text, float (&point)[3]) {
    for (int axis = 0; axis < 3; axis++) {
        const auto [stop, failure] = std::from_chars(text, text + std::strlen(text), point[axis]);
        if (failure != std::errc() || !std::isfinite(point[axis]) || *stop != (axis < 2 ? ',' : '\0')) {
            return false;
        }
        text = stop + 1;
    }
    return true;
}

}  // namespace

CommandLine ReadCommandLine(int count, char** arguments) {
    enum : int { framesOption = 256, screenshotOption, fromOption, toOption, helpOption, versionOption };
    const option options[] = {{"frames", required_argument, nullptr, framesOption},
                              {"screenshot", required_argument, nullptr, screenshotOption},
                              {"from", required_argument, nullptr, fromOption},
                              {"to", required_argument, nullptr, toOption},
                              {"help", no_argument, nullptr, helpOption},
                              {"version", no_argument, nullptr, versionOption},
                              {nullptr, 0, nullptr, 0}};
    CommandLine commandLine;
    Viewpoint viewpoint;
    bool hasFrom = false;
    bool hasTo = false;
    opterr = 0;
    for (int found; (found = getopt_long(count, arguments, ":", options, nullptr)) != -1;) {
        switch (found) {
            case framesOption:
                if (!ReadNumber(optarg, commandLine.frames) || commandLine.frames < 1) {
                    return Refuse("--frames takes a number from 1 on, not ", optarg);
                }
                break;
            case screenshotOption:
                // The program may change into another folder before it writes.
                commandLine.screenshot = std::filesystem::absolute(optarg).string();
                break;
            case fromOption:
            case toOption:
                if (!ReadPoint(optarg, found == fromOption ? viewpoint.from : viewpoint.to)) {
                    return Refuse("a place is X,Y,Z, three numbers with commas, and not ", optarg);
                }
                (found == fromOption ? hasFrom : hasTo) = true;
                break;
            case helpOption:
                std::fputs(help, stdout);
                return End(usual);
            case versionOption:
                std::puts("Engine " ENGINE_VERSION);
                return End(usual);
            case ':':
                return Refuse("a value is missing behind ", arguments[optind - 1]);
            default:
                return Refuse("unknown or ambiguous option ", arguments[optind - 1]);
        }
    }
    if (count - optind > 1) {
        return Refuse("more than one folder: ", arguments[optind + 1]);
    }
    if (optind < count) {
        commandLine.folder = arguments[optind];
    }
    if (hasFrom || hasTo) {
        if (!hasFrom || !hasTo || commandLine.screenshot.empty() ||
            std::ranges::equal(viewpoint.from, viewpoint.to)) {
            return Refuse("--from and --to need each other, two places and ", "--screenshot");
        }
        commandLine.viewpoint = viewpoint;
    }
    if (!commandLine.screenshot.empty() && commandLine.frames == 0) {
        commandLine.frames = defaultFrames;
    }
    return commandLine;
}
