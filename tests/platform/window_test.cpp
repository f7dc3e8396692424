#include "platform/window.h"

#include "platform/display_guard.h"
#include "platform/window_fixture.h"

namespace {

using WindowsOnDisplay = WindowTest;
WITH_AND_WITHOUT_MANAGER(WindowsOnDisplay);

std::vector<UINT> SeenKinds() {
    std::vector<UINT> kinds(seenMessages.size());
    std::ranges::transform(seenMessages, kinds.begin(), &SeenMessage::message);
    seenMessages.clear();
    return kinds;
}

TEST_P(WindowsOnDisplay, StartDispatchesItsMessagesAndGivesTheClientAreaItsSize) {
    RECT outer{0, 0, 640, 480};
    AdjustWindowRect(&outer, WS_OVERLAPPEDWINDOW, FALSE);
    EXPECT_EQ(outer, (RECT{-4, -23, 644, 484}));
    AdjustWindowRect(&outer, WS_POPUP, FALSE);
    EXPECT_EQ(outer, (RECT{-4, -23, 644, 484})) << "no frame";

    Create();
    EXPECT_EQ(SeenKinds(), std::vector<UINT>{WM_CREATE});
    EXPECT_EQ(CreateWindowExA(0, "test", "", 0, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr), nullptr)
        << "there is one window at a time";
    EXPECT_FALSE(UnregisterClassA("test", nullptr)) << "and it needs its class";
    EXPECT_FALSE(ShowWindow(window, SW_SHOW)) << "it wasn't to be seen before";
    EXPECT_EQ(SeenKinds(), (std::vector<UINT>{WM_SIZE, WM_MOVE}));
    UpdateWindow(window);
    EXPECT_EQ(SeenKinds(), std::vector<UINT>{WM_PAINT});
    UpdateWindow(window);
    EXPECT_TRUE(seenMessages.empty()) << "the procedure has validated the window";
    EXPECT_TRUE(ShowWindow(window, SW_SHOW));

    EXPECT_EQ(ClientRectangle(), (RECT{0, 0, 640, 480}));
    outer = OuterRectangle();
    if (GetParam() == WindowManager::None) {
        EXPECT_EQ(outer, (RECT{0, 0, 640, 480}));
    } else {
        EXPECT_EQ(outer.left, 0);
        EXPECT_EQ(outer.top, 0);
        EXPECT_GT(outer.right, 640);
        EXPECT_GT(outer.bottom, 490) << "a frame and a title bar";
    }
    // Red is shown red, in two buffers of which only the other one is shown.
    EXPECT_TRUE(WaitUntil([this] {
        glClearColor(1.0f, 0.0f, 0.0f, 1.0f);
        glClear(GL_COLOR_BUFFER_BIT);
        SwapBuffers(GetDC(window));
        return RunCommand("import -window root -crop 1x1+320+240 -depth 8 txt:- 2>&1")
                   .output.find("#FF0000") != std::string::npos;
    }));
    GLint depthBits = 0;
    glGetIntegerv(GL_DEPTH_BITS, &depthBits);
    EXPECT_GE(depthBits, 16);
    GLboolean doubleBuffered = GL_FALSE;
    glGetBooleanv(GL_DOUBLEBUFFER, &doubleBuffered);
    EXPECT_TRUE(doubleBuffered);

    // The context may go while it is current.
    EXPECT_TRUE(wglDeleteContext(std::exchange(context, nullptr)));
    EXPECT_TRUE(ReleaseDC(window, GetDC(window)));
    glClear(GL_COLOR_BUFFER_BIT);
    EXPECT_TRUE(DestroyWindow(window));
    EXPECT_EQ(SeenKinds().back(), WM_DESTROY);
    EXPECT_FALSE(DestroyWindow(window));
}

TEST_P(WindowsOnDisplay, MovesSizesAndTheFocusAreReported) {
    Open();
    const RECT before = OuterRectangle();
    const std::string identifier = Identifier();
    display->Xdotool("windowmove " + identifier + " 50 60");
    EXPECT_TRUE(PumpUntilSeen({WM_MOVE, 0}));
    EXPECT_EQ(OuterRectangle(), (RECT{50, 60, before.right + 50, before.bottom + 60}));
    display->Xdotool("windowsize " + identifier + " 500 300");
    EXPECT_TRUE(PumpUntilSeen({WM_SIZE, 0}));
    EXPECT_EQ(ClientRectangle(), (RECT{0, 0, 500, 300}));
    {
        const OtherWindow other;
        EXPECT_TRUE(PumpUntilSeen({WM_ACTIVATE, 0}));
        EXPECT_EQ(GetActiveWindow(), nullptr);
    }
    GiveBackFocus();
    EXPECT_EQ(GetActiveWindow(), window);
    if (GetParam() == WindowManager::None) {
        return;
    }
    seenMessages.clear();
    display->Xdotool("windowminimize " + identifier);
    EXPECT_TRUE(PumpUntilSeen({WM_SIZE, 0}));
    EXPECT_EQ(ClientRectangle(), RECT{});
    EXPECT_TRUE(PumpUntil([] { return GetActiveWindow() == nullptr; }));
    seenMessages.clear();
    display->Xdotool("windowmap " + identifier);
    EXPECT_TRUE(PumpUntilSeen({WM_SIZE, 0}));
    EXPECT_TRUE(PumpUntil([this] { return ClientRectangle() == RECT{0, 0, 500, 300}; }));
}

TEST_P(WindowsOnDisplay, AltF4AndTheCloseButtonCloseAndQuit) {
    Open();
    if (GetParam() == WindowManager::None) {
        display->Xdotool("key alt+F4");
    } else {  // the button at the right end of the title bar
        display->Xdotool("mousemove " + std::to_string(OuterRectangle().right - 10) + " 10 click 1");
    }
    EXPECT_TRUE(WaitUntil([] { return !Pump(); }));
    EXPECT_EQ(CountSeen(WM_CLOSE), 1u);
    EXPECT_EQ(seenMessages.back().message, WM_DESTROY);
    EXPECT_EQ(CountSeen(WM_KEYDOWN), 0u) << "keys pressed with Alt are not ordinary ones";
    EXPECT_FALSE(GetClientRect(window, nullptr)) << "the window is gone";
}

LONG Ask(DWORD width, DWORD height, DWORD bits) {
    DEVMODEA mode;
    mode.dmFields = DM_BITSPERPEL | DM_PELSWIDTH | DM_PELSHEIGHT;
    mode.dmPelsWidth = width;
    mode.dmPelsHeight = height;
    mode.dmBitsPerPel = bits;
    return ChangeDisplaySettingsA(&mode, 0);
}

TEST_P(WindowsOnDisplay, FullScreenTakesAnOfferedModeAndTheDesktopsComesBack) {
    // The virtual display has one mode, and is given another.
    ASSERT_EQ(
        RunCommand("(xrandr --newmode 800x600 40.00 800 840 968 1056 600 601 605 628 +hsync +vsync && "
                   "xrandr --addmode screen 800x600) 2>&1")
            .exitCode,
        0);
    const auto screenSize = [this] { return display->Xdotool("getdisplaygeometry"); };
    // A process that ends without taking its window down leaves the desktop as it was, too.
    const pid_t child = fork();
    if (child == 0) {
        Ask(800, 600, 16);
        Open(800, 600, WS_POPUP);
        std::exit(screenSize() == "800 600\n" ? 5 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(WEXITSTATUS(status), 5);
    EXPECT_EQ(screenSize(), "1280 1024\n");
    // Nor does one that only believes to have put it back.
    StartDisplayGuard(800, 600);
    RunCommand("xrandr --output screen --mode 800x600 2>&1");
    EXPECT_EQ(screenSize(), "800 600\n");
    StopDisplayGuard();
    EXPECT_EQ(screenSize(), "1280 1024\n");

    for (const DWORD bits : {16u, 24u, 32u}) {
        EXPECT_EQ(Ask(1280, 1024, bits), DISP_CHANGE_SUCCESSFUL);
    }
    for (const auto& [width, height, bits] :
         {std::tuple{1280u, 1024u, 8u}, {1279u, 1024u, 16u}, {1024u, 1280u, 16u}}) {
        EXPECT_EQ(Ask(width, height, bits), DISP_CHANGE_BADMODE);
    }
    ASSERT_EQ(Ask(800, 600, 32), DISP_CHANGE_SUCCESSFUL);
    Open(800, 600, WS_POPUP);
    EXPECT_TRUE(PumpUntil([&] { return screenSize() == "800 600\n"; }));
    EXPECT_EQ(ClientRectangle(), (RECT{0, 0, 800, 600}));
    EXPECT_EQ(OuterRectangle(), (RECT{0, 0, 800, 600}));
    EXPECT_EQ(ChangeDisplaySettingsA(nullptr, 0), DISP_CHANGE_SUCCESSFUL);
    EXPECT_EQ(screenSize(), "1280 1024\n");
}

}  // namespace
