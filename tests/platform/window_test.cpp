#include "platform/window.h"

#include "platform/window_fixture.h"

namespace {

using WindowsOnDisplay = WindowTest;
WITH_AND_WITHOUT_MANAGER(WindowsOnDisplay);

using ManagedWindows = WindowTest;
INSTANTIATE_TEST_SUITE_P(Display, ManagedWindows, testing::Values(WindowManager::Openbox), ManagerName);

std::vector<UINT> SeenKinds() {
    std::vector<UINT> kinds;
    for (const SeenMessage& seen : seenMessages) {
        kinds.push_back(seen.message);
    }
    return kinds;
}

TEST_P(WindowsOnDisplay, MessagesOfStartArriveInsideTheCalls) {
    Create();
    EXPECT_EQ(SeenKinds(), std::vector<UINT>{WM_CREATE});
    seenMessages.clear();
    ShowWindow(window, SW_SHOW);
    EXPECT_EQ(SeenKinds(), (std::vector<UINT>{WM_SIZE, WM_MOVE}));
    seenMessages.clear();
    UpdateWindow(window);
    EXPECT_EQ(SeenKinds(), std::vector<UINT>{WM_PAINT});
    seenMessages.clear();
    UpdateWindow(window);
    EXPECT_TRUE(seenMessages.empty()) << "the procedure has validated the window";
}

TEST_P(WindowsOnDisplay, ClientAreaHasTheSizeAskedFor) {
    Open(800, 600);
    EXPECT_EQ(ClientRectangle(), (RECT{0, 0, 800, 600}));
    const RECT outer = OuterRectangle();
    if (GetParam() == WindowManager::None) {
        EXPECT_EQ(outer, (RECT{0, 0, 800, 600}));
    } else {
        EXPECT_EQ(outer.left, 0);
        EXPECT_EQ(outer.top, 0);
        EXPECT_GT(outer.right, 800);
        EXPECT_GT(outer.bottom, 610) << "a frame and a title bar";
    }
}

TEST_P(WindowsOnDisplay, PopUpHasNoFrame) {
    Open(800, 600, WS_POPUP);
    EXPECT_EQ(ClientRectangle(), (RECT{0, 0, 800, 600}));
    EXPECT_EQ(OuterRectangle(), (RECT{0, 0, 800, 600}));
}

TEST_P(WindowsOnDisplay, ReportsMovesAndSizes) {
    Open();
    const RECT before = OuterRectangle();
    display->Xdotool("windowmove " + Identifier() + " 50 60");
    EXPECT_TRUE(PumpUntilSeen({WM_MOVE, 0}));
    EXPECT_EQ(OuterRectangle(), (RECT{50, 60, before.right + 50, before.bottom + 60}));

    seenMessages.clear();
    display->Xdotool("windowsize " + Identifier() + " 500 300");
    EXPECT_TRUE(PumpUntilSeen({WM_SIZE, 0}));
    EXPECT_EQ(ClientRectangle(), (RECT{0, 0, 500, 300}));
}

TEST_P(ManagedWindows, MinimisedClientAreaIsEmpty) {
    Open();
    const std::string identifier = Identifier();
    display->Xdotool("windowminimize " + identifier);
    EXPECT_TRUE(PumpUntilSeen({WM_SIZE, 0}));
    EXPECT_EQ(ClientRectangle(), RECT{});
    EXPECT_TRUE(PumpUntil([] { return GetActiveWindow() == nullptr; }));

    seenMessages.clear();
    display->Xdotool("windowmap " + identifier);
    EXPECT_TRUE(PumpUntilSeen({WM_SIZE, 0}));
    EXPECT_TRUE(PumpUntil([this] { return ClientRectangle() == RECT{0, 0, 640, 480}; }));
}

TEST_P(WindowsOnDisplay, IsActiveWhileItHasTheKeyboard) {
    Open();
    {
        const OtherWindow other;
        EXPECT_TRUE(PumpUntilSeen({WM_ACTIVATE, 0}));
        EXPECT_EQ(GetActiveWindow(), nullptr);
    }
    display->Xdotool("windowfocus " + Identifier());
    EXPECT_TRUE(PumpUntilSeen({WM_ACTIVATE, 1}));
    EXPECT_EQ(GetActiveWindow(), window);
}

TEST_P(WindowsOnDisplay, AltF4ClosesAndQuits) {
    Open();
    display->Xdotool("key alt+F4");
    EXPECT_TRUE(WaitUntil([] { return !Pump(); }));
    EXPECT_EQ(CountSeen(WM_CLOSE), 1u);
    EXPECT_EQ(seenMessages.back().message, WM_DESTROY);
    EXPECT_EQ(CountSeen(WM_KEYDOWN), 0u) << "keys pressed with Alt are not ordinary ones";
    EXPECT_FALSE(GetClientRect(window, nullptr)) << "the window is gone";
}

TEST_P(ManagedWindows, CloseButtonIsAMessage) {
    Open();
    // The button at the right end of the title bar.
    const RECT outer = OuterRectangle();
    display->Xdotool("mousemove " + std::to_string(outer.right - 10) + " 10 click 1");
    EXPECT_TRUE(WaitUntil([] { return !Pump(); }));
    EXPECT_EQ(CountSeen(WM_CLOSE), 1u);
}

TEST_P(WindowsOnDisplay, DrawsWhereTheScreenShowsIt) {
    Open();
    const HDC deviceContext = GetDC(window);
    const auto shownColour = [] {
        return RunCommand("import -window root -crop 1x1+320+240 -depth 8 txt:- 2>&1").output;
    };
    EXPECT_TRUE(WaitUntil([&] {
        glClearColor(1.0f, 0.0f, 0.0f, 1.0f);
        glClear(GL_COLOR_BUFFER_BIT);
        SwapBuffers(deviceContext);
        return shownColour().find("#FF0000") != std::string::npos;
    })) << shownColour();

    GLint depthBits = 0;
    glGetIntegerv(GL_DEPTH_BITS, &depthBits);
    EXPECT_GE(depthBits, 16);
    GLboolean doubleBuffered = GL_FALSE;
    glGetBooleanv(GL_DOUBLEBUFFER, &doubleBuffered);
    EXPECT_TRUE(doubleBuffered);
}

TEST_P(WindowsOnDisplay, ContextCanGoWhileItIsCurrent) {
    Open();
    EXPECT_TRUE(wglDeleteContext(context));
    EXPECT_TRUE(ReleaseDC(window, GetDC(window)));
    glClear(GL_COLOR_BUFFER_BIT);  // of no effect, but no harm
    EXPECT_TRUE(DestroyWindow(window));
    EXPECT_FALSE(DestroyWindow(window));
}

TEST_P(WindowsOnDisplay, OddSizesFailInOrder) {
    const auto create = [](int width, int height) {
        return CreateWindowExA(0, "test", nullptr, WS_OVERLAPPEDWINDOW, 0, 0, width, height, nullptr,
                               nullptr, nullptr, nullptr);
    };
    EXPECT_EQ(create(2000000000, 100), nullptr);
    EXPECT_EQ(create(100, 100000), nullptr);
    for (const int side : {0, -5, -2147483647}) {
        window = create(side, side);
        ASSERT_NE(window, nullptr);
        ShowWindow(window, SW_SHOW);
        EXPECT_EQ(ClientRectangle().right, 1);
        DestroyWindow(window);
    }
    RECT largest{0, 0, 2147483647, 2147483647};
    AdjustWindowRect(&largest, WS_OVERLAPPEDWINDOW, FALSE);
    EXPECT_GT(largest.right - largest.left, 1000000) << "and no overflow in the difference";
}

TEST(WindowClasses, AreKnownByName) {
    WNDCLASSA windowClass;
    windowClass.lpszClassName = "class";
    EXPECT_EQ(RegisterClassA(&windowClass), 0) << "no procedure";
    windowClass.lpfnWndProc = DefWindowProcA;
    EXPECT_NE(RegisterClassA(&windowClass), 0);
    EXPECT_EQ(RegisterClassA(&windowClass), 0) << "twice";
    EXPECT_EQ(CreateWindowExA(0, "other", "", 0, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr), nullptr);
    EXPECT_TRUE(UnregisterClassA("class", nullptr));
    EXPECT_FALSE(UnregisterClassA("class", nullptr));
}

// Without a display the window is a mere record, and everything that needs more tells so.
TEST(WithoutDisplay, StartGoesThroughItsSteps) {
    unsetenv("DISPLAY");
    seenMessages.clear();
    WNDCLASSA windowClass;
    windowClass.lpfnWndProc = [](HWND, UINT message, WPARAM wParam, LPARAM) -> LRESULT {
        seenMessages.push_back({message, wParam});
        return 0;
    };
    windowClass.lpszClassName = "class";
    RegisterClassA(&windowClass);
    DEVMODEA mode;
    EXPECT_NE(ChangeDisplaySettingsA(&mode, 0), DISP_CHANGE_SUCCESSFUL);
    const HWND window =
        CreateWindowExA(0, "class", "", WS_POPUP, 0, 0, 640, 480, nullptr, nullptr, nullptr, nullptr);
    ASSERT_NE(window, nullptr);

    const HDC deviceContext = GetDC(window);
    PIXELFORMATDESCRIPTOR descriptor;
    EXPECT_EQ(ChoosePixelFormat(deviceContext, &descriptor), 0);
    EXPECT_FALSE(SetPixelFormat(deviceContext, 0, &descriptor));
    EXPECT_EQ(DescribePixelFormat(deviceContext, 0, sizeof descriptor, &descriptor), 0);
    EXPECT_EQ(wglCreateContext(deviceContext), nullptr);
    EXPECT_FALSE(wglMakeCurrent(deviceContext, nullptr));
    EXPECT_FALSE(SwapBuffers(deviceContext));
    ShowWindow(window, SW_SHOW);
    UpdateWindow(window);
    EXPECT_EQ(SeenKinds(), (std::vector<UINT>{WM_CREATE, WM_SIZE, WM_MOVE, WM_PAINT}));
    RECT client;
    EXPECT_TRUE(GetClientRect(window, &client));
    EXPECT_EQ(client, (RECT{0, 0, 640, 480}));
    EXPECT_EQ(GetActiveWindow(), nullptr);

    MSG message;
    EXPECT_FALSE(PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE));
    PostQuitMessage(3);
    EXPECT_TRUE(PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE));
    EXPECT_EQ(GetMessageA(&message, nullptr, 0, 0), 0);
    EXPECT_EQ(message.wParam, 3u);
    EXPECT_TRUE(DestroyWindow(window));
    UnregisterClassA("class", nullptr);
}

}  // namespace
