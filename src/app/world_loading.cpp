#include "app/world_loading.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>

#include "engine/engine.h"
#include "engine/singletons.h"
#include "platform/message_box.h"
#include "process/close_request.h"
#include "scene/scene.h"
#include "simulation/face_index.h"

namespace {

constexpr std::int32_t additiveSprite = 3;

int boxesBefore = 0;

/// Says on the terminal who knows more, once, if a box has come while the world was loaded. Where a world
/// is only tried, as one that has changed, boxes aren't shown, and check_scene speaks for itself.
void PointToChecker() {
    if (MessageBoxCount() > boxesBefore && !CloseIsRequested()) {
        std::fputs("check_scene says what is wrong with this world, with file and line.\n", stderr);
    }
    boxesBefore = std::numeric_limits<int>::max();
}

}  // namespace

void LoadWorld() {
    boxesBefore = MessageBoxCount();
    // Some damage ends the process that meets it.
    [[maybe_unused]] static const int registered = std::atexit(PointToChecker);
    theEngine->LoadMeshes(settingsFile);
    PointToChecker();
    FaceIndex::PrepareLarge(*theScene);
    theScene->AddSprites(startSpriteCount);
    PlaceSprites();
    theScene->sprites[additiveSprite].blendMode = 0;
}

void PlaceSprites() {
    // A generator of our own, so that the layout is the same with every C library.
    std::uint32_t state = 1;
    const auto next = [&state] {
        state = state * 214013u + 2531011u;  // linear congruential
        return static_cast<std::int32_t>((state >> 16 & 0x7FFFu) % 10);
    };
    for (std::int32_t i = 0; i < startSpriteCount; i++) {
        Vector& position = theScene->sprites[i].position;
        position.x = static_cast<float>(-next());
        position.y = static_cast<float>(-next());
        position.z = static_cast<float>(next());
    }
}
