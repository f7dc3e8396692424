#include "scene/scene.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Ids = std::vector<std::int32_t>;

Ids IdsOf(const IdList& list) {
    return Ids(list.ids.get(), list.ids.get() + list.capacity);
}

TEST(Scene, RecordsKeepTheirContentsAndIndicesWhenArraysGrow) {
    Scene scene;
    scene.AddObjects(0);
    scene.AddPlayers(-3);
    EXPECT_EQ(scene.objects, nullptr);
    EXPECT_EQ(scene.playerCount, 0);
    for (int i = 0; i < 100; i++) {
        scene.AddObjects(1);
        scene.objects[i].name = std::to_string(i);
        scene.AddGroups(1);
        scene.groups[i].Add(i);
        scene.AddTextures(1);
        scene.textures[i].width = i;
        scene.AddLights(1);
        scene.lights[i].spotCutoff = static_cast<float>(i);
        scene.AddPlayers(1);
        scene.players[i].controller = i;
        scene.AddSprites(1);
        scene.sprites[i].textureIndex = i;
        EXPECT_EQ(Ids({scene.objectCount, scene.groupCount, scene.textureCount, scene.lightCount,
                       scene.playerCount, scene.spriteCount}),
                  Ids(6, i + 1));
    }
    for (int i = 0; i < 100; i++) {
        EXPECT_EQ(scene.objects[i].name, std::to_string(i));
        EXPECT_EQ(Ids({scene.groups[i].ids[0], scene.textures[i].width,
                       static_cast<int>(scene.lights[i].spotCutoff), scene.players[i].controller,
                       scene.sprites[i].textureIndex}),
                  Ids(5, i));
    }
}

TEST(Scene, FindsObjectsByTheirWholeNameAndNumbersRepeatedOnes) {
    Scene scene;
    EXPECT_EQ(scene.FindObject("Box"), -1);
    for (const char* name : {"box", "Box1", "Box", "Box", "Ball", "NoName"}) {
        scene.AddObjects(1);
        scene.objects[scene.objectCount - 1].name = name;
    }
    EXPECT_EQ(scene.FindObject("Box"), 2);
    EXPECT_EQ(scene.pGetObject("Box1"), &scene.objects[1]);
    testing::internal::CaptureStderr();
    EXPECT_EQ(scene.pGetObject("Bo"), nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "[:-(] Objekt hledaný funkcí pGetObject nebyl nalezen.\n");

    const std::pair<const char*, const char*> names[] = {
        {"Box", "Box2"}, {"Ball", "Ball1"}, {"Hero", "Hero"}, {"NoName", "NoName1"}};
    for (const auto& [name, unique] : names) {
        std::string result;
        scene.MakeUniqueObjectName(name, result);
        EXPECT_EQ(result, unique);
    }
}

TEST(Scene, ATextureIsFoundByItsNameInsideTheName) {
    Scene scene;
    EXPECT_EQ(scene.FindTexture("a.tga"), -1);
    scene.AddTextures(2);
    scene.textures[0].name = "a.tga";
    EXPECT_EQ(scene.FindTexture("data\\aa.tga"), 0);
    EXPECT_EQ(scene.FindTexture("b.tga"), 1);  // an empty name is part of any
}

TEST(IdList, TakesFiftyIdsAndCopiesAfterWhatTheDestinationHolds) {
    IdList list;
    for (int id = 0; id < 50; id++) {
        EXPECT_TRUE(list.Add(id));
    }
    EXPECT_FALSE(list.Add(50));
    EXPECT_EQ(list.ids[49], 49);
    IdList source(3);
    source.Add(1);
    source.Add(2);
    source.CopyTo(list);  // shrinks to 3 slots, which are full then
    EXPECT_EQ(IdsOf(list), (Ids{0, 1, 2}));
    IdList fresh;
    source.CopyTo(fresh);
    EXPECT_EQ(IdsOf(fresh), (Ids{1, 2, -1}));
    list.Resize(5);
    source.CopyTo(fresh);
    EXPECT_EQ(IdsOf(list), (Ids{0, 1, 2, -1, -1}));
    EXPECT_EQ(IdsOf(fresh), (Ids{1, 2, 1}));
}

}  // namespace
