#pragma once

/// The new-handler: informs the user and ends the process with code 1. It never returns, so no allocation
/// has to be tested.
[[noreturn]] void OutOfMemoryHandler();

/// What the closing of the window, or the Escape key, brings about: platform state back, context
/// released, quit posted, engine, scene and log gone, in this order.
void TearDown();
