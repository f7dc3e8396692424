#include <algorithm>
#include <cmath>
#include <limits>

#include "check_scene/checks.h"
#include "check_scene/mesh_facts.h"
#include "scene/scene.h"

// Lamps by their values: how bright they are, and whether their light arrives anywhere.

namespace {

/// Brighter than this everything that the lamp shines on is white.
constexpr float brightest = 10.0f;
/// A share of full light that nobody sees.
constexpr float dark = 0.02f;

float Largest(const float (&colour)[3]) {
    return *std::ranges::max_element(colour);
}

float Attenuation(const Light& light, float distance) {
    return light.constantAttenuation +
           distance * (light.linearAttenuation + distance * light.quadraticAttenuation);
}

/// What of the lamp arrives at the vertex that gets the most of it, as a share of full light.
struct Arrival {
    float share = 0.0f;
    float distance = std::numeric_limits<float>::infinity();  ///< of the nearest vertex, in world units
};

/// A small mesh at the lamp itself.
bool IsBulb(const Object& object, Vector lamp) {
    constexpr float small = 3.0f;
    if (object.radius > small || object.vertexValueCount == 0) {
        return false;
    }
    return (lamp - CentreOf(object)).Length() <= 2.0f * object.radius;
}

/// Whether a visible triangle reaches below the lamp, other than those of its own bulb.
bool HasAnythingBelow(const Scene& scene, Vector lamp) {
    for (std::int32_t id = 0; id < scene.objectCount; id++) {
        const Object& object = scene.objects[id];
        if (object.attributes[invisibleAttribute] == 1 || IsBulb(object, lamp)) {
            continue;
        }
        for (std::int32_t corner = 0; corner < object.faceValueCount; corner++) {
            if (CornerOf(object, corner).z < lamp.z) {
                return true;
            }
        }
    }
    return false;
}

Arrival FindArrival(const Scene& scene, const Light& light) {
    const Vector lamp(light.position[0], light.position[1], light.position[2]);
    Arrival arrival;
    for (std::int32_t id = 0; id < scene.objectCount && arrival.share < dark; id++) {
        const Object& object = scene.objects[id];
        if (object.attributes[invisibleAttribute] == 1 || IsBulb(object, lamp)) {
            continue;
        }
        for (std::int32_t corner = 0; corner < object.faceValueCount && arrival.share < dark; corner++) {
            const std::size_t first = 3 * static_cast<std::size_t>(object.faces[corner]);
            const float* vertex = &object.vertices[first];
            const float* normal = &object.normals[first];
            const Vector ray = lamp - Vector(vertex[0], vertex[1], vertex[2]);
            const float distance = ray.Length();
            arrival.distance = std::min(arrival.distance, distance);
            const float facing =
                distance > 0.0f ? ray.Dot(Vector(normal[0], normal[1], normal[2])) / distance : 0.0f;
            const float brightness =
                Largest(light.ambient) + Largest(light.diffuse) * std::max(facing, 0.0f);
            arrival.share = std::max(arrival.share, brightness / Attenuation(light, distance));
        }
    }
    return arrival;
}

void CheckLamp(Findings& findings, const Scene& scene, const Light& light, const Place& place) {
    const float most = std::max(Largest(light.ambient), Largest(light.diffuse));
    const bool isDirection = light.position[3] == 0.0f;
    const bool fades =
        !isDirection && (light.linearAttenuation > 0.0f || light.quadraticAttenuation > 0.0f ||
                         light.constantAttenuation > 1.0f);
    const float sensible = fades ? brightest : brightest / 4.0f;
    if (most > sensible) {
        findings.Warn("light-bright", place,
                      "the light's colours reach " + Shown(most) +
                          ", and everything it falls on is white: they run from 0 to 1");
    }
    const Vector position(light.position[0], light.position[1], light.position[2]);
    constexpr float longest = 10.0f;
    if (isDirection && position.Length() > longest) {
        findings.Warn("lamp-as-sun", place,
                      "the light is a direction, for its w is 0, and " + ShownPoint(position) +
                          " looks like a place: a lamp there has a w of 1");
    }
    const bool isSpot = light.spotCutoff != 180.0f;
    if (!isDirection && !isSpot && !fades && std::fabs(position.Length() - 1.0f) < 0.25f) {
        findings.Warn("sun-as-lamp", place,
                      "the light is a lamp, for its w is 1, and " + ShownPoint(position) +
                          " looks like a direction: a sun there has a w of 0");
    }
    const bool isBlack = most <= 0.0f;
    if (isDirection || isSpot || isBlack || !(Attenuation(light, 1.0f) > 0.0f)) {
        return;
    }
    const Arrival arrival = FindArrival(scene, light);
    if (!std::isfinite(arrival.distance)) {
        return;
    }
    if (!HasAnythingBelow(scene, position)) {
        findings.Warn("lamp-below", place,
                      "the lamp lies below everything that is seen, and lights no floor: z points up");
    }
    if (arrival.share < dark) {
        findings.Warn("lamp-far", place,
                      "the lamp reaches nothing: the nearest vertex is " +
                          Shown(std::round(arrival.distance)) + " away, and none gets more than " +
                          Shown(std::round(1000.0f * arrival.share) / 10.0f) +
                          " % of full light; make its attenuation smaller, or cut the mesh near it up");
    }
}

}  // namespace

void CheckLamps(Findings& findings, const World& world) {
    std::int32_t next = 0;
    for (const Place& place : world.LightPlaces()) {
        CheckLamp(findings, *world.scene, world.scene->lights[next++], place);
    }
}
