#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>

#include "scene_writer/cut_shapes.h"
#include "scene_writer/image_file.h"
#include "scene_writer/shapes.h"
#include "scene_writer/texture_mapping.h"
#include "support/temporary_folder.h"

// What would make a garbled world is refused, one mistake at a time.

namespace {

SceneObject Crate() {
    return MakeBox("Crate", {-1, -1, 0}, {1, 1, 2}, 1);
}

SceneObject MarkedCrate() {
    SceneObject crate = Crate();
    AddMarkers(crate, {0, 0, 1});
    return crate;
}

/// @param spoil what is done to a crate before it is written
bool IsWritten(void (*spoil)(SceneObject& crate)) {
    SceneObject crate = MarkedCrate();
    spoil(crate);
    try {
        WriteSceneFile("crate.bin", {crate});
    } catch (const std::invalid_argument&) {
        return false;
    }
    return true;
}

TEST(SceneWriter, RefusesWhatMakesNoShape) {
    void (*const mistakes[])() = {
        [] {
            MakeGrid("Floor", {}, {8, 0, 0}, {0, 8, 0}, 0, 4);
        },
        [] {
            MakeGrid("Floor", {}, {8, 0, 0}, {-4, 0, 0});
        },
        [] {
            MakeBox("Box", {0, 0, 2}, {1, 1, 1});
        },
        [] {
            MakeCutBox("Box", {0, 0, 0}, {1, 1, 1}, 0);
        },
        [] {
            MakeWedge("Ramp", {0, 0, 0}, {1, 1, 0}, 1);
        },
        [] { MakeCylinder("Pole", {}, 1, 4, 2); },
        [] { MakeCylinder("Pole", {}, 0, 4, 8); },
        [] { MakeBall("Ball", {}, 1, 1, 8); },
        [] {
            MakeLathe("Vase", {}, {{1, 0}}, 8);
        },
        [] {
            MakeLathe("Vase", {}, {{1, 0}, {1, 0}}, 8);
        },
        [] {
            SceneObject crate = MarkedCrate();
            AddMarkers(crate, {0, 0, 1});
        },
        [] {
            SceneObject crate = MarkedCrate();
            Append(crate, Crate());
        },
        [] {
            SceneObject crate = Crate();
            Append(crate, MarkedCrate());
        },
        [] {
            SceneObject crate = MarkedCrate();
            ProjectTexture(crate, 4);
        },
        [] {
            SceneObject crate = Crate();
            Stretch(crate, {}, {1, -1, 1});
        },
        [] {
            SceneObject crate = Crate();
            AddMarkers(crate, {}, {2, 0, 0});
        },
        [] {
            SceneObject crate = Crate();
            AddMarkers(crate, {}, {1, 0, 0}, {1, 0, 0});
        },
        [] { Image(0, 8, 3); },
        [] { WriteSgi("wall.rgb", Image(8, 8, 5)); },
        [] { Image(8, 8, 3).At(8, 0, 0) = 1; },
        [] { Image(8, 8, 3).At(0, 0, 3) = 1; },
        [] { WriteTga("wall.tga", Image(8, 12, 3)); },
        [] { WriteTga("wall.tga", Image(8, 8, 1)); },
    };
    int number = 0;
    for (const auto mistake : mistakes) {
        EXPECT_THROW(mistake(), std::invalid_argument) << "mistake " << number;
        number++;
    }
}

TEST(SceneWriter, RefusesToWriteWhatCouldNotBeLoaded) {
    const TemporaryFolder folder;
    EXPECT_TRUE(IsWritten([](SceneObject& crate) { crate.name = std::string(49, 'c'); }));
    EXPECT_TRUE(IsWritten([](SceneObject& crate) { crate.keyTracks = {SceneKeyTrack(2), {}, {}}; }));
    void (*const mistakes[])(SceneObject&) = {
        [](SceneObject& crate) { crate.name = std::string(50, 'c'); },
        [](SceneObject& crate) { crate.name = "Cr\xC3\xA2te"; },
        [](SceneObject& crate) { crate.faces[3].b = 1000; },
        [](SceneObject& crate) { crate.texFaces[3].b = -1; },
        [](SceneObject& crate) { crate.texFaces.pop_back(); },
        [](SceneObject& crate) { crate.vertices[2].z = std::numeric_limits<float>::infinity(); },
        [](SceneObject& crate) { crate.colours.resize(100); },
        [](SceneObject& crate) { crate.zAxisVertex = 100; },
        [](SceneObject& crate) { crate = Crate(); },
        [](SceneObject& crate) { crate.keyTracks = {SceneKeyTrack(1)}; },
        [](SceneObject& crate) { crate.keyTracks.resize(4); },
        [](SceneObject& crate) {
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
