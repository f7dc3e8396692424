#include "platform/window_fixture.h"

namespace {

using MessageQueue = WindowTest;
INSTANTIATE_TEST_SUITE_P(Display, MessageQueue, testing::Values(WindowManager::None), ManagerName);

constexpr UINT ownMessage = 1000;

TEST_P(MessageQueue, KeepsTheOrderOfPostingAndLetsTheQuitMessageOvertake) {
    Open();
    for (WPARAM i = 0; i < 100; i++) {
        EXPECT_TRUE(PostMessageA(window, ownMessage, i, 6));
    }
    PostQuitMessage(7);
    MSG message;
    for (const bool peek : {true, true, false}) {
        EXPECT_EQ(peek ? PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE)
                       : GetMessageA(&message, nullptr, 0, 0),
                  peek ? TRUE : FALSE);
        EXPECT_EQ(message.message, WM_QUIT);
        EXPECT_EQ(message.wParam, 7u);
    }
    // The quit message comes once, and nothing is dispatched by looking at it or taking it.
    for (WPARAM i = 0; i < 50; i++) {
        EXPECT_TRUE(PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE));
        EXPECT_EQ(GetMessageA(&message, nullptr, 0, 0), 1);
        EXPECT_EQ(std::tuple(message.hwnd, message.message, message.wParam, message.lParam),
                  std::tuple(window, ownMessage, i, LPARAM{6}));
    }
    EXPECT_TRUE(seenMessages.empty());
    EXPECT_TRUE(Pump());
    EXPECT_EQ(CountSeen(ownMessage), 50u);
}

TEST_P(MessageQueue, APressLastsToTheNextTurnAtLeast) {
    Open();
    const std::pair<UINT, UINT> keys[] = {{WM_KEYDOWN, WM_KEYUP}, {WM_LBUTTONDOWN, WM_LBUTTONUP}};
    for (const auto& [press, release] : keys) {
        seenMessages.clear();
        for (const UINT message : {press, release, press, release, ownMessage}) {
            PostMessageA(window, message, press == WM_KEYDOWN ? 'W' : 0, 0);
        }
        for (const auto& [presses, releases] : {std::pair{1u, 0u}, {2u, 1u}, {2u, 2u}}) {
            EXPECT_TRUE(Pump());
            EXPECT_EQ(CountSeen(press), presses);
            EXPECT_EQ(CountSeen(release), releases);
        }
        EXPECT_EQ(CountSeen(ownMessage), 1u) << "all in their order";
    }
    // A key that was down before goes at once, also if it repeats first.
    seenMessages.clear();
    PostMessageA(window, WM_KEYDOWN, 'W', 0);
    Pump();
    PostMessageA(window, WM_KEYDOWN, 'W', 0);
    PostMessageA(window, WM_KEYUP, 'W', 0);
    Pump();
    EXPECT_EQ(CountSeen(WM_KEYDOWN), 2u);
    EXPECT_EQ(CountSeen(WM_KEYUP), 1u);
}

TEST_P(MessageQueue, WindowTakesItsMessagesWithIt) {
    Open();
    // A posted WM_DESTROY goes to the procedure like any message: the window itself stays.
    PostMessageA(window, WM_DESTROY, 0, 0);
    EXPECT_FALSE(Pump());
    EXPECT_EQ(CountSeen(WM_DESTROY), 1u);
    EXPECT_EQ(ClientRectangle().right, 640);
    PostMessageA(window, ownMessage, 0, 0);
    DestroyWindow(window);
    EXPECT_FALSE(PostMessageA(window, ownMessage, 0, 0));
    EXPECT_FALSE(Pump()) << "only the quit message is left";
    EXPECT_EQ(CountSeen(ownMessage), 0u);
}

}  // namespace
