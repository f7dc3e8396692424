#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <string>

#include "process/png_file.h"
#include "process/save_file.h"
#include "support/command.h"
#include "support/temporary_folder.h"
#include "support/virtual_display.h"
#include "support/wait_until.h"

// What the program does with its arguments.

namespace {

CommandResult Engine(const std::string& arguments) {
    return RunCommand("ASAN_OPTIONS=exitcode=99:detect_leaks=0 " ENGINE_PROGRAM " " + arguments + " 2>&1");
}

bool Contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

/// Red, green and blue of a pixel, counted from the upper left corner.
std::string Pixel(const std::string& file, int x, int y) {
    const std::string place = std::to_string(x) + " " + std::to_string(y);
    return RunCommand("pngtopnm " + file + " | pamcut " + place + " 1 1 | tail -c 3").output;
}

TEST(CommandLine, AnswersAndRefuses) {
    TemporaryFolder folder;
    EXPECT_EQ(Engine("--help").exitCode, 0);
    EXPECT_TRUE(Contains(Engine("--help").output, "usage: engine [FOLDER]"));
    for (const std::string program : {ENGINE_PROGRAM, CHECK_SCENE_PROGRAM}) {
        EXPECT_TRUE(RunCommand(program + " --version").output.starts_with("Engine "));
        EXPECT_TRUE(RunCommand(program + " -h").output.starts_with("usage: "));
        EXPECT_EQ(RunCommand(program + " -- --help 2>&1").exitCode, 2) << "a folder of that name";
    }
    for (const char* wrong :
         {"--colour", "--frames", "--frames 0", "--frames=1.5", "--frames 1x", "one two", "nowhere",
          "--screenshot ''", "--from 1,2,3 --to 4,5,6", "--screenshot x.png --from 1,2,3",
          "--screenshot x.png --from 1,2 --to 4,5,6"}) {
        const CommandResult refused = Engine(wrong);
        EXPECT_EQ(refused.exitCode, 2) << wrong;
        EXPECT_TRUE(Contains(refused.output, "error: ")) << wrong;
    }
    EXPECT_EQ(RunCommand("mkdir gone; cd gone; rmdir ../gone; " ENGINE_PROGRAM " --screenshot x.png 2>&1")
                  .exitCode,
              2);
    EXPECT_TRUE(std::filesystem::is_empty(folder.path)) << "no log, as nothing has run";
}

TEST(CommandLine, WithoutADisplayNothingBlocksAndOneLineTellsWhatToSet) {
    TemporaryFolder folder;
    WriteWholeFile("my world/settings.atr", "}");
    unsetenv("DISPLAY");
    const CommandResult run = Engine("'my world' --screenshot picture.png");
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(Contains(run.output, "no display can be opened: set DISPLAY")) << run.output;
    EXPECT_TRUE(Contains(run.output, "no picture was written")) << run.output;
    EXPECT_TRUE(Contains(ReadWholeFile("my world/defaultlog.txt"), "ChoosePixelFormat"));
}

TEST(CommandLine, SettingsThatAreNoPlainTextAreTold) {
    TemporaryFolder folder;
    unsetenv("DISPLAY");
    WriteWholeFile("settings.atr", std::string("\xFF\xFE*\0S\0A\0F\0E\0}\0", 14));
    EXPECT_TRUE(Contains(Engine("").output, "settings.atr: error: this is UTF-16"));
    WriteWholeFile("settings.atr", "*SAFE }");
    EXPECT_FALSE(Contains(Engine("").output, "UTF-16"));
}

TEST(CommandLine, AScreenshotShowsTheWorldAndTheRunEndsInOrder) {
    TemporaryFolder folder;
    std::filesystem::copy(DEMO_FOLDER "/single", "world", std::filesystem::copy_options::recursive);
    VirtualDisplay display(WindowManager::Openbox);
    const CommandResult run = Engine("world --frames 3 --screenshot picture.png");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.output, "");
    EXPECT_TRUE(Contains(ReadWholeFile("world/defaultlog.txt"), "Logging ended...\n"));
    EXPECT_TRUE(Contains(RunCommand("pngtopnm picture.png | pamfile").output, "800 by 600"));
    const std::string sky = Pixel("picture.png", 760, 10);
    const std::string lawn = Pixel("picture.png", 760, 590);
    ASSERT_EQ(sky.size() + lawn.size(), 6u);
    const auto level = [](char byte) { return static_cast<unsigned char>(byte); };
    EXPECT_GT(level(sky[2]), level(sky[0]) + 30) << "blue above";
    EXPECT_GT(level(lawn[1]), level(lawn[2]) + 30) << "green below";

    // Straight from above, with north above: stones of the wall's top in the corner, lawn at the gate's
    // side.
    EXPECT_EQ(Engine("world --frames 3 --screenshot plan.png --from 0,0,90 --to 0,0,0").exitCode, 0);
    const std::string stone = Pixel("plan.png", 85, 25);
    const std::string grass = Pixel("plan.png", 300, 180);
    ASSERT_EQ(stone.size() + grass.size(), 6u);
    EXPECT_GT(level(stone[2]), level(stone[0]) - 40) << "grey";
    EXPECT_GT(level(grass[1]), level(grass[2]) + 30) << "green";

    EXPECT_EQ(Engine("world --frames 1 --screenshot nowhere/picture.png").exitCode, 2);
    const CommandResult empty = Engine("--frames 1");  // no settings: no box waits for anybody
    EXPECT_EQ(empty.exitCode, 0);
    EXPECT_TRUE(Contains(empty.output, "Nebyl nalezen soubor s nastavením"));
}

TEST(PngFile, IsReadByOthersAsItWasWritten) {
    TemporaryFolder folder;
    // Two rows of three pixels, and more than one block of the format holds.
    SaveFile("small.png", PngFile(3, 2, reinterpret_cast<const std::uint8_t*>("abcdefghiABCDEFGHI")));
    EXPECT_EQ(RunCommand("pngtopnm small.png").output, "P6\n3 2\n255\nABCDEFGHIabcdefghi");
    const std::string large(std::size_t{3} * 400 * 300, 'x');
    SaveFile("large.png", PngFile(400, 300, reinterpret_cast<const std::uint8_t*>(large.data())));
    EXPECT_EQ(RunCommand("pngtopnm large.png").output, "P6\n400 300\n255\n" + large);
}

TEST(SavedFile, IsWholeOrAsItWasBefore) {
    TemporaryFolder folder;
    EXPECT_EQ(SaveFile("file", "before"), "");
    chmod("file", 0640);
    std::filesystem::create_symlink("file", "link");
    EXPECT_EQ(SaveFile("link", "after"), "");
    EXPECT_EQ(ReadWholeFile("file"), "after");
    EXPECT_EQ(RunCommand("stat -c %a file").output, "640\n");
    // A disk that takes no more than 1024 bytes of a file.
    signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit full{1024, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &full);
    const std::string failure = SaveFile("file", std::string(9000, 'x'));
    setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_EQ(failure, std::strerror(EFBIG));
    EXPECT_EQ(ReadWholeFile("file"), "after");
    EXPECT_FALSE(std::filesystem::exists("file.part"));
    EXPECT_EQ(SaveFile("/dev/full", "x"), std::strerror(ENOSPC)) << "a device is written, not replaced";
    for (const char* path : {"nowhere/file", "file/file", "."}) {
        EXPECT_NE(SaveFile(path, "x"), "") << path;
        EXPECT_NE(ReasonNotToSave(path), "") << path;
    }
    EXPECT_EQ(ReasonNotToSave("file") + ReasonNotToSave("new"), "");
}

TEST(CommandLine, AFullDiskIsReportedByLogAndPicture) {
    TemporaryFolder folder;
    std::filesystem::create_symlink("/dev/full", "defaultlog.txt");
    std::filesystem::create_symlink("/dev/full", "picture.png");
    VirtualDisplay display;
    WriteWholeFile("settings.atr", "}");
    const CommandResult run = Engine("--frames 1 --screenshot picture.png");
    EXPECT_EQ(run.exitCode, 1);
    const std::string reason = std::string(": error: can't be written: ") + std::strerror(ENOSPC) + "\n";
    const std::string first = "defaultlog.txt" + reason;
    EXPECT_EQ(run.output.substr(0, first.size()), first);
    EXPECT_TRUE(run.output.ends_with("picture.png" + reason)) << run.output;
    EXPECT_EQ(run.output.find(first, 1), std::string::npos) << "once";
    // A reader who has gone away doesn't end the program.
    const std::string unread =
        "sh -c '( ASAN_OPTIONS=detect_leaks=0 " ENGINE_PROGRAM " --frames 1 2>&1; echo $? >code ) | true'";
    RunCommand("trap - PIPE; rm settings.atr; " + unread);
    EXPECT_TRUE(WaitUntil([] { return ReadWholeFile("code") == "0\n"; })) << ReadWholeFile("code");
}

}  // namespace
