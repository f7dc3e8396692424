#pragma once

#include "math/vector.h"
#include "scene/scene.h"

/// The engine's simulation with one body in it, which is object 0.
struct Walker {
    static constexpr float halfHeight = 5.0f;

    Scene world;
    Vector position;      ///< the body's middle
    float bottom = 0.0f;  ///< who is below is out of the world
    float gravity = 0.0f;
    float speed = 0.0f;
    int sweeps = 0;

    Collider& Body() { return *world.objects[0].collider; }
    Vector& Velocity() { return world.objects[0].physics->velocity; }
    bool IsOut() const { return !(position.z > bottom); }

    void PlaceAt(Vector place);
    void Sweep(Vector displacement);
    /// Falls straight down until something holds the body, or nothing does.
    void Settle();
    /// Walks as a player who holds the key. Three of the engine's frames are one here, with three times the
    /// speed and the gravity.
    void Press(Vector direction, float distance);
    /// One square on: over free and level floor in two long strides, else by pressing on.
    void Stride(Vector direction, float distance);
};
