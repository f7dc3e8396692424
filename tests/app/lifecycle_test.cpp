#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/engine_process.h"
#include "support/virtual_display.h"

// The engine from its start to its end, in a real window.

namespace {

/// A fresh folder with settings, and a display.
struct Lifecycle : testing::TestWithParam<WindowManager> {
    TemporaryFolder folder;
    VirtualDisplay display{GetParam()};

    /// The window, once it takes keys.
    std::string WaitForFrames() {
        const std::string window = display.WaitForWindow("Engine");
        WaitUntil([&] { return RunCommand("xdotool getwindowfocus 2>&1").output == window + "\n"; });
        return window;
    }

    /// Long enough for a frame to see it: a key that is down and up again within one frame counts as up.
    void HoldKey(const std::string& key) { display.Xdotool("keydown " + key + " sleep 0.5 keyup " + key); }

    static void ExpectOrderlyEnd(EngineProcess& engine) {
        EXPECT_EQ(engine.WaitForExit(), 1);
        const std::vector<std::string> entries = LogEntries(EngineProcess::Log());
        ASSERT_GE(entries.size(), 2u);
        EXPECT_EQ(entries[entries.size() - 2], "Destructing Engine");
        EXPECT_EQ(entries.back(), "Logging ended...");
        EXPECT_EQ(EngineProcess::Log().substr(EngineProcess::Log().size() - 2), "\n\n");
    }
};

TEST_P(Lifecycle, EscapeEndsIt) {
    WriteWholeFile("settings.atr", "*RESOLUTION 320 200 32 *FRAMERATELIMIT 50 }");
    EngineProcess engine;
    WaitForFrames();
    HoldKey("Escape");
    ExpectOrderlyEnd(engine);
}

TEST_P(Lifecycle, AltF4EndsIt) {
    WriteWholeFile("settings.atr", "*RESOLUTION 320 200 32 *FRAMERATELIMIT 50 }");
    EngineProcess engine;
    WaitForFrames();
    display.Xdotool("key alt+F4");
    ExpectOrderlyEnd(engine);
}

TEST_P(Lifecycle, TheLogTellsOfTheContextAndItsState) {
    WriteWholeFile("settings.atr", "*RESOLUTION 320 200 32 *FRAMERATELIMIT 50 }");
    EngineProcess engine;
    WaitForFrames();
    HoldKey("Escape");
    ASSERT_EQ(engine.WaitForExit(), 1);
    const std::vector<std::string> entries = LogEntries(EngineProcess::Log());
    // The start, four labels each with its string, eleven capabilities, the font and the two last entries.
    ASSERT_EQ(entries.size(), 1u + 8u + 11u + 1u + 2u) << EngineProcess::Log();
    EXPECT_EQ(entries[0], "Logging started...");
    EXPECT_EQ(entries[1], "V\xFDrobce GL implementace:");
    EXPECT_EQ(entries[3], "Jm\xE9no rendereru:");
    EXPECT_EQ(entries[5], "\xC8\xEDslo verze:");
    EXPECT_EQ(entries[7],
              "Podporovan\xE9 roz\x9A\xED\xF8"
              "en\xED OpenGl:");
    for (const std::size_t value : {2u, 4u, 6u, 8u}) {
        EXPECT_FALSE(entries[value].empty()) << value;
    }
    EXPECT_EQ(entries[17], "Depth test: 1");
    EXPECT_EQ(entries[18], "Backface cull: 1");
    EXPECT_EQ(entries[20], "Courier New: Font built succesfully");
}

TEST_P(Lifecycle, WithoutSettingsTwoBoxesComeAndTheDefaultsRule) {
    EngineProcess engine;
    EXPECT_TRUE(display.CloseBox(":-("));
    EXPECT_TRUE(display.CloseBox(":-("));
    const std::string window = WaitForFrames();
    EXPECT_NE(display.Xdotool("getwindowgeometry " + window).find("640x480"), std::string::npos);
    HoldKey("Escape");
    ExpectOrderlyEnd(engine);
}

INSTANTIATE_TEST_SUITE_P(WindowManagers, Lifecycle,
                         testing::Values(WindowManager::None, WindowManager::Openbox),
                         [](const auto& manager) {
                             return manager.param == WindowManager::None ? "NoManager" : "Openbox";
                         });

/// Without a display: nothing may crash, and the loop ends at once.
TEST(WithoutADisplay, StartUpGoesThroughAndEnds) {
    TemporaryFolder folder;
    WriteWholeFile("settings.atr", "*PLAYERCOUNT 1 }");
    EngineProcess engine("unset DISPLAY WAYLAND_DISPLAY;");
    EXPECT_EQ(engine.WaitForExit(), 1);
    const std::string log = EngineProcess::Log();
    EXPECT_NE(log.find("Chyba: ChoosePixelFormat"), std::string::npos) << log;
    EXPECT_NE(EngineProcess::Errors().find("[:-(] Chyba: ChoosePixelFormat\n"), std::string::npos);
}

TEST(WithoutADisplay, ExhaustedMemoryIsToldAndEndsTheProcess) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer needs more address space than the limit leaves";
#endif
    TemporaryFolder folder;
    WriteWholeFile("settings.atr", "*PLAYERCOUNT 2000000000 }");
    EngineProcess engine("unset DISPLAY WAYLAND_DISPLAY; ulimit -v 4000000;");
    EXPECT_EQ(engine.WaitForExit(), 1);
    const std::vector<std::string> entries = LogEntries(EngineProcess::Log());
    ASSERT_FALSE(entries.empty());
    EXPECT_EQ(entries.back(), "Nedostatek pam\xECti pro oper\xE1tor new");
    EXPECT_EQ(EngineProcess::Errors(), "Nedostatek paměti pro operátor new\n");
}

}  // namespace
