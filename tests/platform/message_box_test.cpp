#include "platform/message_box.h"

#include "platform/window_fixture.h"
#include "platform/windows1250.h"

namespace {

using MessageBoxes = WindowTest;
WITH_AND_WITHOUT_MANAGER(MessageBoxes);

/// Shows a box, which a user closes by Return; its size on the screen. The user is a process of its own:
/// a box forks, which no second thread would bear. If the box doesn't close, the display goes.
std::string ShowAndClose(const VirtualDisplay& display, const char* text) {
    int sizePipe[2];
    EXPECT_EQ(pipe(sizePipe), 0);
    const pid_t user = fork();
    if (user == 0) {
        std::string size;
        const bool closed = display.CloseBox("box", &size);
        if (!closed) {
            kill(display.server, SIGKILL);
        }
        _exit(closed && write(sizePipe[1], size.data(), size.size()) > 0 ? 0 : 1);
    }
    close(sizePipe[1]);
    MessageBoxA(nullptr, text, "box", MB_ICONERROR);
    char size[100] = "";
    EXPECT_GT(read(sizePipe[0], size, sizeof size - 1), 0);
    close(sizePipe[0]);
    int status = 1;
    waitpid(user, &status, 0);
    EXPECT_EQ(status, 0) << text;
    return size;
}

TEST_P(MessageBoxes, ShowTheirTextWholeAndGiveTheKeyboardBack) {
    // A text that is cut makes a narrower box: in the box's font all letters are equally wide.
    for (const char* locale : {"C", ""}) {
        *locale != '\0' ? setenv("LC_ALL", locale, 1) : unsetenv("LC_ALL");
        const std::string plain = ShowAndClose(*display, "Nemohu prepnout na fullscreen a tak dale");
        EXPECT_EQ(ShowAndClose(*display, "Nemohu přepnout na fullscreen a tak dále"_1250), plain);
        const char* after = std::getenv("LC_ALL");
        EXPECT_STREQ(after ? after : "", locale) << "the environment is as before";
    }
    Open();
    display->Xdotool("keydown w");
    EXPECT_TRUE(PumpUntilSeen({WM_KEYDOWN, 'W'}));
    ShowAndClose(*display, "Above the window, with a key held");
    EXPECT_TRUE(PumpUntil([this] { return GetActiveWindow() == window; })) << "the focus comes back";
    EXPECT_FALSE(HasSeen({WM_KEYUP, 'W'}));
    display->Xdotool("keyup w");
    EXPECT_TRUE(PumpUntilSeen({WM_KEYUP, 'W'}));
}

TEST(MessageBoxWithoutDisplay, GoesToStandardError) {
    for (const char* dead : {"", ":54321"}) {
        *dead != '\0' ? setenv("DISPLAY", dead, 1) : unsetenv("DISPLAY");
        testing::internal::CaptureStderr();
        EXPECT_EQ(MessageBoxA(nullptr, "Nedostatek paměti pro operátor new"_1250, nullptr, MB_OK), 1);
        MessageBoxA(nullptr, "Nelze zahájit logování"_1250, ":-(", MB_ICONEXCLAMATION);
        MessageBoxA(nullptr, std::string(100000, 'a').c_str(), "long", MB_OK);
        const std::string printed = testing::internal::GetCapturedStderr();
        EXPECT_EQ(printed.substr(0, printed.find("[long]")),
                  "Nedostatek paměti pro operátor new\n[:-(] Nelze zahájit logování\n");
        EXPECT_GT(printed.size(), 8000u);
        EXPECT_EQ(printed.back(), '\n') << "cut, but for the end";
    }
    unsetenv("DISPLAY");
}

}  // namespace
