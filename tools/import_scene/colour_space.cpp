#include "import_scene/colour_space.h"

#include <cmath>

float ToDisplay(float amount) {
    return amount <= 0.0031308f ? 12.92f * amount : 1.055f * std::pow(amount, 1.0f / 2.4f) - 0.055f;
}

float ToLinear(float display) {
    return display <= 0.04045f ? display / 12.92f : std::pow((display + 0.055f) / 1.055f, 2.4f);
}
