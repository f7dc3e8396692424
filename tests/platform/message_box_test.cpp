#include "platform/message_box.h"

#include "platform/window_fixture.h"
#include "platform/windows1250.h"

namespace {

using MessageBoxes = WindowTest;
WITH_AND_WITHOUT_MANAGER(MessageBoxes);

/// Shows a box, which a user closes by Return; its size on the screen. The user is a process of its own:
/// a box forks, which no second thread would bear. If the box doesn't close, the display goes.
std::string ShowAndClose(const VirtualDisplay& display, const char* text, const char* caption) {
    int sizePipe[2];
    EXPECT_EQ(pipe(sizePipe), 0);
    const pid_t user = fork();
    if (user == 0) {
        std::string size;
        const bool closed = display.CloseBox(caption, &size);
        if (!closed) kill(display.server, SIGKILL);
        _exit(closed && write(sizePipe[1], size.data(), size.size()) > 0 ? 0 : 1);
    }
    close(sizePipe[1]);
    MessageBoxA(nullptr, text, caption, MB_ICONERROR);
    char size[100] = "";
    EXPECT_GT(read(sizePipe[0], size, sizeof size - 1), 0);
    close(sizePipe[0]);
    int status = 1;
    waitpid(user, &status, 0);
    EXPECT_EQ(status, 0) << caption;
    return size;
}

TEST_P(MessageBoxes, CloseByReturnOneAfterTheOther) {
    ShowAndClose(*display, "Before there is a window", "box one");
    ShowAndClose(*display, "And again", "box two");
    Open();
    ShowAndClose(*display, "Above the window", "box three");
    ShowAndClose(*display, "And again", "box four");
    EXPECT_TRUE(PumpUntil([this] { return GetActiveWindow() == window; })) << "the focus comes back";
}

TEST_P(MessageBoxes, ShowAboveFullScreen) {
    DEVMODEA mode;
    mode.dmPelsWidth = 1280;
    mode.dmPelsHeight = 1024;
    ASSERT_EQ(ChangeDisplaySettingsA(&mode, 0), DISP_CHANGE_SUCCESSFUL);
    Open(1280, 1024, WS_POPUP);
    ShowAndClose(*display, "Above the window", "box");
    EXPECT_TRUE(PumpUntil([this] { return GetActiveWindow() == window; }));
    EXPECT_EQ(ClientRectangle(), (RECT{0, 0, 1280, 1024}));
    ChangeDisplaySettingsA(nullptr, 0);
}

// A text that is cut makes a narrower box: in the box's font all letters are equally wide.
TEST_P(MessageBoxes, ShowCzechTextWhole) {
    setenv("LC_ALL", "C", 1);
    const std::string plain =
        ShowAndClose(*display, "Nemohu prepnout na fullscreen pri zvolenem rozliseni a tak dale", "plain");
    const std::string czech = ShowAndClose(
        *display, "Nemohu přepnout na fullscreen při zvoleném rozlišení a tak dále"_1250, "czech");
    EXPECT_EQ(czech, plain);
    EXPECT_NE(czech, "");
    EXPECT_STREQ(std::getenv("LC_ALL"), "C") << "the environment is as before";
    EXPECT_EQ(std::stof("0.5"), 0.5f);
    unsetenv("LC_ALL");
}

TEST_P(MessageBoxes, ReleaseNoKeys) {
    Open();
    display->Xdotool("keydown w");
    EXPECT_TRUE(PumpUntilSeen({WM_KEYDOWN, 'W'}));
    ShowAndClose(*display, "With a key held", "box");
    EXPECT_TRUE(PumpUntil([this] { return GetActiveWindow() == window; }));
    EXPECT_FALSE(HasSeen({WM_KEYUP, 'W'}));
    display->Xdotool("keyup w");
    EXPECT_TRUE(PumpUntilSeen({WM_KEYUP, 'W'}));
}

TEST(MessageBoxWithoutDisplay, GoesToStandardError) {
    unsetenv("DISPLAY");
    testing::internal::CaptureStderr();
    MessageBoxA(nullptr, "Nedostatek paměti pro operátor new"_1250, nullptr, MB_OK);
    MessageBoxA(nullptr, "Nelze zahájit logování"_1250, ":-(", MB_ICONEXCLAMATION);
    MessageBoxA(nullptr, std::string(100000, 'a').c_str(), "long", MB_OK);
    const std::string printed = testing::internal::GetCapturedStderr();
    EXPECT_EQ(printed.substr(0, printed.find("[long]")),
              "Nedostatek paměti pro operátor new\n[:-(] Nelze zahájit logování\n");
    EXPECT_EQ(printed.back(), '\n');
}

TEST(MessageBoxWithoutDisplay, DeadDisplayCountsAsNone) {
    setenv("DISPLAY", ":54321", 1);
    testing::internal::CaptureStderr();
    MessageBoxA(nullptr, "text", "caption", MB_OK);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "[caption] text\n");
    unsetenv("DISPLAY");
}

}  // namespace
