#pragma once

// Colours as amounts of light, and as they are sent to a screen, from 0 to 1 each. The engine calculates
// with the latter.

float ToDisplay(float amount);
float ToLinear(float display);
