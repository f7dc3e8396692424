#include <cmath>

#include "loading/loading_test.h"
#include "platform/files.h"
#include "scene_writer/attribute_text.h"
#include "scene_writer/shapes.h"

namespace {

using SceneFileTest = LoadingTest;

/// A square of two triangles in the plane z = 0, from (0, 0) to (2, 2).
SceneObject Square(const std::string& name, float tiles = 0.0f) {
    return MakeGrid(name, {0, 0, 0}, {2, 0, 0}, {0, 2, 0}, 1, 1, tiles);
}

TEST_F(SceneFileTest, EveryFieldComesToItsPlace) {
    SceneObject object = Square("Floor");
    Paint(object, {0.25f, 0.5f, 0.75f});
    AddMarkers(object, {1, 1, 0});
    object.keyTracks = {{}, {{{1, 2, 3}, {4, 5, 6}, 7, {8, 9, 10}}, {{11, 0, 0}, {0, 0, 1}, 0.5f, {}}}};
    EXPECT_TRUE(LoadObjects({object}));

    ASSERT_EQ(Names(), Lines{"Floor"});
    const Object& floor = scene.objects[0];
    ASSERT_EQ(floor.vertexValueCount, 3 * 9);
    EXPECT_EQ(VertexOf(floor, 3), (Values{2, 2, 0}));
    ASSERT_EQ(floor.faceValueCount, 6);
    EXPECT_TRUE(std::equal(&floor.faces[0], &floor.faces[6], std::vector{0, 1, 3, 0, 3, 2}.begin()));
    EXPECT_EQ(floor.colours[3 * 3 + 2], 0.75f);
    EXPECT_EQ(floor.texVertices, nullptr);

    // The spare vertex stands in the file between the centre and the axes.
    EXPECT_EQ((std::vector{floor.spareVertex, floor.centreVertex, floor.xAxisVertex, floor.yAxisVertex,
                           floor.zAxisVertex}),
              (std::vector{4, 5, 6, 7, 8}));
    EXPECT_EQ(floor.radius, std::sqrt(2.0f));
    EXPECT_EQ(floor.normals[2], 1.0f);
    // No triangle names the markers: they keep the normal of a new object, brought to unit length.
    EXPECT_NEAR(floor.normals[3 * 8], 0.57735f, 1e-5f);

    ASSERT_EQ(floor.keyTrackCount, 2);
    EXPECT_EQ(floor.keyTracks[0].keyCount, 0);
    const KeyTrack& track = floor.keyTracks[1];
    ASSERT_EQ(track.keyCount, 2);
    EXPECT_EQ(ValuesOf(track.keyTranslations[0]), (Values{1, 2, 3}));
    EXPECT_EQ(ValuesOf(track.keyAxes[0]), (Values{4, 5, 6}));
    EXPECT_EQ(track.keyAngles[0], 7.0f);
    EXPECT_EQ(ValuesOf(track.keyExtras[0]), (Values{8, 9, 10}));
    EXPECT_EQ(track.keyAngles[1], 0.5f);

    EXPECT_EQ(boxes, Lines{});
    EXPECT_EQ(logged, (Lines{"Nahrává se scéna: level.bin", "Nebyl nalezen soubor s atributy: level.atr",
                             "Nebyl nalezen soubor s atributy: level.atr",
                             "Scéna nahráha: 1 Objektů, 2 Polygonů, 9 Vertexů."}));
}

TEST_F(SceneFileTest, ATexturedObjectGetsOneIndexList) {
    // Two squares back to back share their four vertices, but have texture vertices of their own.
    SceneObject object = Square("Sheet", 1.0f);
    object.faces.insert(object.faces.end(), {{0, 3, 1}, {0, 2, 3}});
    object.texFaces.insert(object.texFaces.end(), {{4, 7, 5}, {4, 6, 7}});
    object.texVertices.resize(8, {0.5f, 0.5f, 0.25f});
    AddMarkers(object, {1, 1, 5});
    EXPECT_TRUE(LoadObjects({object}));

    const Object& sheet = scene.objects[0];
    ASSERT_EQ(sheet.texVertexValueCount, 3 * 9);
    ASSERT_EQ(sheet.vertexValueCount, 3 * (9 + 4));
    EXPECT_EQ(sheet.texFaces, nullptr);
    EXPECT_TRUE(std::equal(&sheet.faces[6], &sheet.faces[12], std::vector{4, 7, 5, 4, 6, 7}.begin()));
    EXPECT_EQ(VertexOf(sheet, 7), (Values{2, 2, 0}));
    EXPECT_EQ(sheet.texVertices[3 * 7 + 2], 0.25f);
    EXPECT_EQ(VertexOf(sheet, sheet.centreVertex), (Values{1, 1, 5}));
    EXPECT_EQ(VertexOf(sheet, sheet.zAxisVertex), (Values{1, 1, 6}));
    EXPECT_EQ(VertexOf(sheet, sheet.spareVertex), (Values{1, 1, 5}));
    EXPECT_EQ(sheet.radius, std::sqrt(1.0f + 1.0f + 25.0f));
    EXPECT_EQ(logged.back(), "Scéna nahráha: 1 Objektů, 4 Polygonů, 13 Vertexů.");
}

TEST_F(SceneFileTest, AMissingFileIsToldAndChangesNothing) {
    std::filesystem::create_directory("folder.bin");
    for (const std::string path : {"data\\level.bin", "folder.bin"}) {
        EXPECT_FALSE(Load(path));
        EXPECT_EQ(logged, Lines{"Tento soubor chybí: " + path});
        EXPECT_EQ(boxes, Lines{"[:-(] Tento soubor chybí: " + path});
        EXPECT_EQ(scene.objectCount, 0);
    }
}

TEST_F(SceneFileTest, ASecondFileJoinsTheFirst) {
    WriteBytes("level.atr",
               AttributeBlock("Box", {"*INVISIBLE"}) + AttributeBlock("Box1", {"*NOCOLLIDER"}));
    EXPECT_TRUE(LoadObjects({Square("Box"), Square("Ball")}));
    EXPECT_TRUE(LoadObjects({Square("Box"), Square("Box"), Square("NoName"), Square("")}));
    EXPECT_EQ(Names(), (Lines{"Box", "Ball", "Box1", "Box2", "NoName1", ""}));
    EXPECT_EQ(scene.objects[0].attributes[invisibleAttribute], 1);
    EXPECT_EQ(scene.objects[2].attributes[invisibleAttribute], -1);
    EXPECT_EQ(scene.objects[2].attributes[collidableAttribute], 0);
    EXPECT_EQ(logged.back(), "Scéna nahráha: 4 Objektů, 8 Polygonů, 16 Vertexů.");
}

TEST_F(SceneFileTest, AnObjectRefersToWhatHasBeenReadBeforeIt) {
    WriteBytes("level.atr", AttributeBlock("Hero", {"*PLAYEROBJECT 0"}) +
                                AttributeBlock("Start", {"*PLAYERSPAWNPOINT 0"}));
    scene.AddPlayers(1);
    EXPECT_TRUE(LoadObjects({Square("Start"), Square("Hero")}));
    EXPECT_EQ(boxes, Lines{"[:-(] *PLAYERSPAWNPOINT: Ještě neexistuje PlayerObject"});
    EXPECT_EQ(scene.players[0].playerObject, 1);
}

TEST_F(SceneFileTest, TheAttributeFileIsNamedAfterTheBinaryOne) {
    const std::pair<const char*, const char*> cases[] = {
        {"data\\level.bin", "data\\level.atr"},
        {"bin\\level.bin", "atr"},
        {"cabin.bin", "caatr"},
        {"scene.msh", "scene.atr"},
        {"data.v2\\scene", "data.v2\\scene.atr"},
    };
    for (const auto& [path, attributes] : cases) {
        WriteBytes(ResolveFileName(path), SceneFileBytes({}));
        EXPECT_TRUE(Load(path));
        EXPECT_EQ(LoggedWith("Nebyl nalezen"),
                  Lines{std::string("Nebyl nalezen soubor s atributy: ") + attributes});
    }
}

TEST_F(SceneFileTest, ANameWithoutTerminatorIsCut) {
    std::string bytes = SceneFileBytes({Square("x"), Square("Next")});
    bytes.replace(4, 50, std::string(50, 'n'));
    EXPECT_TRUE(LoadBytes(bytes));
    EXPECT_EQ(Names(), (Lines{std::string(49, 'n'), "Next"}));
}

}  // namespace
