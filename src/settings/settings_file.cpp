#include "engine/engine.h"
#include "engine/singletons.h"
#include "platform/message_box.h"
#include "platform/windows1250.h"
#include "scene/scene.h"
#include "services/log.h"
#include "services/timer.h"
#include "settings/attribute_text.h"

namespace {

void Warn(const char* text) {
    MessageBoxA(nullptr, text, ":-(", MB_OK);
}

/// The text of the settings, up to the first closing brace that closes nothing. False, and a box, if there
/// is no such file.
bool CaptureSettings(const char* fileName, std::string& text, bool& closed) {
    const auto stream = OpenTextFile(fileName);
    if (stream == nullptr) {
        Warn("Nebyl nalezen soubor s nastavením"_1250);
        return false;
    }
    text = ReadAttributeBlock(*stream, &closed);
    return true;
}

/// The player whose index stands behind the key; null if there is no such player.
Player* ScanPlayer(const char*& cursor) {
    const std::int32_t index = ScanInt(cursor);
    return index >= 0 && index < theScene->playerCount ? &theScene->players[index] : nullptr;
}

void ReadFloat(std::string& text, const char* key, float& value, const char* warningOfZero) {
    ForEachKey(text, key, [&](const char* cursor) {
        value = ScanFloat(cursor);
        if (value == 0.0f) {
            Warn(warningOfZero);
        }
    });
}

}  // namespace

bool Engine::ReadSettings(const char* fileName) {
    std::string text;
    bool closed = false;
    if (!CaptureSettings(fileName, text, closed)) {
        return false;
    }
    if (!closed) {
        Log::Write(log, std::string(fileName) + ": the closing brace is missing");
    }

    // The order of the keys is fixed: the players are made before the keys that are about players.
    ForEachKey(text, "*RESOLUTION", [this](const char* cursor) {
        windowRect.right = ScanInt(cursor);
        windowRect.bottom = ScanInt(cursor);
        colourBits = static_cast<std::uint8_t>(ScanInt(cursor));
    });
    ForEachKey(text, "*FONT", [](const char* cursor) { theScene->fontName = ScanName(cursor); });
    ForEachKey(text, "*REFFERENCESPEED",
               [](const char* cursor) { theTimer->referenceSpeed = ScanInt(cursor); });
    ForEachKey(text, "*FRAMERATELIMIT", [](const char* cursor) {
        const std::int32_t framesPerSecond = ScanInt(cursor);
        if (framesPerSecond == 0) {
            Warn("Framerate limit nemůže být nula"_1250);
            return;
        }
        theTimer->framePeriod = 1000 / framesPerSecond;
    });
    ForEachKey(text, "*PLAYERCOUNT", [](const char* cursor) { theScene->AddPlayers(ScanInt(cursor)); });
    ForEachKey(text, "*PLAYERHEADLIMIT", [](const char* cursor) {
        if (Player* player = ScanPlayer(cursor)) {
            player->headLimit = ScanFloat(cursor);
        }
    });
    ForEachKey(text, "*PLAYERKEYBOARDCONTROLS", [](const char* cursor) {
        if (Player* player = ScanPlayer(cursor)) {
            for (const int role : {2, 3, 4, 5, 0, 1, 6, 7}) {
                player->keys[role] = static_cast<std::uint8_t>(ScanInt(cursor));
            }
        }
    });
    ReadFloat(text, "*MOUSESENSITIVITY", mouseSensitivity, "Pozor! Citlivost myši je nastavena na 0"_1250);
    ReadFloat(text, "*JOYSTICKSENSITIVITY", joystickSensitivity,
              "Pozor! Citlivost joysticku je nastavena na 0"_1250);
    ForEachKey(text, "*PLAYERCONTROLLER", [](const char* cursor) {
        if (Player* player = ScanPlayer(cursor)) {
            player->controller = ScanInt(cursor);
        }
    });
    ForEachKey(text, "*PLAYERVIEWPORT", [](const char* cursor) {
        if (Player* player = ScanPlayer(cursor)) {
            player->viewportX = ScanInt(cursor);
            player->viewportY = ScanInt(cursor);
            player->viewportWidth = ScanInt(cursor);
            player->viewportHeight = ScanInt(cursor);
        }
    });
    ReadFloat(text, "*NEARCLIPPINGPLANE", nearPlane, "Pozor! NEARCLIPPINGPLANE je nastavena na 0"_1250);
    ReadFloat(text, "*FARCLIPPINGPLANE", farPlane, "Pozor! FARCLIPPINGPLANE je nastavena na 0"_1250);
    ForEachKey(text, "*FULLSCREEN", [this](const char*) { fullScreen = true; });
    ForEachKey(text, "*SAFE", [this](const char*) { safeMode = true; });
    return true;
}

bool Engine::LoadMeshes(const char* fileName) {
    std::string text;
    bool closed = false;  // told by the first pass over the file
    if (!CaptureSettings(fileName, text, closed)) {
        return false;
    }
    ForEachKey(text, "*LOADMESH", [](const char* cursor) { theScene->LoadMesh(ScanName(cursor).c_str()); });
    return true;
}
