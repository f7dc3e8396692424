#include "fuzz_world.h"

// The attribute file: blocks and all of their keys, on a scene of a few objects and players.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string text(reinterpret_cast<const char*>(data), size);
    Defuse(text, ".rgb", ".tga");  // a missing image of that format ends the process
    FuzzWorld world;
    Scene& scene = *world.scene;
    scene.AddPlayers(2);
    scene.AddObjects(4);
    const char* const names[] = {"Box", "Box1", "Hero", "Start"};
    for (int i = 0; i < 4; i++) {
        scene.objects[i].name = names[i];
    }
    scene.objects[3].ResizeVertices(0);
    scene.objects[3].ResizeFaces(0);
    WriteFuzzFile("scene.atr", text.data(), text.size());
    for (const char* name : names) {
        scene.ReadObjectAttributes("scene.atr", name);
    }
    scene.ReadGlobalAttributes("scene.atr");
    scene.ReadObjectAttributes("scene.atr", "");
    scene.StepWorld();
    return 0;
}
