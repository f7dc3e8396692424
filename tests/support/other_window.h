#pragma once

/// A window of another program, with a connection of its own, that has the keyboard focus.
struct OtherWindow {
    void* display = nullptr;
    unsigned long window = 0;

    OtherWindow();
    ~OtherWindow();
    OtherWindow(const OtherWindow&) = delete;
    OtherWindow& operator=(const OtherWindow&) = delete;
};
