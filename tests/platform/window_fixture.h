#pragma once

#include <GL/gl.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/display_mode.h"
#include "platform/gl_context.h"
#include "platform/message_box.h"
#include "platform/video.h"
#include "platform/window.h"
#include "support/loaded_libraries.h"
#include "support/other_window.h"
#include "support/virtual_display.h"

inline bool operator==(const RECT& left, const RECT& right) {
    return left.left == right.left && left.top == right.top && left.right == right.right &&
           left.bottom == right.bottom;
}

inline bool operator==(const POINT& left, const POINT& right) {
    return left.x == right.x && left.y == right.y;
}

/// A message as the window procedure has seen it.
struct SeenMessage {
    UINT message = 0;
    WPARAM wParam = 0;

    bool operator==(const SeenMessage&) const = default;
};

inline std::vector<SeenMessage> seenMessages;

inline std::size_t CountSeen(UINT message) {
    return static_cast<std::size_t>(
        std::count_if(seenMessages.begin(), seenMessages.end(),
                      [message](const SeenMessage& seen) { return seen.message == message; }));
}

inline bool HasSeen(SeenMessage message) {
    return std::find(seenMessages.begin(), seenMessages.end(), message) != seenMessages.end();
}

/// A display with or without a window manager and, once opened, a window on it that is driven like the
/// engine's: the context is made in WM_CREATE, and a procedure writes down every message.
struct WindowTest : testing::TestWithParam<WindowManager> {
    std::unique_ptr<VirtualDisplay> display;
    HWND window = nullptr;
    static inline HGLRC context = nullptr;
    static inline bool wantContext = true;

    void SetUp() override {
        display = std::make_unique<VirtualDisplay>(GetParam());
        seenMessages.clear();
        wantContext = true;
        WNDCLASSA windowClass;
        windowClass.lpfnWndProc = Procedure;
        windowClass.lpszClassName = "test";
        ASSERT_NE(RegisterClassA(&windowClass), 0);
    }
    void TearDown() override {
        DestroyWindow(window);
        UnregisterClassA("test", nullptr);
        MSG message;
        PostQuitMessage(0);  // leaves no quit message behind, whether the test had posted one or not
        GetMessageA(&message, nullptr, 0, 0);
        ChangeDisplaySettingsA(nullptr, 0);
        KeepLoadedLibraries();
        StopVideo();  // the next test has another display
    }

    static LRESULT Procedure(HWND self, UINT message, WPARAM wParam, LPARAM lParam) {
        seenMessages.push_back({message, wParam});
        if (message == WM_CREATE && wantContext) {
            const HDC deviceContext = GetDC(self);
            PIXELFORMATDESCRIPTOR descriptor;
            descriptor.dwFlags = PFD_DRAW_TO_WINDOW | PFD_SUPPORT_OPENGL | PFD_DOUBLEBUFFER;
            descriptor.cColorBits = 16;
            descriptor.cDepthBits = 16;
            SetPixelFormat(deviceContext, ChoosePixelFormat(deviceContext, &descriptor), &descriptor);
            context = wglCreateContext(deviceContext);
            wglMakeCurrent(deviceContext, context);
        }
        if (message == WM_PAINT) {
            PAINTSTRUCT paint;
            BeginPaint(self, &paint);
            EndPaint(self, &paint);
            return 1;
        }
        if (message == WM_DESTROY) {
            wglDeleteContext(std::exchange(context, nullptr));
            PostQuitMessage(7);
        }
        return DefWindowProcA(self, message, wParam, lParam);
    }

    void Create(int clientWidth = 640, int clientHeight = 480, DWORD style = WS_OVERLAPPEDWINDOW) {
        RECT outer{0, 0, clientWidth, clientHeight};
        AdjustWindowRect(&outer, style, FALSE);
        window = CreateWindowExA(0, "test", "Test window", style, 0, 0, outer.right - outer.left,
                                 outer.bottom - outer.top, nullptr, nullptr, nullptr, nullptr);
        ASSERT_NE(window, nullptr);
    }
    /// Creates and shows it, and waits for the focus.
    void Open(int clientWidth = 640, int clientHeight = 480, DWORD style = WS_OVERLAPPEDWINDOW) {
        Create(clientWidth, clientHeight, style);
        ShowWindow(window, SW_SHOW);
        SetWindowPos(window, nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE);
        ASSERT_TRUE(PumpUntil([this] { return GetActiveWindow() == window; }));
        seenMessages.clear();
    }

    /// Dispatches all that waits. False when it meets the quit message.
    static bool Pump() {
        MSG message;
        while (PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE)) {
            if (GetMessageA(&message, nullptr, 0, 0) == 0) {
                return false;
            }
            TranslateMessage(&message);
            DispatchMessageA(&message);
        }
        return true;
    }
    template <typename Condition>
    static bool PumpUntil(Condition condition) {
        return WaitUntil([&condition] {
            Pump();
            return condition();
        });
    }
    static bool PumpUntilSeen(SeenMessage message) {
        return PumpUntil([message] { return HasSeen(message); });
    }
    /// Pumps until a marker key that is pressed now has come through, and so all that was before it.
    void PumpUpToNow() {
        display->Xdotool("key F9");
        EXPECT_TRUE(PumpUntilSeen({WM_KEYUP, 0x78}));
    }
    void GiveBackFocus() {
        display->Xdotool("windowfocus " + Identifier());
        EXPECT_TRUE(PumpUntilSeen({WM_ACTIVATE, 1}));
    }

    std::string Identifier() const { return display->WaitForWindow("Test window", ""); }
    RECT OuterRectangle() const {
        RECT rectangle;
        GetWindowRect(window, &rectangle);
        return rectangle;
    }
    RECT ClientRectangle() const {
        RECT rectangle;
        GetClientRect(window, &rectangle);
        return rectangle;
    }
};

inline std::string ManagerName(const testing::TestParamInfo<WindowManager>& info) {
    return info.param == WindowManager::None ? "WithoutManager" : "WithOpenbox";
}

/// Every test of a suite runs with and without a window manager.
#define WITH_AND_WITHOUT_MANAGER(suite)                                                                    \
    INSTANTIATE_TEST_SUITE_P(Display, suite, testing::Values(WindowManager::None, WindowManager::Openbox), \
                             ManagerName)
