#include <functional>

#include "loading/scene_file_support.h"

namespace {

// Places in a record.
constexpr std::size_t vertexCountField = 50;
constexpr std::size_t triangleCountField = 54;
constexpr std::size_t texVertexCountField = 78;
constexpr std::size_t texTriangleCountField = 82;
constexpr std::size_t keyTrackCountField = 86;
constexpr std::size_t firstKeyTrack =
    90 + 12 * 11;  // behind 3 + 1 + 3 + 1 + 3 triples, in a record of one triangle

void Overwrite(std::string& bytes, std::size_t offset, std::int32_t value) {
    std::string field;
    AppendInt32(field, value);
    bytes.replace(offset, 4, field);
}

/// One triangle with texture coordinates and a track of two keys.
SceneObject Triangle(const std::string& name) {
    SceneObject object;
    object.name = name;
    object.vertices = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};
    object.faces = {{0, 1, 2}};
    object.texVertices = object.vertices;
    object.texFaces = object.faces;
    object.keyTracks = {SceneKeyTrack(2)};
    return object;
}

/// Two of them, both with attributes.
struct DamagedSceneTest : SceneFileTest {
    const std::size_t second = SceneFileBytes({Triangle("First")}).size();
    const std::string whole = SceneFileBytes({Triangle("First"), Triangle("Second")});

    DamagedSceneTest() {
        WriteBytes("level.atr", AttributeBlock("First", {"*INVISIBLE"}) +
                                    AttributeBlock("Second", {"*INVISIBLE"}) +
                                    AttributeBlock("GLOBALS", {"*TEXTURE sky"}));
    }

    /// The load is told to have failed at this place, once in the log and once in a box, and what stands
    /// behind the objects is read all the same.
    void ExpectDamage(const std::string& where) {
        const Lines lines = LoggedWith("level.bin: ");
        ASSERT_EQ(lines.size(), 1u) << where;
        EXPECT_NE(lines[0].find(where), std::string::npos) << lines[0];
        EXPECT_EQ(boxes, Lines{"[:-(] " + lines[0]});
        EXPECT_EQ(LoggedWith(": sky").size(), 1u);
    }
};

TEST_F(DamagedSceneTest, ACountThatTheFileCannotHoldEndsTheLoad) {
    const struct {
        std::size_t offset;  ///< in the second record
        std::int32_t count;
        const char* what;
    } cases[] = {
        {vertexCountField, -1, "vertex count -1"},
        {vertexCountField, 0x7FFFFFFF, "vertex count 2147483647"},
        {triangleCountField, -2147483647 - 1, "triangle count -2147483648"},
        {triangleCountField, 1000, "triangle count 1000"},
        {texVertexCountField, -3, "texture vertex count -3"},
        {texVertexCountField, 0x15555556, "texture vertex count 357913942"},
        {texTriangleCountField, 0x7FFFFFFF, "texture triangle count 2147483647"},
        {keyTrackCountField, -1, "key track count -1"},
        {keyTrackCountField, 0x40000001, "key track count 1073741825"},
        {keyTrackCountField, 3, "key track 1"},
        {firstKeyTrack, -1, "key count -1"},
        {firstKeyTrack, 3, "key count 3"},
        {firstKeyTrack, 0x7FFFFFFF, "key count 2147483647"},
    };
    for (const auto& damage : cases) {
        scene = Scene();
        scene.SetLog(&log);
        std::string bytes = whole;
        Overwrite(bytes, second + damage.offset, damage.count);
        EXPECT_FALSE(LoadBytes(bytes));
        ExpectDamage(damage.what);
        EXPECT_NE(boxes[0].find("object 1 \"Second\""), std::string::npos) << boxes[0];

        ASSERT_EQ(Names(), (Lines{"First", "NoName"}));
        EXPECT_EQ(scene.objects[0].keyTracks[0].keyCount, 2);
        EXPECT_EQ(scene.objects[0].attributes[invisibleAttribute], 1);
        EXPECT_EQ(scene.objects[1].attributes[invisibleAttribute], -1);
        EXPECT_EQ(scene.objects[1].keyTracks, nullptr);
        ExpectDefaultMesh(scene.objects[1]);
        EXPECT_EQ(logged.back(), "Scéna nahráha: 1 Objektů, 1 Polygonů, 3 Vertexů.");
    }
    // The offset is that of the count itself.
    std::string bytes = whole;
    Overwrite(bytes, second + vertexCountField, -1);
    LoadBytes(bytes);
    ExpectDamage("at byte " + std::to_string(second + 50));
}

TEST_F(DamagedSceneTest, AnObjectCountThatTheFileCannotHoldMakesNoObjects) {
    for (const std::int32_t count : {-1, 0x7FFFFFFF, 7}) {
        std::string bytes = whole;
        Overwrite(bytes, 0, count);
        EXPECT_FALSE(LoadBytes(bytes));
        ExpectDamage("object count " + std::to_string(count));
        EXPECT_EQ(scene.objectCount, 0);
    }
    EXPECT_EQ(logged.back(), "Scéna nahráha: 0 Objektů, 0 Polygonů, 0 Vertexů.");
}

TEST_F(DamagedSceneTest, AFileCutAnywhereKeepsWhatIsWhole) {
    for (std::size_t size = 0; size < whole.size(); size += 23) {
        scene = Scene();
        scene.SetLog(&log);
        EXPECT_FALSE(LoadBytes(whole.substr(0, size)));
        ExpectDamage("at byte ");
        const bool firstIsWhole = size >= second;
        const bool hasFirst = firstIsWhole && scene.objectCount == 2 && scene.objects[0].name == "First";
        // Two heads have to fit before any object is made.
        EXPECT_EQ(hasFirst, firstIsWhole) << size;
        for (std::int32_t id = hasFirst ? 1 : 0; id < scene.objectCount; id++) {
            EXPECT_EQ(scene.objects[id].name, "NoName");
            ExpectDefaultMesh(scene.objects[id]);
        }
    }
}

TEST_F(DamagedSceneTest, AMeshThatContradictsItselfIsReplaced) {
    const struct {
        const char* what;
        std::function<void(SceneObject&)> damage;
    } cases[] = {
        {"negative corner", [](SceneObject& object) { object.faces[0].b = -1; }},
        {"corner behind the vertices", [](SceneObject& object) { object.faces[0].c = 3; }},
        {"negative texture corner", [](SceneObject& object) { object.texFaces[0].a = -2147483647 - 1; }},
        {"texture corner behind its list", [](SceneObject& object) { object.texFaces[0].a = 3; }},
        {"no texture vertices", [](SceneObject& object) { object.texVertices.clear(); }},
        {"too few texture faces",
         [](SceneObject& object) {
             object.faces.push_back({0, 1, 2});
         }},
        {"too many texture faces",
         [](SceneObject& object) {
             object.texFaces.push_back({0, 1, 2});
         }},
        {"corner behind the spare entries",
         [](SceneObject& object) {
             object.vertices.resize(8);
             object.faces[0].a = 7;
         }},
    };
    for (const auto& broken : cases) {
        scene = Scene();
        scene.SetLog(&log);
        SceneObject object = Triangle("First");
        broken.damage(object);
        EXPECT_TRUE(LoadObjects({object, Triangle("Second")})) << broken.what;
        EXPECT_EQ(LoggedWith("level.bin: object \"First\": ").size(), 1u) << broken.what;
        EXPECT_EQ(boxes, Lines{});
        EXPECT_EQ(Names(), (Lines{"First", "Second"}));
        ExpectDefaultMesh(scene.objects[0]);
        EXPECT_EQ(scene.objects[0].attributes[invisibleAttribute], 1);
        EXPECT_EQ(scene.objects[1].vertexValueCount, 3 * 7);
    }
}

TEST_F(DamagedSceneTest, TheLastSpareEntryCanStillBeACorner) {
    SceneObject object = Triangle("First");
    object.vertices.resize(7, {0, 0, 3});
    object.faces[0].a = 6;
    EXPECT_TRUE(LoadObjects({object}));
    EXPECT_EQ(LoggedWith("object \"First\""), Lines{});
    ExpectVector(Vertex(0, 0), 0, 0, 3);
}

TEST_F(DamagedSceneTest, ATriangleWithoutTextureFacesFindsATextureVertexForEachCorner) {
    SceneObject object = Triangle("First");
    object.texFaces.clear();
    object.texVertices = {{0.5f, 0.5f, 0.5f}};
    EXPECT_TRUE(LoadObjects({object}));
    EXPECT_EQ(LoggedWith("level.bin: ").size(), 1u);
    EXPECT_EQ(scene.objects[0].texVertexValueCount, 3);
    EXPECT_EQ(scene.objects[0].texVertices[0], 0.5f);
    EXPECT_EQ(scene.objects[0].texVertices[8], 0.0f);
}

/// A track takes a thousand times as much memory as the 4 bytes that an empty one takes in the file.
TEST_F(DamagedSceneTest, MoreKeyTracksThanAnyObjectHasEndTheLoad) {
    SceneObject object = Triangle("First");
    object.keyTracks.assign(1001, {});
    EXPECT_FALSE(LoadObjects({object}));
    ExpectDamage("key track count 1001");
    object.keyTracks.resize(1000);
    EXPECT_TRUE(LoadObjects({object}));
}

TEST_F(DamagedSceneTest, MarkersWithoutAVertexBecomeZero) {
    SceneObject object = Triangle("First");
    object.centreVertex = 7;  // three texture vertices and four spare entries: 6 is the last
    object.spareVertex = -1;
    object.xAxisVertex = 6;
    EXPECT_TRUE(LoadObjects({object}));
    EXPECT_EQ(LoggedWith("object \"First\""),
              Lines{"level.bin: object \"First\": no vertices for these markers: centre 7, spare -1"});
    EXPECT_EQ(scene.objects[0].centreVertex, 0);
    EXPECT_EQ(scene.objects[0].spareVertex, 0);
    EXPECT_EQ(scene.objects[0].xAxisVertex, 6);
    EXPECT_EQ(scene.objects[0].vertexValueCount, 3 * 7);
}

TEST_F(DamagedSceneTest, AnObjectWithoutVerticesIsLegal) {
    SceneObject object;
    object.name = "First";
    EXPECT_TRUE(LoadObjects({object, Triangle("Second")}));
    EXPECT_EQ(LoggedWith("object \"First\""), Lines{});
    EXPECT_EQ(scene.objects[0].vertexValueCount, 0);
    EXPECT_EQ(scene.objects[0].faceValueCount, 0);
    EXPECT_EQ(scene.objects[0].radius, 0.0f);
    EXPECT_EQ(scene.objects[1].name, "Second");
}

}  // namespace
