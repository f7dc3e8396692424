#pragma once

#include "platform/window.h"

/// Moves what SDL has gathered, and what it finds now, into the queue.
void GatherEvents();
/// Drops the messages that wait for the window.
void ForgetMessages(HWND window);
