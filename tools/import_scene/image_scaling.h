#pragma once

#include "scene_writer/image_file.h"

/// The size for a texture: each side the power of two that is nearest to it, from 2 to the given one.
/// Texels that are transparent and of one colour take that of others near them, since objects are drawn
/// solid.
engine::Image ScaledForTexture(const engine::Image& image, int longestSide, bool repeatX, bool repeatY);
/// Resamples with a cubic filter, widened where the image gets smaller. Amounts of light are averaged, and
/// what is transparent gives no colour.
/// Throws std::bad_alloc if the memory for it isn't there.
/// @param repeatX,repeatY the image goes on beyond its edges with its other side, else with its edge
engine::Image Scaled(const engine::Image& image, int width, int height, bool repeatX, bool repeatY);
/// The image and, beside it or above it, its mirror image.
engine::Image Mirrored(const engine::Image& image, bool mirrorX, bool mirrorY);
