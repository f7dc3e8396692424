#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <regex>
#include <string>
#include <vector>

#include "scene/scene.h"
#include "scene_writer/image_file.h"
#include "simulation/player_control.h"
#include "support/command.h"
#include "support/temporary_folder.h"

// Imports models as a user does, and has the engine read what comes out.

namespace {

/// A corner of a triangle: position, colour, texture coordinates.
using Corner = std::array<float, 8>;
using Triangle = std::array<Corner, 3>;

CommandResult RunImport(const std::string& arguments, const std::string& variable = "") {
    return RunCommand(variable + " ASAN_OPTIONS=exitcode=99 " IMPORT_SCENE_PROGRAM " " + arguments +
                      " 2>&1");
}

/// The scene that the importer makes, as the engine reads it.
struct ImportedScene {
    TemporaryFolder folder;
    std::string output;
    Scene scene;

    void Import(const std::string& model, const std::string& options = "") {
        const CommandResult result = RunImport(model + " data/world " + options);
        output = result.output;
        ASSERT_EQ(result.exitCode, 0) << output;
        scene.AddPlayers(2);
        ASSERT_TRUE(scene.LoadMesh("data\\world.bin"));
    }
    const Object& Get(const std::string& name) {
        const int id = scene.FindObject(name);
        EXPECT_NE(id, -1) << "no object " << name;
        return scene.objects[std::max(id, 0)];
    }
};

Vector VertexOf(const Object& object, int vertex) {
    Vector place;
    object.GetVertex(place, vertex);
    return place;
}

std::vector<Triangle> TrianglesOf(const Object& object) {
    std::vector<Triangle> triangles(object.faceValueCount / 3);
    for (int i = 0; i < object.faceValueCount; i++) {
        const int vertex = object.faces[i];
        Corner& corner = triangles[i / 3][i % 3];
        std::copy_n(&object.vertices[3 * vertex], 3, corner.begin());
        std::copy_n(&object.colours[3 * vertex], 3, corner.begin() + 3);
        if (object.texVertices) {
            std::copy_n(&object.texVertices[3 * vertex], 2, corner.begin() + 6);
        }
    }
    return triangles;
}

void WriteCheckers(const std::string& path) {
    engine::Image image(4, 4, 3);
    image.At(0, 0, 0) = 200;  // lower left: reddish
    WriteTga(path, image);
}

}  // namespace

// A hill of quads, each corner with a place, a colour and texture coordinates of its own.
TEST(ImportScene, AnObjKeepsItsGeometry) {
    ImportedScene world;
    constexpr int side = 12;
    std::string text = "mtllib hill.mtl\no Hill\nusemtl Paint\n";
    std::vector<Corner> corners;
    for (int i = 0; i < side * side; i++) {
        const auto x = static_cast<float>(i % side);
        const auto z = static_cast<float>(i / side);
        const float y = std::sin(x) * std::cos(z);
        // The model has y up, and its z points at us.
        const Corner corner{x, -z, y, x / 16, z / 16, 0.25f, x / 8, z / 8};
        corners.push_back(corner);
        const auto number = [](float value) { return " " + std::to_string(value); };
        text += "v" + number(x) + number(y) + number(z) + number(corner[3]) + number(corner[4]) +
                number(corner[5]) + "\nvt" + number(corner[6]) + number(corner[7]) + "\n";
    }
    std::vector<Triangle> expected;
    for (int row = 0; row + 1 < side; row++) {
        for (int column = 0; column + 1 < side; column++) {
            const int a = row * side + column;
            const std::array<int, 4> quad{a, a + side, a + side + 1, a + 1};
            text += "f";
            for (const int corner : quad) {
                text += " " + std::to_string(corner + 1) + "/" + std::to_string(corner + 1);
            }
            text += "\n";
            expected.push_back({corners[quad[0]], corners[quad[1]], corners[quad[2]]});
            expected.push_back({corners[quad[0]], corners[quad[2]], corners[quad[3]]});
        }
    }
    WriteWholeFile("hill.obj", text);
    WriteWholeFile("hill.mtl", "newmtl Paint\nKd 0 0 0\nmap_Kd CHECKERS.TGA\n");
    WriteCheckers("checkers.tga");
    world.Import("hill.obj", "--crease 180");

    const std::vector<Triangle> actual = TrianglesOf(world.Get("Hill"));
    ASSERT_EQ(actual.size(), expected.size());
    // A quad may be cut along either diagonal and begin at any corner, so its four corners are compared.
    for (std::size_t quad = 0; quad < actual.size(); quad += 2) {
        for (const Triangle& triangle : {actual[quad], actual[quad + 1]}) {
            for (const Corner& corner : triangle) {
                const auto isNear = [&](const Corner& other) {
                    return std::equal(corner.begin(), corner.end(), other.begin(),
                                      [](float x, float y) { return std::fabs(x - y) < 2e-6f; });
                };
                EXPECT_TRUE(std::any_of(expected[quad].begin(), expected[quad].end(), isNear) ||
                            isNear(expected[quad + 1][2]))
                    << "corner of quad " << quad / 2;
            }
        }
    }
    EXPECT_EQ(world.Get("Hill").vertexValueCount / 3, side * side + 1 + 4)
        << "shared vertices and the markers";
    // The picture keeps its lower left corner.
    const std::string texture =
        ReadWholeFile("data/worldchecker.tga") + ReadWholeFile("data/worldcheckers.tga");
    ASSERT_EQ(texture.size(), 18u + 4 * 4 * 3);
    EXPECT_EQ(static_cast<unsigned char>(texture[18 + 2]), 200);
}

TEST(ImportScene, HardEdgesStayHardAndMirroredFacesTurnOutward) {
    ImportedScene world;
    // A cube without normals, and a node that shows it in a mirror.
    std::string vertices;
    for (int i = 0; i < 8; i++) {
        vertices +=
            std::to_string(i & 1) + " " + std::to_string(i >> 1 & 1) + " " + std::to_string(i >> 2) + " ";
    }
    WriteWholeFile(
        "cube.dae",
        R"(<COLLADA xmlns="http://www.collada.org/2005/11/COLLADASchema" version="1.4.1"><asset><up_axis>Z_UP</up_axis>
</asset><library_geometries><geometry id="g"><mesh><source id="p"><float_array id="a" count="24">)" +
            vertices +
            R"(</float_array><technique_common><accessor source="#a" count="8" stride="3"><param name="X" type="float"/>
<param name="Y" type="float"/><param name="Z" type="float"/></accessor></technique_common></source><vertices id="v">
<input semantic="POSITION" source="#p"/></vertices><polylist count="6"><input semantic="VERTEX" source="#v" offset="0"/>
<vcount>4 4 4 4 4 4</vcount><p>0 2 3 1 4 5 7 6 0 1 5 4 2 6 7 3 0 4 6 2 1 3 7 5</p></polylist></mesh></geometry>
</library_geometries><library_visual_scenes><visual_scene id="s"><node id="Plain"><instance_geometry url="#g"/></node>
<node id="Mirror"><matrix>-1 0 0 5 0 1 0 0 0 0 1 0 0 0 0 1</matrix><instance_geometry url="#g"/></node></visual_scene>
</library_visual_scenes><scene><instance_visual_scene url="#s"/></scene></COLLADA>)");
    world.Import("cube.dae", "--scale 1");
    for (const auto& [name, low] : {std::pair<const char*, float>{"Plain", 0.0f}, {"Mirror", 4.0f}}) {
        const Object& cube = world.Get(name);
        EXPECT_EQ(cube.vertexValueCount / 3, 24 + 5) << "four corners for each side, and five markers";
        for (const Triangle& triangle : TrianglesOf(cube)) {
            const auto at = [&](int corner) {
                return Vector{triangle[corner][0], triangle[corner][1], triangle[corner][2]};
            };
            const Vector normal = (at(1) - at(0)).Cross(at(2) - at(0));
            const Vector outward = at(0) + at(1) + at(2) - Vector{low + 0.5f, 0.5f, 0.5f} * 3.0f;
            EXPECT_GT(normal.Dot(outward), 0.0f) << name;
        }
    }
}

TEST(ImportScene, NamesSurviveTheEnginesReading) {
    ImportedScene world;
    std::string text = "v 0 0 0\nv 9 0 0\nv 0 9 0\n";
    for (const char* name : {"BigBox", "Box", "Box_1", "Box-1", "Stůl_č.1", "GLOBALS", "7", "NoName"}) {
        text += std::string("o ") + name + "\nf 1 2 3\n";
    }
    WriteWholeFile("names.obj", text);
    world.Import("names.obj");
    for (const char* name : {"BigBox", "Box1", "Stulc1", "Object7"}) {
        world.Get(name);
    }
    for (int i = 0; i < world.scene.objectCount; i++) {
        for (int j = 0; j < world.scene.objectCount; j++) {
            const std::string name = world.scene.objects[i].name;
            EXPECT_TRUE(i == j || !std::string(world.scene.objects[j].name).ends_with(name)) << name;
            EXPECT_FALSE(std::string("GLOBALS").ends_with(name)) << name;
        }
    }
    EXPECT_NE(world.output.find("renamed: Box is "), std::string::npos) << world.output;
}

TEST(ImportScene, WhatCantBeReadIsToldAndLeavesNothingBehind) {
    const TemporaryFolder folder;
    const std::string whole = ReadWholeFile(BLENDER_WORLD);
    ASSERT_FALSE(whole.empty());
    WriteWholeFile("empty.glb", "");
    WriteWholeFile("text.glb", "This is no model.\n");
    WriteWholeFile("short.glb", whole.substr(0, whole.size() / 2));
    WriteWholeFile("text.obj", "Neither is this one, although nobody could tell by its first line.\n");
    WriteWholeFile("points.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\np 1 2 3\n");
    WriteWholeFile("indices.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 7\n");
    for (const char* model :
         {"empty.glb", "text.glb", "short.glb", "text.obj", "points.obj", "indices.obj", "none.glb"}) {
        const CommandResult result = RunImport(std::string(model) + " data/world --settings");
        EXPECT_EQ(result.exitCode, 1) << model << result.output;
        EXPECT_NE(result.output.find(std::string(model) + ": error: "), std::string::npos) << result.output;
        EXPECT_FALSE(std::filesystem::exists("data") || std::filesystem::exists("settings.atr")) << model;
    }
    for (const char* arguments :
         {"", "one", "a b c", "a b --scale", "a b --scale x", "a b --high", "a data/my_world",
          "a data/cabin", "a b --texture-size 100", "a b --set PLAYERCOUNT"}) {
        EXPECT_EQ(RunImport(arguments).exitCode, 2) << arguments;
    }
    WriteWholeFile("missing.obj",
                   "mtllib missing.mtl\nusemtl m\nv 0 0 0\nv 9 0 0\nv 0 9 0\nvt 0 0\nf 1/1 2/1 3/1\n");
    WriteWholeFile("missing.mtl", "newmtl m\nmap_Kd C:\\art\\gone.png\n");
    WriteWholeFile("two.raw",
                   "One\n0 0 0 0 9 0 9 0 0\nTwo\n0 0 3 0 9 3 9 0 3\n");  // its nodes come with a null
    EXPECT_EQ(RunImport("two.raw data/two").exitCode, 0);
    std::filesystem::remove_all("data");
    WriteWholeFile("wide.obj", "\xFF\xFE");
    EXPECT_NE(RunImport("wide.obj data/world").output.find("UTF-8"), std::string::npos);
    const CommandResult missing = RunImport("missing.obj data/world");
    EXPECT_EQ(missing.exitCode, 0) << missing.output;
    EXPECT_NE(missing.output.find("missing.obj: warning: image C:\\art\\gone.png"), std::string::npos)
        << missing.output;
}

TEST(ImportScene, AnFbxHasItsUnitAndMaterialsOfFewWordsAColour) {
    ImportedScene world;
    WriteWholeFile("wall.fbx", R"(; FBX 7.4.0 project file
FBXHeaderExtension: {
    FBXVersion: 7400
}
GlobalSettings: {
    Properties70: {
        P: "UpAxis", "int", "Integer", "",2
        P: "UnitScaleFactor", "double", "Number", "",1
    }
}
Objects: {
    Geometry: 1, "Geometry::Wall", "Mesh" {
        Vertices: *9 {
            a: 0,0,0,1000,0,0,0,0,3
        }
        PolygonVertexIndex: *3 {
            a: 0,1,-3
        }
    }
    Model: 2, "Model::Wall", "Mesh" {
        Properties70: {
            P: "DefaultAttributeIndex", "int", "Integer", "",0
            P: "COLIDER", "int", "Integer", "U",1
        }
    }
    Material: 3, "Material::Plain", "" {
    }
}
Connections: {
    C: "OO",1,2
    C: "OO",3,2
    C: "OO",2,0
}
)");
    world.Import("wall.fbx");
    const Corner far = TrianglesOf(world.Get("Wall"))[0][1];
    EXPECT_NEAR(far[0], 55.0f, 1e-3f) << "1000 of its centimetres";
    WriteWholeFile("tiny.fbx", std::regex_replace(ReadWholeFile("wall.fbx"), std::regex("1000,"), "2,"));
    const CommandResult tiny = RunImport("tiny.fbx data/tiny");
    EXPECT_NE(tiny.output.find("--scale"), std::string::npos)
        << "2 centimetres are made larger, and it says so";
    EXPECT_GT(far[3], 0.5f) << "not black";
    EXPECT_EQ(world.output.find("DefaultAttributeIndex"), std::string::npos) << world.output;
    EXPECT_NE(world.output.find("COLIDER"), std::string::npos) << "the author's own";
}

/// A box as an OBJ with y up, from the origin on, its faces outward or inward.
std::string BoxModel(float width, float height, bool inward) {
    std::string text;
    for (int corner = 0; corner < 8; corner++) {
        const auto number = [&](int bit, float size) {
            return " " + std::to_string((corner >> bit & 1) != 0 ? size : 0.0f);
        };
        text += "v" + number(0, width) + number(1, height) + number(2, width) + "\n";
    }
    for (const std::array<int, 4>& face :
         {std::array{1, 3, 4, 2}, std::array{5, 6, 8, 7}, std::array{1, 2, 6, 5}, std::array{3, 7, 8, 4},
          std::array{1, 5, 7, 3}, std::array{2, 4, 8, 6}}) {
        text += "f";
        for (int i = 0; i < 4; i++) {
            text += " " + std::to_string(face[inward ? 3 - i : i]);
        }
        text += "\n";
    }
    return text;
}

TEST(ImportScene, APlayerBeginsInRoomsOnGroundAndInFrontOfThings) {
    const auto start = [](const std::string& model, bool& hasFloor) {
        ImportedScene world;
        WriteWholeFile("model.obj", model);
        world.Import("model.obj");
        hasFloor = world.scene.FindObject("LaidFloor") != -1;
        const Object& body = world.Get("PlayerBody");
        return VertexOf(body, body.centreVertex);
    };
    bool hasFloor = true;
    const std::string shelf =
        "v 20 25 20\nv 20 25 40\nv 40 25 40\nv 40 25 20\nf 12 11 10 9\nv 20 26 20\nv 20 26 40\nv 40 26 "
        "40\nf 13 14 15\n";
    const Vector inRoom = start(BoxModel(60, 30, true) + shelf, hasFloor);
    EXPECT_NEAR(inRoom.x, 30, 1e-3f);
    EXPECT_NEAR(inRoom.y, -30, 1e-3f);
    EXPECT_NEAR(inRoom.z, 5.1f, 0.01f) << "on the room's own floor";
    EXPECT_FALSE(hasFloor);
    const Vector onGround = start(BoxModel(400, 2, false), hasFloor);
    EXPECT_NEAR(onGround.x, 200, 1e-3f);
    EXPECT_NEAR(onGround.z, 7.1f, 0.01f) << "on the ground's upper side";
    EXPECT_FALSE(hasFloor);
    const Vector inFront = start(BoxModel(60, 30, false), hasFloor);
    EXPECT_LT(inFront.y, -60) << "outside of the box";
    EXPECT_TRUE(hasFloor);
}

TEST(ImportScene, MaterialsByBlenderHaveAmountsOfLight) {
    const auto red = [](const std::string& comment) {
        ImportedScene world;
        WriteWholeFile("model.mtl", "newmtl Half\nKd 0.5 0 1\n");
        WriteWholeFile("model.obj", comment +
                                        "\nmtllib model.mtl\nusemtl Half\no Wall\n"
                                        "v 0 0 0\nv 20 0 0\nv 0 20 0\nf 1 2 3\n");
        world.Import("model.obj");
        return TrianglesOf(world.Get("Wall"))[0][0][3];
    };
    EXPECT_NEAR(red("# Blender v3.4.1 OBJ File: 'room.blend'"), 0.735f, 0.001f) << "sRGB of a half";
    EXPECT_EQ(red("# by hand"), 0.5f);
}

/// A triangle that stands 10 metres high, and cameras.
/// @param nodes of the triangle, mesh 0, and of the cameras, all of them camera 0
/// @param numbers of all nodes
void WriteTriangle(const std::string& nodes, const std::string& numbers) {
    WriteWholeFile("model.gltf", R"({"asset": {"version": "2.0"}, "scene": 0, "scenes": [{"nodes": [)" +
                                     numbers + R"(]}], "nodes": [)" + nodes +
                                     R"(],
"cameras": [{"type": "perspective", "perspective": {"yfov": 0.8, "znear": 0.1}}],
"meshes": [{"primitives": [{"attributes": {"POSITION": 0}}]}],
"accessors": [
 {"bufferView": 0, "componentType": 5126, "count": 3, "type": "VEC3", "min": [0, 0, 0], "max": [10, 10, 0]}],
"bufferViews": [{"buffer": 0, "byteOffset": 0, "byteLength": 36}],
"buffers": [{"byteLength": 36, "uri": "data:application/octet-stream;base64,)"
                                     "AAAAAAAAAAAAAAAAAAAgQQAAAAAAAAAAAAAAAAAAIEEAAAAA\"}]}");
}

// Two metres below the foot of the triangle.
TEST(ImportScene, ACameraBelowTheModelStandsOnAFloor) {
    ImportedScene world;
    WriteTriangle(R"({"mesh": 0}, {"camera": 0, "translation": [5, -2, 10]})", "0, 1");
    world.Import("model.gltf");
    const Object& body = world.Get("PlayerBody");
    const float height = VertexOf(body, body.centreVertex).z;
    EXPECT_NEAR(height, -2 * 5.5f - 3, 1e-3f) << "with its eyes where the camera is";
    EXPECT_NEAR(VertexOf(world.Get("LaidFloor"), 0).z, height - 5.1f, 1e-3f);
}

TEST(ImportScene, CamerasShareTheWindowAndKeepASmallModelSmall) {
    const TemporaryFolder folder;
    std::string nodes = R"({"mesh": 0, "scale": [0.05, 0.05, 0.05]})";
    for (const char* player : {"0", "1", "2"}) {
        nodes += R"(, {"camera": 0, "translation": [0, 1, 3], "extras": {"CAMERAOBJECT": )" +
                 std::string(player) + "}}";
    }
    WriteTriangle(nodes, "0, 1, 2, 3");
    const CommandResult result = RunImport("model.gltf data/world --settings");
    EXPECT_EQ(result.output.find("--scale"), std::string::npos) << result.output;
    const std::string settings = ReadWholeFile("settings.atr");
    for (const char* part : {"*PLAYERVIEWPORT 0 0 300 400 300\n", "*PLAYERVIEWPORT 1 400 300 400 300\n",
                             "*PLAYERVIEWPORT 2 0 0 400 300\n"}) {
        EXPECT_NE(settings.find(part), std::string::npos) << settings;
    }
}

// A pyramid of 60 by 60 whose tip is the last corner, 60 up by one axis.
TEST(ImportScene, WhatIsUpIsGuessedByWhatAModelStandsOn) {
    const auto tipHeight = [](const std::string& tip, const std::string& side, const std::string& options) {
        ImportedScene world;
        const std::string corner = side == "z" ? "60 60 0\n" : "60 0 60\n";
        const std::string last = side == "z" ? "0 60 0\n" : "0 0 60\n";
        WriteWholeFile("model.off", "OFF\n5 6 0\n0 0 0\n60 0 0\n" + corner + last + tip +
                                        "\n3 0 1 2\n3 0 2 3\n3 0 1 4\n3 1 2 4\n3 2 3 4\n3 3 0 4\n");
        world.Import("model.off", options);
        float highest = 0.0f;
        for (const Triangle& triangle : TrianglesOf(world.Get("OFFRoot"))) {
            for (const Corner& at : triangle) {
                highest = std::max(highest, at[0] == 30.0f ? at[2] : 0.0f);
            }
        }
        return highest;
    };
    EXPECT_EQ(tipHeight("30 30 60", "z", ""), 60);
    EXPECT_EQ(tipHeight("30 60 30", "y", ""), 60);
    EXPECT_EQ(tipHeight("30 60 30", "y", "--up z"), 30);
}

TEST(ImportScene, ImagesComeFromTheModelsFolderOrOneThatIsNamed) {
    const TemporaryFolder folder;
    std::filesystem::create_directories("house/Textures");
    std::filesystem::create_directories("art");
    WriteCheckers("secret.tga");
    WriteCheckers("house/Textures/Wall.TGA");
    WriteCheckers("art/roof.tga");
    const engine::Image huge(1, 1, 3);
    std::string bytes = engine::TgaBytes(huge);
    bytes[12] = bytes[14] = '\x30';
    bytes[13] = bytes[15] = '\x75';  // 30,000 by 30,000
    WriteWholeFile("house/huge.tga", bytes);
    std::string model = "mtllib house.mtl\nv 0 0 0\nv 9 0 0\nv 0 9 0\nvt 0 0\n";
    std::string materials;
    const std::string absolute = std::filesystem::absolute("secret.tga").string();
    for (const std::string& image : {std::string("wall.png"), std::string("roof"),
                                     std::string("../secret.tga"), absolute, std::string("huge.tga")}) {
        materials.append("newmtl m").append(image).append("\nKd 0 0 0\nmap_Kd ").append(image).append("\n");
        model.append("usemtl m").append(image).append("\nf 1/1 2/1 3/1\n");
    }
    WriteWholeFile("house/house.obj", model);
    WriteWholeFile("house/house.mtl", materials);
    const auto textures = [](const std::string& options) {
        const CommandResult result = RunImport("house/house.obj data/world " + options);
        std::vector<bool> found;
        for (const char* name : {"Wall", "roof", "secret", "huge"}) {
            found.push_back(std::filesystem::exists("data/world" + std::string(name) + ".tga"));
        }
        EXPECT_EQ(result.exitCode, 0) << result.output;
        return found;
    };
    EXPECT_EQ(textures(""), (std::vector<bool>{true, false, false, false}));
    EXPECT_EQ(textures("--images art"), (std::vector<bool>{true, true, false, false}));
}

TEST(ImportScene, WhatWasChangedByHandIsKept) {
    const TemporaryFolder folder;
    const auto import = [](const std::string& model, const std::string& options) {
        WriteWholeFile("model.obj", model + "f 1 2 3\n");
        return RunImport("model.obj data/world " + options).exitCode;
    };
    const std::string first = "v 0 0 0\nv 9 0 0\nv 0 9 0\n";
    const std::string second = "v 0 0 0\nv 8 0 0\nv 0 9 0\n";
    ASSERT_EQ(import(first, "--settings"), 0);
    EXPECT_EQ(import(second, "--settings"), 0);  // all is as it was written
    const std::string scene = ReadWholeFile("data/world.bin");
    WriteWholeFile("settings.atr", "mine");
    EXPECT_EQ(import(first, "--settings"), 1);
    EXPECT_EQ(ReadWholeFile("data/world.bin"), scene);
    EXPECT_EQ(ReadWholeFile("settings.atr"), "mine");
    EXPECT_EQ(import(first, ""), 0);  // leaves the settings alone
    EXPECT_NE(ReadWholeFile("data/world.bin"), scene);
    EXPECT_EQ(import(second, "--settings --force"), 0);
    EXPECT_EQ(ReadWholeFile("data/world.bin"), scene);
    EXPECT_NE(ReadWholeFile("settings.atr"), "mine");
    EXPECT_EQ(import(first, "--settings"), 0);
}

TEST(ImportScene, TransparentTexelsTakeTheColourBesideThem) {
    const TemporaryFolder folder;
    engine::Image leaf(4, 4, 4);  // clear black but for one texel
    std::fill_n(&leaf.At(1, 2, 0), 4, std::uint8_t{200});
    WriteTga("leaf.tga", leaf);
    ASSERT_EQ(RunImport("leaf.tga out.tga").exitCode, 0);
    const std::string out = ReadWholeFile("out.tga");
    constexpr std::size_t header = 18;
    for (std::size_t texel = header; texel < header + 4 * 4 * 4; texel += 4) {
        EXPECT_EQ(out.substr(texel, 3), "\xC8\xC8\xC8");
    }
}

TEST(ImportScene, ABlendFileComesThroughBlender) {
    const TemporaryFolder folder;
    std::filesystem::create_directories("empty");
    WriteWholeFile("cube.blend", "BLENDER");
    const CommandResult without = RunImport("cube.blend data/world --dry-run", "PATH=empty");
    EXPECT_EQ(without.exitCode, 1);
    EXPECT_NE(without.output.find("glTF"), std::string::npos) << without.output;
    if (RunCommand("command -v blender").exitCode != 0) {
        GTEST_SKIP() << "Blender isn't installed";
    }
    RunCommand(
        "timeout 100 blender -b --factory-startup --python-expr \"import bpy, os; "
        "bpy.ops.wm.save_as_mainfile(filepath=os.path.abspath('cube.blend'))\" 2>&1");
    const CommandResult with = RunImport("cube.blend data/world --no-floor --one-sided");
    EXPECT_NE(with.output.find(" 12 triangles"), std::string::npos) << with.output;
}

TEST(ImportScene, AnimationsOfNobodyGetAPlayer) {
    ImportedScene world;
    // A triangle, and 2 metres along x in one second.
    WriteWholeFile("slide.gltf", R"({"asset": {"version": "2.0"}, "scene": 0, "scenes": [{"nodes": [0]}],
"nodes": [{"name": "Slide", "mesh": 0}],
"meshes": [{"primitives": [{"attributes": {"POSITION": 0}}]}],
"animations": [{"channels": [{"sampler": 0, "target": {"node": 0, "path": "translation"}}],
                "samplers": [{"input": 1, "output": 2}]}],
"accessors": [
 {"bufferView": 0, "componentType": 5126, "count": 3, "type": "VEC3", "min": [0, 0, 0], "max": [10, 10, 0]},
 {"bufferView": 1, "componentType": 5126, "count": 2, "type": "SCALAR", "min": [0], "max": [1]},
 {"bufferView": 2, "componentType": 5126, "count": 2, "type": "VEC3"}],
"bufferViews": [{"buffer": 0, "byteOffset": 0, "byteLength": 36}, {"buffer": 0, "byteOffset": 36, "byteLength": 8},
                {"buffer": 0, "byteOffset": 44, "byteLength": 24}],
"buffers": [{"byteLength": 68, "uri": "data:application/octet-stream;base64,)"
                                 "AAAAAAAAAAAAAAAAAAAgQQAAAAAAAAAAAAAAAAAAIEEAAAAA"
                                 "AAAAAAAAgD8AAAAAAAAAAAAAAAAAAABAAAAAAAAAAAA=\"}]}");
    world.Import("slide.gltf", "--animate --settings");
    EXPECT_NE(ReadWholeFile("settings.atr").find("*PLAYERKEYBOARDCONTROLS 1 0 0 0 0 70 0 0 0\n"),
              std::string::npos);
    const Object& slide = world.Get("Slide");
    PlayerControl control;
    world.scene.StepWorld();
    const float before = VertexOf(slide, slide.centreVertex).x;
    for (int frame = 0; frame < 25; frame++) {
        control.MovePlayer(world.scene, moveForward, 1.0f, 1);
        world.scene.StepWorld();
    }
    EXPECT_NEAR(VertexOf(slide, slide.centreVertex).x, before + 5.5f, 0.01f);
}

TEST(ImportScene, MergedSceneryKeepsItsTrianglesInSmallPieces) {
    const auto count = [](const Scene& scene, int& most) {
        int triangles = 0;
        for (int i = 0; i < scene.objectCount; i++) {
            triangles += scene.objects[i].faceValueCount / 3;
            most = std::max(most, scene.objects[i].faceValueCount / 3);
        }
        return triangles;
    };
    ImportedScene plain;
    plain.Import(BLENDER_WORLD);
    ImportedScene merged;
    merged.Import(BLENDER_WORLD, "--merge --piece 100");
    int mostPlain = 0;
    int mostMerged = 0;
    EXPECT_EQ(count(plain.scene, mostPlain), count(merged.scene, mostMerged));
    EXPECT_GT(mostPlain, 2000);
    EXPECT_LE(mostMerged, 100);
    EXPECT_NEAR(VertexOf(merged.Get("Crate001"), merged.Get("Crate001").centreVertex).z, 3.91f * 5.5f,
                1e-3f);
}

// The world that Blender exported: bodies, groups, a track, a player who walks.
TEST(ImportScene, TheWorldFromBlenderIsWalkedThrough) {
    ImportedScene world;
    world.Import(BLENDER_WORLD, "--set \"RESOLUTION 1280 720 32\" --set \"PLAYERCONTROLLER 1 3\"");
    const std::string settings = ReadWholeFile("settings.atr");
    for (const char* part : {"*RESOLUTION 1280 720 32\n", "*PLAYERCONTROLLER 0 1\n",
                             "*PLAYERCONTROLLER 1 3\n", "*PLAYERVIEWPORT 0 0 0 1280 720\n"}) {
        EXPECT_NE(settings.find(part), std::string::npos) << settings;
    }
    Scene& scene = world.scene;
    PlayerControl control;
    scene.StepWorld();
    const Object& hero = world.Get("Hero");
    const Object& crate = world.Get("Crate001");
    const Object& door = world.Get("Door");
    const Vector doorBefore = VertexOf(door, door.xAxisVertex);
    EXPECT_GT(VertexOf(crate, crate.centreVertex).z, 18.0f);
    for (int frame = 0; frame < 50; frame++) {
        control.MovePlayer(scene, moveForward, 1.0f, 1);
        scene.StepWorld();
    }
    // A second is the whole opening: from along x by 100 degrees to the left.
    const Vector open = VertexOf(door, door.xAxisVertex) - VertexOf(door, door.centreVertex);
    EXPECT_NEAR(doorBefore.x - VertexOf(door, door.centreVertex).x, 1.0f, 1e-3f);
    EXPECT_NEAR(open.x, -0.174f, 0.02f);
    EXPECT_NEAR(open.y, 0.985f, 0.02f);
    for (int frame = 0; frame < 400; frame++) {
        control.MovePlayer(scene, moveForward, 1.0f, 0);
        control.MovePlayer(scene, moveForward, 1.0f, 1);
        scene.StepWorld();
    }
    // 10 metres to the south, on its feet, and 400 frames of 0.08 nearer to the house.
    EXPECT_NEAR(VertexOf(hero, hero.centreVertex).z, 5.05f, 0.1f);
    EXPECT_NEAR(VertexOf(hero, hero.centreVertex).y, -55.0f + 400 * 0.08f, 2.0f);
    EXPECT_LT(VertexOf(crate, crate.centreVertex).z, 6.0f);
    const Object& eyes = world.Get("Eyes");
    EXPECT_NEAR(VertexOf(eyes, 0).z - VertexOf(hero, hero.centreVertex).z, 0.55f * 5.5f, 0.01f);
    EXPECT_EQ(scene.lightCount, 4);
    EXPECT_NE(ReadWholeFile("settings.atr").find("*LOADMESH data\\world.bin"), std::string::npos);
}
