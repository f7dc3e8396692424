#include "scene/scene.h"

#include <cassert>
#include "services/log.h"
#include "simulation/object_bounds.h"

namespace {

/// The distance kept from every contact, and the shortest displacement worth a step; ellipsoid units.
constexpr float clearance = 0.01f;
/// The contact in a row after this one sends the body back to its safe position.
constexpr std::int32_t maxContactsInRow = 15;

/// Sweeps the body against all objects that it may meet, in the order of their ids.
void CollideWithObjects(Scene& scene, std::int32_t objectIndex) {
    Object& object = scene.objects[objectIndex];
    IdMarks& candidates = ObjectBounds::Of(scene).FindNear(scene, object);
    std::int32_t ids[16];
    while (const std::int32_t count = candidates.Take(ids, 16)) {
        for (std::int32_t i = 0; i < count; i++) {
            const Object& obstacle = scene.objects[ids[i]];
            if (ids[i] != objectIndex && obstacle.attributes[collidableAttribute] != 0) {
                object.CollideWithObject(obstacle);
            }
        }
    }
}

}  // namespace

Vector Scene::MoveWithCollision(std::int32_t objectIndex, Vector position, Vector displacement) {
    assert(objectIndex >= 0 && objectIndex < objectCount && objects[objectIndex].collider != nullptr);
    Object& object = objects[objectIndex];
    const Vector radii = object.collider->radii;
    object.collider->airborne = 1;
    const Vector reached = SlideStep(objectIndex, position / radii, displacement / radii) * radii;
    if (object.collider->airborne == 0 && object.physics != nullptr) {
        object.physics->velocity = object.physics->velocity * (1.0f - object.physics->friction);
    }
    return reached;
}

Vector Scene::SlideStep(std::int32_t objectIndex, Vector position, Vector displacement) {
    Object& object = objects[objectIndex];
    Collider& body = *object.collider;
    const Vector destination = position + displacement;
    // The count of contacts in a row stays as it is, for the next frame to go on with.
    if (displacement.Length() < clearance) {
        return position;
    }
    body.sweepVelocity = displacement;
    body.sweepOrigin = position;
    body.foundCollision = 0;
    body.edgeContact = 0;
    body.nearestDistance = -1.0f;
    if (body.recursionDepth == 0) {
        body.safePosition = position;
    }
    CollideWithObjects(*this, objectIndex);
    if (body.foundCollision == 0) {
        body.recursionDepth = 0;
        displacement.SetLength(displacement.Length() - clearance);
        return position + displacement;
    }
    body.recursionDepth++;
    if (body.recursionDepth > maxContactsInRow) {
        Log::Write(log, "Critical collision recursion value reached: moving to safe position");
        body.recursionDepth = 0;
        return body.safePosition + Vector(0.0f, 0.0f, 0.01f);
    }
    Vector reached = body.sweepOrigin;
    if (body.nearestDistance >= clearance) {
        displacement.SetLength(body.nearestDistance - clearance);
        reached = reached + displacement;
    }
    // The slide plane goes through the contact. Its normal, from there to the sphere's centre, is about
    // one unit long for a contact with a face and very short for one with another body's cylinder.
    const Vector contact = body.nearestContactPoint;
    const Vector normal = reached - contact;
    const float t = destination.IntersectRayPlane(normal, contact, normal);
    const Vector projected = destination + normal * t;
    body.safePosition = position;
    if (object.physics != nullptr) {
        object.physics->Bounce(normal);
    }
    return SlideStep(objectIndex, reached, (projected - contact) + normal * clearance);
}

void Physics::Bounce(Vector normal) {
    const float k = velocity.Dot(normal) * (bounce + 1.0f);
    velocity = velocity - normal * k;
}
