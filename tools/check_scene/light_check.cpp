#include <algorithm>
#include <cmath>
#include <numbers>

#include "check_scene/checks.h"
#include "check_scene/mesh_facts.h"
#include "scene/scene.h"

// Lights: that there are some, that OpenGL has room for them, and that they fall on something.

namespace {

bool IsBlack(const float (&colour)[3]) {
    return std::ranges::all_of(colour, [](float part) { return part <= 0.0f; });
}

/// Whether any vertex of a visible triangle lies in the cone.
bool HitsAnything(const Scene& scene, const Light& light) {
    const Vector apex(light.position[0], light.position[1], light.position[2]);
    Vector axis(light.spotDirection[0], light.spotDirection[1], light.spotDirection[2]);
    axis.Normalise();
    const float least = std::cos(light.spotCutoff * std::numbers::pi_v<float> / 180.0f);
    for (std::int32_t id = 0; id < scene.objectCount; id++) {
        const Object& object = scene.objects[id];
        if (object.attributes[invisibleAttribute] == 1) {
            continue;
        }
        for (std::int32_t i = 0; i < object.faceValueCount; i++) {
            const Vector ray = CornerOf(object, i) - apex;
            if (ray.Dot(axis) >= least * ray.Length()) {
                return true;
            }
        }
    }
    return false;
}

void CheckLight(Findings& findings, const Scene& scene, const Light& light, const Place& place) {
    if (light.glLight == -1) {
        findings.Error("light-ninth", place,
                       "this is light number " + std::to_string(&light - scene.lights.get() + 1) +
                           ", and only the first eight shine");
    }
    if (IsBlack(light.ambient) && IsBlack(light.diffuse) && IsBlack(light.specular)) {
        findings.Warn("light-black", place,
                      "the light is black: its ambient, diffuse and specular colours are all 0");
    }
    for (const auto& colour : {light.ambient, light.diffuse, light.specular}) {
        if (std::min({colour[0], colour[1], colour[2]}) < 0.0f) {
            findings.Warn("light-negative", place, "a colour below 0 takes away what other lights give");
            break;
        }
    }
    for (const Light* other = scene.lights.get(); other != &light; other++) {
        if (std::ranges::equal(other->position, light.position) &&
            std::ranges::equal(other->diffuse, light.diffuse) &&
            std::ranges::equal(other->spotDirection, light.spotDirection)) {
            findings.Warn("light-twice", place, "the same light stands there already, and adds up");
            break;
        }
    }
    const bool isDirection = light.position[3] == 0.0f;
    if (isDirection && light.position[0] == 0.0f && light.position[1] == 0.0f &&
        light.position[2] == 0.0f) {
        findings.Error("light-from-nowhere", place,
                       "the light comes from nowhere: with w 0 its position is a direction, and that is 0");
    }
    if (light.constantAttenuation == 0.0f && light.linearAttenuation == 0.0f &&
        light.quadraticAttenuation == 0.0f) {
        findings.Error("light-attenuation", place,
                       "all three attenuations of the light are 0; a constant one of 1 is usual");
    }
    if (light.spotCutoff == 180.0f) {
        return;
    }
    const bool isAimless =
        light.spotDirection[0] == 0.0f && light.spotDirection[1] == 0.0f && light.spotDirection[2] == 0.0f;
    if (light.spotCutoff > 90.0f) {
        findings.Error("spot-cutoff", place,
                       "the spot cutoff is " + Shown(light.spotCutoff) +
                           " degrees: 0 to 90 make a spot, 180 makes none");
    } else if (isDirection) {
        findings.Warn("spot-as-sun", place,
                      "a light with a direction, w 0, can't be a spot: give it a place and w 1");
    } else if (isAimless) {
        findings.Error("spot-without-direction", place, "the spot has no direction");
    } else if (light.spotCutoff > 0.0f && light.spotCutoff < 1.6f) {
        findings.Warn("cutoff-radians", place,
                      "the spot is " + Shown(light.spotCutoff) +
                          " degrees wide: if radians are meant, write " +
                          Shown(std::round(light.spotCutoff * 180.0f / std::numbers::pi_v<float>)));
    } else if (!HitsAnything(scene, light)) {
        findings.Warn("spot-unseen", place,
                      "the spot falls on no vertex, so that it isn't seen: cut the mesh up where it "
                      "shines, or turn it");
    }
}

}  // namespace

void CheckLights(Findings& findings, const World& world) {
    const Scene& scene = *world.scene;
    std::int32_t next = 0;
    for (const Place& place : world.LightPlaces()) {
        CheckLight(findings, scene, scene.lights[next++], place);
    }
    if (scene.lightCount > 0 || scene.objectCount == 0) {
        return;
    }
    const SceneSource& source = world.scenes.front();
    const std::size_t at = source.globals == -1 ? 0 : source.Globals()->headBegin;
    findings.Warn("no-light", source.hasAttributes ? source.attributes.At(at) : source.AtByte(-1),
                  "the world is dim, for it has no light: put *LIGHT into the block GLOBALS");
}
