#pragma once

#include "math/vector.h"

/// Motion of one body. All values are per frame: a frame is the unit of simulated time.
struct Physics {
    Vector velocity;        ///< world units per frame
    float gravity = 1.0f;   ///< every frame the z of `velocity` falls by gravity * 0.1
    float bounce = 0.5f;    ///< against a unit normal 0 stops the body at the plane, 1 mirrors its velocity
    float friction = 0.5f;  ///< share of the velocity lost in a move with a contact

    void CopyTo(Physics& destination) const { destination = *this; }
    /// Turns the velocity about the plane of contact. The normal comes unnormalised, in ellipsoid space,
    /// and a velocity that already leaves the plane is turned too.
    void Bounce(Vector normal);
};
