#pragma once

/// Places the raster position at a point of the window, in pixels from its lower left corner, whatever the
/// matrices and the viewport are.
/// @param z window depth, 0.0 in front of everything
void SetWindowRasterPos4f(float x, float y, float z, float w);
void SetWindowRasterPos2f(float x, float y);
