#pragma once

#include "simulation/group_members.h"
#include "simulation/plain_collision.h"

// The world step in the plainest words: each sweep asks every object and every face of it. The engine's
// step may leave out work, but never changes a bit of what this one does.

inline Vector PlainSlide(Scene& scene, std::int32_t id, Vector position, Vector displacement) {
    Object& object = scene.objects[id];
    Collider& body = *object.collider;
    const Vector destination = position + displacement;
    if (displacement.Length() < 0.01f) {
        return position;
    }
    body.sweepVelocity = displacement;
    body.sweepOrigin = position;
    body.foundCollision = 0;
    body.edgeContact = 0;
    body.nearestDistance = -1.0f;
    body.safePosition = body.recursionDepth == 0 ? position : body.safePosition;
    for (std::int32_t j = 0; j < scene.objectCount; j++) {
        const Object& obstacle = scene.objects[j];
        if (j != id && obstacle.attributes[collidableAttribute] != 0) {
            obstacle.collider ? object.CollideWithObject(obstacle) : PlainCollideWithMesh(object, obstacle);
        }
    }
    if (body.foundCollision == 0) {
        body.recursionDepth = 0;
        displacement.SetLength(displacement.Length() - 0.01f);
        return position + displacement;
    }
    if (++body.recursionDepth > 15) {
        body.recursionDepth = 0;
        return body.safePosition + Vector(0.0f, 0.0f, 0.01f);
    }
    Vector reached = position;
    if (body.nearestDistance >= 0.01f) {
        displacement.SetLength(body.nearestDistance - 0.01f);
        reached = reached + displacement;
    }
    const Vector contact = body.nearestContactPoint;
    const Vector normal = reached - contact;
    const Vector projected = destination + normal * destination.IntersectRayPlane(normal, contact, normal);
    body.safePosition = position;
    object.physics->Bounce(normal);
    return PlainSlide(scene, id, reached, (projected - contact) + normal * 0.01f);
}

inline Vector PlainMove(Scene& scene, std::int32_t id, Vector position, Vector displacement) {
    Object& object = scene.objects[id];
    const Vector radii = object.collider->radii;
    object.collider->airborne = 1;
    const Vector reached = PlainSlide(scene, id, position / radii, displacement / radii) * radii;
    if (object.collider->airborne == 0) {
        object.physics->velocity = object.physics->velocity * (1.0f - object.physics->friction);
    }
    return reached;
}

/// Without key tracks and spawn points; all bodies have physics.
inline void PlainStepWorld(Scene& scene) {
    for (std::int32_t i = 0; i < scene.objectCount; i++) {
        Object& object = scene.objects[i];
        const Vector centre = CentreOf(object);
        if (object.physics) {
            Physics& physics = *object.physics;
            physics.velocity.z -= physics.gravity * 0.1f;
            float* m = object.transform.m;
            const Vector wanted = Vector(m[3], m[7], m[11]) + physics.velocity;
            const Vector move = object.transform.IsIdentity() && wanted.IsZero()
                                    ? wanted
                                    : PlainMove(scene, i, centre, wanted) - centre;
            m[3] = move.x;
            m[7] = move.y;
            m[11] = move.z;
        }
        if (object.transform.IsIdentity()) {
            continue;
        }
        ForEachMember(scene, object.groupParent, [&](std::int32_t id) {
            Object& member = scene.objects[id];
            if (id != i) {
                member.SetVertex(CentreOf(member), member.spareVertex);
                member.SetVertex(centre, member.centreVertex);
                const Matrix own = std::exchange(member.transform, object.transform);
                member.ApplyTransform();
                member.transform = own;
                member.SetVertex(VertexOf(member, member.spareVertex), member.centreVertex);
            }
        });
        object.ApplyTransform();
    }
}
