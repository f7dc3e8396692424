#include <gtest/gtest.h>

#include "scene_writer/bytes.h"
#include "scene_writer/cut_shapes.h"
#include "scene_writer/player_parts.h"
#include "scene_writer/shapes.h"
#include "support/command.h"
#include "support/temporary_folder.h"

// Bodies that don't stand where they should, and values that can be read but not be meant: each is planted
// alone beside its right neighbour, and told by the program.

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
    void AddCrate(const std::string& name, Float3 place, float centre,
                  const std::vector<std::string>& keys) {
        SceneObject crate = engine::MakeBox(name, place - Float3{2, 2, 0}, place + Float3{2, 2, 4});
        AddMarkers(crate, place + Float3{0, 0, centre});
        // The writer would refuse some of these.
        world.attributes += engine::AttributeBlock(name, keys);
        world.objects.push_back(crate);
    }
    std::string Check() {
        world.Add(floor, {0, 0, 0}, floorKeys);
        world.Write("data/world.bin", lights);
        engine::WriteBytes("settings.atr", engine::SettingsText(settings));
        return RunCommand(CHECK_SCENE_PROGRAM " 2>&1").output;
    }
};

const std::vector<std::string> body{"*COLLIDER", "*PHYSICS 1 0.5 0.1"};

engine::SceneLight LampAt(Float3 place, float brightness) {
    engine::SceneLight lamp;
    lamp.diffuse = {brightness, brightness, brightness, 1};
    lamp.position = {place.x, place.y, place.z, 1};
    lamp.linearAttenuation = 0.1f;
    return lamp;
}

/// What is planted, and a part of what is told; empty for right things.
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
         p.AddCrate("Crate", {10, 0, 9}, 5, {"*PHYSICS 1 0.5 0.1"});
     },
     "has *PHYSICS and no *COLLIDER"},
    {[](Planted& p) { p.floorKeys = {"*PHYSICS 1 0.5 0.1"}; }, "\"Floor\" has *PHYSICS and no *COLLIDER"},
    {[](Planted& p) {
         p.AddCrate("Crate", {10, 0, 9}, 5, {"*COLLIDER"});
     },
     "has *COLLIDER and no *PHYSICS"},
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
     "\"Crate\" falls for ever"},
    {[](Planted& p) {
         p.AddCrate("Crate", {10, 0, -4}, 5, body);
     },
     "inside object \"Floor\""},
    {[](Planted& p) {
         p.AddCrate("Crate", {0.5f, -20, 0.1f}, 5, body);
     },
     "in the place of player 0"},
    {[](Planted& p) {
         p.lights = {LampAt({0, 0, 9}, 5)};
     },
     ""},
    {[](Planted& p) {
         p.lights = {LampAt({0, 0, 9}, 255)};
     },
     "colours reach 255"},
    {[](Planted& p) {
         p.lights[0].position = {20, 30, 12, 0};
     },
     "looks like a place"},
    {[](Planted& p) { p.lights = {LampAt({0, 0, 900}, 1)}; }, "the lamp reaches nothing"},
    {[](Planted& p) {
         p.lights = {LampAt({0, 0, 900}, 1)};
     },
     "the lamp reaches nothing"},
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
}

}  // namespace
