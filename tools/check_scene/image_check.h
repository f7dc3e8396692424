#pragma once

#include <string>

#include "check_scene/stand_ins.h"

/// What an image file lacks, and what to do about it. Empty if it is as it should be.
/// @param isError whether no usable image came of it
std::string ImageFault(const KeptImage& image, bool& isError);
