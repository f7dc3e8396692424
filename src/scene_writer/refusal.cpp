#include "scene_writer/refusal.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <stdexcept>

namespace engine {

namespace {

constexpr std::size_t longestName = 49;
constexpr std::size_t mostTracks = 3;  ///< forward, backward, sideways

bool IsFinite(Float3 value) {
    return std::isfinite(value.x) && std::isfinite(value.y) && std::isfinite(value.z);
}

void DemandName(const SceneObject& object) {
    if (object.name.size() > longestName) {
        Refuse(Named(object), "its name has more than " + std::to_string(longestName) + " letters");
    }
    const bool isPlain = std::ranges::all_of(
        object.name, [](char c) { return c >= ' ' && c <= '~' && c != '{' && c != '}'; });
    if (!isPlain) {
        Refuse(Named(object),
               "its name holds braces or letters beyond ASCII, and would never find its block");
    }
}

void DemandFinite(const SceneObject& object, const std::vector<Float3>& values, const std::string& what) {
    const auto bad = std::ranges::find_if_not(values, IsFinite);
    if (bad != values.end()) {
        Refuse(Named(object), what + " " + std::to_string(bad - values.begin()) + " is no finite number");
    }
}

void DemandIndices(const SceneObject& object, const std::vector<Int3>& faces, std::size_t count,
                   const std::string& what) {
    const auto bad = std::ranges::find_if(faces, [count](Int3 face) {
        return std::min({face.a, face.b, face.c}) < 0 ||
               static_cast<std::size_t>(std::max({face.a, face.b, face.c})) >= count;
    });
    if (bad != faces.end()) {
        Refuse(Named(object), what + " " + std::to_string(bad - faces.begin()) +
                                  " names a vertex that doesn't exist: there are " + std::to_string(count));
    }
}

void DemandMarkers(const SceneObject& object) {
    for (const std::int32_t marker : {object.centreVertex, object.spareVertex, object.xAxisVertex,
                                      object.yAxisVertex, object.zAxisVertex}) {
        if (marker < 0 || static_cast<std::size_t>(marker) >= object.vertices.size()) {
            Refuse(Named(object), "its marker " + std::to_string(marker) + " doesn't exist among " +
                                      std::to_string(object.vertices.size()) + " vertices");
        }
    }
}

void DemandTrack(const SceneObject& object, const SceneKeyTrack& track) {
    if (track.size() == 1) {
        Refuse(Named(object),
               "a track of one key only makes it flicker: each other frame takes the key back");
    }
    for (const SceneKey& key : track) {
        if (!IsFinite(key.translation) || !IsFinite(key.axis) || !std::isfinite(key.angle)) {
            Refuse(Named(object), "a key of its tracks is no finite number");
        }
        if (std::fabs(key.angle) > std::numbers::pi_v<float>) {
            Refuse(Named(object), "a key turns by more than half a turn: angles are in radians");
        }
    }
}

}  // namespace

void Refuse(const std::string& subject, const std::string& reason) {
    throw std::invalid_argument(subject + ": " + reason);
}

std::string Named(const SceneObject& object) {
    return "object \"" + object.name + "\"";
}

bool HasMarkers(const SceneObject& object) {
    return object.centreVertex != 0;
}

void DemandNoMarkers(const SceneObject& object, const std::string& change) {
    if (HasMarkers(object)) {
        Refuse(Named(object), change + " has to come before AddMarkers, which is the last step");
    }
}

void DemandCorners(const std::string& name, Float3 low, Float3 high) {
    if (!(low.x < high.x && low.y < high.y && low.z < high.z)) {
        Refuse("object \"" + name + "\"", "the low corner has to lie below the high one along each axis");
    }
}

void DemandWritable(const SceneObject& object) {
    DemandName(object);
    if (object.vertices.empty()) {
        Refuse(Named(object), "it has no vertices");
    }
    if (object.colours.size() > object.vertices.size()) {
        Refuse(Named(object), "it has more colours than vertices");
    }
    if (!object.texFaces.empty() && object.texFaces.size() != object.faces.size()) {
        Refuse(Named(object), "its texture faces aren't as many as its faces");
    }
    if (!object.texFaces.empty() && !HasMarkers(object)) {
        Refuse(Named(object), "with a texture it needs markers: AddMarkers has to be the last step");
    }
    DemandIndices(object, object.faces, object.vertices.size(), "face");
    DemandIndices(object, object.texFaces, object.texVertices.size(), "texture face");
    DemandFinite(object, object.vertices, "vertex");
    DemandFinite(object, object.texVertices, "texture vertex");
    DemandFinite(object, object.colours, "colour");
    DemandMarkers(object);
    if (object.keyTracks.size() > mostTracks) {
        Refuse(Named(object), "it has more than three tracks: forward, backward, sideways");
    }
    for (const SceneKeyTrack& track : object.keyTracks) {
        DemandTrack(object, track);
    }
}

}  // namespace engine
