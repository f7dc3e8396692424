#include "fuzz_world.h"
#include "scene_input.h"
#include "scene_writer/image_file.h"
#include "simulation/player_control.h"

// The binary scene file with its attribute file, and some frames of the world that comes out, stepped and
// drawn on both paths.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    SceneInput input = SplitSceneInput(data, size);
    Defuse(input.text, ".rgb", ".tga");
    static const std::string image = TgaBytes(engine::Image(2, 4, 4));
    const MemoryFiles files({{"wall.tga", image}, {"scene.atr", input.text}, {"scene.bin", input.scene}});
    Windowless world;
    Scene& scene = world.scene;
    scene.AddPlayers(2);
    scene.LoadMesh("scene.bin");
    scene.AddSprites(3);
    PlayerControl control;
    std::uint8_t keys[256] = {};
    for (int frame = 0; frame < 6; frame++) {
        keys[0x26] = frame < 4 ? 1 : 0;  // forward, and then the stop that rewinds
        keys[0x27] = frame % 2;
        keys[0x21] = frame % 3 == 0 ? 1 : 0;
        control.ControlByKeyboard(scene, 0, keys);
        control.ControlByKeyboard(scene, 1, keys);
        scene.StepWorld();
        scene.RenderFrame(world.engine);
        scene.RenderFrameSafe(world.engine);
    }
    return 0;
}
