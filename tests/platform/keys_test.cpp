#include "platform/input_devices.h"
#include "platform/window_fixture.h"

namespace {

using Keys = WindowTest;
WITH_AND_WITHOUT_MANAGER(Keys);

struct KeyCase {
    const char* name;  // of the X server, or its number
    WPARAM code;
};

/// Presses each key in turn and compares the codes that arrive.
void ExpectCodes(const VirtualDisplay& display, const std::vector<KeyCase>& keys) {
    seenMessages.clear();
    std::string names;
    for (const KeyCase& key : keys) {
        names += std::string(" ") + key.name;
    }
    display.Xdotool("key --delay 4" + names);
    EXPECT_TRUE(WindowTest::PumpUntil([&] { return CountSeen(WM_KEYUP) >= keys.size(); }));
    std::vector<WPARAM> pressed;
    std::vector<WPARAM> released;
    for (const SeenMessage& seen : seenMessages) {
        if (seen.message == WM_KEYDOWN) pressed.push_back(seen.wParam);
        if (seen.message == WM_KEYUP) released.push_back(seen.wParam);
    }
    ASSERT_EQ(pressed.size(), keys.size());
    for (std::size_t i = 0; i < keys.size(); i++) {
        EXPECT_EQ(pressed[i], keys[i].code) << keys[i].name;
    }
    EXPECT_EQ(pressed, released);
}

TEST_P(Keys, HaveTheirCodes) {
    Open();
    std::vector<std::string> names;
    std::vector<KeyCase> keys;
    for (char letter = 'a'; letter <= 'z'; letter++) {
        names.push_back(std::string(1, letter));
    }
    for (char digit = '0'; digit <= '9'; digit++) {
        names.push_back(std::string(1, digit));
    }
    for (const std::string& name : names) {
        // Letters and digits have the code of their capital.
        keys.push_back({name.c_str(), static_cast<WPARAM>(std::toupper(name[0]))});
    }
    ExpectCodes(*display, keys);
    ExpectCodes(*display, {{"F1", 0x70},
                           {"F2", 0x71},
                           {"F3", 0x72},
                           {"F5", 0x74},
                           {"F9", 0x78},
                           {"F11", 0x7A},
                           {"F12", 0x7B},
                           {"Escape", 0x1B},
                           {"Tab", 0x09},
                           {"Return", 0x0D},
                           {"space", 0x20},
                           {"BackSpace", 0x08}});
    ExpectCodes(*display, {{"Left", 0x25},
                           {"Up", 0x26},
                           {"Right", 0x27},
                           {"Down", 0x28},
                           {"Prior", 0x21},
                           {"Next", 0x22},
                           {"End", 0x23},
                           {"Home", 0x24},
                           {"Insert", 0x2D},
                           {"Delete", 0x2E},
                           {"Pause", 0x13},
                           {"Scroll_Lock", 0x91}});
    ExpectCodes(*display, {{"comma", 0xBC},
                           {"period", 0xBE},
                           {"minus", 0xBD},
                           {"equal", 0xBB},
                           {"semicolon", 0xBA},
                           {"slash", 0xBF},
                           {"grave", 0xC0},
                           {"bracketleft", 0xDB},
                           {"backslash", 0xDC},
                           {"bracketright", 0xDD},
                           {"apostrophe", 0xDE}});
    ExpectCodes(*display, {{"Shift_L", 0x10}, {"62", 0x10}, {"Control_L", 0x11}, {"105", 0x11}});
}

TEST_P(Keys, NumericPadFollowsNumLock) {
    Open();
    const std::vector<const char*> names = {"KP_Insert", "KP_End",   "KP_Down",  "KP_Next",
                                            "KP_Left",   "KP_Begin", "KP_Right", "KP_Home",
                                            "KP_Up",     "KP_Prior", "KP_Delete"};
    const std::vector<WPARAM> navigation = {0x2D, 0x23, 0x28, 0x22, 0x25, 0x0C,
                                            0x27, 0x24, 0x26, 0x21, 0x2E};
    const std::vector<WPARAM> digits = {0x60, 0x61, 0x62, 0x63, 0x64, 0x65, 0x66, 0x67, 0x68, 0x69, 0x6E};
    std::vector<KeyCase> off;
    std::vector<KeyCase> on;
    for (std::size_t i = 0; i < names.size(); i++) {
        off.push_back({names[i], navigation[i]});
        on.push_back({names[i], digits[i]});
    }
    ExpectCodes(*display, off);
    ExpectCodes(*display, {{"Num_Lock", 0x90}});
    ExpectCodes(*display, on);
    ExpectCodes(*display, {{"KP_Multiply", 0x6A},
                           {"KP_Add", 0x6B},
                           {"KP_Subtract", 0x6D},
                           {"KP_Divide", 0x6F},
                           {"KP_Enter", 0x0D}});
}

TEST_P(Keys, NumLockMayBeOnFromTheStart) {
    display->Xdotool("key Num_Lock");
    Open();
    ExpectCodes(*display, {{"KP_End", 0x61}});
}

// Czech keyboards have Z in the place of Y and write letters with the keys of the digits.
TEST_P(Keys, LettersFollowTheLayoutAndDigitsThePlace) {
    ASSERT_EQ(RunCommand("setxkbmap cz 2>&1").exitCode, 0);
    Open();
    ExpectCodes(*display, {{"29", 'Z'}, {"52", 'Y'}, {"24", 'Q'}, {"10", '1'}, {"11", '2'}, {"19", '0'}});
    ExpectCodes(*display, {{"47", 0xBA}, {"34", 0xDB}, {"59", 0xBC}, {"60", 0xBE}});
}

TEST_P(Keys, HeldKeyRepeats) {
    Open();
    display->Xdotool("keydown w");
    EXPECT_TRUE(PumpUntil([] { return CountSeen(WM_KEYDOWN) >= 3; }));
    EXPECT_EQ(CountSeen(WM_KEYUP), 0u);
    display->Xdotool("keyup w");
    EXPECT_TRUE(PumpUntilSeen({WM_KEYUP, 'W'}));
}

TEST_P(Keys, AltAndF10AreSystemKeys) {
    Open();
    display->Xdotool("keydown alt key x keyup alt");
    EXPECT_TRUE(PumpUntilSeen({WM_SYSKEYUP, 0x12}));
    EXPECT_TRUE(HasSeen({WM_SYSKEYDOWN, 0x12}));
    EXPECT_TRUE(HasSeen({WM_SYSKEYDOWN, 'X'}));
    EXPECT_TRUE(HasSeen({WM_SYSKEYUP, 'X'}));
    display->Xdotool("key F10");
    EXPECT_TRUE(PumpUntilSeen({WM_SYSKEYUP, 0x79}));
    EXPECT_TRUE(HasSeen({WM_SYSKEYDOWN, 0x79}));
    EXPECT_EQ(CountSeen(WM_KEYDOWN) + CountSeen(WM_KEYUP), 0u);
}

// Otherwise the key would stay down for those who have seen it pressed.
TEST_P(Keys, PressSeenBringsReleaseSeen) {
    Open();
    display->Xdotool("keydown w keydown alt keyup w keyup alt");
    EXPECT_TRUE(PumpUntilSeen({WM_SYSKEYUP, 0x12}));
    EXPECT_TRUE(HasSeen({WM_KEYDOWN, 'W'}));
    EXPECT_TRUE(HasSeen({WM_KEYUP, 'W'}));

    seenMessages.clear();
    display->Xdotool("keydown KP_End key Num_Lock keyup KP_End key Num_Lock");
    PumpUpToNow();
    EXPECT_TRUE(HasSeen({WM_KEYDOWN, 0x23}));
    EXPECT_TRUE(HasSeen({WM_KEYUP, 0x23}));
}

TEST_P(Keys, LossOfFocusReleasesNothing) {
    Open();
    display->Xdotool("keydown s keydown w keydown a");
    EXPECT_TRUE(PumpUntilSeen({WM_KEYDOWN, 'A'}));
    {
        const OtherWindow other;
        EXPECT_TRUE(PumpUntilSeen({WM_ACTIVATE, 0}));
        display->Xdotool("keyup s");
    }
    display->Xdotool("windowfocus " + Identifier());
    EXPECT_TRUE(PumpUntilSeen({WM_ACTIVATE, 1}));
    PumpUpToNow();
    EXPECT_EQ(CountSeen(WM_KEYUP), 1u) << "the marker key's alone";

    // W and A are still held, W without repeating: what is released now counts.
    display->Xdotool("keyup w keyup a");
    EXPECT_TRUE(PumpUntilSeen({WM_KEYUP, 'W'}));
    EXPECT_TRUE(PumpUntilSeen({WM_KEYUP, 'A'}));
    EXPECT_FALSE(HasSeen({WM_KEYUP, 'S'}));
}

TEST_P(Keys, RealReleaseRightBeforeTheLossCounts) {
    Open();
    display->Xdotool("keydown a keydown s keydown w");
    EXPECT_TRUE(PumpUntilSeen({WM_KEYDOWN, 'W'}));
    display->Xdotool("keyup s");
    const OtherWindow other;  // all of this in one turn of the pump
    EXPECT_TRUE(PumpUntilSeen({WM_ACTIVATE, 0}));
    EXPECT_TRUE(HasSeen({WM_KEYUP, 'S'}));
    EXPECT_EQ(CountSeen(WM_KEYUP), 1u);
}

TEST_P(Keys, MouseButtonsAreReported) {
    Open();
    display->Xdotool("mousemove 300 200 mousedown 1 mousedown 2 mousedown 3");
    EXPECT_TRUE(PumpUntilSeen({WM_RBUTTONDOWN, 0}));
    EXPECT_TRUE(HasSeen({WM_LBUTTONDOWN, 0}));
    EXPECT_TRUE(HasSeen({WM_MBUTTONDOWN, 0}));
    EXPECT_TRUE(HasSeen({WM_MOUSEMOVE, 0}));
    {
        const OtherWindow other;
        EXPECT_TRUE(PumpUntilSeen({WM_ACTIVATE, 0}));
        EXPECT_EQ(CountSeen(WM_LBUTTONUP) + CountSeen(WM_MBUTTONUP) + CountSeen(WM_RBUTTONUP), 0u);
    }
    display->Xdotool("windowfocus " + Identifier() + " mouseup 1 mouseup 2 mouseup 3");
    EXPECT_TRUE(PumpUntilSeen({WM_RBUTTONUP, 0}));
    EXPECT_TRUE(HasSeen({WM_LBUTTONUP, 0}));
    EXPECT_TRUE(HasSeen({WM_MBUTTONUP, 0}));
}

}  // namespace
