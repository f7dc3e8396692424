#include "engine/engine.h"
#include "engine/singletons.h"
#include "gl_lights/gl_lights.h"
#include "scene/scene.h"
#include "simulation/player_control.h"

namespace {

constexpr int escapeKey = 0x1B;
constexpr int numericPad1Key = 0x61;

/// How far numeric pad 1 moves the first light along y in a frame, in world units.
constexpr float lightStep = 0.5f;

/// Radians for the way from the rest position: the difference of two unsigned numbers has a sign.
float Deflection(std::uint32_t position, std::uint32_t centre, float sensitivity) {
    return static_cast<float>(static_cast<std::int32_t>(position - centre)) * sensitivity;
}

void MoveFirstLight(Scene& scene) {
    if (scene.lightCount <= 0) {
        return;
    }
    Light& light = scene.lights[0];
    const float moved[4] = {light.position[0], light.position[1] + lightStep, light.position[2],
                            light.position[3]};
    SetPosition(light, moved);
}

}  // namespace

void Engine::SampleInput() {
    const bool active = GetActiveWindow() == window;
    // Nobody has moved the mouse of a window that isn't active.
    Vector mouseDelta;
    if (active) {
        POINT cursor{mouseCentreX, mouseCentreY};
        GetCursorPos(&cursor);
        mouseDelta.x = static_cast<float>(cursor.x - mouseCentreX) * mouseSensitivity;
        mouseDelta.y = static_cast<float>(cursor.y - mouseCentreY) * mouseSensitivity;
        if (joyGetPosEx(JOYSTICKID1, &joystickState) != JOYERR_NOERROR) {
            // Pulled out while it was deflected, it must not go on turning the player.
            joystickState.dwXpos = joystickCentreX;
            joystickState.dwYpos = joystickCentreY;
            joystickState.dwButtons = 0;
        }
    } else {
        ClipCursor(nullptr);
    }
    const Vector joystickDelta(Deflection(joystickState.dwXpos, joystickCentreX, joystickSensitivity),
                               Deflection(joystickState.dwYpos, joystickCentreY, joystickSensitivity),
                               0.0f);
    const std::uint8_t mouseButtons[3] = {mouseLeftButton, mouseMiddleButton, mouseRightButton};

    if (keyState[escapeKey] != 0) {
        PostMessageA(window, WM_DESTROY, 0, 0);
    }
    Scene& scene = *theScene;
    for (std::int32_t i = 0; i < scene.playerCount; i++) {
        thePlayerControl->ControlByKeyboard(scene, i, keyState);
        thePlayerControl->ControlByMouse(scene, i, mouseDelta, mouseButtons);
        thePlayerControl->ControlByJoystick(scene, i, joystickDelta, joystickState);
        if (active) {
            SetCursorPos(mouseCentreX, mouseCentreY);
        }
    }
    if (keyState[numericPad1Key] != 0) {
        MoveFirstLight(scene);
    }
}
