#include "loading/attribute_file.h"

#include "loading/loading_test.h"
#include "scene_writer/image_file.h"

namespace {

/// Three objects, Hero, Start and Ground, and two players.
struct AttributeFileTest : LoadingTest {
    AttributeFileTest() {
        scene.AddPlayers(2);
        scene.AddObjects(3);
        scene.objects[0].name = "Hero";
        scene.objects[1].name = "Start";
        scene.objects[2].name = "Ground";
    }

    /// Applies the block of each object, then that of the scene, as loading does.
    void Apply(const std::string& text) {
        WriteWholeFile("level.atr", text);
        Watch([&] {
            TextureIndex textures;
            AttributeFile file("level.atr", textures);
            for (std::int32_t id = 0; id < scene.objectCount; id++) {
                ApplyObjectAttributes(scene, file, id);
            }
            return ApplyGlobalAttributes(scene, file);
        });
    }
};

TEST_F(AttributeFileTest, TellsWhatIsNotThere) {
    Watch([&] {
        EXPECT_FALSE(scene.ReadObjectAttributes("data\\level.atr", "Hero"));
        EXPECT_FALSE(scene.ReadGlobalAttributes("data\\level.atr"));
        WriteWholeFile("Data/Level.ATR", "Ground {} Nobody {*GROUPMEMBER 1}");
        EXPECT_FALSE(scene.ReadObjectAttributes("data\\level.atr", "Hero"));
        EXPECT_FALSE(scene.ReadGlobalAttributes("data\\level.atr"));
        EXPECT_TRUE(scene.ReadObjectAttributes("data\\level.atr", "Ground"));
        return scene.ReadObjectAttributes("data\\level.atr", "Nobody");
    });
    EXPECT_EQ(logged, (Lines{"Nebyl nalezen soubor s atributy: data\\level.atr",
                             "Nebyl nalezen soubor s atributy: data\\level.atr",
                             "Tento objekt nemá žádné atributy: Hero",
                             "Tato scéna nemá žádné globální atributy: data\\level.atr",
                             "data\\level.atr: Nobody: there is no such object"}));
    EXPECT_EQ(scene.groupCount, 0);
}

TEST_F(AttributeFileTest, GivesAnObjectItsBlockAndNoOther) {
    Apply(
        "Hero, Start\nHero1 { *INVISIBLE }\nHero\n\n{ *NOCOLLIDER {*COLLIDER} }\n*INVISIBLE\n"
        "Start { *PHYSICS 2.5 0.5 *PHYSICS 3 } Ground { *COLLIDER *PHYSICS 2.5 0.25 1e-1\n{ *INVISIBLE }");
    EXPECT_EQ(scene.objects[0].attributes[collidableAttribute], 0);
    EXPECT_EQ(scene.objects[0].attributes[invisibleAttribute], -1);
    EXPECT_NE(scene.objects[0].collider, nullptr);
    EXPECT_EQ(scene.objects[0].physics, nullptr);

    ASSERT_NE(scene.objects[1].physics, nullptr);
    EXPECT_EQ(scene.objects[1].physics->gravity, 3.0f);
    EXPECT_EQ(scene.objects[1].physics->bounce, 0.0f) << "no number left for it";
    ASSERT_NE(scene.objects[2].physics, nullptr);
    EXPECT_EQ(scene.objects[2].physics->bounce, 0.25f);
    EXPECT_EQ(scene.objects[2].physics->friction, 0.1f);
    EXPECT_EQ(scene.objects[1].collider, nullptr);

    EXPECT_NE(scene.objects[2].collider, nullptr);
    EXPECT_EQ(scene.objects[2].attributes[invisibleAttribute], 1);
    EXPECT_EQ(LoggedWith("level.atr: "), Lines{"level.atr: Ground: the closing brace is missing"});
}

TEST_F(AttributeFileTest, MakesGroupsAndBindsPlayersAndIgnoresThoseThatCannotBe) {
    Apply(
        "Hero { *GROUPPARENT 1 *GROUPMEMBER 3 *PLAYEROBJECT 1 *CAMERAOBJECT 0 -3 1000000 }\n"
        "Ground { *GROUPMEMBER 0 *PLAYEROBJECT 0 *GROUPMEMBER\n5 *GROUPMEMBER 3");
    ASSERT_EQ(scene.groupCount, 4) << "a key that ends in a blank is none at the end of a line";
    EXPECT_TRUE(
        std::equal(&scene.groups[3].ids[0], &scene.groups[3].ids[3], std::vector{0, 2, -1}.begin()));
    EXPECT_EQ(scene.groups[0].ids[0], 2);
    EXPECT_EQ(scene.groups[1].ids[0], -1);
    EXPECT_EQ(scene.objects[0].groupParent, 1);
    EXPECT_EQ(scene.objects[2].groupParent, -1);
    const Player *const first = &scene.players[0], *const second = &scene.players[1];
    EXPECT_EQ((std::vector{first->playerObject, first->cameraObject, first->eyeVertex, first->lookVertex,
                           second->playerObject, second->cameraObject}),
              (std::vector{2, 0, -3, 1000000, 0, -1}))
        << "vertices are kept as they stand";

    Apply(
        "Hero { *GROUPMEMBER -1 *GROUPPARENT 65536 *GROUPPARENT 65535 *PLAYEROBJECT 2\n"
        "*CAMERAOBJECT -1 7 8 *PLAYERSPAWNPOINT 2 *PLAYERSPAWNPOINT -1 }");
    EXPECT_EQ(boxes, Lines{});
    EXPECT_EQ(scene.groupCount, 65536);
    EXPECT_EQ(scene.objects[0].groupParent, 65535);
    EXPECT_EQ(first->eyeVertex, -3);
    EXPECT_EQ(LoggedWith("level.atr: "),
              (Lines{"level.atr: Hero: *GROUPMEMBER -1 ignored, group ids run from 0 to 65535",
                     "level.atr: Hero: *GROUPPARENT 65536 ignored, group ids run from 0 to 65535",
                     "level.atr: Hero: *PLAYERSPAWNPOINT -1 ignored, there is no such player",
                     "level.atr: Hero: *CAMERAOBJECT -1 ignored, there is no such player",
                     "level.atr: Hero: *PLAYEROBJECT 2 ignored, there is no such player"}));
}

TEST_F(AttributeFileTest, BringsThePlayerToItsSpawnPoint) {
    scene.objects[0].centreVertex = 1;
    scene.objects[0].SetVertex({1.0f, 2.0f, 3.0f}, 1);
    scene.objects[1].SetVertex({11.0f, 22.0f, 33.0f}, 0);
    scene.objects[1].centreVertex = 5;
    scene.objects[2].ResizeVertices(0);
    // The hero's own spawn point comes before the hero is bound, and is the one with the box.
    Apply(
        "Hero { *PLAYEROBJECT 1 *PLAYERSPAWNPOINT 1 }\n"
        "Start { *PLAYERSPAWNPOINT 1 *PLAYERSPAWNPOINT 1 } Ground { *PLAYERSPAWNPOINT 1 }");
    EXPECT_EQ(boxes, Lines{"[:-(] *PLAYERSPAWNPOINT: Ještě neexistuje PlayerObject"});
    const Object& hero = scene.objects[0];
    EXPECT_EQ(hero.attributes[spawnStateAttribute], 2);
    EXPECT_EQ((Values{hero.transform.m[3], hero.transform.m[7], hero.transform.m[11]}),
              (Values{20, 40, 60}));
    EXPECT_EQ(scene.objects[1].attributes[spawnStateAttribute], -1);
    EXPECT_EQ(
        LoggedWith("level.atr: "),
        Lines{"level.atr: Ground: *PLAYERSPAWNPOINT 1 ignored, an object without vertices is nowhere"});
}

TEST_F(AttributeFileTest, LoadsEachTextureOnce) {
    NeedContext();
    WriteTga("wall.tga", engine::Image(4, 8, 3));
    WriteSgi("sky.rgb", engine::Image(16, 2, 3));
    Apply(
        "Hero { *TEXTURE wall.tga } Ground { *TEXTURE sky.rgb *TEXTURE data\\wall.tga }\n"
        "GLOBALS { *TEXTURE sky.rgb.tga *TEXTURE wall *TEXTURE more.tga }");
    EXPECT_EQ(LoggedWith("textur"),
              (Lines{"Nahrána textura: wall.tga", "Nahrána textura: sky.rgb",
                     "Recyklace textury: data\\wall.tga", "Recyklace textury: sky.rgb.tga",
                     "Nahrána globální textura: wall", "Recyklace textury: more.tga"}));
    ASSERT_EQ(scene.textureCount, 6);
    EXPECT_EQ(scene.objects[0].textureIndex, 0);
    EXPECT_EQ(scene.objects[1].textureIndex, -1);
    EXPECT_EQ(scene.objects[2].textureIndex, 2);
    EXPECT_TRUE(glIsTexture(scene.textures[0].glName));
    EXPECT_EQ(scene.textures[1].width, 16);
    EXPECT_EQ(scene.textures[2].glName, scene.textures[0].glName);
    EXPECT_EQ(scene.textures[2].name, "wall.tga");
    EXPECT_EQ(scene.textures[2].height, 8);
    EXPECT_EQ(scene.textures[3].glName, scene.textures[1].glName);
    EXPECT_EQ(scene.textures[4].name, "") << "neither kind of image: nothing is read";
    EXPECT_EQ(scene.textures[5].glName, 0u) << "and the empty name is part of every other";
}

TEST_F(AttributeFileTest, AddsLightsWithTheirParametersInOrder) {
    NeedContext();
    Apply(
        "GLOBALS {\n*LIGHT 0.1 0.2 0.3 0.4, 0.5 0.6 0.7 0.8; 0.9 1 0.25 0.75\n"
        "10 20 30 1  0 1 0  2 45  3 4 5\n*LIGHT 0.5 }");
    ASSERT_EQ(scene.lightCount, 2);
    EXPECT_EQ(scene.lights[1].ambient[0], 0.5f);
    EXPECT_EQ(scene.lights[1].diffuse[0], 0.0f) << "no number left for it";
    const std::pair<GLenum, Values> parameters[] = {{GL_AMBIENT, {0.1f, 0.2f, 0.3f, 0.4f}},
                                                    {GL_DIFFUSE, {0.5f, 0.6f, 0.7f, 0.8f}},
                                                    {GL_SPECULAR, {0.9f, 1.0f, 0.25f, 0.75f}},
                                                    {GL_POSITION, {10, 20, 30, 1}},
                                                    {GL_SPOT_DIRECTION, {0, 1, 0}},
                                                    {GL_SPOT_EXPONENT, {2}},
                                                    {GL_SPOT_CUTOFF, {45}},
                                                    {GL_CONSTANT_ATTENUATION, {3}},
                                                    {GL_LINEAR_ATTENUATION, {4}},
                                                    {GL_QUADRATIC_ATTENUATION, {5}}};
    for (const auto& [parameter, wanted] : parameters) {
        Values value(4);
        glGetLightfv(static_cast<GLenum>(scene.lights[0].glLight), parameter, value.data());
        value.resize(wanted.size());
        EXPECT_EQ(value, wanted) << std::hex << parameter;
    }
}

}  // namespace
