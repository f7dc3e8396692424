#include "scene_writer/scene_file.h"

#include "scene_writer/bytes.h"

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

void AppendInt3(std::string& bytes, Int3 value) {
    AppendInt32(bytes, value.a);
    AppendInt32(bytes, value.b);
    AppendInt32(bytes, value.c);
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
    for (const Float3& vertex : object.vertices) {
        AppendFloat3(bytes, vertex);
    }
    for (const Int3& face : object.faces) {
        AppendInt3(bytes, face);
    }
    for (const Float3& texVertex : object.texVertices) {
        AppendFloat3(bytes, texVertex);
    }
    for (const Int3& texFace : object.texFaces) {
        AppendInt3(bytes, texFace);
    }
    for (std::size_t i = 0; i < object.vertices.size(); i++) {
        AppendFloat3(bytes, i < object.colours.size() ? object.colours[i] : Float3{1.0f, 1.0f, 1.0f});
    }
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
    std::string bytes;
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
    WriteBytes(path, SceneFileBytes(objects));
}
