#include "app/reload.h"

#include <GL/gl.h>

#include "scene_writer/image_file.h"
#include "scene_writer/scene_file.h"
#include "scene_writer/shapes.h"
#include "support/running_engine.h"

namespace {

/// A stone that keys move, and so many walls beside.
void WriteWorld(int walls) {
    engine::SceneObject stone = engine::MakeBox("Stone", {-1, -1, -1}, {1, 1, 1});
    AddMarkers(stone, {0, 0, 0});
    std::vector<engine::SceneObject> objects = {stone, engine::MakeCamera("Camera", {0, -9, 0}, {0, 0, 0})};
    for (int i = 0; i < walls; i++) {
        objects.push_back(engine::MakeBox("Wall", {9, 0, 0}, {10, 9, 9}));
    }
    engine::WriteSceneFile("new.bin", objects);
    std::filesystem::rename("new.bin", "world.bin");
}

/// What a leak would count up.
std::vector<std::size_t> Resources() {
    std::size_t textures = 0;
    std::size_t lists = 0;
    for (GLuint name = 1; name < 1000; name++) {
        textures += glIsTexture(name);
        lists += glIsList(name);
    }
    const std::filesystem::directory_iterator open("/proc/self/fd");
    return {textures, lists, static_cast<std::size_t>(std::distance(begin(open), end(open)))};
}

TEST(Reload, EverythingStandsWhereItStoodAndNothingIsLeftOver) {
    RunningEngine running;
    WriteWorld(0);
    engine::WriteTga("wall.tga", engine::Image(4, 4, 3));
    WriteWholeFile("world.atr",
                   "Stone { *PLAYEROBJECT 0 *TEXTURE wall.tga } Camera { *CAMERAOBJECT 0 0 1 }");
    WatchWorld(false);
    running.Start("*PLAYERCOUNT 1 *LOADMESH world.bin }");
    ReloadIfChanged();  // from now on changes count
    const auto stone = [] {
        Vector centre;
        theScene->objects[0].GetVertex(centre, theScene->objects[0].centreVertex);
        return centre;
    };
    running.display.Xdotool("keydown Up");
    ASSERT_TRUE(running.FramesUntil([&] { return stone().Length() > 5.0f; }));
    running.display.Xdotool("keyup Up");
    ASSERT_TRUE(running.FramesUntil([] { return theEngine->keyState[0x26] == 0; }));
    const Vector before = stone();
    std::vector<std::size_t> resources;
    for (int walls = 1; walls <= 5; walls++) {
        WriteWorld(walls);
        ASSERT_TRUE(running.FramesUntil([&] {
            Log::Write(theLog, "The log is no part of the world.");
            ReloadIfChanged();
            return theScene->objectCount == 2 + walls;
        }));
        EXPECT_TRUE((stone() - before).IsZero()) << walls;
        if (walls == 1) {
            resources = Resources();
        }
        EXPECT_EQ(Resources(), resources);
    }
    running.display.Xdotool("key F5");
    EXPECT_TRUE(running.FramesUntil([&] {
        ReloadIfChanged();
        return stone().IsZero();
    }));
}

}  // namespace
