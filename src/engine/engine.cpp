#include "engine/engine.h"

#include "services/log.h"

Engine::Engine() {
    joystickState.dwSize = 52;
    joystickState.dwFlags =
        JOY_RETURNX | JOY_RETURNY | JOY_RETURNBUTTONS | JOY_RETURNCENTERED | JOY_USEDEADZONE;
    joySetCapture(window, JOYSTICKID1, 5, TRUE);
    joyGetDevCapsA(JOYSTICKID1, &joystickCaps, 404);
    joystickCentreX = (joystickCaps.wXmin + joystickCaps.wXmax) / 2;
    joystickCentreY = (joystickCaps.wYmin + joystickCaps.wYmax) / 2;
    // Until the first sample, and without a joystick, it stands at rest.
    joystickState.dwXpos = joystickCentreX;
    joystickState.dwYpos = joystickCentreY;
}

Engine::~Engine() {
    Log::Write(log, "Destructing Engine");
}
