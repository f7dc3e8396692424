#include <utility>

#include "blocks.h"
#include "courtyard.h"
#include "lights.h"
#include "scene_writer/shapes.h"

namespace {

constexpr float insideSouth = 18.0f;
constexpr float insideEast = -24.0f;
constexpr float wall = 2.0f;
constexpr float ceiling = 13.0f;
constexpr float doorFrom = 23.5f;
constexpr float doorTo = 30.5f;
constexpr float doorHeight = 11.5f;
// Small cells: the circle of the spot light is drawn by their corners.
constexpr float cell = 1.5f;
constexpr Float3 tint{0.92f, 0.86f, 0.78f};

void AddStone(World& world, SceneObject stone, const std::string& texture, float tile) {
    world.AddPainted(std::move(stone), tint, texture, tile);
}

void AddRoom(World& world) {
    AddStone(
        world,
        MakeBlock("ChamberFloor", {westWall, insideSouth, -1.0f}, {insideEast, northWall, 0.0f}, cell, top),
        "ashlar.rgb", 8.0f);
    AddStone(
        world,
        MakeBlock("DoorSill", {insideEast, doorFrom, -1.0f}, {insideEast + wall, doorTo, 0.0f}, 2.0f, top),
        "ashlar.rgb", 8.0f);
    AddStone(world,
             MakeBlock("ChamberSouth", {westWall, insideSouth - wall, 0.0f},
                       {insideEast + wall, insideSouth, ceiling}, 2.6f, upright),
             "plaster.rgb", 8.0f);
    SceneObject eastWallPieces = MakeBlock("ChamberEast", {insideEast, insideSouth, 0.0f},
                                           {insideEast + wall, doorFrom, ceiling}, 2.6f, upright);
    Append(eastWallPieces, MakeBlock("", {insideEast, doorTo, 0.0f},
                                     {insideEast + wall, northWall, ceiling}, 2.6f, upright));
    Append(eastWallPieces, MakeBlock("", {insideEast, doorFrom, doorHeight},
                                     {insideEast + wall, doorTo, ceiling}, 2.6f, east | west | bottom));
    AddStone(world, eastWallPieces, "plaster.rgb", 8.0f);
    AddStone(world,
             MakeBlock("ChamberRoof", {westWall, insideSouth - wall - 0.6f, ceiling},
                       {insideEast + wall + 0.6f, northWall, ceiling + 1.4f}, 3.0f),
             "ashlar.rgb", 10.0f);
}

void AddUrn(World& world) {
    const Float3 place{spotPlace.x, spotPlace.y, 0.0f};
    SceneObject pedestal = MakeBlock("Pedestal", {place.x - 1.6f, place.y - 1.6f, 0.0f},
                                     {place.x + 1.6f, place.y + 1.6f, 3.2f}, 1.6f, upright | top);
    AddStone(world, pedestal, "plaster.rgb", 4.0f);
    SceneObject urn = engine::MakeLathe("Urn", {place.x, place.y, 3.2f},
                                        {{0.0f, 0.0f},
                                         {0.8f, 0.0f},
                                         {0.45f, 0.5f},
                                         {0.6f, 0.9f},
                                         {1.35f, 2.0f},
                                         {1.25f, 2.9f},
                                         {0.6f, 3.5f},
                                         {0.75f, 4.0f},
                                         {0.0f, 3.8f}},
                                        12);
    Paint(urn, {0.95f, 0.72f, 0.28f});
    world.Add(urn, Role::Fixed);
}

/// Strips of cloth with gaps between them. Players walk through.
void AddCurtain(World& world) {
    SceneObject curtain;
    curtain.name = "Curtain";
    constexpr int strips = 7;
    constexpr float width = (doorTo - doorFrom) / strips;
    for (int i = 0; i < strips; i++) {
        const float from = doorFrom + static_cast<float>(i) * width;
        SceneObject strip = MakeBlock("", {insideEast + 0.9f, from + 0.15f, 0.9f},
                                      {insideEast + 1.1f, from + width - 0.15f, doorHeight}, 2.6f);
        Paint(strip, i % 2 == 0 ? Float3{0.66f, 0.16f, 0.14f} : Float3{0.74f, 0.6f, 0.25f});
        Append(curtain, strip);
    }
    world.Add(curtain, Role::Fixed, {"*NOCOLLIDER"});
}

}  // namespace

void AddChamber(World& world) {
    AddRoom(world);
    AddUrn(world);
    AddCurtain(world);
    SceneObject lamp = engine::MakeLathe("SpotLamp", spotPlace,
                                         {{0.7f, 0.0f}, {0.35f, 0.6f}, {0.35f, ceiling - spotPlace.z}}, 8);
    Paint(lamp, {0.2f, 0.2f, 0.22f});
    world.Add(lamp, Role::Outside, {"*NOCOLLIDER"});
}
