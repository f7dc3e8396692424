#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <vector>

#include "platform/windows1250.h"
#include "scene_writer/attribute_text.h"
#include "scene_writer/image_file.h"
#include "scene_writer/scene_file.h"
#include "scene_writer/shapes.h"
#include "support/engine_process.h"

// Whole sessions, from the start of the process to its end, with what the log says about them.

namespace {

/// Two scene files for two players; the second repeats a name and finds a texture again.
void WriteTwoScenes() {
    engine::SceneObject floor = engine::MakeGrid("Floor", {-50, -50, 0}, {100, 0, 0}, {0, 100, 0}, 4, 4, 4);
    AddMarkers(floor, {0, 0, 0});
    engine::SceneObject hero = engine::MakeBox("Hero", {-1, -1, 1}, {1, 1, 9});
    AddMarkers(hero, {0, 0, 5.05f}, {-1, 0, 0}, {0, -1, 0});
    engine::SceneObject camera = engine::MakeCamera("Camera", {0, 0, 8}, {0, 1, 8});
    AddMarkers(camera, {0, 0, 8});
    engine::WriteSceneFile("data/first.bin", {floor, hero, camera});
    WriteWholeFile(
        "data/First.ATR",
        "Floor { *TEXTURE data\\grass.tga }\r\n"
        "Hero\r\n{\r\n*PLAYEROBJECT 0\r\n*GROUPPARENT 0\r\n*COLLIDER\r\n*PHYSICS 1 0 0.2\r\n}\r\n"
        "Camera { *CAMERAOBJECT 0 0 1 *CAMERAOBJECT 1 0 1 *GROUPMEMBER 0 *NOCOLLIDER }\r\n"
        "GLOBALS { *LIGHT 0.2 0.2 0.2 1  1 1 1 1  1 1 1 1  0 0 50 1  0 0 -1  0 180  1 0 0 }\r\n");
    engine::WriteSceneFile("data/second.bin", {floor});
    WriteWholeFile("data/second.atr", "Floor1 { *TEXTURE data\\grass.tga }");
    WriteTga("data/GRASS.TGA", engine::Image(4, 4, 3));
}

std::string Settings(const std::string& more) {
    return "*RESOLUTION 640 480 32\r\n*FRAMERATELIMIT 50\r\n*PLAYERCOUNT 2\r\n*PLAYERVIEWPORT 0 0 0 320 "
           "480\r\n"
           "*PLAYERVIEWPORT 1 320 0 320 480\r\n*LOADMESH data\\first.bin\r\n*LOADMESH "
           "Data\\Second.bin\r\n" +
           more + "\r\n}\r\n";
}

struct Session : testing::Test {
    TemporaryFolder folder;
    VirtualDisplay display{WindowManager::Openbox};

    /// The window, once it takes keys.
    std::string WaitForWindow() {
        std::string window = display.WaitForWindow("Engine");
        WaitUntil([&] { return display.Xdotool("getwindowfocus") == window + "\n"; });
        return window;
    }
    std::string Place(const std::string& window) { return display.Xdotool("getwindowgeometry " + window); }
};

/// Windows line ends, and names whose case and separators are another machine's.
TEST_F(Session, TheLogTellsOfTheContextAndOfEverythingThatIsLoaded) {
    WriteTwoScenes();
    WriteWholeFile("Settings.ATR", Settings(""));
    EngineProcess engine;
    WaitForWindow();
    EXPECT_EQ(engine.EndByEscape(display), 1);
    EXPECT_EQ(EngineProcess::Errors(), "");
    const std::vector<std::string> entries = LogEntries(Windows1250ToUtf8(EngineProcess::Log().c_str()));
    std::string log;
    for (std::size_t i = 0; i < entries.size(); i++) {
        // What the driver says differs: four strings, and the numbers after the colons.
        const bool text = i > 0 && i < 9 && i % 2 == 0;
        const bool number = i > 8 && i < 20 && i != 17 && i != 18;
        EXPECT_FALSE(entries[i].empty());
        log += text ? "" : number ? entries[i].substr(0, entries[i].rfind(':')) : entries[i];
        log += '|';
    }
    // Grid, box and camera: 25 + 24 + 2 vertices, each with 5 of markers.
    EXPECT_EQ(
        log,
        "Logging started...|Výrobce GL implementace:||Jméno rendereru:||Číslo verze:||"
        "Podporované rozšíření OpenGl:||Number of Depth bits|Number of Blue bits|Number of Green bits|"
        "Number of Red bits|Number of Blue bits in Accumulation Buffer|"
        "Number of Green bits in Accumulation Buffer|Number of Red bits in Accumulation Buffer|"
        "Number of bits in Stencil Buffer|Depth test: 1|Backface cull: 1|"
        "Number of lights supported by implementation|Courier New: Font built succesfully|"
        "Nahrává se scéna: data\\first.bin|Nahrána textura: data\\grass.tga|"
        "Scéna nahráha: 3 Objektů, 44 Polygonů, 66 Vertexů.|Nahrává se scéna: Data\\Second.bin|"
        "Recyklace textury: data\\grass.tga|Tato scéna nemá žádné globální atributy: Data\\Second.atr|"
        "Scéna nahráha: 1 Objektů, 32 Polygonů, 30 Vertexů.|Destructing Engine|Logging ended...|");
    EXPECT_TRUE(EngineProcess::Log().ends_with("...\n\n"));
}

TEST_F(Session, WithoutSettingsTwoBoxesComeAndTheDefaultsRule) {
    EngineProcess engine;
    EXPECT_TRUE(display.CloseBox(":-(", nullptr, "Engine"));
    EXPECT_TRUE(display.CloseBox(":-("));
    EXPECT_NE(Place(WaitForWindow()).find("640x480"), std::string::npos);
    display.Xdotool("key alt+F4");
    EXPECT_EQ(engine.WaitForExit(), 1);
    EXPECT_TRUE(EngineProcess::Log().ends_with("Logging ended...\n\n"));
}

TEST_F(Session, TheWindowIsResizedMinimisedAndRestoredInBothPaths) {
    WriteTwoScenes();
    for (const char* path : {"", "*SAFE"}) {
        WriteWholeFile("settings.atr", Settings(path));
        EngineProcess engine;
        const std::string window = WaitForWindow();
        EXPECT_NE(Place(window).find("640x480"), std::string::npos);
        for (const std::string action : {"windowsize --sync $ 400 300", "windowminimize $ sleep 0.3",
                                         "windowmap --sync $", "windowactivate --sync $"}) {
            display.Xdotool(std::string(action).replace(action.find('$'), 1, window));
        }
        EXPECT_NE(Place(window).find("400x300"), std::string::npos);
        EXPECT_EQ(engine.EndByEscape(display), 1) << path;
        EXPECT_EQ(EngineProcess::Errors(), "") << path;
    }
}

TEST_F(Session, FullScreenShowsAtTheOriginAndARefusedModeGivesAWindow) {
    WriteTwoScenes();
    WriteWholeFile("settings.atr", "*FULLSCREEN " + Settings("*RESOLUTION 1280 1024 32"));
    {
        EngineProcess engine;
        const std::string window = WaitForWindow();
        EXPECT_TRUE(WaitUntil([&] {
            const std::string place = Place(window);
            return place.find("1280x1024") != std::string::npos && place.find(" 0,0 ") != std::string::npos;
        }));
        EXPECT_EQ(engine.EndByEscape(display), 1);
    }
    WriteWholeFile("settings.atr", "*FULLSCREEN " + Settings("*RESOLUTION 333 222 32"));
    EngineProcess engine;
    // The box has no caption: it goes by any key once it is there.
    EXPECT_TRUE(WaitUntil([&] {
        display.Xdotool("key Return sleep 0.1");
        return !display.WindowSize("Engine").empty();
    }));
    EXPECT_EQ(display.WindowSize("Engine"), "333x222");
    EXPECT_EQ(engine.EndByEscape(display), 1);
}

/// A stone falls out of the view within a second: what the picture of a late frame shows, and when.
TEST(FrameLoop, StepsTheWorldAtItsPace) {
    TemporaryFolder folder;
    VirtualDisplay display;
    engine::WriteSceneFile("world.bin", {engine::MakeBox("Stone", {-1, -1, -1}, {1, 1, 1}),
                                         engine::MakeCamera("Camera", {0, -9, 0}, {0, 0, 0})});
    WriteWholeFile("world.atr", "Stone { *PHYSICS 1 0 0 } Camera { *CAMERAOBJECT 0 0 1 }");
    WriteWholeFile("settings.atr",
                   "*RESOLUTION 100 100 32 *FRAMERATELIMIT 50 *PLAYERCOUNT 1 *LOADMESH world.bin }");
    for (const auto& [frames, colour] : {std::pair{"2", "333333"}, {"40", "3333FF"}}) {
        const auto start = std::chrono::steady_clock::now();
        const std::string run =
            std::string(ENGINE_PROGRAM) + " --screenshot picture.png --frames " + frames;
        EXPECT_EQ(RunCommand("ASAN_OPTIONS=detect_leaks=0 " + run).exitCode, 0);
        EXPECT_GE(std::chrono::steady_clock::now() - start,
                  std::chrono::milliseconds(20 * (std::stoi(frames) - 1)));
        EXPECT_EQ(RunCommand("convert picture.png -format '%[hex:p{50,50}]' info:").output, colour)
            << frames;
    }
}

}  // namespace
