#include <cmath>
#include <functional>

#include "loading/loading_test.h"
#include "platform/files.h"
#include "scene_writer/attribute_text.h"
#include "scene_writer/shapes.h"

namespace {

using SceneFileTest = LoadingTest;

/// A square of two triangles in the plane z = 0, from (0, 0) to (2, 2).
engine::SceneObject Square(const std::string& name, float tiles = 0.0f) {
    return engine::MakeGrid(name, {0, 0, 0}, {2, 0, 0}, {0, 2, 0}, 1, 1, tiles);
}

TEST_F(SceneFileTest, EveryFieldComesToItsPlace) {
    engine::SceneObject object = Square("Floor");
    Paint(object, {0.25f, 0.5f, 0.75f});
    AddMarkers(object, {1, 1, 0});
    object.vertices.resize(11, {1, 1, 0});
    object.colours.resize(11);
    object.keyTracks = {{}, {{{1, 2, 3}, {4, 5, 6}, 7, {8, 9, 10}}, {{11, 0, 0}, {0, 0, 1}, 0.5f, {}}}};
    EXPECT_TRUE(LoadObjects({object}));

    ASSERT_EQ(Names(), Lines{"Floor"});
    const Object& floor = scene.objects[0];
    ASSERT_EQ(floor.vertexValueCount, 3 * 11);
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
    // No triangle names the markers: they keep the normal of a new object, brought to unit length. Only
    // the first ten vertices have one.
    EXPECT_NEAR(floor.normals[3 * 9], 0.57735f, 1e-5f);
    EXPECT_EQ(floor.normals[3 * 10], 0.0f);

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
                             "Scéna nahráha: 1 Objektů, 2 Polygonů, 11 Vertexů."}));
}

TEST_F(SceneFileTest, ASecondFileJoinsTheFirst) {
    engine::WriteBytes("level.atr", engine::AttributeBlock("Box", {"*INVISIBLE"}) +
                                        engine::AttributeBlock("Box1", {"*NOCOLLIDER"}));
    EXPECT_TRUE(LoadObjects({Square("Box"), Square("Ball")}));
    std::string bytes =
        engine::SceneFileBytes({Square("Box"), Square("Box"), Square("NoName"), Square("Last")});
    bytes.replace(4 + 3 * (bytes.size() - 4) / 4, 50,
                  std::string(50, 'n'));  // a name without an end is cut
    EXPECT_TRUE(LoadBytes(bytes));
    EXPECT_EQ(Names(), (Lines{"Box", "Ball", "Box1", "Box2", "NoName1", std::string(49, 'n')}));
    EXPECT_EQ(scene.objects[0].attributes[invisibleAttribute], 1);
    EXPECT_EQ(scene.objects[2].attributes[invisibleAttribute], -1);
    EXPECT_EQ(scene.objects[2].attributes[collidableAttribute], 0);
    EXPECT_EQ(logged.back(), "Scéna nahráha: 4 Objektů, 8 Polygonů, 16 Vertexů.");
}

TEST_F(SceneFileTest, TheAttributeFileIsNamedAfterTheBinaryOneWhichHasToBeThere) {
    const std::pair<const char*, const char*> cases[] = {
        {"data\\level.bin", "data\\level.atr"},
        {"bin\\level.bin", "atr"},
        {"cabin.bin", "caatr"},
        {"scene.msh", "scene.atr"},
        {"data.v2\\scene", "data.v2\\scene.atr"},
    };
    for (const auto& [path, attributes] : cases) {
        engine::WriteBytes(ResolveFileName(path), engine::SceneFileBytes({}));
        EXPECT_TRUE(Load(path));
        EXPECT_EQ(LoggedWith("Nebyl nalezen"),
                  Lines{std::string("Nebyl nalezen soubor s atributy: ") + attributes});
    }
    for (const std::string path : {"data\\missing.bin", "bin"}) {  // no file, and a folder
        EXPECT_FALSE(Load(path));
        EXPECT_EQ(logged, Lines{"Tento soubor chybí: " + path});
        EXPECT_EQ(boxes, Lines{"[:-(] Tento soubor chybí: " + path});
    }
}

void Overwrite(std::string& bytes, std::size_t offset, std::int32_t value) {
    std::string field;
    engine::AppendInt32(field, value);
    bytes.replace(offset, 4, field);
}

/// One triangle with texture coordinates and a track of two keys.
engine::SceneObject Triangle(const std::string& name) {
    engine::SceneObject object;
    object.name = name;
    object.vertices = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    object.faces = {{0, 1, 2}};
    object.texVertices = object.vertices;
    object.texFaces = object.faces;
    object.keyTracks = {engine::SceneKeyTrack(2)};
    return object;
}

/// Whether the object has the mesh of a fresh one: ten vertices at the origin, ten triangles of vertex 0.
void ExpectDefaultMesh(const Object& object) {
    ASSERT_EQ(object.vertexValueCount, 30);
    ASSERT_EQ(object.faceValueCount, 30);
    EXPECT_EQ(object.texVertices, nullptr);
    EXPECT_EQ(object.texFaces, nullptr);
    EXPECT_EQ(object.texVertexValueCount + object.texFaceValueCount, 0);
    EXPECT_EQ(std::count(&object.vertices[0], &object.vertices[30], 0.0f), 30);
    EXPECT_EQ(std::count(&object.colours[0], &object.colours[30], 1.0f), 30);
    EXPECT_EQ(std::count(&object.faces[0], &object.faces[30], 0), 30);
}

/// Two of them, both with attributes.
struct DamagedSceneTest : LoadingTest {
    const std::size_t second = engine::SceneFileBytes({Triangle("First")}).size();
    const std::string whole = engine::SceneFileBytes({Triangle("First"), Triangle("Second")});

    DamagedSceneTest() {
        engine::WriteBytes("level.atr", engine::AttributeBlock("First", {"*INVISIBLE"}) +
                                            engine::AttributeBlock("Second", {"*INVISIBLE"}) +
                                            engine::AttributeBlock("GLOBALS", {"*TEXTURE sky"}));
    }
    void StartAgain() {
        scene = Scene();
        scene.SetLog(&log);
    }
    /// The load is reported to have failed at this place, once in the log and once in a box, and what
    /// stands after the objects is read all the same.
    void ExpectDamage(const std::string& where) {
        const Lines lines = LoggedWith("level.bin: ");
        ASSERT_EQ(lines.size(), 1u) << where;
        EXPECT_NE(lines[0].find(where), std::string::npos) << where << " in " << lines[0];
        EXPECT_EQ(boxes, Lines{"[:-(] " + lines[0]});
        EXPECT_EQ(LoggedWith(": sky").size(), 1u);
    }
};

TEST_F(DamagedSceneTest, ACountThatTheFileCannotHoldEndsTheLoad) {
    constexpr std::size_t firstKeyTrack = 90 + 12 * 11;  // after 3 + 1 + 3 + 1 + 3 triples
    const struct {
        std::size_t offset;  ///< in the second record
        std::int32_t count;
        const char* what;
    } cases[] = {
        {50, -1, "vertex count -1"},
        {50, INT32_MAX, "vertex count 2147483647"},
        {54, 1000, "triangle count 1000"},
        {78, 0x15555556, "texture vertex count 357913942"},
        {82, INT32_MIN, "texture triangle count -2147483648"},
        {86, 0x40000001, "key track count 1073741825"},
        {86, 3, "key track 1"},
        {firstKeyTrack, -1, "key count -1"},
        {firstKeyTrack, 3, "key count 3"},
        {firstKeyTrack, INT32_MAX, "key count 2147483647"},
    };
    for (const auto& [offset, count, what] : cases) {
        StartAgain();
        std::string bytes = whole;
        Overwrite(bytes, second + offset, count);
        EXPECT_FALSE(LoadBytes(bytes));
        ExpectDamage(what);
        ExpectDamage("object 1 \"Second\"");
        if (count != 3) {
            ExpectDamage("at byte " + std::to_string(second + offset));
        }

        ASSERT_EQ(Names(), (Lines{"First", "NoName"}));
        EXPECT_EQ(scene.objects[0].keyTracks[0].keyCount, 2);
        EXPECT_EQ(scene.objects[0].attributes[invisibleAttribute], 1);
        EXPECT_EQ(scene.objects[1].attributes[invisibleAttribute], -1);
        EXPECT_EQ(scene.objects[1].keyTracks, nullptr);
        ExpectDefaultMesh(scene.objects[1]);
        EXPECT_EQ(logged.back(), "Scéna nahráha: 1 Objektů, 1 Polygonů, 3 Vertexů.");
    }
    StartAgain();
    for (const std::int32_t count : {-1, INT32_MAX, 7}) {
        std::string bytes = whole;
        Overwrite(bytes, 0, count);
        EXPECT_FALSE(LoadBytes(bytes));
        ExpectDamage("object count " + std::to_string(count));
        ExpectDamage("at byte 0");
        EXPECT_EQ(scene.objectCount, 0);
    }
    EXPECT_EQ(logged.back(), "Scéna nahráha: 0 Objektů, 0 Polygonů, 0 Vertexů.");

    engine::SceneObject object = Triangle("First");
    object.keyTracks.assign(100000, {});
    EXPECT_TRUE(LoadObjects({object})) << "a file may have any number of key tracks";
    EXPECT_EQ(scene.objects[0].keyTracks[99999].keyCount, 0);
}

TEST_F(DamagedSceneTest, AMeshThatContradictsItselfIsReplaced) {
    const struct {
        const char* what;
        std::function<void(engine::SceneObject&)> damage;
    } cases[] = {
        {"negative corner", [](engine::SceneObject& o) { o.faces[0].b = -1; }},
        {"corner after the vertices", [](engine::SceneObject& o) { o.faces[0].c = 3; }},
        {"negative texture corner", [](engine::SceneObject& o) { o.texFaces[0].a = INT32_MIN; }},
        {"texture corner after its list", [](engine::SceneObject& o) { o.texFaces[0].a = 3; }},
        {"no texture vertices", [](engine::SceneObject& o) { o.texVertices.clear(); }},
        {"too few texture faces", [](engine::SceneObject& o) { o.faces.resize(2); }},
        {"too many texture faces", [](engine::SceneObject& o) { o.texFaces.resize(2); }},
        {"corner after the spare entries",
         [](engine::SceneObject& o) { o.vertices.resize(8), o.faces[0].a = 7; }},
    };
    for (const auto& [what, damage] : cases) {
        SCOPED_TRACE(what);
        StartAgain();
        engine::SceneObject object = Triangle("First");
        damage(object);
        EXPECT_TRUE(LoadObjects({object, Triangle("Second")}));
        EXPECT_EQ(LoggedWith("level.bin: object \"First\": ").size(), 1u);
        EXPECT_EQ(boxes, Lines{});
        EXPECT_EQ(Names(), (Lines{"First", "Second"}));
        ExpectDefaultMesh(scene.objects[0]);
        EXPECT_EQ(scene.objects[0].attributes[invisibleAttribute], 1);
        EXPECT_EQ(scene.objects[0].keyTrackCount, 1);
        EXPECT_EQ(scene.objects[0].keyTracks[0].keyCount, 2);
        EXPECT_EQ(scene.objects[1].vertexValueCount, 3 * 7);
    }
}

TEST_F(DamagedSceneTest, WhatIsOnlyUnusualIsKept) {
    engine::SceneObject empty, spareCorner = Triangle("Spare"), halfTextured = Triangle("Half");
    empty.name = "Empty";
    spareCorner.vertices.resize(7, {0, 0, 3});  // three texture vertices and four spare entries
    spareCorner.faces[0].a = 6;
    halfTextured.texFaces.clear();
    halfTextured.texVertices = {{0.5f, 0.5f, 0.5f}};
    engine::SceneObject marked = Triangle("Marked");
    marked.centreVertex = 7;
    marked.spareVertex = -1;
    marked.xAxisVertex = 6;
    EXPECT_TRUE(LoadObjects({empty, spareCorner, halfTextured, marked}));
    const Lines lines = LoggedWith("level.bin: ");
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_TRUE(lines[0].starts_with("level.bin: object \"Half\": "));
    EXPECT_EQ(lines[1], "level.bin: object \"Marked\": no vertices for these markers: centre 7, spare -1");

    EXPECT_EQ(scene.objects[0].vertexValueCount + scene.objects[0].faceValueCount, 0);
    EXPECT_EQ(scene.objects[0].radius, 0.0f);
    EXPECT_EQ(VertexOf(scene.objects[1], 0), (Values{0, 0, 3}));
    // Each corner finds a texture vertex.
    EXPECT_EQ(scene.objects[2].texVertexValueCount, 9);
    EXPECT_EQ(scene.objects[2].texVertices[0], 0.5f);
    EXPECT_EQ(scene.objects[2].texVertices[8], 0.0f);
    EXPECT_EQ(scene.objects[3].centreVertex, 0);
    EXPECT_EQ(scene.objects[3].spareVertex, 0);
    EXPECT_EQ(scene.objects[3].xAxisVertex, 6);
}

}  // namespace
