// Makes the two demo worlds: `make_demo FOLDER` writes FOLDER/single and FOLDER/split, each ready for the
// engine to be started in.

#include <cstdio>
#include <exception>
#include <numbers>
#include <string>
#include <vector>

#include "courtyard.h"
#include "hero.h"
#include "scene_writer/shapes.h"
#include "shadows.h"
#include "textures.h"

namespace {

constexpr float northward = 0.0f;
constexpr float southward = std::numbers::pi_v<float>;

constexpr Hero firstHero{0, {13.0f, -30.0f, 0.1f}, northward, {0.25f, 0.42f, 0.62f}, {0.36f, 0.33f, 0.3f}};
constexpr Hero secondHero{1, {12.0f, -2.0f, 0.1f}, southward, {0.66f, 0.3f, 0.22f}, {0.28f, 0.32f, 0.26f}};

/// A camera that nobody moves.
void AddWatcher(World& world, int player, Float3 eye, Float3 look) {
    const std::string number = std::to_string(player);
    SceneObject watcher = engine::MakeCamera("Watcher" + number, eye, look);
    AddMarkers(watcher, eye);
    world.Add(watcher, Role::Moving, {"*CAMERAOBJECT " + number + " 0 1", "*NOCOLLIDER"});
}

/// What is added last lends its texture to the sprites.
World MakeCourtyard(const std::vector<Hero>& heroes) {
    World world;
    AddLandscape(world);
    AddGround(world);
    AddWalls(world);
    AddTerrace(world);
    AddArch(world);
    AddLoggia(world);
    AddChamber(world);
    AddBodies(world);
    for (const Hero& hero : heroes) {
        AddHero(world, hero);
    }
    AddGarden(world);
    PaintShadows(world);
    return world;
}

void WriteDemos(const std::string& folder) {
    WriteWorld(MakeCourtyard({firstHero}), folder + "/single");
    WriteTextures(folder + "/single");

    World split = MakeCourtyard({firstHero, secondHero});
    AddWatcher(split, 2, {2.0f, -33.0f, 15.0f}, {14.0f, -4.0f, 5.0f});
    AddWatcher(split, 3, {40.0f, 34.0f, 22.0f}, {5.0f, -6.0f, 2.0f});
    WriteWorld(split, folder + "/split");
    WriteTextures(folder + "/split");
}

}  // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount != 2) {
        std::fprintf(stderr, "usage: make_demo FOLDER\n");
        return 2;
    }
    try {
        WriteDemos(arguments[1]);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "make_demo: %s\n", failure.what());
        return 1;
    }
    return 0;
}
