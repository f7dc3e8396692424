#include <gtest/gtest.h>

#include "scene_writer/bytes.h"
#include "scene_writer/cut_shapes.h"
#include "scene_writer/player_parts.h"
#include "scene_writer/shapes.h"
#include "support/command.h"
#include "support/temporary_folder.h"

// Bodies that don't stand where they should, and values that can be read but not be meant: each is planted
// alone beside its right neighbour, and reported by the program.

namespace {

using engine::Float3;
using engine::SceneObject;

/// A floor of 120 x 120 about the origin, a player at (0, -20), a sun, and what a test adds.
struct Planted {
    engine::SceneParts world;
    std::vector<engine::SceneLight> lights{{}};
    std::vector<std::string> settings{"*RESOLUTION 640 480 32", "*FRAMERATELIMIT 50",
                                      "*PLAYERCOUNT 1",         "*PLAYERVIEWPORT 0 0 0 640 480",
                                      "*FARCLIPPINGPLANE 500",  "*LOADMESH data\\world.bin"};
    SceneObject floor = engine::MakeGrid("Floor", {-60, -60, 0}, {120, 0, 0}, {0, 120, 0}, 12, 12);
    std::vector<std::string> floorKeys;

    Planted() { world.Add(engine::MakePlayer({0, {0, -20, 0}})); }
    /// A crate of side 4 with its lowest point at this place.
    /// @param centre above that point
    void AddCrate(const std::string& name, Float3 place, float centre, const std::string& keys) {
        SceneObject crate = engine::MakeBox(name, place - Float3{2, 2, 0}, place + Float3{2, 2, 4});
        AddMarkers(crate, place + Float3{0, 0, centre});
        world.attributes += name + " {\n" + keys + "\n}\n";
        world.objects.push_back(crate);
    }
    /// Four walls of 12 around the player's start, 16 x 16 inside, with a door to the north.
    /// @param step height of what lies in the door
    void AddRoom(float doorWidth, float step) {
        SceneObject room = engine::MakeBox("Room", {-10, -30, 0}, {10, -28, 12});
        Append(room, engine::MakeBox("", {-10, -28, 0}, {-8, -12, 12}));
        Append(room, engine::MakeBox("", {8, -28, 0}, {10, -12, 12}));
        Append(room, engine::MakeBox("", {-10, -12, 0}, {-doorWidth / 2, -10, 12}));
        Append(room, engine::MakeBox("", {doorWidth / 2, -12, 0}, {10, -10, 12}));
        Append(room, engine::MakeBox("", {-doorWidth / 2, -12, 0}, {doorWidth / 2, -10, step}));
        world.Add(room, {0, -20, 6}, {});
    }
    /// Over five twelfths of the floor.
    void AddPodium(float height) {
        world.Add(engine::MakeBox("Podium", {-60, 10, 0}, {60, 60, height}), {0, 35, 0}, {});
    }
    SceneObject& Eyes() { return world.objects[0]; }
    SceneObject& Body() { return world.objects[1]; }
    std::string Check() {
        world.Add(floor, {0, 0, 0}, floorKeys);
        std::vector<std::string> lines;
        for (const engine::SceneLight& light : lights) {
            lines.push_back(engine::LightLine(light));
        }
        // The writer itself would refuse some of these.
        engine::WriteBytes("data/world.bin", engine::SceneFileBytes(world.objects));
        engine::WriteBytes("data/world.atr", world.attributes + engine::AttributeBlock("GLOBALS", lines));
        engine::WriteBytes("settings.atr", engine::SettingsText(settings));
        return RunCommand(CHECK_SCENE_PROGRAM " 2>&1").output;
    }
};

/// Multiplies distances from the origin, markers' included.
void Stretch(SceneObject& object, Float3 factors) {
    for (Float3& vertex : object.vertices) {
        vertex = vertex * factors;
    }
}

const std::string body = "*COLLIDER *PHYSICS 1 0.5 0.1";

engine::SceneLight LampAt(Float3 place, float brightness) {
    engine::SceneLight lamp;
    lamp.diffuse = {brightness, brightness, brightness, 1};
    lamp.position = {place.x, place.y, place.z, 1};
    lamp.linearAttenuation = 0.1f;
    return lamp;
}

/// What is planted, and a part of what is reported; empty for right things.
struct Plant {
    void (*plant)(Planted& planted);
    const char* finding;
};

const Plant plants[] = {
    {[](Planted& p) {
         p.AddCrate("Crate", {10, 0, 9}, 5, body);
     },
     ""},
    {[](Planted& p) {
         p.AddCrate("Crate", {10, 0, 9}, 5, "*PHYSICS 1 0.5 0.1");
     },
     "[physics-without-collider]"},
    {[](Planted& p) { p.floorKeys = {"*PHYSICS 1 0.5 0.1"}; }, "[physics-without-collider]"},
    {[](Planted& p) {
         p.AddCrate("Crate", {10, 0, 9}, 5, "*COLLIDER");
     },
     "[collider-without-physics]"},
    {[](Planted& p) {
         p.AddCrate("Crate", {10, 0, 9}, 2, body);
     },
     "\"Crate\" floats by 3"},
    {[](Planted& p) {
         p.AddCrate("Crate", {10, 0, 9}, 8, body);
     },
     "\"Crate\" sinks by 3"},
    {[](Planted& p) {
         p.AddCrate("Crate", {90, 0, 9}, 5, body);
     },
     "[start-above-nothing]"},
    {[](Planted& p) {
         p.AddCrate("Crate", {10, 0, -4}, 5, body);
     },
     "[start-in-solid]"},
    {[](Planted& p) {
         p.AddCrate("Crate", {0.5f, -20, 0.1f}, 5, body);
     },
     "[start-shared]"},
    {[](Planted& p) {
         p.lights = {LampAt({0, 0, 9}, 5)};
     },
     ""},
    {[](Planted& p) {
         p.lights = {LampAt({0, 0, 9}, 255)};
     },
     "[light-bright]"},
    {[](Planted& p) {
         p.lights[0].position = {20, 30, 12, 0};
     },
     "[lamp-as-sun]"},
    {[](Planted& p) {
         p.lights = {LampAt({0, 0, 9}, 5)};
         p.lights[0].linearAttenuation = 0;
     },
     "[light-bright]"},
    {[](Planted& p) {
         p.lights = {LampAt({0, 0, 9}, 1), LampAt({30, 0, 9}, 1)};
     },
     ""},
    {[](Planted& p) {
         p.lights = {LampAt({0, 0, -9}, 1)};
         p.world.Add(engine::MakeBox("Bulb", {-1, -1, -10}, {1, 1, -8}), {0, 0, -9}, {"*NOCOLLIDER"});
     },
     "[lamp-below]"},
    {[](Planted& p) {
         p.lights = {LampAt({0, 0, 900}, 1)};
     },
     "[lamp-far]"},
    {[](Planted& p) {
         p.lights = {LampAt({0, 0, 30}, 1)};
         p.lights[0].linearAttenuation = 20;
         p.world.Add(engine::MakeBox("Bulb", {-1, -1, 29}, {1, 1, 31}), {0, 0, 30}, {"*NOCOLLIDER"});
     },
     "[lamp-far]"},
    {[](Planted& p) {
         p.lights = {LampAt({0, 0, 30}, 1)};
         p.lights[0].spotCutoff = 0.7f;
     },
     "write 40 [cutoff-radians]"},
    {[](Planted& p) {
         p.lights = {LampAt({0, 0, 30}, 1)};
         p.lights[0].spotCutoff = 40;
     },
     ""},
    {[](Planted& p) {
         Move(p.Eyes(), {0, 100, 0});
     },
     "[camera-far]"},
    {[](Planted& p) {
         Move(p.Eyes(), {0, -20, 5});
     },
     ""},
    {[](Planted& p) {
         for (const char* name : {"A", "B", "C", "D"}) {
             p.world.Add(engine::MakeBox(name, {-2000, 3000, -1000}, {2000, 3000.f + *name, 900}),
                         {0, 3000, 0}, {"*NOCOLLIDER"});
         }
     },
     "[world-huge]"},
    {[](Planted& p) { std::swap(p.floor.faces[30].a, p.floor.faces[30].b); }, "the first is triangle 30 "},
    {[](Planted& p) {
         Paint(p.floor, {0, 0, 0});
     },
     "[mesh-black]"},
    {[](Planted& p) {
         p.AddCrate("Crate", {10, 0, 9}, 5, "");
         p.AddCrate("Twin", {10, 0, 9}, 5, "");
     },
     "[object-twice]"},
    {[](Planted& p) {
         Stretch(p.Body(), {10, 10, 1});
     },
     "[mesh-beyond-body]"},
    {[](Planted& p) { p.Eyes().keyTracks[0][3].angle = 90; }, "[track-degrees]"},
    {[](Planted& p) { p.Eyes().keyTracks[0][3].translation.x = 2; }, "key track 0 ends 2 units"},
    {[](Planted& p) { p.floorKeys = {"*GROUPMEMBER 0 *NOCOLLIDER *GROUPPARENT 1"}; }, "[group-of-group]"},
    {[](Planted& p) {
         p.AddCrate("Lift", {20, 0, 0}, 2, "*COLLIDER *PHYSICS 0 0 0 *GROUPPARENT 1");
         p.AddCrate("Rail", {30, 0, 0}, 2, "*GROUPMEMBER 1");
     },
     ""},
    {[](Planted& p) {
         p.AddCrate("One", {20, 0, 0}, 2, "*GROUPMEMBER 1 *GROUPPARENT 2 ");
         p.AddCrate("Two", {30, 0, 0}, 2, "*GROUPMEMBER 2 *GROUPPARENT 1 ");
     },
     "[groups-in-circle]"},
    {[](Planted& p) {
         p.AddCrate("Crate", {10, 0, 9}, 5, "*COLLIDER PHYSICS 1 0 0");
     },
     "[asterisk-missing]"},
    {[](Planted& p) {
         p.AddCrate("Crate", {10, 0, 9}, 5, "* COLLIDER");
     },
     "[asterisk-missing]"},
    {[](Planted& p) { p.settings.push_back("*PLAYERKEYBOARDCONTROLS 0 37 39 33 34 27 40 188 190"); },
     "[key-escape]"},
    {[](Planted& p) {
         p.AddCrate("Crate", {10, 0, 9}, 5, "*COLLIDER *PHYSICS 9.81 0.5 0.1");
     },
     "the gravity is 9.81; sensible values are 0 to 3"},
    {[](Planted& p) {
         p.AddCrate("Crate", {10, 0, 9}, 5, "*PLAYEROBJECT 0 " + body);
     },
     "[object-for-two]"},
    {[](Planted& p) { std::swap(p.Eyes().vertices[0], p.Eyes().vertices[1]); }, "[camera-upside-down]"},
    {[](Planted& p) {
         TurnAboutZ(p.Body(), {0, -20, 0}, 3.14f);
     },
     "[camera-aside]"},
    {[](Planted& p) { p.AddRoom(5, 0.1f); }, ""},
    {[](Planted& p) { p.AddRoom(5, 2); }, ""},
    {[](Planted& p) { p.AddRoom(3.5f, 0.1f); }, "near (0, -13, 0.05) is too narrow"},
    {[](Planted& p) { p.AddRoom(5, 7); }, "[player-shut-in]"},
    {[](Planted& p) { p.AddPodium(2); }, "over 100 %"},
    {[](Planted& p) { p.AddPodium(6); }, "[step-high]"},
    {[](Planted& p) { p.AddPodium(12); }, "over 57 %"},  // what it stands on is no floor
    {[](Planted& p) {
         p.AddRoom(0.1f, 12);
         p.floor = engine::MakeGrid("Floor", {-60, -60, 0}, {120, 0, 0}, {0, 42, 0}, 12, 12);
     },
     "[floor-missing]"},
    {[](Planted& p) {
         p.floor = engine::MakeGrid("Floor", {-60, -60, 0}, {120, 0, 0}, {0, 42, 0}, 12, 12);
     },
     ""},
    {[](Planted& p) {
         for (SceneObject* object : {&p.Eyes(), &p.Body(), &p.floor}) {
             Stretch(*object, {100, 100, 100});
         }
     },
     "are 100 long, and have to be 1"},
    {[](Planted& p) {
         for (SceneObject* object : {&p.Eyes(), &p.Body(), &p.floor}) {
             for (engine::Float3& vertex : object->vertices) {
                 vertex = {vertex.x, vertex.z, -vertex.y};
             }
         }
     },
     "[world-lying]"},
    {[](Planted& p) { p.floor.vertices[0].z = 900; }, "[mesh-spike]"},
    {[](Planted& p) { p.settings[4] = "*FARCLIPPINGPLANE 20"; }, "[world-beyond-far-plane]"},
    {[](Planted& p) { p.settings[4] = "*FARCLIPPINGPLANE 80"; }, ""},
    {[](Planted& p) {
         p.lights[0].position = {0.6f, 0, 0.8f, 1};
     },
     "[sun-as-lamp]"},
    {[](Planted& p) { p.lights.push_back(p.lights[0]); }, "[light-twice]"},
    {[](Planted& p) { p.lights[0].diffuse.y = -0.5f; }, "[light-negative]"},
    {[](Planted& p) {
         p.Eyes().keyTracks[0][3].axis = {0, 0, 0};
     },
     ""},
    {[](Planted& p) {
         p.Eyes().keyTracks[0][3].axis = {0, 0, 0};
         p.Eyes().keyTracks[0][3].angle = 0.1f;
     },
     "[track-axis]"},
    {[](Planted& p) {
         for (const char* name : {"A", "B", "C", "D"}) {
             p.AddCrate(name, {10, 0, 9}, 5, "");
             Stretch(p.world.objects.back(), {-1, 1, 1});
         }
         Stretch(p.floor, {-1, 1, 1});
     },
     "[world-mirrored]"},
    {[](Planted& p) {
         p.AddCrate("Crate", {10, 0, 0}, 5, "*INVISIBLE");
         p.world.objects.back().faces.clear();
     },
     ""},
    {[](Planted& p) {
         p.AddCrate("Crate", {10, 0, 0}, 5, "");
         p.world.objects.back().faces.clear();
     },
     "[mesh-empty]"},
};

TEST(CheckSceneValues, FindsWhatCanNotBeMeant) {
    const TemporaryFolder folder;
    int number = 0;
    for (const Plant& plant : plants) {
        Planted planted;
        plant.plant(planted);
        const std::string output = planted.Check();
        const std::string expected = *plant.finding == '\0' ? "0 errors, 0 warnings" : plant.finding;
        EXPECT_NE(output.find(expected), std::string::npos) << number << "\n" << output;
        number++;
    }
    Planted().Check();
    engine::WriteBytes("data/world.bin", ReadWholeFile("data/world.bin") + std::string(12, 'x'));
    EXPECT_NE(
        RunCommand(CHECK_SCENE_PROGRAM " 2>&1").output.find("12 bytes stand after the last of 4 objects"),
        std::string::npos);
}

TEST(CheckSceneValues, SaysWhatAWorldOfManyTrianglesKeepsItFromLookingAt) {
    const TemporaryFolder folder;
    const auto output = [](int cells) {
        Planted planted;
        planted.floor = engine::MakeGrid("Floor", {-60, -60, 0}, {120, 0, 0}, {0, 120, 0}, cells, cells);
        for (int i = 0; i < 65; i++) {
            planted.AddCrate("Crate" + std::to_string(100 + i), {i % 13 * 8.0f - 50, i / 13 * 8.0f, 0}, 5,
                             body);
        }
        return planted.Check();
    };
    const std::string large = output(400);  // 320,000 triangles: 62 times as many are 20 million
    EXPECT_NE(large.find("only 62 of 65 bodies"), std::string::npos) << large;
    EXPECT_EQ(large.find("on foot"), std::string::npos) << large;
    const std::string small = output(380);  // 288,800
    EXPECT_EQ(small.find("bodies"), std::string::npos) << small;
    EXPECT_NE(small.find("on foot"), std::string::npos) << small;
}

TEST(CheckSceneValues, DrawsAPlanWithMarks) {
    const TemporaryFolder folder;
    Planted planted;
    planted.AddCrate("Crate", {10, 0, 9}, 5, "*PHYSICS 1 0.5 0.1");
    planted.Check();
    const std::string output = RunCommand(CHECK_SCENE_PROGRAM " --picture plan.png").output;
    EXPECT_NE(output.find("no *COLLIDER"), std::string::npos);
    EXPECT_NE(output.find(" [1]\n"), std::string::npos) << output;
    // 120 units are 1000 pixels within a margin of 30: the mark stands at 30 + 70 * 8.33 and 30 + 60
    // * 8.33.
    const auto pixel = [](const std::string& place) {
        return RunCommand("pngtopnm plan.png | pamcut " + place + " 1 1 | tail -c 3").output;
    };
    EXPECT_EQ(pixel("607 530"), "\xC8\x14\x14");
    EXPECT_EQ(pixel("300 300"), "\xFF\xFF\xFF") << "the floor is white";
}

}  // namespace
