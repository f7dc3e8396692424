#include <memory>
#include <string>
#include <vector>

#include "engine/engine.h"
#include "engine/singletons.h"
#include "platform/message_box.h"
#include "platform/windows1250.h"
#include "scene/scene.h"
#include "services/log.h"
#include "services/timer.h"
#include "text/attribute_text.h"

namespace {

void Warn(const char* text) {
    MessageBoxA(nullptr, text, ":-(", MB_OK);
}

/// The text of the settings, up to the first closing brace that closes nothing. Null, and a box, if there
/// is no such file.
/// @param closed whether there is such a brace
std::unique_ptr<AttributeText> CaptureSettings(const char* fileName, bool& closed) {
    const auto stream = OpenTextFile(fileName);
    if (stream == nullptr) {
        Warn("Nebyl nalezen soubor s nastavením"_1250);
        return nullptr;
    }
    return std::make_unique<AttributeText>(ReadAttributeBlock(*stream, &closed));
}

/// The player whose index stands after the key; null if there is no such player.
Player* ScanPlayer(TextCursor& cursor) {
    const std::int32_t index = ScanInt(cursor);
    return index >= 0 && index < theScene->playerCount ? &theScene->players[index] : nullptr;
}

void ReadFloat(AttributeText& text, const char* key, float& value, const char* warningOfZero) {
    ForEachKey(text, key, [&](TextCursor cursor) {
        value = ScanFloat(cursor);
        if (value == 0.0f) {
            Warn(warningOfZero);
        }
    });
}

}  // namespace

bool Engine::ReadSettings(const char* fileName) {
    bool closed = false;
    const std::unique_ptr<AttributeText> captured = CaptureSettings(fileName, closed);
    if (captured == nullptr) {
        return false;
    }
    AttributeText& text = *captured;
    if (!closed) {
        Log::Write(log, std::string(fileName) + ": the closing brace is missing");
    }

    // The order of the keys is fixed: the players are made before the keys that are about players.
    ForEachKey(text, "*RESOLUTION", [this](TextCursor cursor) {
        windowRect.right = ScanInt(cursor);
        windowRect.bottom = ScanInt(cursor);
        colourBits = static_cast<std::uint8_t>(ScanInt(cursor));
    });
    ForEachKey(text, "*FONT", [](const TextCursor& cursor) { theScene->fontName = ScanName(cursor); });
    ForEachKey(text, "*REFFERENCESPEED",
               [](TextCursor cursor) { theTimer->referenceSpeed = ScanInt(cursor); });
    ForEachKey(text, "*FRAMERATELIMIT", [](TextCursor cursor) {
        const std::int32_t framesPerSecond = ScanInt(cursor);
        if (framesPerSecond == 0) {
            Warn("Framerate limit nemůže být nula"_1250);
            return;
        }
        theTimer->framePeriod = 1000 / framesPerSecond;
    });
    ForEachKey(text, "*PLAYERCOUNT", [](TextCursor cursor) { theScene->AddPlayers(ScanInt(cursor)); });
    ForEachKey(text, "*PLAYERHEADLIMIT", [](TextCursor cursor) {
        if (Player* player = ScanPlayer(cursor)) {
            player->headLimit = ScanFloat(cursor);
        }
    });
    ForEachKey(text, "*PLAYERKEYBOARDCONTROLS", [](TextCursor cursor) {
        if (Player* player = ScanPlayer(cursor)) {
            for (const int role : {2, 3, 4, 5, 0, 1, 6, 7}) {
                player->keys[role] = static_cast<std::uint8_t>(ScanInt(cursor));
            }
        }
    });
    ReadFloat(text, "*MOUSESENSITIVITY", mouseSensitivity, "Pozor! Citlivost myši je nastavena na 0"_1250);
    ReadFloat(text, "*JOYSTICKSENSITIVITY", joystickSensitivity,
              "Pozor! Citlivost joysticku je nastavena na 0"_1250);
    ForEachKey(text, "*PLAYERCONTROLLER", [](TextCursor cursor) {
        if (Player* player = ScanPlayer(cursor)) {
            player->controller = ScanInt(cursor);
        }
    });
    ForEachKey(text, "*PLAYERVIEWPORT", [](TextCursor cursor) {
        if (Player* player = ScanPlayer(cursor)) {
            player->viewportX = ScanInt(cursor);
            player->viewportY = ScanInt(cursor);
            player->viewportWidth = ScanInt(cursor);
            player->viewportHeight = ScanInt(cursor);
        }
    });
    ReadFloat(text, "*NEARCLIPPINGPLANE", nearPlane, "Pozor! NEARCLIPPINGPLANE je nastavena na 0"_1250);
    ReadFloat(text, "*FARCLIPPINGPLANE", farPlane, "Pozor! FARCLIPPINGPLANE je nastavena na 0"_1250);
    ForEachKey(text, "*FULLSCREEN", [this](const TextCursor&) { fullScreen = true; });
    ForEachKey(text, "*SAFE", [this](const TextCursor&) { safeMode = true; });
    return true;
}

bool Engine::LoadMeshes(const char* fileName) {
    bool closed = false;  // reported by the first pass over the file
    const std::unique_ptr<AttributeText> text = CaptureSettings(fileName, closed);
    if (text == nullptr) {
        return false;
    }
    std::vector<std::string> paths;
    ForEachKey(*text, "*LOADMESH", [&](const TextCursor& cursor) { paths.push_back(ScanName(cursor)); });
    theScene->LoadMeshes(paths);
    return true;
}
