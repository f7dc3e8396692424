#include <array>
#include <string>

#include "courtyard.h"
#include "scene_writer/player_parts.h"
#include "scene_writer/shapes.h"

// Every collider is the same ellipsoid, 4 wide and 10 high. A body that stands on the ground thus has its
// centre 5.05 above it, and its mesh hangs below that centre.

// Bodies stop each other with their centres 2 apart, so the meshes are narrower than the ellipsoid.

namespace {

constexpr Float3 footToCentre{0.0f, 0.0f, engine::standingHeight};

struct Drop {
    Float3 foot;
    float gravity;
    float bounce;
    float friction;
};

std::vector<std::string> Attributes(const Drop& drop) {
    return {"*COLLIDER", "*PHYSICS " + std::to_string(drop.gravity) + " " + std::to_string(drop.bounce) +
                             " " + std::to_string(drop.friction)};
}

void AddCrate(World& world, int number, const Drop& drop, float angle) {
    constexpr float half = 1.3f;
    const Float3 low = drop.foot + Float3{-half, -half, 0.0f};
    SceneObject crate = engine::MakeBox("Crate" + std::to_string(number), low,
                                        low + Float3{2.0f * half, 2.0f * half, 2.0f * half}, 1.0f);
    TurnAboutZ(crate, drop.foot, angle);
    AddMarkers(crate, drop.foot + footToCentre);
    world.AddTextured(crate, Role::Moving, "crate.rgb", Attributes(drop));
}

void AddBall(World& world, int number, const Drop& drop, Float3 colour) {
    constexpr float radius = 1.25f;
    SceneObject ball = engine::MakeBall("Ball" + std::to_string(number),
                                        drop.foot + Float3{0.0f, 0.0f, radius}, radius, 8, 12, 1.0f);
    Paint(ball, colour);
    AddMarkers(ball, drop.foot + footToCentre);
    world.AddTextured(ball, Role::Moving, "stripes.rgb", Attributes(drop));
}

/// Crates that have been there for long: with no collider of their own they are obstacles like any wall,
/// and can be stacked.
void AddPile(World& world) {
    SceneObject pile;
    pile.name = "Pile";
    struct Place {
        float x, y, z, angle;
    };
    for (const Place& place : {Place{22.0f, 11.5f, 0.0f, 0.1f}, Place{26.2f, 12.2f, 0.0f, -0.15f},
                               Place{23.8f, 12.0f, 3.4f, 0.3f}}) {
        SceneObject crate = engine::MakeBox("", {place.x - 1.7f, place.y - 1.7f, place.z},
                                            {place.x + 1.7f, place.y + 1.7f, place.z + 3.4f}, 1.0f);
        TurnAboutZ(crate, {place.x, place.y, 0.0f}, place.angle);
        Append(pile, crate);
    }
    world.AddTextured(pile, Role::Fixed, "crate.rgb");
}

}  // namespace

void AddBodies(World& world) {
    AddPile(world);
    // Crates hardly bounce and soon stand still; balls jump, and roll down the mounds.
    AddCrate(world, 1, {{21.5f, -7.5f, 9.0f}, 0.2f, 0.1f, 0.6f}, 0.3f);
    AddCrate(world, 2, {{28.0f, -12.5f, 14.0f}, 0.2f, 0.3f, 0.5f}, 1.1f);
    AddCrate(world, 3, {{-13.0f, -19.0f, 12.0f}, 0.2f, 0.2f, 0.5f}, 0.7f);
    AddCrate(world, 4, {{21.5f, 33.0f, 20.0f}, 0.2f, 0.3f, 0.5f}, 0.2f);
    AddBall(world, 1, {{4.5f, -17.5f, 16.0f}, 0.15f, 0.8f, 0.05f}, {0.95f, 0.35f, 0.3f});
    AddBall(world, 2, {{-24.0f, -26.5f, 16.0f}, 0.15f, 0.7f, 0.15f}, {0.35f, 0.6f, 0.95f});
    AddBall(world, 3, {{-22.5f, 8.5f, 16.0f}, 0.15f, 0.8f, 0.15f}, {0.98f, 0.85f, 0.3f});
    AddBall(world, 4, {{23.5f, -22.5f, 18.0f}, 0.15f, 0.5f, 0.1f}, {0.5f, 0.85f, 0.45f});
    AddBall(world, 5, {{38.0f, 32.0f, 26.0f}, 0.15f, 0.75f, 0.1f}, {0.9f, 0.55f, 0.9f});
}
