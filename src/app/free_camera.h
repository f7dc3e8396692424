#pragma once

struct Scene;
struct Viewpoint;

/// Adds a player who sees the world from that point and fills the window, and leaves no room in it to
/// the others. The world moves as it would without.
/// @param width,height of the window, in pixels
void LookFrom(Scene& scene, const Viewpoint& viewpoint, int width, int height);
