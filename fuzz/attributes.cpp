#include "loading/attribute_file.h"

#include "fuzz_world.h"

// The attribute file: blocks and all of their keys, on a scene of a few objects and players.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string text(Characters(data, size));
    Defuse(text, ".rgb", ".tga");  // a missing image of that format ends the process
    const MemoryFiles files({{"scene.atr", text}});
    Windowless world;
    Scene& scene = world.scene;
    scene.AddPlayers(2);
    scene.AddObjects(4);
    const char* const names[] = {"Box", "Box1", "Hero", "Start"};
    for (int i = 0; i < 4; i++) {
        scene.objects[i].name = names[i];
    }
    scene.objects[3].ResizeVertices(0);
    scene.objects[3].ResizeFaces(0);
    TextureIndex textures;
    AttributeFile file("scene.atr", textures);
    for (int i = 0; i < 4; i++) {
        ApplyObjectAttributes(scene, file, i);
    }
    ApplyGlobalAttributes(scene, file);
    scene.ReadObjectAttributes("scene.atr", "");
    scene.StepWorld();
    return 0;
}
