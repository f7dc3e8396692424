#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <vector>

#include "engine/engine.h"
#include "engine/singletons.h"
#include "scene/scene.h"
#include "services/log.h"
#include "services/timer.h"
#include "support/temporary_folder.h"

namespace {

/// A fresh set of singletons in a folder of its own, on a machine without a display.
struct SettingsFile : testing::Test {
    TemporaryFolder folder;
    Timer timer;
    Log log;
    Scene scene;
    Engine engine;

    SettingsFile() {
        unsetenv("DISPLAY");
        unsetenv("WAYLAND_DISPLAY");
        theTimer = &timer;
        theScene = &scene;
        engine.SetLog(&log);
        scene.SetLog(&log);
    }

    /// What the boxes say when a file with this text is read.
    std::string Read(const std::string& text) {
        WriteWholeFile("settings.atr", text);
        testing::internal::CaptureStderr();
        EXPECT_TRUE(engine.ReadSettings("settings.atr"));
        return testing::internal::GetCapturedStderr();
    }
};

TEST_F(SettingsFile, AppliesEveryKeyWhereverItStands) {
    EXPECT_EQ(Read("*PLAYERVIEWPORT 1 512 1 510 768\r\n"
                   "*PLAYERCONTROLLER 1 2 *PLAYERCONTROLLER 0 1\r\n"
                   "*PLAYERKEYBOARDCONTROLS 1 12 13 14 15 10 11 16 273\r\n"
                   "*PLAYERHEADLIMIT 0 0.25\r\n"
                   "*SAFE *FULLSCREEN\r\n"
                   "*FARCLIPPINGPLANE 800 *NEARCLIPPINGPLANE .5\r\n"
                   "*JOYSTICKSENSITIVITY 0.5 *MOUSESENSITIVITY -0.25\r\n"
                   "*PLAYERCOUNT 2\r\n"
                   "*FRAMERATELIMIT 50\r\n"
                   "*REFFERENCESPEED 30\r\n"
                   "*FONT Courier New\r\n"
                   "*RESOLUTION 1024x768, 32 bits\r\n"
                   "}\r\n"),
              "");
    EXPECT_EQ(engine.windowRect.right, 1024);
    EXPECT_EQ(engine.windowRect.bottom, 768);
    EXPECT_EQ(engine.colourBits, 32);
    EXPECT_EQ(scene.fontName, "Courier");
    EXPECT_EQ(timer.referenceSpeed, 30);
    EXPECT_EQ(timer.framePeriod, 20);
    EXPECT_EQ(engine.mouseSensitivity, -0.25f);
    EXPECT_EQ(engine.joystickSensitivity, 0.5f);
    EXPECT_EQ(engine.nearPlane, 5.0f) << "a point begins no number";
    EXPECT_EQ(engine.farPlane, 800.0f);
    EXPECT_TRUE(engine.fullScreen && engine.safeMode);

    ASSERT_EQ(scene.playerCount, 2);
    EXPECT_EQ(scene.players[0].headLimit, 0.25f);
    EXPECT_EQ(scene.players[0].controller, 1);
    const Player& player = scene.players[1];
    EXPECT_EQ(player.controller, 2);
    EXPECT_TRUE(std::ranges::equal(player.keys, std::vector{10, 11, 12, 13, 14, 15, 16, 273 - 256}));
    EXPECT_EQ(
        (std::vector{player.viewportX, player.viewportY, player.viewportWidth, player.viewportHeight}),
        (std::vector{512, 1, 510, 768}));
}

TEST_F(SettingsFile, LetsTheLaterOfTwoEqualKeysWinAddsUpPlayersAndPassesOverOthers) {
    EXPECT_EQ(
        Read("*PLAYERCOUNT1 *RESOLUTION 1 2 3 *PLAYERCOUNT -5 *RESOLUTION 800 600 300 *PLAYERCOUNT 2\n"
             "*FRAMERATELIMIT 1001 *PLAYERHEADLIMIT 3 0.5 *PLAYERHEADLIMIT -1 0.5 *PLAYERCONTROLLER 3 1\n"
             "*PLAYERVIEWPORT -1 1 2 3 4 *PLAYERKEYBOARDCONTROLS 99 1 2 3 4 5 6 7 8 }"),
        "");
    EXPECT_EQ(engine.windowRect.right, 800);
    EXPECT_EQ(engine.colourBits, 300 - 256);
    EXPECT_EQ(timer.framePeriod, 0);
    ASSERT_EQ(scene.playerCount, 3);
    for (int i = 0; i < 3; i++) {
        EXPECT_EQ(scene.players[i].headLimit, 0.0f);
        EXPECT_EQ(scene.players[i].controller, 0);
        EXPECT_EQ(scene.players[i].viewportWidth, 100);
        EXPECT_EQ(scene.players[i].keys[2], 0x25);
    }
}

TEST_F(SettingsFile, EndsAtTheFirstBraceThatClosesNothingOrElseWithTheFile) {
    Read("{ *FARCLIPPINGPLANE 7 } *NEARCLIPPINGPLANE 3 } *SAFE *NEARCLIPPINGPLANE 4");
    EXPECT_EQ(engine.farPlane, 7.0f);
    EXPECT_EQ(engine.nearPlane, 3.0f);
    EXPECT_FALSE(engine.safeMode);
    EXPECT_EQ(ReadWholeFile("defaultlog.txt").find("settings.atr"), std::string::npos);

    Read("*SAFE *FARCLIPPINGPLANE");
    EXPECT_TRUE(engine.safeMode);
    EXPECT_EQ(engine.farPlane, 0.0f);
    EXPECT_TRUE(engine.LoadMeshes("settings.atr"));
    const std::string text = ReadWholeFile("defaultlog.txt");
    const std::size_t line = text.find(" settings.atr: the closing brace is missing\n");
    EXPECT_NE(line, std::string::npos);
    EXPECT_EQ(text.find("settings.atr", line + 2), std::string::npos) << "reported once for both passes";
}

TEST_F(SettingsFile, WarnsOfZerosAndKeepsAllButTheFrameRate) {
    timer.framePeriod = 77;
    EXPECT_EQ(Read("*FARCLIPPINGPLANE 0 *FRAMERATELIMIT 0 *MOUSESENSITIVITY 0 *NEARCLIPPINGPLANE -0.0\n"
                   "*JOYSTICKSENSITIVITY 0.0 }"),
              "[:-(] Framerate limit nemůže být nula\n"
              "[:-(] Pozor! Citlivost myši je nastavena na 0\n"
              "[:-(] Pozor! Citlivost joysticku je nastavena na 0\n"
              "[:-(] Pozor! NEARCLIPPINGPLANE je nastavena na 0\n"
              "[:-(] Pozor! FARCLIPPINGPLANE je nastavena na 0\n");
    EXPECT_EQ(timer.framePeriod, 77);
    EXPECT_EQ(engine.mouseSensitivity, 0.0f);
}

}  // namespace
