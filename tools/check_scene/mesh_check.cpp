#include <algorithm>
#include <cmath>
#include <vector>

#include "check_scene/checks.h"
#include "check_scene/mesh_facts.h"
#include "scene/scene.h"

// Meshes: what their triangles, vertices and sizes show of mistakes.

namespace {

/// Beyond this single precision gets coarse, and a player is only 10 high.
constexpr float farAway = 20000.0f;
constexpr float tiny = 0.05f;

/// The first value that is no finite number; -1 if all are.
std::int32_t FirstBroken(const float* values, std::int32_t count) {
    for (std::int32_t i = 0; i < count; i++) {
        if (!std::isfinite(values[i])) {
            return i;
        }
    }
    return -1;
}

/// One object while its mesh is judged.
struct MeshCheck {
    Findings& findings;
    const World& world;
    std::int32_t id;

    const Object& Subject() const { return world.scene->objects[id]; }
    std::string Name() const { return Named(Subject()); }
    void Error(const char* code, const std::string& text) {
        findings.Error(code, world.At(id), Name() + text);
    }
    void Warn(const char* code, const std::string& text) {
        findings.Warn(code, world.At(id), Name() + text);
    }

    void CheckPurpose();
    bool CheckValues();
    void CheckTriangles(const MeshFacts& facts);
    void CheckLooseVertices(const MeshFacts& facts);
    bool CheckSpike();
    void CheckSize(const MeshFacts& facts);
    bool IsLookedAtFromInside(const MeshFacts& facts) const;
};

/// What shows nothing is there for a key: a camera, a start, a part of a group, a texture for sprites.
void MeshCheck::CheckPurpose() {
    const Block* block = world.BlockOf(id);
    const bool isPlain = block == nullptr || std::ranges::all_of(block->keys, [](const KeyUse& use) {
                             return use.key == nullptr || use.Is("*NOCOLLIDER");
                         });
    if (isPlain && world.Of(id).hasRecord && !world.Of(id).meshDropped && Subject().faceValueCount == 0) {
        Warn("mesh-empty", " has no triangles, and no key makes anything else of it");
    }
}

/// Whether all values are numbers.
bool MeshCheck::CheckValues() {
    const Object& object = Subject();
    const std::size_t before = findings.list.size();
    const struct {
        const char* what;
        const float* values;
        std::int32_t count;
    } arrays[] = {{"vertex", object.vertices.get(), object.vertexValueCount},
                  {"texture vertex", object.texVertices.get(), object.texVertexValueCount},
                  {"colour", object.colours.get(), object.vertexValueCount}};
    for (const auto& array : arrays) {
        const std::int32_t broken = FirstBroken(array.values, array.count);
        if (broken != -1) {
            Error("value-not-finite", std::string(": ") + array.what + " " + std::to_string(broken / 3) +
                                          " is no finite number; write the scene again");
        }
    }
    if (findings.list.size() > before) {
        return false;
    }
    const float* colours = object.colours.get();
    const float* brightest = std::max_element(colours, colours + object.vertexValueCount);
    if (object.vertexValueCount > 0 && *brightest > 2.0f) {
        Warn("colour-range", ": colours reach " + Shown(*brightest) + "; they run from 0 to 1");
    }
    return true;
}

bool MeshCheck::IsLookedAtFromInside(const MeshFacts& facts) const {
    const Scene& scene = *world.scene;
    for (std::int32_t i = 0; i < scene.playerCount; i++) {
        const Player& player = scene.players[i];
        if (player.cameraObject != -1 && scene.objects[player.cameraObject].HasVertex(player.eyeVertex) &&
            facts.Contains(VertexOf(scene.objects[player.cameraObject], player.eyeVertex))) {
            return true;
        }
        if (player.playerObject == -1) {
            continue;
        }
        const Object& body = scene.objects[player.playerObject];
        if (body.HasVertex(body.centreVertex) && facts.Contains(CentreOf(body) + ShiftOf(body))) {
            return true;
        }
    }
    return false;
}

void MeshCheck::CheckTriangles(const MeshFacts& facts) {
    const Object& object = Subject();
    const std::int32_t count = object.faceValueCount / 3;
    if (facts.degenerateCount > 0) {
        Warn("triangle-flat", ": " + std::to_string(facts.degenerateCount) + " of its " +
                                  Counted(count, "triangle") + " have no area; the first is triangle " +
                                  std::to_string(facts.firstDegenerate));
    }
    if (facts.doubledCount > 0) {
        Warn("triangle-doubled", ": " + Counted(facts.doubledCount, "triangle") +
                                     " with the same corners as another; the first is triangle " +
                                     std::to_string(facts.firstDoubled) +
                                     ". Twins flicker, and two back to back cancel each other's normals");
    }
    if (facts.LooksInwards() && !IsLookedAtFromInside(facts)) {
        Error(
            "mesh-inward",
            ": its triangles look inwards, so that it is seen and solid from inside only; list the corners "
            "counter-clockwise as seen from outside");
    }
    const bool isMarkerUsed = [&] {
        for (const std::int32_t marker : {object.centreVertex, object.spareVertex, object.xAxisVertex}) {
            if (marker != 0 && object.HasVertex(marker) && facts.Uses(marker)) {
                return true;
            }
        }
        return false;
    }();
    if (world.Of(id).head.texTriangleCount == 0 && isMarkerUsed && !facts.isUsed[0]) {
        Warn("index-from-one",
             ": no triangle names vertex 0, but one names a marker: the indices seem to count from 1, and "
             "have "
             "to count from 0");
    }
}

void MeshCheck::CheckLooseVertices(const MeshFacts& facts) {
    const Object& object = Subject();
    const std::int32_t all = object.vertexValueCount / 3;
    const std::int32_t loose = all - facts.usedCount;
    if (!object.HasVertex(object.centreVertex)) {
        return;
    }
    float usedRadius = 0.0f;
    for (std::int32_t i = 0; i < all && loose > 0; i++) {
        if (facts.Uses(i)) {
            usedRadius = std::max(usedRadius, (VertexOf(object, i) - CentreOf(object)).Length());
        }
    }
    const ObjectSource& source = world.Of(id);
    const std::int32_t missing =
        source.head.texTriangleCount > 0 ? source.head.texVertexCount + 4 - source.head.vertexCount : 0;
    constexpr std::int32_t markersAndView = 8;
    if (loose > 0 && object.radius > 2.0f * usedRadius + 2.0f) {
        std::string text = ": vertices of no triangle make its radius " + Shown(object.radius) +
                           " instead of " + Shown(usedRadius) + ", and collision slow";
        if (missing > 0) {
            text += ": it has " + std::to_string(source.head.vertexCount) + " vertices and needs " +
                    std::to_string(source.head.texVertexCount + 4) +
                    ", its texture vertices and 4; those that are missing stand at the origin";
        }
        Warn("vertices-stray", text);
    } else if (loose > facts.usedCount + markersAndView) {
        Warn("vertices-loose", ": " + std::to_string(loose) + " of its " + std::to_string(all) +
                                   " vertices belong to no triangle; leave them out");
    }
}

/// Whether no vertex stands far from all others.
bool MeshCheck::CheckSpike() {
    const Object& object = Subject();
    Vector sum;
    for (std::int32_t corner = 0; corner < object.faceValueCount; corner++) {
        sum = sum + CornerOf(object, corner);
    }
    const Vector middle = sum * (1.0f / static_cast<float>(object.faceValueCount));
    Vector farthest = middle;
    for (std::int32_t corner = 0; corner < object.faceValueCount; corner++) {
        const Vector vertex = CornerOf(object, corner);
        farthest = (vertex - middle).Length() > (farthest - middle).Length() ? vertex : farthest;
    }
    float radius = 0.0f;  // of the others
    for (std::int32_t corner = 0; corner < object.faceValueCount; corner++) {
        const Vector vertex = CornerOf(object, corner);
        if ((vertex - farthest).Length() > 0.0f) {
            radius = std::max(radius, (vertex - middle).Length());
        }
    }
    constexpr float spike = 5.0f;
    constexpr std::int32_t several = 8;
    if (object.faceValueCount / 3 < several || (farthest - middle).Length() < spike * radius) {
        return true;
    }
    Warn("mesh-spike", ": one vertex stands at " + ShownPoint(farthest) + ", far from all others");
    return false;
}

void MeshCheck::CheckSize(const MeshFacts& facts) {
    const float farthest =
        std::max({std::fabs(facts.low.x), std::fabs(facts.low.y), std::fabs(facts.low.z),
                  std::fabs(facts.high.x), std::fabs(facts.high.y), std::fabs(facts.high.z)});
    if (farthest > farAway) {
        Warn("mesh-far", ": it reaches " + Shown(farthest) +
                             " from the origin, where positions get coarse; a player is 10 "
                             "high");
    } else if (facts.LargestSide() < tiny) {
        Warn("mesh-tiny", ": it is only " + Shown(facts.LargestSide()) + " large; a player is 10 high");
    }
}

}  // namespace

void CheckMeshes(Findings& findings, const World& world) {
    Vector low;
    Vector high;
    bool isFirst = true;
    std::vector<float> sides;
    const auto before = static_cast<std::ptrdiff_t>(findings.list.size());
    std::size_t inward = 0;
    for (std::int32_t id = 0; id < world.scene->objectCount; id++) {
        MeshCheck check{findings, world, id};
        check.CheckPurpose();
        if (!world.Of(id).hasRecord || world.Of(id).meshDropped || !check.CheckValues() ||
            check.Subject().faceValueCount == 0) {
            continue;
        }
        const MeshFacts facts(check.Subject());
        check.CheckTriangles(facts);
        check.CheckLooseVertices(facts);
        if (check.CheckSpike()) {
            check.CheckSize(facts);
        }
        CheckSurface(findings, world, id, facts);
        sides.push_back(facts.LargestSide());
        inward += facts.LooksInwards() && !check.IsLookedAtFromInside(facts) ? 1 : 0;
        if (isFirst) {
            low = facts.low;
            high = facts.high;
            isFirst = false;
        }
        Widen(low, high, facts.low);
        Widen(low, high, facts.high);
    }
    const auto middle = sides.begin() + static_cast<std::ptrdiff_t>(sides.size() / 2);
    std::nth_element(sides.begin(), middle, sides.end());
    constexpr std::size_t several = 5;
    constexpr float huge = 1500.0f;
    if (sides.size() >= several && 2 * inward > sides.size()) {
        findings.list.erase(findings.list.begin() + before, findings.list.end());
        findings.Cause(
            "world-mirrored", world.scenes.front().AtByte(-1),
            std::to_string(inward) + " of " + std::to_string(sides.size()) +
                " meshes look inwards: the world seems mirrored, by a negative scale or by exchanged "
                "axes; list the corners the other way round");
        return;
    }
    if (sides.size() >= several && *middle > huge) {
        findings.Warn(
            "world-huge", world.scenes.front().AtByte(-1),
            "half of all objects are " + Shown(*middle) +
                " large or more, and a player is 10 high: make the world smaller, a metre as 5.5 units");
    }
    const float largest = std::max({high.x - low.x, high.y - low.y, high.z - low.z});
    constexpr float playerHeight = 10.0f;
    if (!isFirst && largest < playerHeight && world.scene->playerCount > 0) {
        findings.list.erase(findings.list.begin() + before, findings.list.end());
        findings.Cause("world-tiny", world.scenes.front().AtByte(-1),
                       "the whole world is only " + Shown(largest) +
                           " large, and a player 10 high: make it larger, a metre as 5.5 units");
    }
}
