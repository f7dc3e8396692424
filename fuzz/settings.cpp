#include "text/attribute_text.h"

#include <algorithm>

#include "fuzz_world.h"

// The settings file: all keys. `LoadMeshes` finds no scene, since the folder holds none.

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(Characters(data, size));
    AttributeText counts(text);
    std::int64_t players = 0;
    ForEachKey(counts, "*PLAYERCOUNT", [&](TextCursor cursor) { players += std::max(ScanInt(cursor), 0); });
    if (players > 10000) {
        return -1;  // as many as are asked for, until the memory is exhausted
    }
    const MemoryFiles files({{"settings.atr", text}});
    Windowless world;
    world.engine.ReadSettings("settings.atr");
    world.engine.LoadMeshes("settings.atr");
    return 0;
}
