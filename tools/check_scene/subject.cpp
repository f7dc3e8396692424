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
    for (const Place& at : world.LightPlaces()) {
        const Light& light = world.scene->lights[next++];
        if (at.file == finding.place.file && at.line == finding.place.line && light.position[3] != 0.0f) {
            place = Vector(light.position[0], light.position[1], light.position[2]);
            return IsFinite(place);
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
    start = CentreOf(scene.objects[id]) + ShiftOf(scene.objects[id]);
    return IsFinite(start);
}

Vector PlaceOf(const World& world, std::int32_t id) {
    const Object& object = world.scene->objects[id];
    Vector place = VertexOf(object, 0);
    if (object.faceValueCount > 0 && object.vertexValueCount > 0) {
        const MeshFacts facts(object);
        place = (facts.low + facts.high) * 0.5f;
    }
    place = place + ShiftOf(object);
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
