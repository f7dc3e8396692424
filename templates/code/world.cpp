// Makes the world of this folder: make_world FOLDER writes FOLDER/data.

#include <scene_writer/cut_shapes.h>
#include <scene_writer/image_file.h>
#include <scene_writer/player_parts.h>
#include <scene_writer/shapes.h>

#include <cstdio>
#include <exception>
#include <string>

namespace {

// A person is 10 units high: a metre is about 5.5. Twenty small sprites stand at the origin of every world,
// so the room lies to the east of it.

/// A checkerboard of two greys.
engine::Image MakeTiles() {
    engine::Image image(64, 64, 3);
    for (int y = 0; y < image.height; y++) {
        for (int x = 0; x < image.width; x++) {
            const bool isDark = (x / 32 + y / 32) % 2 == 0;
            for (int channel = 0; channel < 3; channel++) {
                image.At(x, y, channel) = isDark ? 150 : 190;
            }
        }
    }
    return image;
}

void AddWall(engine::SceneParts& world, const std::string& name, engine::Float3 low, engine::Float3 high) {
    engine::SceneObject wall =
        engine::MakeCutBox(name, low, high, 6);  // cut into cells, since light falls on vertices
    Paint(wall, {0.75f, 0.7f, 0.6f});
    world.Add(wall, {(low.x + high.x) / 2, (low.y + high.y) / 2, (low.z + high.z) / 2}, {});
}

/// Writes data/world.bin and data/world.atr.
void WriteWorld(const std::string& data) {
    engine::SceneParts world;
    world.attributes = "Made by world.cpp. Change that file: this one is written anew by ./run.sh.\n\n";
    // The player comes first: eyes, body, and the place to start from. It looks north, along +y.
    world.Add(engine::MakePlayer({0, {60, -24, 0}}));

    engine::SceneObject floor = engine::MakeGrid("Floor", {20, -40, 0}, {80, 0, 0}, {0, 80, 0}, 16, 16, 10);
    world.Add(floor, {60, 0, 0}, {"*TEXTURE data\\tiles.tga"});

    AddWall(world, "NorthWall", {20, 40, 0}, {100, 42, 16});
    AddWall(world, "SouthWall", {20, -42, 0}, {100, -40, 16});
    AddWall(world, "EastWall", {100, -42, 0}, {102, 42, 16});
    AddWall(world, "WestWall", {18, -42, 0}, {20, 42, 16});

    engine::SceneObject ramp = engine::MakeWedge("Ramp", {76, -6, 0}, {88, 18, 8}, 3);
    Paint(ramp, {0.6f, 0.5f, 0.4f});
    world.Add(ramp, {82, 6, 4}, {});
    AddWall(world, "Platform", {76, 18, 0}, {88, 34, 8});

    // A body's ellipsoid reaches 5 down from its centre: 5 above the bottom, however high the crate is.
    engine::SceneObject crate = engine::MakeCutBox("Crate", {48, -2, 12}, {52, 2, 16}, 2);
    Paint(crate, {0.7f, 0.45f, 0.2f});
    world.Add(crate, {50, 0, 17}, {"*COLLIDER", "*PHYSICS 1 0.5 0.1"});

    engine::SceneObject bulb = engine::MakeBall("Bulb", {60, 8, 15}, 0.8f, 6, 10);
    world.Add(bulb, {60, 8, 15}, {"*NOCOLLIDER"});
    engine::SceneLight lamp;
    lamp.diffuse = {1.0f, 0.9f, 0.7f, 1.0f};
    lamp.position = {60, 8, 13.5f, 1};
    lamp.linearAttenuation = 0.02f;
    engine::SceneLight sky;
    sky.ambient = {0.2f, 0.2f, 0.25f, 1.0f};
    sky.diffuse = {0.4f, 0.4f, 0.45f, 1.0f};
    sky.position = {0.3f, -0.4f, 0.8f, 0};  // with a 0 at its end a direction, and no place
    world.Write(data + "world.bin", {lamp, sky});
}

}  // namespace

int main(int argumentCount, char** arguments) {
    const std::string data = std::string(argumentCount > 1 ? arguments[1] : ".") + "/data/";
    try {
        WriteWorld(data);
        WriteTga(data + "tiles.tga", MakeTiles());
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "make_world: %s\n", failure.what());
        return 1;
    }
    return 0;
}
