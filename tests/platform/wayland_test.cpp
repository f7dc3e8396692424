#include "platform/input_devices.h"
#include "platform/window_fixture.h"
#include "support/wayland_display.h"

// Windows of a Wayland compositor: its own, and those of its X server.

namespace {

bool waylandWasUsed = false;

struct WaylandTest : WindowTest {
    std::unique_ptr<WaylandDisplay> wayland;

    void Start(bool inner) {
        if (!WaylandDisplay::IsInstalled()) {
            GTEST_SKIP() << "weston or xwayland is missing";
        }
        wayland = std::make_unique<WaylandDisplay>();
        waylandWasUsed = true;
        if (inner) {
            setenv("DISPLAY", wayland->innerDisplay.c_str(), 1);
        }
        seenMessages.clear();
        WNDCLASSA windowClass;
        windowClass.lpfnWndProc = Procedure;
        windowClass.lpszClassName = "test";
        ASSERT_NE(RegisterClassA(&windowClass), 0);
    }
    /// A Wayland window isn't there before something is drawn in it. This one fills the compositor's
    /// screen.
    void OpenDrawn() {
        Create(1200, 860);
        ShowWindow(window, SW_SHOW);
        EXPECT_TRUE(PumpUntil([this] {
            SwapBuffers(GetDC(window));
            return GetActiveWindow() == window;
        }));
        seenMessages.clear();
    }
    void TearDown() override {
        if (wayland != nullptr) {
            WindowTest::TearDown();
        }
    }
};

struct Wayland : WaylandTest {
    void SetUp() override { Start(false); }
};
INSTANTIATE_TEST_SUITE_P(Display, Wayland, testing::Values(WindowManager::None), ManagerName);

struct Xwayland : WaylandTest {
    void SetUp() override { Start(true); }
};
INSTANTIATE_TEST_SUITE_P(Display, Xwayland, testing::Values(WindowManager::None), ManagerName);

TEST_P(Wayland, TheCursorIsUnknownUntilItIsPlaced) {
    OpenDrawn();
    POINT point{-7, -8};
    EXPECT_FALSE(GetCursorPos(&point));
    EXPECT_EQ(point, (POINT{-7, -8}));
    EXPECT_TRUE(SetCursorPos(300, 200));
    EXPECT_TRUE(GetCursorPos(&point));
    EXPECT_EQ(point, (POINT{300, 200}));
}

/// A box takes the focus, so SDL takes all keys for released.
TEST_P(Wayland, AKeyHeldOverABoxIsReleasedWhenItsUserDoesSo) {
    OpenDrawn();
    wayland->Xdotool("keydown w");
    EXPECT_TRUE(PumpUntilSeen({WM_KEYDOWN, 'W'}));
    const pid_t user = fork();
    if (user == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        for (;;) {
            wayland->Xdotool("sleep 0.2 key Return");
        }
    }
    const auto start = std::chrono::steady_clock::now();
    MessageBoxA(nullptr, "With a key held", "box", MB_OK);
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(200))
        << "it was on the screen";
    kill(user, SIGKILL);
    waitpid(user, nullptr, 0);
    EXPECT_TRUE(PumpUntil([this] {
        wayland->Xdotool(
            "mousemove 600 450 click 1 sleep 0.1");  // by itself the focus doesn't come back here
        return GetActiveWindow() == window;
    }));
    EXPECT_FALSE(HasSeen({WM_KEYUP, 'W'}));
    wayland->Xdotool("keyup w");
    EXPECT_TRUE(PumpUntilSeen({WM_KEYUP, 'W'}));
}

TEST_P(Xwayland, TheWindowsPlaceFollowsItsMoves) {
    Open(1000, 700);
    const auto drag = [this] {  // the compositor's own way, from anywhere within the window
        wayland->Xdotool(
            "mousemove 600 450 keydown super sleep 0.1 mousedown 1 sleep 0.1 mousemove_relative 25 20 "
            "sleep 0.1 "
            "mousemove_relative 25 20 sleep 0.1 mouseup 1 keyup super");
    };
    drag();  // at first the compositor may not have reported to its X server where it has put the window
    EXPECT_TRUE(PumpUntilSeen({WM_MOVE, 0}));
    const auto shown = std::chrono::steady_clock::now();
    PumpUntil([&] { return std::chrono::steady_clock::now() - shown > std::chrono::milliseconds(300); });
    const RECT before = OuterRectangle();
    drag();
    EXPECT_TRUE(PumpUntil([&] { return OuterRectangle().left == before.left + 50; }))
        << OuterRectangle().left;
    EXPECT_EQ(OuterRectangle().top, before.top + 40);
    EXPECT_EQ(OuterRectangle().right, before.right + 50);
}

TEST_P(Xwayland, AModeIsTakenOnlyIfItIsGiven) {
    DEVMODEA mode;
    mode.dmPelsWidth = 800;
    mode.dmPelsHeight = 600;
    EXPECT_NE(ChangeDisplaySettingsA(&mode, 0), DISP_CHANGE_SUCCESSFUL)
        << "the server offers it all the same";
    mode.dmPelsWidth = 1200;
    mode.dmPelsHeight = 900;
    EXPECT_EQ(ChangeDisplaySettingsA(&mode, 0), DISP_CHANGE_SUCCESSFUL);
    Open(1200, 900, WS_POPUP);
    EXPECT_EQ(ClientRectangle(), (RECT{0, 0, 1200, 900}));
}

}  // namespace

/// Asked by the leak check at the end. The libraries that SDL loads for Wayland leak, and are gone by then.
// NOLINTNEXTLINE(bugprone-reserved-identifier)
extern "C" int __lsan_is_turned_off() {
    return waylandWasUsed ? 1 : 0;
}
