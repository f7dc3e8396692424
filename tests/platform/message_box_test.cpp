#include "platform/message_box.h"

#include "platform/window_fixture.h"
#include "platform/windows1250.h"
#include "support/temporary_folder.h"

namespace {

using MessageBoxes = WindowTest;
WITH_AND_WITHOUT_MANAGER(MessageBoxes);

/// Shows a box to a user, a process of its own that does what the commands say once the box is there, and
/// goes on until it has gone. If it never goes, the display does. Returns the size it had on the screen.
std::string ShowBoxTo(const VirtualDisplay& display, const std::string& commands,
                      const std::string& text = "Pozor!") {
    int sizePipe[2];
    EXPECT_EQ(pipe(sizePipe), 0);
    const pid_t user = fork();
    if (user == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        std::string size;
        WaitUntil([&] { return !(size = display.WindowSize("box")).empty(); });
        const bool sent = write(sizePipe[1], size.data(), size.size()) > 0;
        const bool closed = sent && WaitUntil([&] {
                                display.Xdotool(commands);
                                return display.WindowSize("box").empty();
                            });
        if (!closed) {
            kill(display.server, SIGKILL);
        }
        _exit(closed ? 0 : 1);
    }
    close(sizePipe[1]);
    testing::internal::CaptureStderr();
    MessageBoxA(nullptr, text.c_str(), "box", MB_OK);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "[box] " + Windows1250ToUtf8(text.c_str()) + "\n");
    char size[100] = "";
    EXPECT_GT(read(sizePipe[0], size, sizeof size - 1), 0);
    close(sizePipe[0]);
    int status = 1;
    waitpid(user, &status, 0);
    EXPECT_EQ(status, 0) << text;
    return size;
}

TEST_P(MessageBoxes, EndByKeysAndTheirButtonAndGiveTheKeyboardBack) {
    // Also on a server without fonts for its own use.
    ASSERT_EQ(RunCommand("xset fp= built-ins 2>&1").exitCode, 0);
    ShowBoxTo(*display, "sleep 0.2 key Return");
    ShowBoxTo(*display, "sleep 0.2 key space");
    Open();
    display->Xdotool("keydown w");
    EXPECT_TRUE(PumpUntilSeen({WM_KEYDOWN, 'W'}));
    ShowBoxTo(*display, "sleep 0.2 key Escape");
    EXPECT_TRUE(PumpUntil([this] { return GetActiveWindow() == window; })) << "the focus comes back";
    EXPECT_EQ(CountSeen(WM_KEYUP), 0u) << "W is held, and Escape was the box's";
    display->Xdotool("keyup w");
    EXPECT_TRUE(PumpUntilSeen({WM_KEYUP, 'W'}));
    // Centred on the screen, with its button in the middle of its width.
    ShowBoxTo(*display, "sleep 0.2 mousemove 640 545 click 1");
    glClear(GL_COLOR_BUFFER_BIT);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR)) << "the window's context is current again";
}

TEST_P(MessageBoxes, BreakTheirTextAtWordsAndStayOnTheScreen) {
    const auto size = [this](const std::string& text) {
        int width = 0;
        int height = 0;
        std::sscanf(ShowBoxTo(*display, "sleep 0.2 key Return", text).c_str(), "%dx%d", &width, &height);
        return std::pair(width, height);
    };
    const auto [width, oneLine] = size("Nemohu přepnout na fullscreen"_1250);
    EXPECT_EQ(size("Nemohu prepnout na fullscreen"), std::pair(width, oneLine)) << "no letter is missing";
    const int line = size("two\nlines").second - oneLine;
    EXPECT_GT(line, 10);
    // Words that all find room in a line, and one word that finds it in none.
    for (const std::string& text :
         {std::string("Nebyl nalezen soubor s nastavenim v teto slozce, a to ani jinde, tedy nikde, ") +
              "a tak dale, a tak dale, a tak dale",
          "/" + std::string(120, 'o')}) {
        const auto [wide, high] = size(text);
        EXPECT_EQ(high, oneLine + line) << text;
        EXPECT_LE(wide, 640) << text;
    }
    const std::string word = std::string(40, 'o') + " ";  // in a line there is room for one and a half
    EXPECT_EQ(size(word + word + word + word + word).second, oneLine + 4 * line);
    EXPECT_LE(size(std::string(8000, 'm')).second, 1024);
}

TEST_P(MessageBoxes, DrawTheFirstColumnOfALetter) {
    const TemporaryFolder folder;
    ShowBoxTo(*display, "sleep 0.2 exec --sync --args 6 import -depth 8 -window root box.ppm key Return",
              std::string(30, '|'));
    // Each stroke is one pixel wide and more than 10 high; the button's letters have some 50.
    const CommandResult ink = RunCommand("ppmhist -noheader box.ppm | awk '$1 == 20 {print $5}'");
    EXPECT_GT(std::atoi(ink.output.c_str()), 30 * 10) << ink.output;
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
