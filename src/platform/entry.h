#pragma once

#include "platform/types.h"

/// What the program has to define: its entry, called by the process entry of this layer. The result
/// is the exit code of the process.
int WinMain(HINSTANCE instance, HINSTANCE previousInstance, char* commandLine, int showCommand);
