#include <SDL.h>

#include <algorithm>
#include <cstdlib>

#include "platform/input_devices.h"
#include "platform/run.h"

namespace {

constexpr int largestPosition = 65535;
constexpr int centre = largestPosition / 2;
constexpr int deadZone = SDL_JOYSTICK_AXIS_MAX / 10;  // of the way to the stop
constexpr int mostButtons = 32;

SDL_Joystick* openJoystick = nullptr;

bool StartJoysticks() {
    if (SDL_WasInit(SDL_INIT_JOYSTICK)) {
        return true;
    }
    // Sampled on request, at the foreground or not, so that a sample is never an old one.
    SDL_SetHint(SDL_HINT_JOYSTICK_ALLOW_BACKGROUND_EVENTS, "1");
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
    return SDL_InitSubSystem(SDL_INIT_JOYSTICK) == 0;
}

/// The first joystick there is, freshly sampled; null without one.
SDL_Joystick* Joystick() {
    if (!StartJoysticks()) {
        return nullptr;
    }
    SDL_JoystickUpdate();
    if (openJoystick != nullptr && !SDL_JoystickGetAttached(openJoystick)) {
        SDL_JoystickClose(openJoystick);
        openJoystick = nullptr;
    }
    if (openJoystick == nullptr && SDL_NumJoysticks() > 0) {
        openJoystick = SDL_JoystickOpen(0);
        SDL_JoystickUpdate();
    }
    return openJoystick;
}

/// An axis at rest rarely reads 0, hence the dead zone. Beyond it the position leaves the centre without
/// a step and reaches both ends of the range.
std::int32_t Position(int axis) {
    if (std::abs(axis) <= deadZone) {
        return centre;
    }
    if (axis > 0) {
        return centre + (axis - deadZone) * (largestPosition - centre) / (SDL_JOYSTICK_AXIS_MAX - deadZone);
    }
    return centre + (axis + deadZone) * centre / (-SDL_JOYSTICK_AXIS_MIN - deadZone);
}

RunValues AskJoystick() {
    SDL_Joystick* device = Joystick();
    if (device == nullptr) {
        return {JOYERR_UNPLUGGED};
    }
    DWORD buttons = 0;
    const int buttonCount = std::min(SDL_JoystickNumButtons(device), mostButtons);
    for (int i = 0; i < buttonCount; i++) {
        if (SDL_JoystickGetButton(device, i)) {
            buttons |= DWORD{1} << i;
        }
    }
    return {JOYERR_NOERROR, Position(SDL_JoystickGetAxis(device, 0)),
            Position(SDL_JoystickGetAxis(device, 1)), static_cast<std::int32_t>(buttons)};
}

}  // namespace

UINT joyGetPosEx(UINT joystick, JOYINFOEX* info) {
    if (joystick != JOYSTICKID1) {
        return MMSYSERR_NODRIVER;
    }
    const auto [error, x, y, buttons] = ThroughRun(RunItemKind::Joystick, AskJoystick);
    if (error == JOYERR_NOERROR) {
        info->dwXpos = static_cast<DWORD>(x);
        info->dwYpos = static_cast<DWORD>(y);
        info->dwButtons = static_cast<DWORD>(buttons);
    }
    return static_cast<UINT>(error);
}

UINT joyGetDevCapsA(UINT joystick, JOYCAPSA* capabilities, UINT) {
    *capabilities = {0, largestPosition, 0, largestPosition};
    if (joystick != JOYSTICKID1) {
        return MMSYSERR_NODRIVER;
    }
    return Joystick() != nullptr ? JOYERR_NOERROR : JOYERR_UNPLUGGED;
}

UINT joySetCapture(HWND, UINT, UINT, BOOL) {
    return JOYERR_NOERROR;
}

UINT joyReleaseCapture(UINT) {
    return JOYERR_NOERROR;
}
