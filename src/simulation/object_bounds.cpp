#include "simulation/object_bounds.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <cmath>
#include <cstddef>

namespace {

/// A mesh that hasn't moved for so many frames counts as one that stands still.
constexpr std::int32_t framesToStandStill = 64;
/// Building the tree takes as long, for each object, as going through so many on the list.
constexpr std::int64_t buildCost = 100;
/// With fewer meshes that stand still the list is as good as a tree.
constexpr std::int32_t fewestInTree = 64;
/// Bounds are tested in strides of so many.
constexpr std::int32_t stride = 16;

/// Conditions as numbers, which are joined without a branch.
std::int32_t Is(bool condition) {
    return condition ? 1 : 0;
}

/// The same bits, so that NaN is the same as itself.
bool Same(float a, float b) {
    return std::bit_cast<std::uint32_t>(a) == std::bit_cast<std::uint32_t>(b);
}

bool Same(const Vector& a, const Vector& b) {
    return Same(a.x, b.x) && Same(a.y, b.y) && Same(a.z, b.z);
}

/// Calls `isOut` for each place of a list, some of them side by side, and `take` for those it isn't true
/// of.
template <typename IsOut, typename Take>
void ForEachNear(std::int32_t count, IsOut isOut, Take take) {
    std::int32_t out[stride];
    for (std::int32_t first = 0; first < count; first += stride) {
        for (std::int32_t i = 0; i < stride; i++) {
            out[i] = isOut(first + i);
        }
        for (std::int32_t i = 0; i < std::min(stride, count - first); i++) {
            if (out[i] == 0) {
                take(first + i);
            }
        }
    }
}

}  // namespace

ObjectBounds& ObjectBounds::Of(Scene& scene) {
    if (scene.collisionIndex == nullptr) {
        scene.collisionIndex = std::make_shared<ObjectBounds>();
    }
    return *static_cast<ObjectBounds*>(scene.collisionIndex.get());
}

ObjectBounds::List* ObjectBounds::ListOf(Kind kind) {
    return kind == Kind::mesh ? &meshes : kind == Kind::body ? &bodies : nullptr;
}

/// Goes by what stands in the records themselves, side by side: to look up a vertex would take longer than
/// all the rest.
bool ObjectBounds::IsUpToDate(const Entry& entry, const Object& object) {
    return entry.meshVersion == object.meshVersion && entry.kind == Kind::mesh &&
           object.collider == nullptr && entry.vertices == object.vertices.get() &&
           entry.centreVertex == object.centreVertex && Same(entry.reach, object.radius);
}

bool ObjectBounds::HasStoodStill(const Entry& entry) const {
    return updates - entry.lastChange >= framesToStandStill;
}

void ObjectBounds::Resize(std::int32_t newCount) {
    objectCount = newCount;
    entries = std::make_unique<Entry[]>(static_cast<std::size_t>(objectCount));
    // Whole strides, so that the last one may read on.
    const std::size_t room = static_cast<std::size_t>(objectCount) + stride;
    for (List* list : {&meshes, &bodies}) {
        list->count = 0;
        for (std::unique_ptr<float[]>* values : {&list->x, &list->y, &list->z, &list->reach}) {
            *values = std::make_unique<float[]>(room);
        }
        list->ids = std::make_unique<std::int32_t[]>(room);
    }
    for (std::int32_t id = 0; id < objectCount; id++) {
        entries[id].lastChange = updates - framesToStandStill;
    }
    tree = BoundTree();
    found.Resize(objectCount);
    listedInVain = 0;
}

void ObjectBounds::Append(List& list, Entry& entry, std::int32_t id) {
    entry.listed = list.count++;
    list.x[entry.listed] = entry.centre.x;
    list.y[entry.listed] = entry.centre.y;
    list.z[entry.listed] = entry.centre.z;
    list.reach[entry.listed] = entry.reach;
    list.ids[entry.listed] = id;
}

/// The last one of the list takes its place.
void ObjectBounds::Remove(List& list, Entry& entry) {
    const std::int32_t place = entry.listed;
    const std::int32_t last = --list.count;
    entry.listed = -1;
    if (place != last) {
        list.x[place] = list.x[last];
        list.y[place] = list.y[last];
        list.z[place] = list.z[last];
        list.reach[place] = list.reach[last];
        list.ids[place] = list.ids[last];
        entries[list.ids[place]].listed = place;
    }
}

void ObjectBounds::Moved(const Scene& scene, std::int32_t id) {
    if (current) {
        Update(scene, id);
    }
}

/// Takes the bound of the object as it is now.
void ObjectBounds::Update(const Scene& scene, std::int32_t id) {
    const Object& object = scene.objects[id];
    Entry now;
    object.GetVertex(now.centre, object.centreVertex);
    now.vertices = object.vertices.get();
    now.centreVertex = object.centreVertex;
    now.meshVersion = object.meshVersion;
    if (object.collider == nullptr) {
        now.kind = Kind::mesh;
        now.reach = object.radius;
    } else {
        now.kind = Kind::body;
        now.reach = std::max(object.collider->radii.x, object.collider->radii.y);
    }
    Entry& entry = entries[id];
    if (entry.kind == now.kind && Same(entry.centre, now.centre) && Same(entry.reach, now.reach)) {
        entry.vertices = now.vertices;
        entry.centreVertex = now.centreVertex;
        entry.meshVersion = now.meshVersion;
        return;
    }
    // Its entry in the tree stays: it is looked at in vain now and then.
    if (entry.listed != -1) {
        Remove(*ListOf(entry.kind), entry);
    }
    const bool isNew = entry.kind == Kind::absent;
    now.lastChange = isNew ? entry.lastChange : updates;
    entry = now;
    if (List* list = ListOf(entry.kind)) {
        Append(*list, entry, id);
    }
}

/// Takes the bounds of all objects as they are now.
void ObjectBounds::Update(const Scene& scene) {
    if (scene.objectCount != objectCount || entries == nullptr) {
        Resize(scene.objectCount);
    }
    updates++;
    for (std::int32_t id = 0; id < objectCount; id++) {
        if (!IsUpToDate(entries[id], scene.objects[id])) {
            Update(scene, id);
        }
    }
    stillListed = 0;
    for (std::int32_t i = 0; i < meshes.count; i++) {
        stillListed += HasStoodStill(entries[meshes.ids[i]]) ? 1 : 0;
    }
    if (stillListed >= fewestInTree && listedInVain >= buildCost * objectCount) {
        BuildTree();
    }
}

void ObjectBounds::BuildTree() {
    auto bounds = std::make_unique_for_overwrite<Bound[]>(static_cast<std::size_t>(objectCount));
    auto ids = std::make_unique_for_overwrite<std::int32_t[]>(static_cast<std::size_t>(objectCount));
    std::int32_t count = 0;
    for (std::int32_t id = 0; id < objectCount; id++) {
        Entry& entry = entries[id];
        if (entry.kind == Kind::mesh && (entry.listed == -1 || HasStoodStill(entry))) {
            if (entry.listed != -1) {
                Remove(meshes, entry);
            }
            bounds[count] = {entry.centre, Vector(std::fabs(entry.reach), 0.0f, 0.0f)};
            ids[count++] = id;
        }
    }
    tree.Build(bounds.get(), ids.get(), count, 1);
    stillListed = 0;
    listedInVain = 0;
}

IdMarks& ObjectBounds::FindNear(const Scene& scene, const Object& body) {
    if (!current) {
        Update(scene);
        current = inStep;
    }
    const Collider& collider = *body.collider;
    const Vector radii = collider.radii;
    const float travel = collider.sweepVelocity.Length();
    // The mesh test compares the distance of the centres with radius + travel + the largest half-axis. Of a
    // larger distance by a thousandth no rounding makes a smaller one, as long as the three add up and
    // don't cancel each other out.
    const float halfAxis = std::max({radii.x, radii.y, radii.z});
    NearQuery query;
    body.GetVertex(query.origin, body.centreVertex);
    query.reach = travel + halfAxis;
    if (!(halfAxis >= 0.0f) || !tree.Covers(query)) {
        for (std::int32_t id = 0; id < objectCount; id++) {
            found.Add(id);
        }
        return found;
    }
    tree.FindNear(query, found);
    FindListedMeshes(query.origin, query.reach);
    FindBodies(collider, travel);
    listedInVain += stillListed;
    return found;
}

void ObjectBounds::FindListedMeshes(const Vector& centre, float reach) {
    const float* x = meshes.x.get();
    const float* y = meshes.y.get();
    const float* z = meshes.z.get();
    const float* radius = meshes.reach.get();
    const float reachSquared = reach * reach;
    // As in the tree, and what isn't a number isn't out of reach. Of two squares that overflow the right
    // one does so only for a radius of 1e11 and more. Beside that the reach is less than the thousandth by
    // which the distance then exceeds the radius.
    assert(reach > 1e-6f && reach < 1e7f);
    ForEachNear(
        meshes.count,
        [=](std::int32_t i) {
            const Vector away(x[i] - centre.x, y[i] - centre.y, z[i] - centre.z);
            const float radiusSquared = radius[i] * radius[i];
            const float rest = away.Dot(away) * 0.998f - (radiusSquared + reachSquared);
            return Is(rest >= 0.0f) & Is(rest * rest >= 4.0f * reachSquared * radiusSquared);
        },
        [this](std::int32_t i) { found.Add(meshes.ids[i]); });
}

void ObjectBounds::FindBodies(const Collider& body, float travel) {
    const float* x = bodies.x.get();
    const float* y = bodies.y.get();
    const float* z = bodies.z.get();
    const float* largest = bodies.reach.get();
    const float scaleX = 1.0f / body.radii.x;
    const float scaleY = 1.0f / body.radii.y;
    const float scaleZ = 1.0f / body.radii.z;
    const float scale = std::max(scaleX, scaleY);
    const float originX = body.sweepOrigin.x;
    const float originY = body.sweepOrigin.y;
    const float originZ = body.sweepOrigin.z;
    // A contact with the wall of a cylinder lies where the line enters it, at most `travel` from the
    // origin, hence no farther from the axis than radius + travel as seen from above. Where the line enters
    // is found by a root and divisions by the line's slope, which rounding takes less than a hundredth off,
    // but where the squares of the slope are too small for a float and still more than 0. The limits on all
    // figures keep them from overflowing; heights, which count nothing else here, make NaN if they do.
    const float slope = std::max(std::fabs(body.sweepVelocity.x), std::fabs(body.sweepVelocity.y)) / travel;
    const float reach = travel + 1e-3f * (std::fabs(originX) + std::fabs(originY) + 1.0f);
    const float reachSquared = reach * reach;
    const std::int32_t sensible = Is(scaleX > 1e-5f && scaleX < 1e5f && scaleY > 1e-5f && scaleY < 1e5f &&
                                     reach < 1e4f && (slope < 1e-23f || slope > 1e-18f));
    ForEachNear(
        bodies.count,
        [=](std::int32_t i) {
            const float awayX = x[i] * scaleX - originX;
            const float awayY = y[i] * scaleY - originY;
            const float awayZ = z[i] * scaleZ - originZ;
            const float radius = largest[i] * scale;
            const float radiusSquared = radius * radius;
            const float distanceSquared = awayX * awayX + awayY * awayY;
            const float rest = distanceSquared * 0.98f - (radiusSquared + reachSquared);
            return sensible & Is(rest >= 0.0f) & Is(rest * rest >= 4.0f * reachSquared * radiusSquared) &
                   Is(distanceSquared < 1e16f) & Is(std::fabs(awayZ) < 1e30f);
        },
        [this](std::int32_t i) { found.Add(bodies.ids[i]); });
}
