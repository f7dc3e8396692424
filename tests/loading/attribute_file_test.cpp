#include "loading/attribute_file.h"

#include <GL/gl.h>
#include <SDL.h>
#include <gtest/gtest.h>

#include <sstream>

#include "platform/windows1250.h"
#include "scene/scene.h"
#include "scene_writer/image_file.h"
#include "services/log.h"
#include "support/temporary_folder.h"
#include "support/virtual_display.h"

namespace {

using Lines = std::vector<std::string>;

/// Three objects, Hero, Start and Ground, and two players, on a machine without a display.
struct AttributeFileTest : testing::Test {
    TemporaryFolder folder;
    Log log;
    Scene scene;

    AttributeFileTest() {
        unsetenv("DISPLAY");
        unsetenv("WAYLAND_DISPLAY");
        scene.SetLog(&log);
        scene.AddPlayers(2);
        scene.AddObjects(3);
        scene.objects[0].name = "Hero";
        scene.objects[1].name = "Start";
        scene.objects[2].name = "Ground";
    }

    /// Applies the block of each object, then that of the scene, as loading does. Returns what boxes say.
    std::string Apply(const std::string& text) {
        WriteWholeFile("level.atr", text);
        testing::internal::CaptureStderr();
        AttributeFile file("level.atr");
        for (std::int32_t id = 0; id < scene.objectCount; id++) {
            ApplyObjectAttributes(scene, file, id);
        }
        ApplyGlobalAttributes(scene, file);
        return testing::internal::GetCapturedStderr();
    }

    /// The entries of the log behind the first one, without their time, but for those about blocks that
    /// are not there.
    Lines Logged() const {
        std::istringstream file(Windows1250ToUtf8(ReadWholeFile("defaultlog.txt").c_str()));
        Lines lines;
        for (std::string line; std::getline(file, line);) {
            const std::string text =
                line.substr(std::min(line.size(), line.find(' ', line.find(' ') + 1) + 1));
            if (!text.empty() && text != "Logging started..." && text.find("žádné") == std::string::npos) {
                lines.push_back(text);
            }
        }
        return lines;
    }
};

TEST_F(AttributeFileTest, TellsWhatIsNotThere) {
    EXPECT_FALSE(scene.ReadObjectAttributes("data\\level.atr", "Hero"));
    EXPECT_FALSE(scene.ReadGlobalAttributes("data\\level.atr"));
    WriteWholeFile("Data/Level.ATR", "Ground {} Nobody {*GROUPMEMBER 1}");
    EXPECT_FALSE(scene.ReadObjectAttributes("data\\level.atr", "Hero"));
    EXPECT_FALSE(scene.ReadGlobalAttributes("data\\level.atr"));
    EXPECT_TRUE(scene.ReadObjectAttributes("data\\level.atr", "Ground"));
    EXPECT_FALSE(scene.ReadObjectAttributes("data\\level.atr", "Nobody"));
    EXPECT_EQ(scene.groupCount, 0);

    const std::string file = Windows1250ToUtf8(ReadWholeFile("defaultlog.txt").c_str());
    std::size_t at = 0;
    for (const char* line : {" Nebyl nalezen soubor s atributy: data\\level.atr\n",
                             " Nebyl nalezen soubor s atributy: data\\level.atr\n",
                             " Tento objekt nemá žádné atributy: Hero\n",
                             " Tato scéna nemá žádné globální atributy: data\\level.atr\n",
                             " data\\level.atr: Nobody: there is no such object\n"}) {
        at = file.find(line, at + 1);
        EXPECT_NE(at, std::string::npos) << line;
    }
}

TEST_F(AttributeFileTest, GivesAnObjectItsBlockAndNoOther) {
    Apply(
        "Hero, Start\nHero1 { *INVISIBLE }\nHero\n\n{ *NOCOLLIDER {*COLLIDER} }\n*INVISIBLE\n"
        "Start { *PHYSICS 2.5 0.25 1e-1 *PHYSICS 3 }");
    EXPECT_EQ(scene.objects[0].attributes[collidableAttribute], 0);
    EXPECT_EQ(scene.objects[0].attributes[invisibleAttribute], -1);
    EXPECT_NE(scene.objects[0].collider, nullptr);
    EXPECT_EQ(scene.objects[0].physics, nullptr);

    ASSERT_NE(scene.objects[1].physics, nullptr);
    EXPECT_EQ(scene.objects[1].physics->gravity, 3.0f);
    EXPECT_EQ(scene.objects[1].physics->bounce, 0.0f) << "no number left for it";
    EXPECT_EQ(scene.objects[1].collider, nullptr);
    EXPECT_EQ(scene.objects[1].attributes[collidableAttribute], -1);
    EXPECT_EQ(Logged(), Lines{});
}

TEST_F(AttributeFileTest, MakesGroupsUpToTheIdsThatItNames) {
    Apply(
        "Hero { *GROUPPARENT 1 *GROUPMEMBER 3 } Ground { *GROUPMEMBER 3 *GROUPMEMBER 0 *GROUPMEMBER\n5 }");
    ASSERT_EQ(scene.groupCount, 4) << "a key that ends in a blank is none at the end of a line";
    EXPECT_EQ(scene.groups[3].ids[0], 0);
    EXPECT_EQ(scene.groups[3].ids[1], 2);
    EXPECT_EQ(scene.groups[3].ids[2], -1);
    EXPECT_EQ(scene.groups[0].ids[0], 2);
    EXPECT_EQ(scene.groups[1].ids[0], -1);
    EXPECT_EQ(scene.objects[0].groupParent, 1);
    EXPECT_EQ(scene.objects[2].groupParent, -1);
}

TEST_F(AttributeFileTest, IgnoresGroupsAndPlayersThatCannotBe) {
    EXPECT_EQ(Apply("Hero { *GROUPMEMBER -1 *GROUPPARENT 65536 *GROUPPARENT 65535 *PLAYEROBJECT 2\n"
                    "*CAMERAOBJECT -1 7 8 *PLAYERSPAWNPOINT 2 *PLAYERSPAWNPOINT -1 }"),
              "");
    EXPECT_EQ(scene.groupCount, 65536);
    EXPECT_EQ(scene.objects[0].groupParent, 65535);
    for (int i = 0; i < 2; i++) {
        EXPECT_EQ(scene.players[i].playerObject, -1);
        EXPECT_EQ(scene.players[i].cameraObject, -1);
    }
    EXPECT_EQ(Logged(), (Lines{"level.atr: Hero: *GROUPMEMBER -1 ignored, group ids run from 0 to 65535",
                               "level.atr: Hero: *GROUPPARENT 65536 ignored, group ids run from 0 to 65535",
                               "level.atr: Hero: *PLAYERSPAWNPOINT -1 ignored, there is no such player",
                               "level.atr: Hero: *CAMERAOBJECT -1 ignored, there is no such player",
                               "level.atr: Hero: *PLAYEROBJECT 2 ignored, there is no such player"}));
}

TEST_F(AttributeFileTest, BindsPlayersToTheirObjects) {
    Apply("Hero { *PLAYEROBJECT 1 *CAMERAOBJECT 0 -3 1000000 } Ground { *PLAYEROBJECT 0 }");
    EXPECT_EQ(scene.players[1].playerObject, 0);
    EXPECT_EQ(scene.players[1].cameraObject, -1);
    EXPECT_EQ(scene.players[0].playerObject, 2);
    EXPECT_EQ(scene.players[0].cameraObject, 0);
    EXPECT_EQ(scene.players[0].eyeVertex, -3) << "vertices are kept as they stand";
    EXPECT_EQ(scene.players[0].lookVertex, 1000000);
}

TEST_F(AttributeFileTest, BringsThePlayerToItsSpawnPoint) {
    scene.objects[0].centreVertex = 1;
    scene.objects[0].SetVertex({1.0f, 2.0f, 3.0f}, 1);
    scene.objects[1].SetVertex({11.0f, 22.0f, 33.0f}, 0);
    scene.objects[1].centreVertex = 5;
    // The hero's own spawn point comes before the hero is bound, and is the one with the box.
    EXPECT_EQ(Apply("Hero { *PLAYEROBJECT 1 *PLAYERSPAWNPOINT 1 }\n"
                    "Start { *PLAYERSPAWNPOINT 1 *PLAYERSPAWNPOINT 1 }"),
              "[:-(] *PLAYERSPAWNPOINT: Ještě neexistuje PlayerObject\n");
    const Object& hero = scene.objects[0];
    EXPECT_EQ(hero.attributes[spawnStateAttribute], 2);
    EXPECT_EQ(hero.transform.m[3], 20.0f);
    EXPECT_EQ(hero.transform.m[7], 40.0f);
    EXPECT_EQ(hero.transform.m[11], 60.0f);
    EXPECT_EQ(scene.objects[1].attributes[spawnStateAttribute], -1);
}

TEST_F(AttributeFileTest, SpawnsNothingAtAnObjectWithoutVertices) {
    scene.objects[1].ResizeVertices(0);
    EXPECT_EQ(Apply("Hero { *PLAYEROBJECT 0 } Start { *PLAYERSPAWNPOINT 0 }"), "");
    EXPECT_EQ(scene.objects[0].attributes[spawnStateAttribute], -1);
    EXPECT_TRUE(scene.objects[0].transform.IsIdentity());
    EXPECT_EQ(
        Logged(),
        Lines{"level.atr: Start: *PLAYERSPAWNPOINT 0 ignored, an object without vertices is nowhere"});
}

TEST_F(AttributeFileTest, WithoutClosingBraceEndsTheBlockWithTheFile) {
    Apply("Hero { *COLLIDER\nStart { *INVISIBLE }");
    EXPECT_NE(scene.objects[0].collider, nullptr);
    EXPECT_EQ(scene.objects[0].attributes[invisibleAttribute], 1);
    EXPECT_EQ(scene.objects[1].attributes[invisibleAttribute], 1);
    EXPECT_EQ(Logged(), Lines{"level.atr: Hero: the closing brace is missing"});
}

/// The same with a fresh OpenGL context.
struct AttributeFileWithContext : AttributeFileTest {
    SDL_Window* windowBefore = nullptr;
    SDL_GLContext contextBefore = nullptr;
    SDL_Window* window = nullptr;
    SDL_GLContext context = nullptr;

    AttributeFileWithContext() {
        // To the end of the process: drivers that are unloaded leave memory behind.
        if (!SDL_WasInit(SDL_INIT_VIDEO)) {
            static const VirtualDisplay& display = *new VirtualDisplay;
            EXPECT_FALSE(display.name.empty());
            SDL_InitSubSystem(SDL_INIT_VIDEO);
            unsetenv("DISPLAY");
        }
        windowBefore = SDL_GL_GetCurrentWindow();
        contextBefore = SDL_GL_GetCurrentContext();
        window = SDL_CreateWindow("", 0, 0, 64, 64, SDL_WINDOW_OPENGL | SDL_WINDOW_HIDDEN);
        context = SDL_GL_CreateContext(window);
        EXPECT_NE(context, nullptr) << SDL_GetError();
    }
    ~AttributeFileWithContext() override {
        SDL_GL_DeleteContext(context);
        SDL_DestroyWindow(window);
        SDL_GL_MakeCurrent(windowBefore, contextBefore);
    }
};

TEST_F(AttributeFileWithContext, LoadsEachTextureOnce) {
    WriteTga("wall.tga", Image(4, 8, 3));
    WriteSgi("sky.rgb", Image(16, 2, 3));
    Apply(
        "Hero { *TEXTURE wall.tga } Ground { *TEXTURE sky.rgb *TEXTURE data\\wall.tga }\n"
        "GLOBALS { *TEXTURE sky.rgb.tga *TEXTURE wall *TEXTURE more.tga }");
    EXPECT_EQ(Logged(), (Lines{"Nahrána textura: wall.tga", "Nahrána textura: sky.rgb",
                               "Recyklace textury: data\\wall.tga", "Recyklace textury: sky.rgb.tga",
                               "Nahrána globální textura: wall", "Recyklace textury: more.tga"}));
    ASSERT_EQ(scene.textureCount, 6);
    EXPECT_EQ(scene.objects[0].textureIndex, 0);
    EXPECT_EQ(scene.objects[1].textureIndex, -1);
    EXPECT_EQ(scene.objects[2].textureIndex, 2);
    EXPECT_TRUE(glIsTexture(scene.textures[0].glName));
    EXPECT_TRUE(glIsTexture(scene.textures[1].glName));
    EXPECT_EQ(scene.textures[2].glName, scene.textures[0].glName);
    EXPECT_EQ(scene.textures[2].name, "wall.tga");
    EXPECT_EQ(scene.textures[2].height, 8);
    EXPECT_EQ(scene.textures[3].glName, scene.textures[1].glName);
    EXPECT_EQ(scene.textures[1].width, 16);
    EXPECT_EQ(scene.textures[4].name, "") << "neither kind of image: nothing is read";
    EXPECT_EQ(scene.textures[5].name, "") << "and the empty name is part of every other";
    EXPECT_EQ(scene.textures[5].glName, 0u);
}

TEST_F(AttributeFileWithContext, AddsLightsWithTheirParametersInOrder) {
    Apply(
        "GLOBALS {\n*LIGHT 0.1 0.2 0.3 0.4, 0.5 0.6 0.7 0.8; 0.9 1 0.25 0.75\n 10 20 30 1  0 1 0  2 45  3 "
        "4 5\n"
        "*LIGHT 0.5 }");
    ASSERT_EQ(scene.lightCount, 2);
    const Light& light = scene.lights[0];
    EXPECT_EQ(light.glLight, GL_LIGHT0);
    EXPECT_EQ(scene.lights[1].glLight, GL_LIGHT1);
    EXPECT_EQ(light.ambient[2], 0.3f);
    EXPECT_EQ(light.position[2], 30.0f);
    EXPECT_EQ(light.spotDirection[1], 1.0f);
    EXPECT_EQ(light.quadraticAttenuation, 5.0f);
    EXPECT_EQ(scene.lights[1].ambient[0], 0.5f);
    EXPECT_EQ(scene.lights[1].diffuse[0], 0.0f) << "no number left for it";

    const std::pair<GLenum, std::vector<float>> parameters[] = {{GL_AMBIENT, {0.1f, 0.2f, 0.3f, 0.4f}},
                                                                {GL_DIFFUSE, {0.5f, 0.6f, 0.7f, 0.8f}},
                                                                {GL_SPECULAR, {0.9f, 1.0f, 0.25f, 0.75f}},
                                                                {GL_POSITION, {10.0f, 20.0f, 30.0f, 1.0f}},
                                                                {GL_SPOT_DIRECTION, {0.0f, 1.0f, 0.0f}},
                                                                {GL_SPOT_EXPONENT, {2.0f}},
                                                                {GL_SPOT_CUTOFF, {45.0f}},
                                                                {GL_CONSTANT_ATTENUATION, {3.0f}},
                                                                {GL_LINEAR_ATTENUATION, {4.0f}},
                                                                {GL_QUADRATIC_ATTENUATION, {5.0f}}};
    for (const auto& [parameter, wanted] : parameters) {
        std::vector<float> value(4);
        glGetLightfv(GL_LIGHT0, parameter, value.data());
        value.resize(wanted.size());
        EXPECT_EQ(value, wanted) << std::hex << parameter;
    }
}

}  // namespace
