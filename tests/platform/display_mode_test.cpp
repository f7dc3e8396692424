#include "platform/window_fixture.h"

namespace {

using DisplayModes = WindowTest;
WITH_AND_WITHOUT_MANAGER(DisplayModes);

LONG Ask(DWORD width, DWORD height, DWORD bits) {
    DEVMODEA mode;
    mode.dmSize = 148;
    mode.dmFields = DM_BITSPERPEL | DM_PELSWIDTH | DM_PELSHEIGHT;
    mode.dmPelsWidth = width;
    mode.dmPelsHeight = height;
    mode.dmBitsPerPel = bits;
    return ChangeDisplaySettingsA(&mode, 0);
}

/// Adds a mode to the one that the virtual display has; false if the tool for it is missing.
bool AddSmallMode() {
    return RunCommand(
               "(xrandr --newmode 800x600 40.00 800 840 968 1056 600 601 605 628 +hsync +vsync && "
               "xrandr --addmode screen 800x600) 2>&1")
               .exitCode == 0;
}

TEST_P(DisplayModes, OnlyOfferedOnesAreTaken) {
    for (const DWORD bits : {16u, 24u, 32u}) {
        EXPECT_EQ(Ask(1280, 1024, bits), DISP_CHANGE_SUCCESSFUL);
    }
    EXPECT_EQ(Ask(1280, 1024, 8), DISP_CHANGE_BADMODE);
    EXPECT_EQ(Ask(1279, 1024, 16), DISP_CHANGE_BADMODE);
    EXPECT_EQ(Ask(1024, 1280, 16), DISP_CHANGE_BADMODE);
    EXPECT_EQ(Ask(0, 0, 16), DISP_CHANGE_BADMODE);
    EXPECT_EQ(ChangeDisplaySettingsA(nullptr, 0), DISP_CHANGE_SUCCESSFUL);
}

TEST_P(DisplayModes, FullScreenFillsTheScreen) {
    ASSERT_EQ(Ask(1280, 1024, 16), DISP_CHANGE_SUCCESSFUL);
    Open(1280, 1024, WS_POPUP);
    EXPECT_EQ(ClientRectangle(), (RECT{0, 0, 1280, 1024}));
    EXPECT_EQ(OuterRectangle(), (RECT{0, 0, 1280, 1024}));
    ChangeDisplaySettingsA(nullptr, 0);
}

TEST_P(DisplayModes, DesktopsModeComesBack) {
    if (!AddSmallMode()) GTEST_SKIP() << "xrandr is missing";
    const auto screenSize = [this] { return display->Xdotool("getdisplaygeometry"); };
    ASSERT_EQ(Ask(800, 600, 32), DISP_CHANGE_SUCCESSFUL);
    Open(800, 600, WS_POPUP);
    EXPECT_TRUE(PumpUntil([&] { return screenSize() == "800 600\n"; }));
    EXPECT_EQ(ClientRectangle(), (RECT{0, 0, 800, 600}));
    EXPECT_EQ(OuterRectangle(), (RECT{0, 0, 800, 600}));

    ChangeDisplaySettingsA(nullptr, 0);
    EXPECT_EQ(screenSize(), "1280 1024\n");
}

// A process that ends without taking its window down leaves the desktop as it was, too.
TEST_P(DisplayModes, DesktopsModeComesBackAtExit) {
    if (!AddSmallMode()) GTEST_SKIP() << "xrandr is missing";
    const auto screenSize = [this] { return display->Xdotool("getdisplaygeometry"); };
    const pid_t child = fork();
    if (child == 0) {
        Ask(800, 600, 16);
        Open(800, 600, WS_POPUP);
        const bool switched = screenSize() == "800 600\n";
        std::exit(switched ? 5 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(WEXITSTATUS(status), 5);
    EXPECT_EQ(screenSize(), "1280 1024\n");
}

}  // namespace
