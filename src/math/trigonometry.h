#pragma once

// Sine, cosine and arc cosine that are the same on every processor: each gives the float that is nearest to
// the true value, for every float there is. bench/trigonometry_check.cpp goes through all of them.
// NaN gives NaN; so do infinite angles, and cosines beyond 1.

/// @param angle in radians, of any size
float Sine(float angle);
float Cosine(float angle);
/// @return radians from 0 to pi
float ArcCosine(float cosine);
