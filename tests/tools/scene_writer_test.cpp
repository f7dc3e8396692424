#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>

#include "scene_writer/cut_shapes.h"
#include "scene_writer/image_file.h"
#include "scene_writer/player_parts.h"
#include "scene_writer/shapes.h"
#include "scene_writer/texture_mapping.h"
#include "support/temporary_folder.h"

// What would make a garbled world is refused, one mistake at a time.

namespace {

engine::SceneObject Crate() {
    return engine::MakeBox("Crate", {-1, -1, 0}, {1, 1, 2}, 1);
}

engine::SceneObject MarkedCrate() {
    engine::SceneObject crate = Crate();
    AddMarkers(crate, {0, 0, 1});
    return crate;
}

/// A crate of side 2 on the ground, in a block with these keys.
void AddCrate(float centreHeight, const std::vector<std::string>& keys) {
    engine::SceneParts world;
    world.Add(Crate(), {0, 0, centreHeight}, keys);
}

/// @param spoil what is done to a crate before it is written
bool IsWritten(void (*spoil)(engine::SceneObject& crate)) {
    engine::SceneObject crate = MarkedCrate();
    spoil(crate);
    try {
        engine::WriteSceneFile("crate.bin", {crate});
    } catch (const std::invalid_argument&) {
        return false;
    }
    return true;
}

TEST(SceneWriter, RefusesWhatMakesNoShape) {
    void (*const mistakes[])() = {
        [] {
            engine::MakeGrid("Floor", {}, {8, 0, 0}, {0, 8, 0}, 0, 4);
        },
        [] {
            engine::MakeGrid("Floor", {}, {8, 0, 0}, {-4, 0, 0});
        },
        [] {
            engine::MakeBox("Box", {0, 0, 2}, {1, 1, 1});
        },
        [] {
            engine::MakeCutBox("Box", {0, 0, 0}, {1, 1, 1}, 0);
        },
        [] {
            engine::MakeWedge("Ramp", {0, 0, 0}, {1, 1, 0}, 1);
        },
        [] { engine::MakeCylinder("Pole", {}, 1, 4, 2); },
        [] { engine::MakeCylinder("Pole", {}, 0, 4, 8); },
        [] { engine::MakeBall("Ball", {}, 1, 1, 8); },
        [] {
            engine::MakeLathe("Vase", {}, {{1, 0}}, 8);
        },
        [] {
            engine::MakeLathe("Vase", {}, {{1, 0}, {1, 0}}, 8);
        },
        [] {
            engine::SceneObject crate = MarkedCrate();
            AddMarkers(crate, {0, 0, 1});
        },
        [] {
            engine::SceneObject crate = MarkedCrate();
            Append(crate, Crate());
        },
        [] {
            engine::SceneObject crate = Crate();
            Append(crate, MarkedCrate());
        },
        [] {
            engine::SceneObject crate = MarkedCrate();
            ProjectTexture(crate, 4);
        },
        [] {
            engine::SceneObject crate = Crate();
            Stretch(crate, {}, {1, -1, 1});
        },
        [] {
            engine::SceneObject crate = Crate();
            AddMarkers(crate, {}, {2, 0, 0});
        },
        [] {
            engine::SceneObject crate = Crate();
            AddMarkers(crate, {}, {1, 0, 0}, {1, 0, 0});
        },
        [] {
            AddCrate(1, {"*COLLIDER", "*PHYSICS 1 0.5 0.1"});
        },
        [] { AddCrate(1, {"COLLIDER"}); },
        [] { AddCrate(1, {"*COLLIDER }"}); },
        [] {
            engine::SceneParts world;
            world.Add(engine::MakePlayer({}));
            world.Add(engine::MakePlayer({}));
        },
        [] {
            engine::MakePlayer({-1, {}});
        },
        [] { engine::AttributeBlock("GLOBALS", std::vector(9, engine::LightLine({}))); },
        [] { engine::LightLine({.spotCutoff = 120}); },
        [] { engine::SettingsText({"*SAFE }"}); },
        [] { engine::SceneParts().Write("world.dat", {}); },
        [] { engine::Image(0, 8, 3); },
        [] { WriteSgi("wall.rgb", engine::Image(8, 8, 5)); },
        [] { engine::Image(8, 8, 3).At(8, 0, 0) = 1; },
        [] { engine::Image(8, 8, 3).At(0, 0, 3) = 1; },
        [] { WriteTga("wall.tga", engine::Image(8, 12, 3)); },
        [] { WriteTga("wall.tga", engine::Image(8, 8, 1)); },
    };
    AddCrate(5, {"*COLLIDER", "*PHYSICS 1 0.5 0.1"});
    AddCrate(1, {"*COLLIDER *PHYSICS 0 0 0"});
    int number = 0;
    for (const auto mistake : mistakes) {
        EXPECT_THROW(mistake(), std::invalid_argument) << "mistake " << number;
        number++;
    }
}

TEST(SceneWriter, RefusesToWriteWhatCouldNotBeLoaded) {
    const TemporaryFolder folder;
    EXPECT_TRUE(IsWritten([](engine::SceneObject& crate) { crate.name = std::string(49, 'c'); }));
    EXPECT_TRUE(IsWritten([](engine::SceneObject& crate) {
        crate.keyTracks = {engine::SceneKeyTrack(2), {}, {}};
    }));
    void (*const mistakes[])(engine::SceneObject&) = {
        [](engine::SceneObject& crate) { crate.name = std::string(50, 'c'); },
        [](engine::SceneObject& crate) { crate.name = "Cr\xC3\xA2te"; },
        [](engine::SceneObject& crate) { crate.faces[3].b = 1000; },
        [](engine::SceneObject& crate) { crate.texFaces[3].b = -1; },
        [](engine::SceneObject& crate) { crate.texFaces.pop_back(); },
        [](engine::SceneObject& crate) { crate.vertices[2].z = std::numeric_limits<float>::infinity(); },
        [](engine::SceneObject& crate) { crate.colours.resize(100); },
        [](engine::SceneObject& crate) { crate.zAxisVertex = 100; },
        [](engine::SceneObject& crate) { crate = Crate(); },
        [](engine::SceneObject& crate) { crate.keyTracks = {engine::SceneKeyTrack(1)}; },
        [](engine::SceneObject& crate) { crate.keyTracks.resize(4); },
        [](engine::SceneObject& crate) {
            crate.keyTracks = {{{}, {{}, {0, 0, 1}, 90, {}}}};
        },
    };
    int number = 0;
    for (const auto mistake : mistakes) {
        EXPECT_FALSE(IsWritten(mistake)) << "mistake " << number;
        number++;
    }
}

}  // namespace
