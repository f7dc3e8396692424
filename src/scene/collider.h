#pragma once

#include <cstdint>

#include "math/vector.h"

/// State of collide-and-slide for one moving body, an ellipsoid. Positions and lengths are in ellipsoid
/// space (world coordinates divided component by component by `radii`), where the body is a sphere of
/// radius 1.0; `radii` alone is in world units.
struct Collider {
    Vector sweepVelocity;             ///< displacement of the present sweep
    Vector sweepOrigin;               ///< centre of the sphere at the start of the sweep
    Vector radii{2.0f, 2.0f, 5.0f};   ///< half-axes in world units, the third one vertical
    Vector safePosition;              ///< where the recursion limit sends the body
    std::uint8_t foundCollision = 0;  ///< a contact was recorded at the present level
    std::uint8_t airborne = 1;        ///< 1 from the start of a move to its first contact
    std::uint8_t edgeContact = 0;     ///< the present face is reached through its edge
    float nearestDistance = 0.0f;     ///< along the sweep to the recorded contact, -1.0 for none yet
    Vector nearestSpherePoint;        ///< the point of the sphere that makes the contact
    Vector nearestContactPoint;       ///< the point of the obstacle that is touched
    std::int32_t recursionDepth = 0;  ///< contacts in a row; may be left above 0 by a frame

    void CopyTo(Collider& destination) const { destination = *this; }
};
