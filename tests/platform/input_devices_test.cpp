#include "platform/input_devices.h"

#include <SDL.h>

#include "platform/cursor.h"
#include "platform/window_fixture.h"

namespace {

using Cursor = WindowTest;
INSTANTIATE_TEST_SUITE_P(Display, Cursor, testing::Values(WindowManager::None), ManagerName);

POINT Position() {
    POINT point{-1, -1};
    EXPECT_TRUE(GetCursorPos(&point));
    return point;
}

TEST_P(Cursor, IsReadPutAndShown) {
    Open();
    for (const POINT place : {POINT{300, 200}, POINT{1000, 900}}) {  // also outside of the window
        display->Xdotool("mousemove " + std::to_string(place.x) + " " + std::to_string(place.y));
        EXPECT_EQ(Position(), place);
    }
    EXPECT_TRUE(SetCursorPos(100, 50));
    EXPECT_EQ(Position(), (POINT{100, 50}));
    EXPECT_NE(display->Xdotool("getmouselocation").find("x:100 y:50 "), std::string::npos);
    display->Xdotool("mousemove_relative 7 4");
    EXPECT_EQ(Position(), (POINT{107, 54}));

    // It shows by a counter.
    const std::pair<BOOL, int> steps[] = {{FALSE, -1}, {FALSE, -2}, {TRUE, -1}, {TRUE, 0}, {TRUE, 1}};
    for (const auto& [show, counter] : steps) {
        EXPECT_EQ(ShowCursor(show), counter);
        EXPECT_EQ(SDL_ShowCursor(SDL_QUERY), counter < 0 ? SDL_DISABLE : SDL_ENABLE);
    }
    ShowCursor(FALSE);

    // Where it can't be moved, its place is made up.
    SetCursorMadeUp(true);
    ShowCursor(FALSE);
    EXPECT_TRUE(SetCursorPos(320, 240));
    EXPECT_EQ(Position(), (POINT{320, 240}));
    Pump();
    SetCursorPos(320, 240);
    display->Xdotool("mousemove_relative 7 4");
    EXPECT_TRUE(PumpUntil([] { return Position() == POINT{327, 244}; })) << Position().x;
    ShowCursor(TRUE);
    EXPECT_FALSE(SDL_GetRelativeMouseMode());
    SetCursorMadeUp(false);
}

/// A stick with two axes and 40 buttons, plugged in for as long as it lives.
struct VirtualStick {
    int index = SDL_JoystickAttachVirtual(SDL_JOYSTICK_TYPE_GAMECONTROLLER, 2, 40, 0);
    SDL_Joystick* stick = SDL_JoystickOpen(index);

    ~VirtualStick() {
        SDL_JoystickClose(stick);
        SDL_JoystickDetachVirtual(index);
    }
    void Move(int x, int y) {
        SDL_JoystickSetVirtualAxis(stick, 0, static_cast<Sint16>(x));
        SDL_JoystickSetVirtualAxis(stick, 1, static_cast<Sint16>(y));
    }
};

JOYINFOEX Sample() {
    JOYINFOEX info;
    EXPECT_EQ(joyGetPosEx(JOYSTICKID1, &info), JOYERR_NOERROR);
    return info;
}

TEST(Joystick, RestsAtTheCentreAndReachesBothEndsWithoutAStep) {
    JOYCAPSA capabilities;
    EXPECT_NE(joyGetDevCapsA(JOYSTICKID1, &capabilities, sizeof capabilities), JOYERR_NOERROR);
    for (const DWORD range :
         {capabilities.wXmax - capabilities.wXmin, capabilities.wYmax - capabilities.wYmin}) {
        EXPECT_EQ(range, 65535u) << "also while none is plugged in";
    }
    VirtualStick stick;
    EXPECT_EQ(joyGetDevCapsA(JOYSTICKID1, &capabilities, sizeof capabilities), JOYERR_NOERROR);
    // A tenth of the way to the stop is no deflection.
    const std::pair<int, DWORD> positions[] = {{0, 32767},    {3276, 32767},  {-3276, 32767},
                                               {3300, 32793}, {-3300, 32741}, {32767, 65535},
                                               {-32768, 0}};
    for (const auto& [axis, position] : positions) {
        stick.Move(axis, 0);
        EXPECT_EQ(Sample().dwXpos, position) << axis;
        stick.Move(0, axis);
        EXPECT_EQ(Sample().dwYpos, position) << axis;
        EXPECT_EQ(Sample().dwXpos, 32767u);
    }
    DWORD before = 0;
    for (int axis = -32768; axis <= 32767; axis += 64) {
        stick.Move(axis, 0);
        const DWORD position = Sample().dwXpos;
        EXPECT_TRUE(position >= before && position <= before + 80) << axis;
        before = position;
    }
}

TEST(Joystick, ButtonsAreBitsAndItComesAndGoes) {
    JOYINFOEX info;
    info.dwXpos = 12;
    EXPECT_NE(joyGetPosEx(JOYSTICKID1, &info), JOYERR_NOERROR);
    {
        VirtualStick stick;
        for (const int button : {0, 3, 31, 32}) {  // more than 32 have no bit
            SDL_JoystickSetVirtualButton(stick.stick, button, 1);
        }
        EXPECT_EQ(Sample().dwButtons, 0x80000009u);
        SDL_JoystickSetVirtualButton(stick.stick, 0, 0);
        EXPECT_EQ(Sample().dwButtons, 0x80000008u);
    }
    EXPECT_NE(joyGetPosEx(JOYSTICKID1, &info), JOYERR_NOERROR);
    EXPECT_EQ(info.dwXpos, 12u) << "untouched";
    VirtualStick another;
    EXPECT_EQ(Sample().dwXpos, 32767u);
    EXPECT_NE(joyGetPosEx(1, &info), JOYERR_NOERROR) << "there is only the first one";
}

}  // namespace
