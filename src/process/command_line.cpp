#include "process/command_line.h"

#include <getopt.h>

#include <charconv>
#include <cstdio>
#include <cstring>
#include <filesystem>

namespace {

constexpr int usual = 0;            // exit code
constexpr int defaultFrames = 100;  // what falls at the start has come to rest by then

constexpr const char* help =
    R"(usage: engine [FOLDER]
       engine [FOLDER] [--screenshot FILE] [--frames N]

Walks through the world that settings.atr in FOLDER, or in the present folder, describes. The log of the
run, defaultlog.txt, is written there. Escape ends the program.

  --frames N         end after N frames
  --screenshot FILE  write the last of these frames to FILE as a PNG image; N is 100 unless --frames tells
  --help             show this text
  --version          show the version

With --frames or --screenshot nobody has to be there: messages go to the standard error stream and not into
boxes, and mouse and joystick are left alone.

Exit codes: 1 when the program has ended, as by Escape; 0 when the frames of --frames or --screenshot have
been shown, and the picture is written; 2 for arguments that can't be right.

Examples:
  engine worlds/castle
  engine worlds/castle --screenshot castle.png
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

}  // namespace

CommandLine ReadCommandLine(int count, char** arguments) {
    enum : int { framesOption = 256, screenshotOption, helpOption, versionOption };
    const option options[] = {{"frames", required_argument, nullptr, framesOption},
                              {"screenshot", required_argument, nullptr, screenshotOption},
                              {"help", no_argument, nullptr, helpOption},
                              {"version", no_argument, nullptr, versionOption},
                              {nullptr, 0, nullptr, 0}};
    CommandLine commandLine;
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
    if (!commandLine.screenshot.empty() && commandLine.frames == 0) {
        commandLine.frames = defaultFrames;
    }
    return commandLine;
}
