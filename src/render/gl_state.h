#pragma once

/// Puts the current context into the fixed state that all later drawing counts on.
void InitGlState();
