#pragma once

#include <cstdint>

struct Scene;

/// A checksum of all that moves or steers what moves: the poses of all objects by their markers, their
/// velocities and contacts, the state of their key tracks, and the lights' places. Worlds that differ in
/// one bit of these have the same one by a chance of one in four thousand million.
std::uint32_t MotionChecksum(const Scene& scene);
