#pragma once

#include <cstddef>
#include <string>

#include "scene_writer/image_file.h"

// Images of any kind that is found with models: whatever SDL2_image reads, and SGI images. They come with 4
// channels if something in them is transparent, else with 3. All throw std::runtime_error that says why an
// image can't be read.

engine::Image ReadImageFile(const std::string& path);
/// @param bytes the content of an image file
/// @param format its extension, which parts kinds that have no mark of their own; may be empty
engine::Image ReadImageBytes(const void* bytes, std::size_t size, const std::string& format);
/// @param pixels blue, green, red, alpha; the top row first
engine::Image ReadImagePixels(const void* pixels, int width, int height);
