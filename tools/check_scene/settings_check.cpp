#include <cmath>
#include <numbers>

#include "check_scene/checks.h"
#include "check_scene/key_check.h"
#include "engine/engine.h"
#include "scene/scene.h"

// The settings file beyond its single keys.

namespace {

void CheckEnd(Findings& findings, const World& world) {
    const TextFile& settings = world.settings;
    if (!world.settingsClosed) {
        const std::size_t last = settings.text.find_last_not_of(" \n");
        findings.Warn("settings-unclosed", settings.At(last == std::string::npos ? 0 : last),
                      "the closing brace is missing: end the file with a lone }");
        return;
    }
    for (const KeyUse& use :
         FindKeyUses(settings, world.settingsEnd, settings.text.size(), KeyPlace::Settings)) {
        if (use.key != nullptr && !settings.IsInComment(use.position)) {
            findings.Cause("settings-after-end", settings.At(use.position),
                           use.word + " isn't read: the settings end at the closing brace in line " +
                               std::to_string(settings.LineOf(world.settingsEnd - 1)));
        }
    }
}

void CheckDevices(Findings& findings, const World& world) {
    const struct {
        int device;
        const char* key;
        const char* name;
    } devices[] = {{1, "*MOUSESENSITIVITY", "mouse"}, {2, "*JOYSTICKSENSITIVITY", "joystick"}};
    for (std::int32_t i = 0; i < world.scene->playerCount; i++) {
        for (const auto& device : devices) {
            if (world.scene->players[i].controller != device.device ||
                world.SettingOf(device.key) != nullptr) {
                continue;
            }
            std::string text = "player " + std::to_string(i) + " plays by " + device.name +
                               ", and there is no " + device.key;
            if (device.device == 1) {
                const double degrees = 10.0 * world.engine->mouseSensitivity * 180.0 / std::numbers::pi;
                text += ": 10 pixels turn by " + Shown(std::round(degrees)) + " degrees; 0.005 feels usual";
            }
            findings.Warn("no-sensitivity", world.AtSetting("*PLAYERCONTROLLER", i), text);
        }
    }
}

}  // namespace

void CheckSettings(Findings& findings, const World& world) {
    CheckKeys(findings, world.settings, world.settingsKeys, KeyPlace::Settings, world.scene->playerCount);
    CheckEnd(findings, world);
    const Engine& engine = *world.engine;
    const KeyUse* resolution = world.SettingOf("*RESOLUTION");
    if (resolution != nullptr) {
        const std::int32_t bits = resolution->Whole(2);
        if (bits > 16 && bits < 32 && bits != 24) {
            findings.Error(
                "colour-bits", world.AtSetting("*RESOLUTION"),
                "*RESOLUTION: the colour bits are 16, 24 or 32, and not " + std::to_string(bits));
        }
    }
    if (engine.farPlane <= engine.nearPlane) {
        findings.Error("clipping-planes", world.AtSetting("*FARCLIPPINGPLANE"),
                       "the far clipping plane, " + Shown(engine.farPlane) +
                           ", has to lie behind the near one, " + Shown(engine.nearPlane));
    }
    if (world.SettingOf("*FRAMERATELIMIT") == nullptr) {
        findings.Warn("no-frame-rate", world.AtSetting("*FRAMERATELIMIT"),
                      "there is no *FRAMERATELIMIT: everything moves at 10 frames a second; 50 is usual");
    }
    if (world.scenes.empty()) {
        findings.Error("no-loadmesh", world.AtSetting("*LOADMESH"),
                       "there is no *LOADMESH: the world is empty");
    }
    CheckDevices(findings, world);
}
