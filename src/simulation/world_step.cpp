#include "scene/scene.h"
#include "simulation/group_members.h"
#include "simulation/object_bounds.h"

namespace {

/// The part of gravity that one frame adds to the speed of a fall.
constexpr float gravityPerFrame = 0.1f;

/// Gravity and velocity become a part of what the transform asks for.
void Integrate(Object& object) {
    Physics& physics = *object.physics;
    physics.velocity.z -= physics.gravity * gravityPerFrame;
    object.transform.m[3] += physics.velocity.x;
    object.transform.m[7] += physics.velocity.y;
    object.transform.m[11] += physics.velocity.z;
}

/// Cuts the translation that the transform asks for down to what the world allows. A pending rotation
/// is never looked at.
void Collide(Scene& scene, std::int32_t objectIndex) {
    Object& object = scene.objects[objectIndex];
    float* m = object.transform.m;
    Vector centre;
    object.GetVertex(centre, object.centreVertex);
    const Vector reached = scene.MoveWithCollision(objectIndex, centre, Vector(m[3], m[7], m[11]));
    m[3] = reached.x - centre.x;
    m[7] = reached.y - centre.y;
    m[11] = reached.z - centre.z;
}

/// Moves the member as if it were fixed to the parent. What it asks for itself waits for its own turn.
void CarryAlong(Object& member, const Object& parent) {
    // The member turns about its own centre vertex, so for this one step that lies on the parent's
    // centre, and the true centre travels in the spare vertex.
    Vector centre;
    member.GetVertex(centre, member.centreVertex);
    member.SetVertex(centre, member.spareVertex);
    parent.GetVertex(centre, parent.centreVertex);
    member.SetVertex(centre, member.centreVertex);

    Matrix own;
    member.transform.CopyTo(own);
    parent.transform.CopyTo(member.transform);
    member.ApplyTransform();
    own.CopyTo(member.transform);

    member.GetVertex(centre, member.spareVertex);
    member.SetVertex(centre, member.centreVertex);
}

void MoveObject(Scene& scene, ObjectBounds& bounds, std::int32_t i) {
    Object& object = scene.objects[i];
    std::int32_t& spawnState = object.attributes[spawnStateAttribute];
    if (spawnState != justSpawned) {
        if (object.physics != nullptr) {
            Integrate(object);
        }
        if (object.collider != nullptr && !object.transform.IsIdentity()) {
            Collide(scene, i);
        }
    } else {
        spawnState = -1;
    }
    if (object.transform.IsIdentity()) {
        return;
    }
    ForEachMember(scene, object.groupParent, [&scene, &bounds, &object, i](std::int32_t id) {
        if (id != i) {
            CarryAlong(scene.objects[id], object);
            bounds.Moved(scene, id);
        }
    });
    object.ApplyTransform();
    bounds.Moved(scene, i);
}

/// Hands the request for a key track on to the object's group, where each plays its own track.
void AdvanceGroup(Scene& scene, std::int32_t i) {
    const std::int32_t track = scene.objects[i].activeKeyTrack;
    if (track == -1) {
        return;
    }
    ForEachMember(scene, scene.objects[i].groupParent, [&scene, i, track](std::int32_t id) {
        Object& member = scene.objects[id];
        member.activeKeyTrack = track;
        member.AdvanceKeyTrack(id == i ? nullptr : &scene.objects[i]);
    });
}

}  // namespace

void Scene::StepWorld() {
    ObjectBounds& bounds = ObjectBounds::Of(*this);
    bounds.BeginStep();
    bool tracksWanted = false;
    // An object has moved before the next one looks at it.
    for (std::int32_t i = 0; i < objectCount; i++) {
        MoveObject(*this, bounds, i);
        tracksWanted |= objects[i].activeKeyTrack != -1;
    }
    bounds.EndStep();
    // All transforms are applied by now, and only a track asks for another one.
    if (!tracksWanted) {
        return;
    }
    for (std::int32_t i = 0; i < objectCount; i++) {
        AdvanceGroup(*this, i);
    }
    // Key tracks come after collision and take no part in it.
    for (std::int32_t i = 0; i < objectCount; i++) {
        objects[i].AdvanceKeyTrack(nullptr);
        objects[i].ApplyTransform();
    }
}
