#include "platform/window_fixture.h"

namespace {

using MessageQueue = WindowTest;
INSTANTIATE_TEST_SUITE_P(Display, MessageQueue, testing::Values(WindowManager::None), ManagerName);

constexpr UINT ownMessage = 1000;

TEST_P(MessageQueue, DeliversInTheOrderOfPosting) {
    Open();
    for (WPARAM i = 0; i < 100; i++) {
        EXPECT_TRUE(PostMessageA(window, ownMessage, i, 0));
    }
    EXPECT_TRUE(Pump());
    ASSERT_EQ(CountSeen(ownMessage), 100u);
    WPARAM expected = 0;
    for (const SeenMessage& seen : seenMessages) {
        if (seen.message != ownMessage) continue;
        EXPECT_EQ(seen.wParam, expected++);
    }
}

TEST_P(MessageQueue, PeekLeavesTheMessageWhereItIs) {
    Open();
    PostMessageA(window, ownMessage, 5, 6);
    MSG message;
    EXPECT_TRUE(PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE));
    EXPECT_TRUE(PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE));
    EXPECT_EQ(GetMessageA(&message, nullptr, 0, 0), 1);
    EXPECT_EQ(message.hwnd, window);
    EXPECT_EQ(message.wParam, 5u);
    EXPECT_EQ(message.lParam, 6);
    EXPECT_TRUE(seenMessages.empty()) << "nothing is dispatched by taking it";
}

TEST_P(MessageQueue, QuitOvertakesWhatIsWaiting) {
    Open();
    PostMessageA(window, ownMessage, 0, 0);
    PostQuitMessage(7);
    MSG message;
    EXPECT_TRUE(PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE));
    EXPECT_EQ(message.message, WM_QUIT);
    EXPECT_EQ(GetMessageA(&message, nullptr, 0, 0), 0);
    EXPECT_EQ(message.wParam, 7u);
    EXPECT_TRUE(Pump()) << "the quit message comes once";
    EXPECT_EQ(CountSeen(ownMessage), 1u);
}

TEST_P(MessageQueue, WindowTakesItsMessagesWithIt) {
    Open();
    PostMessageA(window, ownMessage, 0, 0);
    DestroyWindow(window);
    EXPECT_FALSE(PostMessageA(window, ownMessage, 0, 0));
    EXPECT_FALSE(Pump()) << "only the quit message is left";
    EXPECT_EQ(CountSeen(ownMessage), 0u);
}

// A posted WM_DESTROY goes to the procedure like any message: the window itself stays.
TEST_P(MessageQueue, PostedDestroyLeavesTheWindow) {
    Open();
    PostMessageA(window, WM_DESTROY, 0, 0);
    EXPECT_FALSE(Pump());
    EXPECT_EQ(CountSeen(WM_DESTROY), 1u);
    EXPECT_EQ(ClientRectangle().right, 640);
}

// The procedure may free what the message was kept in.
TEST_P(MessageQueue, DispatchLeavesTheRecordAlone) {
    Open();
    static std::unique_ptr<MSG> record;
    record = std::make_unique<MSG>();
    UnregisterClassA("test", nullptr);
    DestroyWindow(window);
    UnregisterClassA("test", nullptr);
    WNDCLASSA windowClass;
    windowClass.lpszClassName = "test";
    windowClass.lpfnWndProc = [](HWND, UINT message, WPARAM, LPARAM) -> LRESULT {
        if (message == ownMessage) record.reset();
        return 11;
    };
    RegisterClassA(&windowClass);
    Create();
    *record = {window, ownMessage, 0, 0};
    EXPECT_EQ(DispatchMessageA(record.get()), 11);
    EXPECT_EQ(record, nullptr);
}

TEST_P(MessageQueue, WaitsForAMessage) {
    Open();
    Pump();
    RunCommand("(sleep 0.2; xdotool key a) >/dev/null 2>&1 &");
    MSG message;
    do {
        ASSERT_EQ(GetMessageA(&message, nullptr, 0, 0), 1);
    } while (message.message != WM_KEYDOWN);
    EXPECT_EQ(message.wParam, static_cast<WPARAM>('A'));
}

TEST_P(MessageQueue, FullQueueRefusesPosts) {
    Open();
    int posted = 0;
    while (posted < 100000 && PostMessageA(window, ownMessage, 0, 0)) {
        posted++;
    }
    EXPECT_GE(posted, 1000);
    display->Xdotool("key a");
    EXPECT_TRUE(PumpUntilSeen({WM_KEYUP, 'A'})) << "keys wait until there is room";
    EXPECT_EQ(CountSeen(ownMessage), static_cast<std::size_t>(posted));
}

}  // namespace
