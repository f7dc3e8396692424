#pragma once

#include <stdexcept>

#include "import_scene/options.h"

/// The command line asks for what can't be, whatever the model is.
struct WrongUsage : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Makes the scene, or the texture, that the options ask for, and says on the standard output what it is.
/// Throws WrongUsage, or another std::exception with a text that says what can't be read or written.
void Import(const Options& options);
