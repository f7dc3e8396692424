#pragma once

#include "world.h"

/// A player's figure: a body that others bump into, limbs that swing as it walks, and a head that is the
/// player's camera.
struct Hero {
    int player = 0;
    Float3 start;          ///< where the feet are to stand at the beginning
    float heading = 0.0f;  ///< radians from north, counter-clockwise as seen from above
    Float3 shirt;
    Float3 trousers;
};

void AddHero(World& world, const Hero& hero);
