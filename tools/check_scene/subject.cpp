#include "check_scene/subject.h"

#include <cmath>

#include "check_scene/mesh_facts.h"
#include "scene/scene.h"

namespace {

bool IsFinite(Vector place) {
    return std::isfinite(place.x) && std::isfinite(place.y);
}

/// Of the *LIGHT in that line of the file.
bool FindLamp(const World& world, const Finding& finding, Vector& place) {
    std::int32_t next = 0;
    for (const SceneSource& source : world.scenes) {
        if (source.globals == -1) {
            continue;
        }
        for (const KeyUse& use : source.blocks[static_cast<std::size_t>(source.globals)].keys) {
            if (!use.Is("*LIGHT") || next >= world.scene->lightCount) {
                continue;
            }
            const Light& light = world.scene->lights[next++];
            const Place at = source.attributes.At(use.position);
            if (at.file == finding.place.file && at.line == finding.place.line &&
                light.position[3] != 0.0f) {
                place = Vector(light.position[0], light.position[1], light.position[2]);
                return IsFinite(place);
            }
        }
    }
    return false;
}

bool IsAbout(const World& world, const Finding& finding, std::int32_t id) {
    const SceneSource& source = world.SourceOf(id);
    if (finding.place.byte >= 0) {
        const Place at = world.At(id);
        return at.file == finding.place.file && at.byte == finding.place.byte;
    }
    const Block* block = world.BlockOf(id);
    return block != nullptr && source.attributes.shownName == finding.place.file &&
           finding.place.line >= source.attributes.LineOf(block->headBegin) &&
           finding.place.line <= source.attributes.LineOf(block->end);
}

}  // namespace

bool FindStart(const Scene& scene, std::int32_t player, Vector& start) {
    const std::int32_t id = scene.players[player].playerObject;
    if (id == -1 || !scene.objects[id].HasVertex(scene.objects[id].centreVertex) ||
        StandsStill(scene.objects[id])) {
        return false;
    }
    scene.objects[id].GetVertex(start, scene.objects[id].centreVertex);
    const float* m = scene.objects[id].transform.m;
    start = start + Vector(m[3], m[7], m[11]);
    return IsFinite(start);
}

Vector PlaceOf(const World& world, std::int32_t id) {
    const Object& object = world.scene->objects[id];
    Vector place;
    if (object.faceValueCount > 0 && object.vertexValueCount > 0) {
        const MeshFacts facts(object);
        place = (facts.low + facts.high) * 0.5f;
    } else if (object.HasVertex(0)) {
        object.GetVertex(place, 0);
    }
    const float* m = object.transform.m;
    place = place + Vector(m[3], m[7], m[11]);
    return IsFinite(place) ? place : Vector();
}

bool FindSubject(const World& world, const Finding& finding, Vector& place) {
    if (FindLamp(world, finding, place)) {
        return true;
    }
    for (std::int32_t id = 0; id < world.scene->objectCount; id++) {
        if (world.Of(id).hasRecord && IsAbout(world, finding, id)) {
            place = PlaceOf(world, id);
            return true;
        }
    }
    return false;
}
