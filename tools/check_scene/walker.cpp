#include "check_scene/walker.h"

#include <cmath>

void Walker::PlaceAt(Vector place) {
    position = place;
    Velocity() = Vector();
    Body().recursionDepth = 0;
}

void Walker::Sweep(Vector displacement) {
    sweeps++;
    world.objects[0].SetVertex(position, 0);  // where obstacles are looked for
    position = world.MoveWithCollision(0, position, displacement);
}

void Walker::Settle() {
    Velocity() = Vector();
    float fall = 1.0f;
    while (!IsOut()) {
        const float before = position.z;
        Sweep(Vector(0.0f, 0.0f, -fall));
        if (!(before - position.z >= 0.9f * fall)) {
            return;
        }
        fall *= 2.0f;
    }
}

void Walker::Press(Vector direction, float distance) {
    constexpr float frames = 3.0f;
    const Vector begin = position;
    const int most = static_cast<int>(2.5f * distance / (speed * frames)) + 1;
    Velocity() = Vector();
    Body().airborne = 0;
    constexpr int patience = 6;
    Vector before = position;
    for (int i = 0; i < most && !IsOut(); i++) {
        if (i % patience == patience - 1) {
            if ((position - before).Length() < 0.1f * patience * speed * frames) {
                break;  // against a wall
            }
            before = position;
        }
        Vector& velocity = Velocity();
        if (Body().airborne == 0) {
            velocity = velocity + direction;
            if (velocity.Length() > speed * frames) {
                velocity.SetLength(speed * frames);
            }
        }
        velocity.z -= gravity * 0.1f * frames;
        Sweep(velocity);
        if (std::hypot(position.x - begin.x, position.y - begin.y) >= distance) {
            break;
        }
    }
    Settle();
}

void Walker::Stride(Vector direction, float distance) {
    const Vector begin = position;
    constexpr int parts = 2;
    constexpr float level = 0.5f;
    for (int part = 0; part < parts; part++) {
        const Vector from = position;
        Sweep(direction * (distance / parts));
        const bool isFree = (position - from).Length() > 0.97f * distance / parts;
        Sweep(Vector(0.0f, 0.0f, -2.0f * level));
        if (!isFree || std::fabs(position.z - begin.z) > level) {
            PlaceAt(begin);
            Press(direction, distance);
            return;
        }
    }
}
