#pragma once

#include "import_scene/options.h"

/// Makes the scene, or the texture, that the options ask for, and says on the standard output what it is.
/// Throws std::exception with a text that says what can't be read or written.
void Import(const Options& options);
