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
