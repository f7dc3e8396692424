#include <algorithm>

#include "fuzz_world.h"
#include "simulation/player_control.h"

// The binary scene file with its attribute file, and some steps of the world that comes out. The input is
// the length of the attribute text in two bytes, the text, and the bytes of the scene.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) {
        return 0;
    }
    const std::size_t textSize = std::min<std::size_t>(data[0] + 256u * data[1], size - 2);
    std::string text(reinterpret_cast<const char*>(data + 2), textSize);
    Defuse(text, ".rgb", ".tga");
    const std::uint8_t* scene = data + 2 + textSize;
    FuzzWorld world;
    world.scene->AddPlayers(2);
    WriteFuzzFile("scene.atr", text.data(), text.size());
    WriteFuzzFile("scene.bin", reinterpret_cast<const char*>(scene), size - 2 - textSize);
    world.scene->LoadMesh("scene.bin");
    PlayerControl control;
    std::uint8_t keys[256] = {};
    for (int frame = 0; frame < 6; frame++) {
        keys[0x26] = frame < 4;  // forward, and then the stop that rewinds
        keys[0x27] = frame % 2;
        keys[0x21] = frame % 3 == 0;
        control.ControlByKeyboard(*world.scene, 0, keys);
        control.ControlByKeyboard(*world.scene, 1, keys);
        world.scene->StepWorld();
    }
    return 0;
}
