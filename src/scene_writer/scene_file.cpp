#include "scene_writer/scene_file.h"

#include <algorithm>
#include <array>
#include <bit>

#include "scene_writer/bytes.h"
#include "scene_writer/refusal.h"

namespace engine {

namespace {

constexpr std::size_t nameFieldSize = 50;

void AppendCount(std::string& bytes, std::size_t count) {
    AppendInt32(bytes, static_cast<std::int32_t>(count));
}

void AppendFloat3(std::string& bytes, Float3 value) {
    AppendFloat(bytes, value.x);
    AppendFloat(bytes, value.y);
    AppendFloat(bytes, value.z);
}

/// Many records of 32-bit numbers. Where the machine has them as the file wants them, they go in one piece.
template <typename Record>
void AppendAll(std::string& bytes, const Record* records, std::size_t count) {
    static_assert(sizeof(Record) == 12);
    if constexpr (std::endian::native == std::endian::little) {
        bytes.append(reinterpret_cast<const char*>(records), count * sizeof(Record));
        return;
    }
    for (std::size_t i = 0; i < count; i++) {
        for (const std::int32_t word : std::bit_cast<std::array<std::int32_t, 3>>(records[i])) {
            AppendInt32(bytes, word);
        }
    }
}

void AppendHead(std::string& bytes, const SceneObject& object) {
    std::string name = object.name.substr(0, nameFieldSize - 1);
    name.resize(nameFieldSize, '\0');
    bytes += name;
    AppendCount(bytes, object.vertices.size());
    AppendCount(bytes, object.faces.size());
    AppendInt32(bytes, object.centreVertex);
    AppendInt32(bytes, object.spareVertex);
    AppendInt32(bytes, object.xAxisVertex);
    AppendInt32(bytes, object.yAxisVertex);
    AppendInt32(bytes, object.zAxisVertex);
    AppendCount(bytes, object.texVertices.size());
    AppendCount(bytes, object.texFaces.size());
    AppendCount(bytes, object.keyTracks.size());
}

void AppendBody(std::string& bytes, const SceneObject& object) {
    AppendAll(bytes, object.vertices.data(), object.vertices.size());
    AppendAll(bytes, object.faces.data(), object.faces.size());
    AppendAll(bytes, object.texVertices.data(), object.texVertices.size());
    AppendAll(bytes, object.texFaces.data(), object.texFaces.size());
    const std::size_t coloured = std::min(object.colours.size(), object.vertices.size());
    AppendAll(bytes, object.colours.data(), coloured);
    for (std::size_t i = coloured; i < object.vertices.size(); i++) {
        AppendFloat3(bytes, {1.0f, 1.0f, 1.0f});
    }
}

/// Bytes of lists of 12 bytes an entry, which is nearly all of a large scene.
std::size_t SizeOf(const SceneObject& object) {
    return 12 * (2 * object.vertices.size() + object.faces.size() + object.texVertices.size() +
                 object.texFaces.size());
}

void AppendKeyTrack(std::string& bytes, const SceneKeyTrack& track) {
    AppendCount(bytes, track.size());
    for (const SceneKey& key : track) {
        AppendFloat3(bytes, key.translation);
        AppendFloat3(bytes, key.axis);
        AppendFloat(bytes, key.angle);
        AppendFloat3(bytes, key.extra);
    }
}

}  // namespace

std::string SceneFileBytes(const std::vector<SceneObject>& objects) {
    std::size_t size = 0;
    for (const SceneObject& object : objects) {
        size += SizeOf(object) + 100;
    }
    std::string bytes;
    bytes.reserve(size);
    AppendCount(bytes, objects.size());
    for (const SceneObject& object : objects) {
        AppendHead(bytes, object);
        AppendBody(bytes, object);
        for (const SceneKeyTrack& track : object.keyTracks) {
            AppendKeyTrack(bytes, track);
        }
    }
    return bytes;
}

void WriteSceneFile(const std::string& path, const std::vector<SceneObject>& objects) {
    for (const SceneObject& object : objects) {
        DemandWritable(object);
    }
    WriteBytes(path, SceneFileBytes(objects));
}

}  // namespace engine
