#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>
#include <vector>

#include "support/engine_process.h"
#include "support/virtual_display.h"

// How the process ends when others end it: by signals, or by a fault of its own.

namespace {

/// The engine in full screen, on a display whose desktop has another mode.
struct Ending : testing::Test {
    static constexpr const char* desktop = "1280 1024\n";
    static constexpr const char* fullScreen = "800 600\n";
    TemporaryFolder folder;
    VirtualDisplay display;

    void SetUp() override {
        const char* addMode =
            "(xrandr --newmode 800x600 40.00 800 840 968 1056 600 601 605 628 +hsync +vsync && "
            "xrandr --addmode screen 800x600) 2>&1";
        ASSERT_EQ(RunCommand(addMode).exitCode, 0);
        ASSERT_EQ(mkfifo("stuck.bin", 0600), 0);
        WriteWholeFile("settings.atr", "*RESOLUTION 800 600 32 *FULLSCREEN *FRAMERATELIMIT 50 }");
    }

    bool WaitForMode(const std::string& mode) const {
        return WaitUntil([&] { return display.Xdotool("getdisplaygeometry") == mode; });
    }
    static std::string LastEntry() { return LogEntries(EngineProcess::Log()).back(); }
};

TEST_F(Ending, TheFirstSignalClosesTheWindow) {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        EngineProcess engine;
        ASSERT_TRUE(WaitForMode(fullScreen));
        kill(engine.id, signal);
        kill(engine.id, SIGHUP);  // who closes a terminal sends more than one
        EXPECT_EQ(engine.WaitForExit(), 1) << signal;
        EXPECT_EQ(display.Xdotool("getdisplaygeometry"), desktop) << signal;
        EXPECT_EQ(LastEntry(), "Logging ended...");
    }
}

TEST_F(Ending, ASecondSignalEndsWhatDoesNotReact) {
    // Nobody ever writes into this pipe, and its reader waits.
    WriteWholeFile("settings.atr", "*RESOLUTION 800 600 32 *FULLSCREEN *LOADMESH stuck.bin }");
    EngineProcess engine;
    ASSERT_TRUE(EngineProcess::WaitForLog("Font built"));
    ASSERT_TRUE(WaitForMode(fullScreen));
    kill(engine.id, SIGTERM);
    usleep(500000);
    int code = 0;
    EXPECT_FALSE(engine.HasEnded(code));
    kill(engine.id, SIGTERM);
    EXPECT_EQ(engine.WaitForExit(), 1);
    EXPECT_TRUE(WaitForMode(desktop));
    EXPECT_NE(LastEntry(), "Logging ended...");
}

TEST_F(Ending, ACrashGivesTheDesktopItsModeBack) {
    for (const int signal : {SIGSEGV, SIGABRT, SIGKILL}) {
        EngineProcess engine;
        ASSERT_TRUE(WaitForMode(fullScreen));
        kill(-engine.id, signal);  // and all of its group
        engine.WaitForExit();
        EXPECT_TRUE(WaitForMode(desktop)) << signal;
    }
}

TEST_F(Ending, ABoxGoesWithTheProcess) {
    std::filesystem::remove("settings.atr");
    for (const int signal : {SIGTERM, SIGKILL}) {
        EngineProcess engine;
        ASSERT_TRUE(WaitUntil([&] { return !display.WindowSize(":-(").empty(); }));
        kill(engine.id, signal);
        EXPECT_EQ(engine.WaitForExit(), signal == SIGTERM ? 1 : -1);
        EXPECT_TRUE(WaitUntil([&] { return display.WindowSize(":-(").empty(); }));
        EXPECT_NE(EngineProcess::Errors().find("[:-(] Nebyl nalezen soubor"), std::string::npos);
        if (signal == SIGTERM) {
            EXPECT_EQ(LastEntry(), "Logging ended...");
        }
    }
}

TEST_F(Ending, WhatTheStarterHasChosenToIgnoreIsIgnored) {
    EngineProcess engine("trap '' HUP;");  // as nohup does
    ASSERT_TRUE(WaitForMode(fullScreen));
    kill(engine.id, SIGHUP);
    usleep(500000);
    int code = 0;
    EXPECT_FALSE(engine.HasEnded(code));
    kill(engine.id, SIGTERM);
    EXPECT_EQ(engine.WaitForExit(), 1);
}

}  // namespace
