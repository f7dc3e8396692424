#include "platform/window_fixture.h"

namespace {

using Keys = WindowTest;
WITH_AND_WITHOUT_MANAGER(Keys);
using KeyCodes = WindowTest;
INSTANTIATE_TEST_SUITE_P(Display, KeyCodes, testing::Values(WindowManager::None), ManagerName);

/// Presses each key in turn and compares the codes that arrive.
/// @param keys names or numbers of the X server's keys, each followed by its code in hexadecimal digits
void ExpectCodes(const VirtualDisplay& display, const std::string& keys) {
    std::istringstream words(keys);
    std::vector<std::string> names;
    std::vector<WPARAM> codes;
    std::string pressing = "key --delay 4";
    for (std::string name, code; words >> name >> code;) {
        names.push_back(name);
        codes.push_back(std::stoul(code, nullptr, 16));
        pressing += " " + name;
    }
    seenMessages.clear();
    display.Xdotool(pressing);
    EXPECT_TRUE(WindowTest::PumpUntil([&] { return CountSeen(WM_KEYUP) >= names.size(); }));
    std::vector<WPARAM> pressed;
    std::vector<WPARAM> released;
    for (const SeenMessage& seen : seenMessages) {
        if (seen.message == WM_KEYDOWN || seen.message == WM_KEYUP) {
            (seen.message == WM_KEYDOWN ? pressed : released).push_back(seen.wParam);
        }
    }
    EXPECT_EQ(pressed, released);
    for (std::size_t i = 0; i < names.size(); i++) {
        EXPECT_EQ(i < pressed.size() ? pressed[i] : 0, codes[i]) << names[i];
    }
}

TEST_P(KeyCodes, FollowTheKeyboardAndOnThePadNumLock) {
    Open();
    std::string lettersAndDigits;
    for (const char key : std::string("abcdefghijklmnopqrstuvwxyz0123456789")) {
        // These have the code of their capital.
        constexpr const char* hex = "0123456789ABCDEF";
        const int code = std::toupper(key);
        lettersAndDigits += {key, ' ', hex[code / 16], hex[code % 16], ' '};
    }
    ExpectCodes(*display, lettersAndDigits);
    ExpectCodes(
        *display,
        "F1 70 F2 71 F3 72 F4 73 F5 74 F6 75 F7 76 F8 77 F9 78 F11 7A F12 7B Escape 1B Tab 09 Return 0D "
        "space 20 BackSpace 08 Left 25 Up 26 Right 27 Down 28 Prior 21 Next 22 End 23 Home 24 "
        "Insert 2D Delete 2E Pause 13 Print 2C Scroll_Lock 91 Menu 5D Super_L 5B ");
    ExpectCodes(
        *display,
        "comma BC period BE minus BD equal BB semicolon BA slash BF grave C0 bracketleft DB backslash DC "
        "bracketright DD apostrophe DE Shift_L 10 62 10 Control_L 11 105 11 Caps_Lock 14 Caps_Lock 14");
    ExpectCodes(
        *display,
        "KP_Insert 2D KP_End 23 KP_Down 28 KP_Next 22 KP_Left 25 KP_Begin 0C KP_Right 27 KP_Home 24 "
        "KP_Up 26 KP_Prior 21 KP_Delete 2E Num_Lock 90");
    ExpectCodes(
        *display,
        "KP_Insert 60 KP_End 61 KP_Down 62 KP_Next 63 KP_Left 64 KP_Begin 65 KP_Right 66 KP_Home 67 "
        "KP_Up 68 KP_Prior 69 KP_Delete 6E KP_Multiply 6A KP_Add 6B KP_Subtract 6D KP_Divide 6F KP_Enter "
        "0D");
}

// Czech keyboards have Z in the place of Y and write letters with the keys of the digits.
TEST_P(KeyCodes, LettersFollowTheLayoutAndDigitsThePlace) {
    ASSERT_EQ(RunCommand("setxkbmap cz 2>&1").exitCode, 0);
    display->Xdotool("key Num_Lock");  // may be on from the start
    Open();
    ExpectCodes(*display, "29 5A 52 59 24 51 10 31 11 32 19 30 47 BA 34 DB 59 BC 60 BE KP_End 61");
}

TEST_P(KeyCodes, AltAndF10AreSystemKeysAndAPressSeenBringsAReleaseSeen) {
    Open();
    display->Xdotool("keydown alt key x keyup alt key F10");
    EXPECT_TRUE(PumpUntilSeen({WM_SYSKEYUP, 0x79}));
    for (const UINT message : {WM_SYSKEYDOWN, WM_SYSKEYUP}) {
        EXPECT_TRUE(HasSeen({message, 0x12}) && HasSeen({message, 'X'}) && HasSeen({message, 0x79}))
            << message;
    }
    EXPECT_EQ(CountSeen(WM_KEYDOWN) + CountSeen(WM_KEYUP), 0u);
    display->Xdotool("keydown ctrl keydown alt key x keyup alt keyup ctrl");
    EXPECT_TRUE(PumpUntilSeen({WM_KEYUP, 'X'})) << "with Control it is no system key";

    // Whatever Alt and Num Lock do meanwhile.
    display->Xdotool(
        "keydown w keydown alt keyup w keyup alt keydown KP_End key Num_Lock keyup KP_End key Num_Lock");
    PumpUpToNow();
    for (const WPARAM key : {WPARAM{'W'}, WPARAM{0x23}}) {
        EXPECT_TRUE(HasSeen({WM_KEYDOWN, key}) && HasSeen({WM_KEYUP, key})) << key;
    }
    EXPECT_FALSE(HasSeen({WM_KEYUP, 0x61}));

    seenMessages.clear();
    display->Xdotool("keydown w");
    EXPECT_TRUE(PumpUntil([] { return CountSeen(WM_KEYDOWN) >= 3; })) << "a held key repeats";
    EXPECT_EQ(CountSeen(WM_KEYUP), 0u);
    display->Xdotool("keyup w");
    EXPECT_TRUE(PumpUntilSeen({WM_KEYUP, 'W'}));
}

TEST_P(Keys, LossOfFocusReleasesNothing) {
    Open();
    display->Xdotool("keydown d keydown s keydown w keydown a");
    EXPECT_TRUE(PumpUntilSeen({WM_KEYDOWN, 'A'}));
    display->Xdotool("keyup d");
    {
        const OtherWindow other;  // with the real release before it in one turn of the pump
        EXPECT_TRUE(PumpUntilSeen({WM_ACTIVATE, 0}));
        display->Xdotool("keyup s");
    }
    GiveBackFocus();
    PumpUpToNow();
    EXPECT_TRUE(HasSeen({WM_KEYUP, 'D'}));
    EXPECT_EQ(CountSeen(WM_KEYUP), 2u) << "and the marker key's";

    // W and A are still held, W without repeating: what is released now counts.
    display->Xdotool("keyup w keyup a");
    EXPECT_TRUE(PumpUntilSeen({WM_KEYUP, 'W'}));
    EXPECT_TRUE(PumpUntilSeen({WM_KEYUP, 'A'}));
    EXPECT_FALSE(HasSeen({WM_KEYUP, 'S'}));
}

TEST_P(Keys, MouseButtonsAreReported) {
    Open();
    display->Xdotool("mousemove 300 200 mousedown 1 mousedown 2 mousedown 3");
    for (const UINT message : {WM_MOUSEMOVE, WM_LBUTTONDOWN, WM_MBUTTONDOWN, WM_RBUTTONDOWN}) {
        EXPECT_TRUE(PumpUntilSeen({message, 0})) << message;
    }
    seenMessages.clear();
    {
        const OtherWindow other;
        EXPECT_TRUE(PumpUntilSeen({WM_ACTIVATE, 0}));
        EXPECT_EQ(seenMessages.size(), 1u) << "nothing is released by the loss of focus";
    }
    display->Xdotool("windowfocus " + Identifier() + " mouseup 1 mouseup 2 mouseup 3");
    for (const UINT message : {WM_LBUTTONUP, WM_MBUTTONUP, WM_RBUTTONUP}) {
        EXPECT_TRUE(PumpUntilSeen({message, 0})) << message;
    }
    // All moves that come in one turn are one message, and the click that brings the focus counts, too.
    PumpUpToNow();
    const OtherWindow other;
    EXPECT_TRUE(PumpUntilSeen({WM_ACTIVATE, 0}));
    seenMessages.clear();
    display->Xdotool(
        "mousemove 310 210 mousemove 320 220 mousemove 330 230 click 1 getmouselocation sleep 0.1");
    EXPECT_TRUE(PumpUntilSeen({WM_LBUTTONUP, 0}));
    EXPECT_TRUE(HasSeen({WM_LBUTTONDOWN, 0}));
    EXPECT_TRUE(CountSeen(WM_MOUSEMOVE) == 1 || GetParam() == WindowManager::Openbox)
        << "which has its own pace";
}

}  // namespace
