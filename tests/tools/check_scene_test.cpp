#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "scene_writer/attribute_text.h"
#include "scene_writer/cut_shapes.h"
#include "scene_writer/image_file.h"
#include "scene_writer/player_parts.h"
#include "scene_writer/shapes.h"
#include "support/command.h"
#include "support/temporary_folder.h"

// Mistakes that authors make, each planted alone into a small world that is clean otherwise, and reported
// by the program itself.

namespace {

/// The files of a world before they are written.
struct Parts {
    std::string settings = engine::SettingsText(
        {"*RESOLUTION 640 480 32", "*FRAMERATELIMIT 50", "*PLAYERCOUNT 1", "*PLAYERCONTROLLER 0 1",
         "*MOUSESENSITIVITY 0.005", "*PLAYERVIEWPORT 0 0 0 640 480", "*NEARCLIPPINGPLANE 0.5",
         "*FARCLIPPINGPLANE 800", "*LOADMESH data\\world.bin"});
    std::string attributes =
        engine::AttributeBlock("GLOBALS", {"*LIGHT 0 0 0 1 1 1 1 1 0 0 0 1 10 10 30 1 0 0 -1 0 40 1 0 0"}) +
        engine::AttributeBlock("Floor", {"*TEXTURE data\\floor.tga"}) +
        engine::AttributeBlock("Crate", {"*TEXTURE data\\crate.rgb", "*COLLIDER", "*PHYSICS 1 0.5 0.1"});
    std::vector<engine::SceneObject> objects;
    std::string floorImage = TgaBytes(engine::Image(64, 64, 3));

    Parts() {
        engine::SceneObject floor =
            engine::MakeGrid("Floor", {-60, -60, 0}, {120, 0, 0}, {0, 120, 0}, 12, 12, 12);
        AddMarkers(floor, {0, 0, 0});
        engine::SceneObject crate = engine::MakeCutBox("Crate", {8, 8, 0.1f}, {12, 12, 4.1f}, 2, 1);
        AddMarkers(crate, {10, 10, 5.1f});
        engine::SceneObject wedge = engine::MakeWedge("Ramp", {20, -6, 0}, {30, 10, 6}, 4);
        AddMarkers(wedge, {25, 2, 3});
        const engine::SceneParts player = engine::MakePlayer({0, {0, -20, 0}});
        objects = player.objects;
        attributes += player.attributes;
        objects.insert(objects.end(), {floor, crate, wedge});
    }
    engine::SceneObject& Object(const std::string& name) {
        return *std::ranges::find(objects, name, &engine::SceneObject::name);
    }
    void Write() const {
        std::filesystem::remove_all("data");
        WriteWholeFile("settings.atr", settings);
        WriteWholeFile("data/world.atr", attributes);
        WriteWholeFile("data/world.bin", SceneFileBytes(objects));
        WriteWholeFile("data/floor.tga", floorImage);
        WriteSgi("data/crate.rgb", engine::Image(32, 32, 3));
    }
};

CommandResult Check(const std::string& arguments = "") {
    return RunCommand(CHECK_SCENE_PROGRAM " " + arguments + " 2>&1");
}

void ExpectFinding(const Parts& parts, const std::string& expected) {
    parts.Write();
    const CommandResult result = Check("--strict");
    EXPECT_EQ(result.exitCode, 1) << expected;
    EXPECT_NE(result.output.find(expected), std::string::npos) << expected << "\n" << result.output;
}

void Replace(std::string& text, const std::string& before, const std::string& after) {
    const std::size_t place = text.find(before);
    ASSERT_NE(place, std::string::npos) << before;
    text.replace(place, before.size(), after);
}

std::string Repeated(const std::string& text, int times) {
    return times == 0 ? "" : text + Repeated(text, times - 1);
}

void TurnInsideOut(engine::SceneObject& object) {
    for (std::vector<engine::Int3>* faces : {&object.faces, &object.texFaces}) {
        for (engine::Int3& face : *faces) {
            std::swap(face.b, face.c);
        }
    }
}

void AddSecondPlayer(Parts& parts) {
    const engine::SceneParts second = engine::MakePlayer({1, {20, -20, 0}});
    parts.objects.insert(parts.objects.end(), second.objects.begin(), second.objects.end());
    parts.attributes += second.attributes;
    parts.settings = engine::SettingsText(
        {"*RESOLUTION 640 480 32", "*FRAMERATELIMIT 50", "*PLAYERCOUNT 2", "*PLAYERVIEWPORT 0 0 0 320 240",
         "*PLAYERVIEWPORT 1 300 200 320 240", "*LOADMESH data\\world.bin"});
}

struct TextFault {
    std::string before;
    std::string after;  ///< stands in the first place of `before`
    std::string finding;
};

void ExpectFindings(std::string Parts::*text, const std::vector<TextFault>& faults) {
    for (const TextFault& fault : faults) {
        Parts parts;
        Replace(parts.*text, fault.before, fault.after);
        ExpectFinding(parts, fault.finding);
    }
}

struct MeshFault {
    void (*spoil)(Parts& parts);
    std::string finding;
};

}  // namespace

TEST(CheckScene, FindsNothingInACleanWorld) {
    const TemporaryFolder folder;
    Parts().Write();
    const CommandResult result = Check();
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_NE(result.output.find("0 errors, 0 warnings"), std::string::npos) << result.output;
}

TEST(CheckScene, HasAllItsCodesInTheManual) {
    const auto codes = [](const std::string& text, const char* pattern) {
        std::set<std::string> found;
        const std::regex code(pattern);
        for (std::sregex_iterator match(text.begin(), text.end(), code), end; match != end; ++match) {
            found.insert((*match)[1]);
        }
        return found;
    };
    std::string sources;
    for (const auto& entry : std::filesystem::directory_iterator(DOCS_FOLDER "/../tools/check_scene")) {
        sources += ReadWholeFile(entry.path());
    }
    const std::string manual = ReadWholeFile(DOCS_FOLDER "/check_scene.md");
    const std::set<std::string> used = codes(sources, "(?:Error|Cause|Warn)\\(\\s*\"([a-z-]+)\"");
    EXPECT_GT(used.size(), 100u);
    EXPECT_EQ(used, codes(manual.substr(manual.find("## Codes")), "\\| `([a-z-]+)` \\|"));
}

TEST(CheckScene, FindsNothingInAPlayerWhoOnlyPlaysTracks) {
    const TemporaryFolder folder;
    Parts parts;
    AddSecondPlayer(parts);
    Replace(parts.settings, "*PLAYERVIEWPORT 0 0 0 320 240\n*PLAYERVIEWPORT 1 300 200 320 240",
            "*PLAYERVIEWPORT 0 0 0 640 480\n*PLAYERCONTROLLER 1 1\n*MOUSESENSITIVITY 0.005");
    Replace(parts.attributes, "*CAMERAOBJECT 1 0 1", "*CAMERAOBJECT 1 -1 -1");
    Replace(parts.attributes, "*PLAYEROBJECT 1\n    *COLLIDER\n    *PHYSICS 0.55 0 0.5",
            "*PLAYEROBJECT 1 *COLLIDER *PHYSICS 0 0 0");
    parts.Write();
    EXPECT_EQ(Check().exitCode, 0) << Check().output;
}

TEST(CheckScene, FindsMistakesInSettings) {
    const TemporaryFolder folder;
    ExpectFindings(
        &Parts::settings,
        {
            {"*PLAYERCOUNT", "*PLAYERCUONT",
             "settings.atr:3: error: *PLAYERCUONT is no key of the settings; did you mean *PLAYERCOUNT?"},
            {"*FRAMERATELIMIT", "*FrameRateLimit",
             "settings.atr:2: error: *FrameRateLimit isn't read: keys are written in capital"},
            {"*PLAYERCOUNT 1", "", "there is no player, and the window stays blue"},
            {"*RESOLUTION 640 480 32", "*RESOLUTION 640 480",
             "has 2 of its 3 numbers; the colour bits is taken from line 2"},
            {"0.005", ".005",
             "settings.atr:5: error: *MOUSESENSITIVITY: radians per pixel: .005 is read as 5; write 0.005"},
            {"0.005", "0,005", "a comma separates numbers"},
            {"640 480 32", "640 480 33", "the colour bits is 33; sensible values are 16 to 32"},
            {"*MOUSESENSITIVITY 0.005", "", "player 0 plays by mouse, and there is no *MOUSESENSITIVITY"},
            {"*FARCLIPPINGPLANE", "// *SAFE\n*FARCLIPPINGPLANE",
             "settings.atr:8: warning: *SAFE stands in a comment and counts"},
            {"*FARCLIPPINGPLANE", "*SAFETY\n*FARCLIPPINGPLANE", "*SAFETY counts as *SAFE"},
            {"*PLAYERCOUNT 1", "*PLAYERCOUNT 1\n*RESOLUTION 640 480 24",
             "*RESOLUTION stands in line 1, too; this one counts"},
            {"CONTROLLER 0 1", "CONTROLLER 0 7", "player 0 can't be moved: device 7"},
            {"CONTROLLER 0 1", "CONTROLLER 1 1", "*PLAYERCOUNT makes 1,"},
            {"0 0 0 640 480", "0 0 0 640 0", "the height is 0; sensible values are 1 or more"},
            {"0 0 0 640 480", "0 100 0 640 480", "to 740, 480, beyond the window of 640 x 480"},
            {"0 0 0 640 480", "0 0 0 320 480", "is squeezed to 50 % of its width"},
            {"0 0 0 640 480", "0 0 0 24 18", "[viewport-small]"},
            {"*PLAYERVIEWPORT 0 0 0 640 480", "", "player 0 has no *PLAYERVIEWPORT"},
            {"*FARCLIPPINGPLANE 800", "*FARCLIPPINGPLANE 0.2",
             "the far clipping plane, 0.2, has to lie behind the near one"},
            {"data\\world.bin", "data/world.bin", "data/world.bin is read as data: names hold letters"},
            {"data\\world.bin", "data\\wurld.bin", "*LOADMESH: there is no file data/wurld.bin"},
            {"*NEARCLIPPINGPLANE", "}\n*NEARCLIPPINGPLANE",
             "*LOADMESH isn't read: the settings end at the closing brace in line 7"},
            {"world.bin\n}", "world.bin\n", "settings.atr:9: warning: the closing brace is missing"},
            {"*PLAYERCOUNT 1", "*PLAYERCOUNT 2", "player 1 has no camera and sees nothing"},
        });
}

TEST(CheckScene, FindsMistakesInAttributes) {
    const TemporaryFolder folder;
    ExpectFindings(
        &Parts::attributes,
        {
            {"Crate {", "Crat {",
             "data/world.atr:7: error: the block Crat fits no object of data/world.bin: nothing in it is "
             "read; did you mean Crate?"},
            {"Crate {", "Crate\t{", "the block Crate isn't found: only blanks and line ends"},
            {"Crate {", "Crate Crate {", "its name stands twice in front of the brace"},
            {"Crate {", "BigCrate {", "object \"Crate\" is given the block BigCrate"},
            {"Crate {", "Floor { }\nCrate {",
             "the block Floor stands here a second time and isn't read: the one in line 4"},
            {"*PHYSICS 1 0.5 0.1\n}", "*PHYSICS 1 0.5 0.1\n",
             "the block Crate has no closing brace before Eyes0 begins in line 12"},
            {"*TEXTURE data\\floor.tga", "*TEXTURE\tdata\\floor.tga",
             "*TEXTURE isn't read here: a blank has to stand right after it"},
            {"*COLLIDER", "*COLIDER",
             "data/world.atr:9: error: *COLIDER is no key of an object's block; did you mean *COLLIDER?"},
            {"*COLLIDER", "*COLLIDER 2 2 2", "*COLLIDER takes no number"},
            {"*COLLIDER", "*RESOLUTION 1 1 16", "it belongs into the settings"},
            {"*PHYSICS 1 0.5 0.1", "*PHYSICS 1 0.5", "*PHYSICS has 2 of its 3 numbers"},
            {"*PHYSICS 1 0.5 0.1", "*PHYSICS 1 0.5 7", "the friction is 7; sensible values are 0 to 1"},
            {"*PHYSICS 1 0.5 0.1", "*PHYSICS 1e0 0.5 0.1", "the digits of the exponent are read once more"},
            {"floor.tga", "my_floor.tga", "data\\my_floor.tga is read as data\\my: names hold letters"},
            {"floor.tga", "floor.png",
             "gives no image, and every texture that follows is taken for this one"},
            {"floor.tga", "flor.tga",
             "data/world.atr:5: error: *TEXTURE data\\flor.tga: the image can't be found"},
            {"crate.rgb", "crat.rgb", "the image can't be found or is empty; the engine ends there"},
            {"*CAMERAOBJECT 0 0 1", "*CAMERAOBJECT 0 0 70",
             "*CAMERAOBJECT names vertex 70, and object \"Eyes0\" has 7 vertices"},
            {"*CAMERAOBJECT 0 0 1", "*CAMERAOBJECT 0 1 1",
             "the eye and what it looks at, vertices 1 and 1, are the same place"},
            {"*GROUPMEMBER 0\n    *NOCOLLIDER", "*NOCOLLIDER",
             "player 0's camera stays behind when they walk"},
            {"*PHYSICS 0.55 0 0.5", "", "object \"Body0\" needs *PHYSICS"},
            {"*PLAYERSPAWNPOINT 0", "", "player 0 has no *PLAYERSPAWNPOINT: the first frame"},
            {"*INVISIBLE", "*PLAYERSPAWNPOINT 0\n}\nRamp {\n*PLAYERSPAWNPOINT 0",
             "player 0 has several spawn points"},
            {"*GROUPPARENT 0", "*GROUPPARENT 3", "player 0's group has the id 3; it has to be 0"},
            {"data\\crate.rgb", "data\\floor.tgab.rgb",
             "shows data\\floor.tga, because that was loaded before"},
            {"*TEXTURE data\\crate.rgb", "", "object \"Crate\" has texture coordinates and no *TEXTURE"},
            {"*COLLIDER", "*COLLIDER" + Repeated("\n*GROUPMEMBER 0", 49),
             "group 0 has 51 members, and those after the first 50"},
            {"*LIGHT",
             Repeated("*LIGHT 0 0 0 1 1 1 1 1 0 0 0 1 0 0 9 1 0 0 -1 0 180 1 0 0\n", 8) + "*LIGHT",
             "this is light number 9"},
            {"*GROUPPARENT 0", "", "group 0 has 2 members and no parent"},
            {"*COLLIDER", "*COLLIDER\n*GROUPMEMBER 0",
             "object \"Crate\" needs *NOCOLLIDER: as a member of group 0"},
            {"*LIGHT", "#LIGHT", "the world is dim, for it has no light"},
            {"0 0 -1 0 40", "0 0 -1 0 120", "the spot cutoff is 120 degrees"},
            {"0 0 -1 0 40", "0 0 1 0 40", "the spot falls on no vertex"},
            {"*LIGHT 0 0 0 1 1 1 1 1", "*LIGHT 0 0 0 1 0 0 0 1", "the light is black"},
            {"GLOBALS {", "*TEXTURE data\\floor.tga\nGLOBALS {", "*TEXTURE stands outside of all blocks"},
        });
    Parts parts;
    parts.attributes.insert(0, "BigCrate { }\n");
    ExpectFinding(parts, "object \"Crate\" is given the block BigCrate, which ends in its name");
}

TEST(CheckScene, FindsMistakesInMeshesAndImages) {
    const TemporaryFolder folder;
    const MeshFault faults[] = {
        {[](Parts& p) { p.floorImage = TgaBytes(engine::Image(65, 64, 3)); },
         "65 x 64 pixels: its sides must be powers of two"},
        {[](Parts& p) { p.floorImage = TgaBytes(engine::Image(1024, 2, 3)); }, "which is too large: 512"},
        {[](Parts& p) { p.floorImage[2] = 10; }, "the image is run-length encoded: save it uncompressed"},
        {[](Parts& p) { p.floorImage[1] = 1; }, "the image has a palette"},
        {[](Parts& p) { p.floorImage[17] = 0x20; },
         "warning: *TEXTURE data\\floor.tga: the image begins with its top row"},
        {[](Parts& p) { p.floorImage.resize(500); }, "the image can't be read whole"},
        {[](Parts& p) {
             for (engine::Int3& face : p.Object("Ramp").faces) {
                 face = {face.a + 1, face.b + 1, face.c + 1};
             }
         },
         "object \"Ramp\": no triangle names vertex 0, but one names a marker: the indices seem to count "
         "from 1"},
        {[](Parts& p) { p.Object("Ramp").faces[3].b = 500; },
         "object \"Ramp\": a triangle names a vertex that doesn't exist"},
        {[](Parts& p) { p.Object("Ramp").faces[3].b = p.Object("Ramp").faces[3].a; },
         "1 of its 74 triangles have no area; the first is triangle 3"},
        {[](Parts& p) { p.Object("Ramp").faces.push_back(p.Object("Ramp").faces[0]); },
         "1 triangle with the same corners as another; the first is triangle 74"},
        {[](Parts& p) { p.Object("Ramp").vertices[1].y = std::numeric_limits<float>::quiet_NaN(); },
         "object \"Ramp\": vertex 1 is no finite number"},
        {[](Parts& p) { TurnInsideOut(p.Object("Ramp")); }, "object \"Ramp\": its triangles look inwards"},
        {[](Parts& p) { TurnInsideOut(p.Object("Floor")); },
         "finds no hold: object \"Floor\" lies below, but its triangles look down"},
        {[](Parts& p) {
             p.Object("Ramp").vertices.push_back({5000, 0, 0});
         },
         "vertices of no triangle make its radius"},
        {[](Parts& p) {
             Move(p.Object("Ramp"), {50000, 0, 0});
         },
         "it reaches 50030 from the origin"},
        {[](Parts& p) {
             for (engine::Float3& pixel : p.Object("Crate").texVertices) {
                 pixel = pixel * 512.0f;
             }
         },
         "[coordinates-large]"},
        {[](Parts& p) {
             p.Object("Crate").texFaces.clear();
             p.Object("Crate").texVertices.clear();
         },
         "object \"Crate\" has no texture coordinates"},
        {[](Parts& p) { p.Object("Eyes0").vertices[5].x += 2; },
         "marker is 2.23607 away from its centre, and has to be 1"},
        {[](Parts& p) { p.Object("Body0").centreVertex = 90; }, "no vertices for these markers: centre 90"},
        {[](Parts& p) { p.Object("Body0").spareVertex = 0; },
         "its spare vertex, 0, is a corner of a triangle"},
        {[](Parts& p) {
             Move(p.Object("Start0"), {0, 0, -5});
         },
         "player 0 starts at (0, -20, 0.15), inside object \"Floor\""},
        {[](Parts& p) {
             Move(p.Object("Start0"), {0, 0, 60});
         },
         "player 0 starts at (0, -20, 65.15) and falls 60 units"},
        {[](Parts& p) {
             Move(p.Object("Start0"), {900, 0, 0});
         },
         "falls for ever: there is no floor below"},
        {[](Parts& p) { std::swap(p.objects[1], p.objects[2]); },
         "*PLAYERSPAWNPOINT finds no player 0 yet"},
        {[](Parts& p) { p.Object("Body0").keyTracks.clear(); },
         "object \"Eyes0\" has 3 key tracks, and the player's object \"Body0\" only 0"},
        {[](Parts& p) { p.Object("Crate").keyTracks.resize(1); },
         "object \"Crate\" has key tracks that nobody plays"},
        {[](Parts& p) { p.Object("Body0").keyTracks.resize(4); },
         "object \"Body0\" has 4 key tracks, and only three are played"},
        {[](Parts& p) { p.Object("Ramp").name = "Crate"; },
         "several objects \"Crate\": this one is called Crate1"},
        {[](Parts& p) { p.Object("Crate").centreVertex = 0; },
         "marker vertex 0 is taken by a corner of a triangle"},
        {[](Parts& p) { std::swap(p.Object("Eyes0").xAxisVertex, p.Object("Eyes0").yAxisVertex); },
         "left-handed"},
        {AddSecondPlayer, "players 0 and 1 share keys of the keyboard, the first of them with the code 38"},
        {[](Parts& p) {
             Replace(p.attributes, "*PLAYERSPAWNPOINT 0", "");
             Move(p.Object("Body0"), {0, 0, 8});
         },
         "player 0 has no *PLAYERSPAWNPOINT and starts where the object was modelled, at (0, -20, 13.05) "
         "and falls 8"},
        {AddSecondPlayer, "the viewports of players 0 and 1 overlap"},
        {[](Parts& p) { p.Object("Ramp").name = "Rampe\xC3\xA9"; },
         "names with letters beyond ASCII never find their block"},
    };
    for (const MeshFault& fault : faults) {
        Parts parts;
        fault.spoil(parts);
        ExpectFinding(parts, fault.finding);
    }

    Parts().Write();
    const std::string whole = ReadWholeFile("data/world.bin");
    WriteWholeFile("data/world.bin", whole.substr(0, whole.size() - 1));
    EXPECT_NE(
        Check().output.find("is more than the rest of the file holds; this and what follows is left out "
                            "(at byte "),
        std::string::npos);
}

TEST(CheckScene, ListsTheWorldAndHandsItOut) {
    const TemporaryFolder folder;
    Parts parts;
    parts.settings.replace(parts.settings.find(" 1\n"), 3, " 1 \"\n*SAVE\n");
    parts.Write();
    const CommandResult json = Check("--json");
    EXPECT_EQ(json.exitCode, 1);
    EXPECT_EQ(json.output, R"([
  {
    "file": "settings.atr",
    "line": 4,
    "severity": "error",
    "code": "key-misspelt",
    "text": "*SAVE is no key of the settings; did you mean *SAFE?"
  }
]
)");

    Parts().Write();
    const CommandResult list = Check("--list --obj out.obj");
    EXPECT_EQ(list.exitCode, 0);
    const std::string lines[] = {
        "player 0: device mouse, moves Body0, camera Eyes0, eye vertex 0, look vertex 1,",
        "name Floor, triangles 288, vertices 174, texture vertices 170, low (-60, -60, 0), high",
        "line 7, keys (TEXTURE data\\crate.rgb, COLLIDER, PHYSICS 1 0.5 0.1)",
        "name data\\floor.tga, size (64, 64)",
        "group 0: leader Body0, members (Eyes0, Body0)",
        "MOUSESENSITIVITY 0.005",
    };
    for (const std::string& line : lines) {
        EXPECT_NE(list.output.find(line), std::string::npos) << line << "\n" << list.output;
    }
    // The floor comes after the 29 vertices of the body, which has no texture: 24 corners and 5 markers.
    const std::string obj = ReadWholeFile("out.obj");
    const std::size_t floor =
        obj.find("o Floor\nusemtl data_floor.tga\nv -60 -60 0 1 1 1\nv -50 -60 0 1 1 1\n");
    EXPECT_NE(floor, std::string::npos);
    EXPECT_NE(obj.find("\nf 30/1 31/2 44/15\n", floor), std::string::npos);
    EXPECT_NE(ReadWholeFile("out.mtl").find("map_Kd data_floor.tga.png"), std::string::npos);
    EXPECT_EQ(RunCommand("identify -format %wx%h data_floor.tga.png").output, "64x64");

    for (const char* arguments : {"nowhere", "--lst", "--obj nowhere/out.obj", "--obj out.obj . ."}) {
        EXPECT_EQ(Check(arguments).exitCode, 2) << arguments;
    }
    EXPECT_EQ(Check("--help").exitCode, 0);
}

TEST(CheckScene, NamesTheCauseAlone) {
    const std::string png = "\x89PNG\r\n\x1a\n" + std::string(400, '\0');
    const std::string utf16("\xff\xfe*\0P\0L\0A\0Y\0E\0R\0", 16);
    const struct {
        const char* file;
        std::string bytes;  ///< none: the file is taken away
        std::string code;
        const char* advice;
    } cases[] = {
        {"data/world.bin", "", "no-scene", "no file data/world.bin"},
        {"data/world.atr", "", "no-attributes", ""},
        {"data/world.bin", "glTF" + png, "file-foreign", "import_scene data/world.glb data/world"},
        {"data/world.bin", "# made by hand\nv 1 2 3\n", "file-foreign",
         "import_scene data/world.obj data/world"},
        {"data/world.bin", "Crate {\n *COLLIDER\n}\n", "file-foreign", "attribute file"},
        {"data/world.bin", std::string("\2\0\0\0Crate", 9), "scene-damaged", ""},
        {"data/world.bin", "\2", "scene-damaged", "(at byte 0)"},
        {"data/world.atr", utf16, "file-foreign", "iconv -f UTF-16"},
        {"settings.atr", utf16, "file-foreign", "iconv -f UTF-16"},
        {"settings.atr",
         "*PLAYERCOUNT 1 *FRAMERATELIMIT 50\n*LOADMESH data\\world.bin *LOADMESH data\\world.bin\n}\n",
         "scene-twice", ""},
        {"data/floor.tga", png, "image-unusable", "import_scene data/floor.png data/floor.tga"},
        {"data/crate.rgb", "PK\3\4" + png, "image-unusable", "unpack"},
    };
    for (const auto& one : cases) {
        const TemporaryFolder folder;
        Parts().Write();
        WriteWholeFile(one.file, one.bytes);
        if (one.bytes.empty()) {
            std::filesystem::remove(one.file);
        }
        const std::string found = Check("--quiet").output;
        EXPECT_EQ(std::ranges::count(found, '\n'), 1) << found;
        EXPECT_NE(found.find("[" + one.code + "]"), std::string::npos) << one.file << found;
        EXPECT_NE(found.find(one.advice), std::string::npos) << found;
    }
    const TemporaryFolder folder;
    Parts parts;
    parts.attributes.insert(0, "\xEF\xBB\xBF");
    parts.settings.insert(0, "\xEF\xBB\xBF");
    parts.Write();
    EXPECT_EQ(Check("--quiet").output, "") << "a byte order mark does no harm";
    for (const char* wrong : {"data/world.bin", "data/world.atr"}) {
        EXPECT_NE(Check(wrong).output.find("give the folder"), std::string::npos);
    }
    WriteWholeFile("settings.atr", "*PLAYERCOUNT 1 *FRAMERATELIMIT 50\n*LOADMESH data/world.bin\n}\n");
    const std::string slash = Check("--quiet").output;
    EXPECT_LT(slash.find("[name-characters]"), slash.find("[no-scene]")) << slash;
    std::filesystem::rename("settings.atr", "settings.atr.txt");
    EXPECT_NE(Check().output.find("there is settings.atr.txt"), std::string::npos);
}

TEST(CheckScene, SpeaksToProgramsAndTerminals) {
    const TemporaryFolder folder;
    Parts parts;
    parts.Object("Ramp").name = "Rampa\xe9\xc8\x1b";  // as Windows-1250 has it, and a terminal's escape
    parts.Write();
    EXPECT_NE(Check("--list").output.find("name Rampa\xc3\xa9\xc4\x8c?,"), std::string::npos);
    const auto query = [](const std::string& arguments, const std::string& filter) {
        return RunCommand(CHECK_SCENE_PROGRAM " " + arguments + " 2>/dev/null | jq -c '" + filter + "'")
            .output;
    };
    EXPECT_EQ(query("--json . .", "map(.code)"), "[\"object-name-letters\",\"object-name-letters\"]\n");
    EXPECT_EQ(query("--json --list . nowhere", ".worlds[0].objects[3].name"), "\"Floor\"\n");

    Parts().Write();
    EXPECT_EQ(Check("--quiet --strict").output, "");
    Replace(parts.settings, "0 0 0 640 480", "0 0 0 320 480");
    WriteWholeFile("settings.atr", parts.settings);
    EXPECT_EQ(Check().exitCode, 0) << "only a warning";
    EXPECT_EQ(Check("--strict").exitCode, 1);
    EXPECT_NE(Check("--quiet").output.find("320 x 240"), std::string::npos);
    WriteWholeFile("settings.atr", "*FRAMERATELIMT 50\n" + parts.settings);
    EXPECT_EQ(query("--json .", "map(.severity)"), "[\"error\",\"warning\"]\n");
    WriteWholeFile("data/world.bin", "\2");
    EXPECT_EQ(query("--json .", ".[0].byte"), "0\n");
    WriteWholeFile("settings.atr", "*PLAYERS 1\n");
    const auto onTerminal = [](const char* before) {
        return RunCommand(std::string(before) + " script -qec '" CHECK_SCENE_PROGRAM "' /dev/null").output;
    };
    EXPECT_NE(onTerminal("env -u NO_COLOR").find("\033[1;31merror"), std::string::npos);
    EXPECT_EQ(onTerminal("NO_COLOR=1").find('\033'), std::string::npos);
    EXPECT_EQ(Check().output.find('\033'), std::string::npos);
}
