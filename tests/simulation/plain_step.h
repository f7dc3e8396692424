#pragma once

#include "services/log.h"
#include "simulation/group_members.h"
#include "simulation/plain_collision.h"

// The world step in the plainest words: each sweep asks every object and every face of it. The engine's
// step may leave out work, but never changes a bit of what this one does.

inline Vector PlainSlide(Scene& scene, std::int32_t id, Vector position, Vector displacement) {
    Object& object = scene.objects[id];
    Collider& body = *object.collider;
    const Vector destination = position + displacement;
    if (displacement.Length() < 0.01f) return position;
    body.sweepVelocity = displacement;
    body.sweepOrigin = position;
    body.foundCollision = 0;
    body.edgeContact = 0;
    body.nearestDistance = -1.0f;
    if (body.recursionDepth == 0) body.safePosition = position;
    for (std::int32_t j = 0; j < scene.objectCount; j++) {
        const Object& obstacle = scene.objects[j];
        if (j == id || obstacle.attributes[collidableAttribute] == 0) continue;
        if (obstacle.collider != nullptr) {
            object.CollideWithObject(obstacle);
        } else {
            PlainCollideWithMesh(object, obstacle);
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
    Vector reached = body.sweepOrigin;
    if (body.nearestDistance >= 0.01f) {
        displacement.SetLength(body.nearestDistance - 0.01f);
        reached = reached + displacement;
    }
    const Vector contact = body.nearestContactPoint;
    const Vector normal = reached - contact;
    const Vector projected = destination + normal * destination.IntersectRayPlane(normal, contact, normal);
    body.safePosition = position;
    if (object.physics != nullptr) object.physics->Bounce(normal);
    return PlainSlide(scene, id, reached, (projected - contact) + normal * 0.01f);
}

inline void PlainCollide(Scene& scene, std::int32_t id) {
    Object& object = scene.objects[id];
    float* m = object.transform.m;
    const Vector centre = CentreOf(object);
    const Vector radii = object.collider->radii;
    object.collider->airborne = 1;
    const Vector reached = PlainSlide(scene, id, centre / radii, Vector(m[3], m[7], m[11]) / radii) * radii;
    if (object.collider->airborne == 0 && object.physics != nullptr) {
        object.physics->velocity = object.physics->velocity * (1.0f - object.physics->friction);
    }
    m[3] = reached.x - centre.x;
    m[7] = reached.y - centre.y;
    m[11] = reached.z - centre.z;
}

/// Without key tracks.
inline void PlainStepWorld(Scene& scene) {
    for (std::int32_t i = 0; i < scene.objectCount; i++) {
        Object& object = scene.objects[i];
        if (object.attributes[spawnStateAttribute] == justSpawned) {
            object.attributes[spawnStateAttribute] = -1;
        } else {
            if (object.physics != nullptr) {
                Physics& physics = *object.physics;
                physics.velocity.z -= physics.gravity * 0.1f;
                object.transform.m[3] += physics.velocity.x;
                object.transform.m[7] += physics.velocity.y;
                object.transform.m[11] += physics.velocity.z;
            }
            if (object.collider != nullptr && !object.transform.IsIdentity()) PlainCollide(scene, i);
        }
        if (object.transform.IsIdentity()) continue;
        ForEachMember(scene, object.groupParent, [&](std::int32_t id) {
            if (id == i) return;
            Object& member = scene.objects[id];
            member.SetVertex(CentreOf(member), member.spareVertex);
            member.SetVertex(CentreOf(object), member.centreVertex);
            Matrix own;
            member.transform.CopyTo(own);
            object.transform.CopyTo(member.transform);
            member.ApplyTransform();
            own.CopyTo(member.transform);
            member.SetVertex(VertexOf(member, member.spareVertex), member.centreVertex);
        });
        object.ApplyTransform();
    }
}
