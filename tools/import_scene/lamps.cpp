#include "import_scene/lamps.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

constexpr std::size_t mostLights = 8;  ///< that OpenGL promises

/// Light comes in watts in the modelling program, and a lumen is this part of one.
constexpr float lumensForOneWatt = 683.0f;

/// What lamps add where they don't reach. With what OpenGL adds by itself it is about the grey that a
/// modelling program has around its worlds.
constexpr float ambientOfLamps = 0.12f;

/// Brightness on the screen of what the strongest lamp shines at from near. What is beyond these is brought
/// to them, as its author thought in other units.
constexpr float dimmest = 0.3f;
constexpr float brightest = 2.0f;
/// The share of the triangles in a lamp's light that are nearer than those by which it is judged.
constexpr std::size_t nearShare = 5;

/// A lamp's brightness is colour / (constant + linear d + quadratic d d) in OpenGL, and falls with the
/// square of the distance d in nature; but then the screen shows more than the half for a quarter of the
/// light. With these, what is shown agrees within a tenth from half to five times the distance at which it
/// is 1.
constexpr float nearBrightness = 2.0f;
constexpr float linearFall = 0.8275f;
constexpr float quadraticFall = 0.1725f;

/// A lamp between the model's units and the engine's.
struct Lamp {
    aiLightSourceType type = aiLightSource_POINT;
    aiColor3D colour{1.0f, 1.0f, 1.0f};  ///< as displayed, the largest part is 1
    float reach = 0.0f;  ///< distance at which a white wall is displayed as white; for suns its brightness
    aiVector3D place;
    aiVector3D direction{0.0f, 0.0f, -1.0f};
    float innerAngle = 0.0f;  ///< radians, half the cone
    float outerAngle = 0.0f;
    std::string name;
};

float Display(float amount) {
    return std::pow(std::max(amount, 0.0f), 1.0f / 2.2f);
}

float Linear(float display) {
    return std::pow(std::max(display, 0.0f), 2.2f);
}

float Largest(const aiColor3D& colour) {
    return std::max({colour.r, colour.g, colour.b});
}

/// In glTF: candela or lux, as the library multiplies intensity and colour.
void ReadPhysical(const aiLight& light, float scale, Lamp& lamp) {
    const float strength = Largest(light.mColorDiffuse);
    lamp.colour = {Display(light.mColorDiffuse.r / strength), Display(light.mColorDiffuse.g / strength),
                   Display(light.mColorDiffuse.b / strength)};
    // A white wall gives back the light that falls on it to all sides, and the number pi is the share of
    // one.
    const float radiance = strength / lumensForOneWatt / std::numbers::pi_v<float>;
    lamp.reach = lamp.type == aiLightSource_DIRECTIONAL ? radiance : std::sqrt(radiance) * scale;
}

/// In older formats: brightness as it is displayed.
void ReadDisplayed(const aiLight& light, float modelSize, Lamp& lamp) {
    const float strength = Largest(light.mColorDiffuse);
    lamp.colour = {light.mColorDiffuse.r / strength, light.mColorDiffuse.g / strength,
                   light.mColorDiffuse.b / strength};
    // Their lamps usually don't fade at all.
    lamp.reach = lamp.type == aiLightSource_DIRECTIONAL ? Linear(std::min(strength, 1.0f)) : modelSize;
}

/// The distance of what the lamp shines at from near; a very large one if that is nothing.
float DistanceToWorld(const Lamp& lamp, const std::vector<WorldObject>& objects) {
    std::vector<float> distances{1e15f};
    for (const WorldObject& object : objects) {
        // A few triangles of each object stand for all.
        const std::size_t step = std::max<std::size_t>(1, object.mesh.faces.size() / 200);
        for (std::size_t i = 0; i < object.mesh.faces.size(); i += step) {
            const engine::Int3& face = object.mesh.faces[i];
            const auto corner = [&](std::int32_t vertex) {
                const engine::Float3& at = object.mesh.vertices[vertex];
                return aiVector3D(at.x, at.y, at.z);
            };
            const aiVector3D a = corner(face.a);
            const aiVector3D normal = (corner(face.b) - a) ^ (corner(face.c) - a);
            const aiVector3D toLamp = lamp.place - (a + corner(face.b) + corner(face.c)) / 3.0f;
            if (normal * toLamp > 0.0f) {
                distances.push_back(toLamp.Length());
            }
        }
    }
    const auto near = distances.begin() + static_cast<std::ptrdiff_t>(distances.size() / nearShare);
    std::nth_element(distances.begin(), near, distances.end());
    return std::max(*near, 1e-6f);
}

/// How bright the lamp makes what is nearest to it, on the screen.
float Brightness(const Lamp& lamp, const std::vector<WorldObject>& objects) {
    if (lamp.type == aiLightSource_DIRECTIONAL) {
        return Display(lamp.reach);
    }
    const float distance = DistanceToWorld(lamp, objects);
    return Display(lamp.reach * lamp.reach / (distance * distance));
}

engine::SceneLight ToSceneLight(const Lamp& lamp) {
    engine::SceneLight light;
    light.diffuse = {lamp.colour.r, lamp.colour.g, lamp.colour.b, 1.0f};
    light.specular = {0.0f, 0.0f, 0.0f, 1.0f};
    const auto brighten = [&](float factor) {
        light.diffuse = {lamp.colour.r * factor, lamp.colour.g * factor, lamp.colour.b * factor, 1.0f};
    };
    if (lamp.type == aiLightSource_DIRECTIONAL) {
        brighten(Display(lamp.reach));
        light.position = {-lamp.direction.x, -lamp.direction.y, -lamp.direction.z, 0.0f};
        return light;
    }
    brighten(nearBrightness);
    light.position = {lamp.place.x, lamp.place.y, lamp.place.z, 1.0f};
    light.linearAttenuation = linearFall / lamp.reach;
    light.quadraticAttenuation = quadraticFall / (lamp.reach * lamp.reach);
    if (lamp.type == aiLightSource_SPOT) {
        constexpr float degrees = 180.0f / std::numbers::pi_v<float>;
        light.spotDirection = {lamp.direction.x, lamp.direction.y, lamp.direction.z};
        light.spotCutoff = std::clamp(lamp.outerAngle * degrees, 1.0f, 90.0f);
        // A soft edge: the softer, the less light reaches the rim.
        const float softness =
            1.0f - std::clamp(lamp.innerAngle / std::max(lamp.outerAngle, 1e-3f), 0.0f, 1.0f);
        const float rim = std::cos(std::min(lamp.outerAngle, 1.5f));
        light.spotExponent = std::clamp(softness * std::log(0.05f) / std::log(rim), 0.0f, 128.0f);
    }
    return light;
}

std::vector<engine::SceneLight> DefaultLights() {
    engine::SceneLight sun;
    sun.ambient = {0.2f, 0.2f, 0.22f, 1.0f};
    sun.diffuse = {0.75f, 0.73f, 0.7f, 1.0f};
    sun.specular = {0.0f, 0.0f, 0.0f, 1.0f};
    sun.position = {0.35f, -0.5f, 0.8f, 0.0f};
    engine::SceneLight sky;
    sky.diffuse = {0.2f, 0.22f, 0.25f, 1.0f};
    sky.specular = {0.0f, 0.0f, 0.0f, 1.0f};
    sky.position = {-0.5f, 0.6f, 0.4f, 0.0f};
    return {sun, sky};
}

std::vector<Lamp> ReadLamps(const Model& model, const std::vector<WorldObject>& objects, Report& report) {
    std::vector<Lamp> lamps;
    const float modelSize = BoundsOf(objects).Size().Length();
    for (unsigned i = 0; i < model.scene->mNumLights; i++) {
        const aiLight& light = *model.scene->mLights[i];
        Lamp lamp;
        lamp.name = light.mName.C_Str();
        lamp.type = light.mType;
        const bool known = lamp.type == aiLightSource_DIRECTIONAL || lamp.type == aiLightSource_POINT ||
                           lamp.type == aiLightSource_SPOT;
        const float strength = Largest(light.mColorDiffuse);
        if (!known || !std::isfinite(strength) || strength <= 0.0f) {
            report.Warn("only suns, points and spots that shine become lights, left out is", lamp.name);
            continue;
        }
        const int node = model.FindNode(lamp.name);
        const aiMatrix4x4 toWorld = node == -1 ? model.toWorld : model.WorldTransform(node);
        lamp.place = toWorld * light.mPosition;
        lamp.direction = aiMatrix3x3(toWorld) * light.mDirection;
        lamp.direction.NormalizeSafe();
        lamp.innerAngle = light.mAngleInnerCone;
        lamp.outerAngle = light.mAngleOuterCone;
        if (model.isGltf) {
            ReadPhysical(light, model.scale, lamp);
        } else {
            ReadDisplayed(light, modelSize, lamp);
        }
        if (IsFinite(lamp.place) && IsFinite(lamp.direction) && lamp.reach > 0.0f) {
            lamps.push_back(lamp);
        }
    }
    return lamps;
}

/// Brings the lamps into the range in which the brightest of them shows something and burns nothing,
/// whatever units the model's author thought in.
void Expose(std::vector<Lamp>& lamps, const std::vector<float>& brightness, const Options& options,
            Report& report) {
    const float most = *std::max_element(brightness.begin(), brightness.end());
    float factor = options.lightScale;
    if (const float fitting = std::clamp(most, dimmest, brightest); fitting != most && most > 0.0f) {
        factor *= fitting / most;
        report.Note("lamps are made " + std::string(fitting > most ? "brighter" : "darker") +
                    " to suit the picture; --light-scale changes it");
    }
    for (Lamp& lamp : lamps) {
        // A factor of brightness on the screen is one of distance, nearly.
        lamp.reach = lamp.type == aiLightSource_DIRECTIONAL ? Linear(Display(lamp.reach) * factor)
                                                            : lamp.reach * std::sqrt(Linear(factor));
    }
}

}  // namespace

std::vector<engine::SceneLight> MakeLights(const Model& model, const std::vector<WorldObject>& objects,
                                           const Options& options, Report& report) {
    std::vector<Lamp> lamps = ReadLamps(model, objects, report);
    if (lamps.empty() || options.lightScale == 0.0f) {
        return DefaultLights();
    }
    std::vector<float> brightness;
    brightness.reserve(lamps.size());
    for (const Lamp& lamp : lamps) {
        brightness.push_back(Brightness(lamp, objects));
    }
    Expose(lamps, brightness, options, report);

    std::vector<std::size_t> order(lamps.size());
    for (std::size_t i = 0; i < order.size(); i++) {
        order[i] = i;
    }
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return brightness[a] > brightness[b]; });
    for (std::size_t i = mostLights; i < order.size(); i++) {
        report.Warn("OpenGL has eight lights, the weakest lamps stay dark", lamps[order[i]].name);
    }
    order.resize(std::min(order.size(), mostLights));
    std::vector<engine::SceneLight> lights;
    lights.reserve(order.size());
    for (const std::size_t index : order) {
        lights.push_back(ToSceneLight(lamps[index]));
    }
    if (lights.size() == mostLights) {
        return lights;
    }
    // Light from everywhere needs one of its own, as that of a lamp fades with it.
    engine::SceneLight ambient;
    ambient.ambient = {ambientOfLamps, ambientOfLamps, ambientOfLamps, 1.0f};
    ambient.diffuse = {0.0f, 0.0f, 0.0f, 1.0f};
    ambient.specular = {0.0f, 0.0f, 0.0f, 1.0f};
    lights.push_back(ambient);
    return lights;
}
