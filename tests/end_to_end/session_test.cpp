#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "platform/windows1250.h"
#include "scene_writer/attribute_text.h"
#include "scene_writer/image_file.h"
#include "scene_writer/scene_file.h"
#include "scene_writer/shapes.h"
#include "support/engine_process.h"
#include "support/virtual_display.h"

// Whole sessions, from the start of the process to its end, with what the log tells about them.

namespace {

/// Two scene files for two players; the second repeats a name and finds a texture again.
void WriteTwoScenes() {
    SceneObject floor = MakeGrid("Floor", {-50, -50, 0}, {100, 0, 0}, {0, 100, 0}, 4, 4, 4);
    AddMarkers(floor, {0, 0, 0});
    SceneObject hero = MakeBox("Hero", {-1, -1, 1}, {1, 1, 9});
    AddMarkers(hero, {0, 0, 5.05f}, {-1, 0, 0}, {0, -1, 0});
    SceneObject camera = MakeCamera("Camera", {0, 0, 8}, {0, 1, 8});
    AddMarkers(camera, {0, 0, 8});
    SceneObject start = MakeCamera("Start", {10, 10, 5.1f}, {0, 0, 0});
    AddMarkers(start, {10, 10, 5.1f});
    WriteSceneFile("data/first.bin", {floor, hero, camera, start});
    WriteWholeFile(
        "data/First.ATR",
        "Floor { *TEXTURE data\\grass.tga }\r\n"
        "Hero\r\n{\r\n*PLAYEROBJECT 0\r\n*GROUPPARENT 0\r\n*COLLIDER\r\n*PHYSICS 1 0 0.2\r\n}\r\n"
        "Camera { *CAMERAOBJECT 0 0 1 *CAMERAOBJECT 1 0 1 *GROUPMEMBER 0 *NOCOLLIDER }\r\n"
        "Start { *PLAYERSPAWNPOINT 0 *INVISIBLE *NOCOLLIDER }\r\n"
        "GLOBALS { *LIGHT 0.2 0.2 0.2 1  1 1 1 1  1 1 1 1  0 0 50 1  0 0 -1  0 180  1 0 0 }\r\n");
    WriteSceneFile("data/second.bin", {floor});
    WriteWholeFile("data/second.atr", "Floor1 { *TEXTURE data\\grass.tga }");
    Image grass(4, 4, 3);
    std::fill(grass.samples.begin(), grass.samples.end(), std::uint8_t{120});
    WriteTga("data/GRASS.TGA", grass);
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

    /// What is loaded, as the log tells it: everything between the font and the end.
    static std::vector<std::string> LoadingEntries() {
        std::vector<std::string> entries = LogEntries(EngineProcess::Log());
        const auto font = std::find(entries.begin(), entries.end(), "Courier New: Font built succesfully");
        const auto end = std::find(entries.begin(), entries.end(), "Destructing Engine");
        if (font == entries.end()) return {};
        std::vector<std::string> loading(font + 1, end);
        for (std::string& entry : loading) {
            entry = Windows1250ToUtf8(entry.c_str());
        }
        return loading;
    }

    std::string Window() { return display.WaitForWindow("Engine"); }
    void HoldEscape() { display.Xdotool("keydown Escape sleep 0.5 keyup Escape"); }
};

/// Windows line ends, and names whose case and separators are another machine's.
TEST_F(Session, TheLogTellsOfEverythingThatIsLoaded) {
    WriteTwoScenes();
    WriteWholeFile("Settings.ATR", Settings(""));
    EngineProcess engine;
    ASSERT_TRUE(EngineProcess::WaitForLog("1 Objekt")) << EngineProcess::Log();
    HoldEscape();
    EXPECT_EQ(engine.WaitForExit(), 1);
    EXPECT_EQ(EngineProcess::Errors(), "");
    // Grid, box and two cameras: 25 + 24 + 2 + 2 vertices, each with 5 of markers.
    const std::vector<std::string> expected = {
        "Nahrává se scéna: data\\first.bin",
        "Nahrána textura: data\\grass.tga",
        "Scéna nahráha: 4 Objektů, 44 Polygonů, 73 Vertexů.",
        "Nahrává se scéna: Data\\Second.bin",
        "Recyklace textury: data\\grass.tga",
        "Tato scéna nemá žádné globální atributy: Data\\Second.atr",
        "Scéna nahráha: 1 Objektů, 32 Polygonů, 30 Vertexů.",
    };
    EXPECT_EQ(LoadingEntries(), expected);
}

TEST_F(Session, TheWindowIsResizedMinimisedAndRestoredInBothPaths) {
    WriteTwoScenes();
    for (const char* path : {"", "*SAFE"}) {
        WriteWholeFile("settings.atr", Settings(path));
        EngineProcess engine;
        const std::string window = Window();
        EXPECT_NE(display.Xdotool("getwindowgeometry " + window).find("640x480"), std::string::npos);
        display.Xdotool("windowsize --sync " + window + " 400 300");
        display.Xdotool("windowminimize " + window + " sleep 0.5 windowmap --sync " + window +
                        " windowactivate --sync " + window + " sleep 0.3");
        EXPECT_NE(display.Xdotool("getwindowgeometry " + window).find("400x300"), std::string::npos);
        HoldEscape();
        EXPECT_EQ(engine.WaitForExit(), 1) << path;
        EXPECT_EQ(EngineProcess::Errors(), "") << path;
    }
}

TEST_F(Session, FullScreenShowsAtTheOriginAndARefusedModeGivesAWindow) {
    WriteTwoScenes();
    WriteWholeFile("settings.atr", "*FULLSCREEN " + Settings("*RESOLUTION 1280 1024 32"));
    {
        EngineProcess engine;
        const std::string window = Window();
        EXPECT_TRUE(WaitUntil([&] {
            const std::string place = display.Xdotool("getwindowgeometry " + window);
            return place.find("1280x1024") != std::string::npos && place.find(" 0,0 ") != std::string::npos;
        }));
        HoldEscape();
        EXPECT_EQ(engine.WaitForExit(), 1);
    }
    WriteWholeFile("settings.atr", "*FULLSCREEN " + Settings("*RESOLUTION 333 222 32"));
    EngineProcess engine;
    // The box has no caption: it goes by any key once it is there.
    EXPECT_TRUE(WaitUntil([&] {
        display.Xdotool("key Return sleep 0.1");
        return !display.WindowSize("Engine").empty();
    }));
    EXPECT_EQ(display.WindowSize("Engine"), "333x222");
    HoldEscape();
    EXPECT_EQ(engine.WaitForExit(), 1);
}

}  // namespace
