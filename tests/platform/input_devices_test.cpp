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

TEST_P(Cursor, IsReadAndPutInScreenCoordinates) {
    Open();
    display->Xdotool("mousemove 300 200");
    EXPECT_EQ(Position(), (POINT{300, 200}));
    display->Xdotool("mousemove 1000 900");
    EXPECT_EQ(Position(), (POINT{1000, 900})) << "outside of the window";
    EXPECT_TRUE(SetCursorPos(100, 50));
    EXPECT_EQ(Position(), (POINT{100, 50}));
    EXPECT_NE(display->Xdotool("getmouselocation").find("x:100 y:50 "), std::string::npos);
    display->Xdotool("mousemove_relative 7 4");
    EXPECT_EQ(Position(), (POINT{107, 54}));
}

TEST_P(Cursor, IsMadeUpWhereItCantBeMoved) {
    Open();
    SetCursorMadeUp(true);
    ShowCursor(FALSE);
    EXPECT_TRUE(SetCursorPos(320, 240));
    EXPECT_EQ(Position(), (POINT{320, 240}));
    Pump();
    SetCursorPos(320, 240);
    display->Xdotool("mousemove_relative 7 4");
    EXPECT_TRUE(PumpUntil([] { return Position() == POINT{327, 244}; })) << Position().x;
    EXPECT_TRUE(SetCursorPos(320, 240));
    EXPECT_EQ(Position(), (POINT{320, 240}));
    ShowCursor(TRUE);
    EXPECT_FALSE(SDL_GetRelativeMouseMode());
}

TEST_P(Cursor, ShowsByACounter) {
    Open();
    EXPECT_EQ(ShowCursor(FALSE), -1);
    EXPECT_EQ(ShowCursor(FALSE), -2);
    EXPECT_EQ(ShowCursor(TRUE), -1);
    EXPECT_EQ(SDL_ShowCursor(SDL_QUERY), SDL_DISABLE);
    EXPECT_EQ(ShowCursor(TRUE), 0);
    EXPECT_EQ(SDL_ShowCursor(SDL_QUERY), SDL_ENABLE);
}

TEST(CursorWithoutDisplay, Fails) {
    POINT point;
    EXPECT_FALSE(GetCursorPos(&point));
    EXPECT_FALSE(SetCursorPos(1, 1));
}

/// A stick with two axes and four buttons, plugged in for as long as it lives.
struct VirtualStick {
    int index = SDL_JoystickAttachVirtual(SDL_JOYSTICK_TYPE_GAMECONTROLLER, 2, 4, 0);
    SDL_Joystick* stick = SDL_JoystickOpen(index);

    ~VirtualStick() {
        SDL_JoystickClose(stick);
        SDL_JoystickDetachVirtual(index);
    }
    void Move(Sint16 x, Sint16 y) {
        SDL_JoystickSetVirtualAxis(stick, 0, x);
        SDL_JoystickSetVirtualAxis(stick, 1, y);
    }
};

JOYINFOEX Sample() {
    JOYINFOEX info;
    EXPECT_EQ(joyGetPosEx(JOYSTICKID1, &info), JOYERR_NOERROR);
    return info;
}

TEST(Joystick, RestsAtTheCentreOfItsRanges) {
    JOYCAPSA capabilities;
    EXPECT_NE(joyGetDevCapsA(JOYSTICKID1, &capabilities, sizeof capabilities), JOYERR_NOERROR);
    const DWORD centre = (capabilities.wXmin + capabilities.wXmax) / 2;
    EXPECT_EQ(capabilities.wXmax, 65535u) << "also while none is plugged in";
    EXPECT_EQ(capabilities.wYmax, 65535u);

    VirtualStick stick;
    EXPECT_EQ(joyGetDevCapsA(JOYSTICKID1, &capabilities, sizeof capabilities), JOYERR_NOERROR);
    for (const Sint16 wobble : {0, 1, -1, 3000, -3000}) {
        stick.Move(wobble, static_cast<Sint16>(-wobble));
        EXPECT_EQ(Sample().dwXpos, centre);
        EXPECT_EQ(Sample().dwYpos, centre);
    }
}

TEST(Joystick, ReachesBothEndsWithoutASteps) {
    JOYINFOEX none;
    joyGetPosEx(JOYSTICKID1, &none);
    VirtualStick stick;
    stick.Move(-32768, 32767);
    EXPECT_EQ(Sample().dwXpos, 0u);
    EXPECT_EQ(Sample().dwYpos, 65535u);

    DWORD before = 0;
    for (int axis = -32768; axis <= 32767; axis += 64) {
        stick.Move(static_cast<Sint16>(axis), 0);
        const DWORD position = Sample().dwXpos;
        EXPECT_GE(position, before) << axis;
        EXPECT_LE(position, before + 80) << axis;
        before = position;
    }
}

TEST(Joystick, ButtonsAreBits) {
    JOYINFOEX none;
    joyGetPosEx(JOYSTICKID1, &none);
    VirtualStick stick;
    EXPECT_EQ(Sample().dwButtons, 0u);
    SDL_JoystickSetVirtualButton(stick.stick, 0, 1);
    SDL_JoystickSetVirtualButton(stick.stick, 3, 1);
    EXPECT_EQ(Sample().dwButtons, 9u);
    SDL_JoystickSetVirtualButton(stick.stick, 0, 0);
    EXPECT_EQ(Sample().dwButtons, 8u);
}

TEST(Joystick, ComesAndGoes) {
    JOYINFOEX info;
    info.dwXpos = 12;
    EXPECT_NE(joyGetPosEx(JOYSTICKID1, &info), JOYERR_NOERROR);
    {
        VirtualStick stick;
        stick.Move(32767, 0);
        EXPECT_EQ(Sample().dwXpos, 65535u);
    }
    EXPECT_NE(joyGetPosEx(JOYSTICKID1, &info), JOYERR_NOERROR);
    EXPECT_EQ(info.dwXpos, 12u) << "untouched";
    VirtualStick another;
    EXPECT_EQ(Sample().dwXpos, 32767u);
    EXPECT_NE(joyGetPosEx(1, &info), JOYERR_NOERROR) << "there is only the first one";
}

}  // namespace
