#include "scene/scene.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

std::string UniqueName(const Scene& scene, const std::string& name) {
    std::string result;
    scene.MakeUniqueObjectName(name, result);
    return result;
}

void AddNamedObjects(Scene& scene, const std::vector<std::string>& names) {
    const std::int32_t first = scene.objectCount;
    scene.AddObjects(static_cast<std::int32_t>(names.size()));
    for (std::size_t i = 0; i < names.size(); i++) {
        scene.objects[first + static_cast<std::int32_t>(i)].name = names[i];
    }
}

std::vector<std::int32_t> Ids(const IdList& list) {
    return std::vector<std::int32_t>(list.ids.get(), list.ids.get() + list.capacity);
}

TEST(Scene, RecordsKeepTheirContentsAndIndicesWhenArraysGrow) {
    Scene scene;
    scene.AddObjects(0);
    scene.AddPlayers(-3);
    EXPECT_EQ(scene.objects, nullptr);
    EXPECT_EQ(scene.playerCount, 0);
    for (int i = 0; i < 100; i++) {
        AddNamedObjects(scene, {std::to_string(i)});
        scene.objects[i].ResizeKeyTracks(1);
        scene.objects[i].keyTracks[0].keyAngles[99] = static_cast<float>(i);
        scene.AddGroups(1);
        scene.groups[i].Add(i);
        scene.AddTextures(1);
        scene.textures[i].name = std::to_string(i);
        scene.AddLights(1);
        scene.lights[i].spotCutoff = static_cast<float>(i);
        scene.AddPlayers(1);
        scene.players[i].headLimit = static_cast<float>(i);
        EXPECT_EQ(scene.groupCount, i + 1);
    }
    for (int i = 0; i < 100; i++) {
        EXPECT_EQ(scene.objects[i].name, std::to_string(i));
        EXPECT_EQ(scene.objects[i].keyTracks[0].keyAngles[99], static_cast<float>(i));
        EXPECT_EQ(scene.groups[i].ids[0], i);
        EXPECT_EQ(scene.groups[i].ids[1], -1);
        EXPECT_EQ(scene.textures[i].name, std::to_string(i));
        EXPECT_EQ(scene.lights[i].spotCutoff, static_cast<float>(i));
        EXPECT_EQ(scene.players[i].headLimit, static_cast<float>(i));
    }
}

TEST(Scene, FindsTheFirstObjectOfExactlyTheName) {
    Scene scene;
    EXPECT_EQ(scene.FindObject("Box"), -1);
    AddNamedObjects(scene, {"box", "Box1", "Box", "Box"});
    EXPECT_EQ(scene.FindObject("Box"), 2);
    EXPECT_EQ(scene.pGetObject("Box1"), &scene.objects[1]);
    testing::internal::CaptureStderr();
    EXPECT_EQ(scene.pGetObject("Bo"), nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "[:-(] Objekt hledaný funkcí pGetObject nebyl nalezen.\n");
}

TEST(Scene, UniqueNamesTakeTheFirstFreeNumber) {
    Scene scene;
    AddNamedObjects(scene, {"Box1", "Box", "Ball", "NoName"});
    EXPECT_EQ(UniqueName(scene, "Box"), "Box2");
    EXPECT_EQ(UniqueName(scene, "Ball"), "Ball1");
    EXPECT_EQ(UniqueName(scene, "Hero"), "Hero");
    EXPECT_EQ(UniqueName(scene, "NoName"), "NoName1");
}

TEST(Scene, ATextureIsFoundByItsNameInsideTheName) {
    Scene scene;
    EXPECT_EQ(scene.FindTexture("a.tga"), -1);
    scene.AddTextures(2);
    scene.textures[0].name = "a.tga";
    EXPECT_EQ(scene.FindTexture("data\\aa.tga"), 0);
    EXPECT_EQ(scene.FindTexture("b.tga"), 1);  // an empty name is part of any
}

TEST(IdList, TakesIdsUntilItIsFull) {
    IdList list;
    for (int id = 0; id < 50; id++) {
        EXPECT_TRUE(list.Add(id));
    }
    EXPECT_FALSE(list.Add(50));
    EXPECT_EQ(list.ids[49], 49);
}

TEST(IdList, CopiesBehindWhatTheDestinationHolds) {
    IdList source(3);
    source.Add(1);
    source.Add(2);
    IdList destination(5);
    for (const int id : {7, 8, 9, 10}) {
        destination.Add(id);
    }
    source.CopyTo(destination);  // shrinks to 3 slots, which are full then
    EXPECT_EQ(Ids(destination), (std::vector<std::int32_t>{7, 8, 9}));
    IdList fresh;
    source.CopyTo(fresh);
    EXPECT_EQ(Ids(fresh), (std::vector<std::int32_t>{1, 2, -1}));
    fresh.Resize(4);
    EXPECT_EQ(Ids(fresh), (std::vector<std::int32_t>{1, 2, -1, -1}));
}

}  // namespace
