#include "blocks.h"
#include "courtyard.h"
#include "lights.h"
#include "scene_writer/shapes.h"

namespace {

void AddLantern(World& world) {
    // Untextured: the colours are all that there is. The light itself hangs a little lower.
    SceneObject lantern = engine::MakeLathe("Lantern", lampPlace,
                                            {{0.0f, -0.1f}, {0.35f, 0.0f}, {0.55f, 1.2f}, {0.0f, 1.2f}}, 6);
    Paint(lantern, {1.0f, 0.93f, 0.62f});
    SceneObject cap =
        engine::MakeLathe("", lampPlace, {{0.0f, 1.2f}, {0.75f, 1.2f}, {0.1f, 1.8f}, {0.1f, 2.4f}}, 6);
    Paint(cap, {0.25f, 0.23f, 0.22f});
    Append(lantern, cap);
    world.Add(lantern, Role::Outside, {"*NOCOLLIDER"});
}

}  // namespace

void AddArch(World& world) {
    ArchShape shape;
    shape.middle = lampPlace.x;
    shape.front = lampPlace.y - 2.0f;
    shape.back = lampPlace.y + 2.0f;
    shape.outer = 7.5f;
    shape.height = 16.0f;
    world.AddPainted(MakeArch("Arch", shape), {0.95f, 0.88f, 0.76f}, "ashlar.rgb", 10.0f);
    const SceneObject crown =
        MakeBlock("ArchCrown", {shape.middle - 8.1f, shape.front - 0.6f, shape.height},
                  {shape.middle + 8.1f, shape.back + 0.6f, shape.height + 1.0f}, 3.0f);
    world.AddPainted(crown, {1.0f, 0.95f, 0.85f}, "plaster.rgb", 10.0f);
    AddLantern(world);
}
