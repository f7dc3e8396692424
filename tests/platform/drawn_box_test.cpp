#include "platform/window_fixture.h"

namespace {

using DrawnBoxes = WindowTest;
WITH_AND_WITHOUT_MANAGER(DrawnBoxes);

/// Shows a box to a user, a process of its own that does what the commands say once the box is there.
void ShowBoxTo(const VirtualDisplay& display, const std::string& commands) {
    const pid_t user = fork();
    if (user == 0) {
        WaitUntil([&] { return !display.WindowSize("box").empty(); });
        WaitUntil([&] {
            display.Xdotool(commands);
            return false;  // goes on until it is told that the box has gone
        });
        kill(display.server, SIGKILL);
        _exit(1);
    }
    testing::internal::CaptureStderr();
    MessageBoxA(nullptr, "Pozor!", "box", MB_OK);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    kill(user, SIGKILL);
    int status = 0;
    waitpid(user, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status)) << commands;
}

// An X server with its built-in fonts alone, as on a machine without fonts for X, lacks what SDL's box
// needs.
TEST_P(DrawnBoxes, ShowWhereTheServerHasNoFonts) {
    ASSERT_EQ(RunCommand("xset fp= built-ins 2>&1").exitCode, 0);
    ShowBoxTo(*display, "sleep 0.2 key Return");
    Open();
    ShowBoxTo(*display, "sleep 0.2 key Escape");
    EXPECT_TRUE(PumpUntil([this] { return GetActiveWindow() == window; }));
    // Centred on the screen, with its button in the middle of its width.
    ShowBoxTo(*display, "sleep 0.2 mousemove 640 545 click 1");
    glClear(GL_COLOR_BUFFER_BIT);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR)) << "the window's context is current again";
}

}  // namespace
