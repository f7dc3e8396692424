#include <algorithm>
#include <cstdio>
#include <string>
#include <utility>

#include "loading/attribute_file.h"
#include "loading/load_fault.h"
#include "loading/object_names.h"
#include "loading/scene_record.h"
#include "platform/files.h"
#include "platform/message_box.h"
#include "platform/windows1250.h"
#include "scene/indices.h"
#include "scene/scene.h"
#include "services/log.h"

// A scene: the binary mesh file, which is a count and that many records, back to back, and the attribute
// file beside it.

namespace {

/// Why the mesh can't be used, or null.
const char* MeshFault(const RecordHead& head, const Object& object) {
    if (head.texTriangleCount != 0 && head.texTriangleCount != head.triangleCount) {
        return "not as many texture triangles as triangles";
    }
    if (!AreIndicesBelow(object.faces.get(), object.faceValueCount, head.vertexCount)) {
        return "a triangle names a vertex that doesn't exist";
    }
    if (!AreIndicesBelow(object.texFaces.get(), object.texFaceValueCount, head.texVertexCount)) {
        return "a texture triangle names a texture vertex that doesn't exist";
    }
    if (object.texFaces != nullptr &&
        !AreIndicesBelow(object.faces.get(), object.faceValueCount, head.texVertexCount + spareEntries)) {
        return "a triangle names a vertex beyond the texture vertices and the four spare ones";
    }
    return nullptr;
}

/// Without texture faces one index serves vertices and texture vertices, so drawing reads as many of these
/// as the faces name. Where there are fewer, the list is filled up to one for each vertex; the new ones are
/// 0.
/// @return whether some were missing
bool FillTexVertices(Object& object) {
    const std::int32_t there = object.texVertexValueCount;
    if (there == 0 || AreIndicesBelow(object.faces.get(), object.faceValueCount, there / 3)) {
        return false;
    }
    object.ResizeTexVertices(object.vertexValueCount / 3);
    std::fill(object.texVertices.get() + there, object.texVertices.get() + object.texVertexValueCount,
              0.0f);
    return true;
}

/// Puts the mesh of a new object in the place of this one.
void DropMesh(Object& object) {
    Object plain;
    plain.keyTracks = std::move(object.keyTracks);
    plain.keyTrackCount = object.keyTrackCount;
    plain.name = object.name;
    object = std::move(plain);
}

/// Markers that name no vertex become 0: only objects that move need them.
/// @return a text that lists them, empty if there are none
std::string CheckMarkers(Object& object) {
    const struct {
        const char* name;
        std::int32_t& index;
    } markers[] = {
        {"centre", object.centreVertex}, {"spare", object.spareVertex},  {"X axis", object.xAxisVertex},
        {"Y axis", object.yAxisVertex},  {"Z axis", object.zAxisVertex},
    };
    std::string wrong;
    for (const auto& marker : markers) {
        // Without any vertices 0 is as good as can be.
        if (object.HasVertex(marker.index) || marker.index == 0) {
            continue;
        }
        wrong +=
            (wrong.empty() ? "" : ", ") + std::string(marker.name) + " " + std::to_string(marker.index);
        marker.index = 0;
    }
    return wrong;
}

/// What is known of a scene's names for as long as it is being loaded into.
struct KnownNames {
    ObjectNames objects;
    TextureIndex textures;
};

/// One load while it runs.
struct SceneLoad {
    Scene& scene;
    SceneFile& file;
    std::string path;
    KnownNames& names;
    AttributeFile attributes;
    std::int32_t objectTotal = 0;
    std::int64_t triangleTotal = 0;
    std::int64_t vertexTotal = 0;

    /// @param id of the record's object, for which memory is there already
    Damage ReadRecord(std::int64_t& offset, std::int32_t id);
    void PrepareMesh(const RecordHead& head, std::int32_t id) const;
    /// @return false if the file turned out to be damaged, which is reported
    bool ReadRecords();
};

void SceneLoad::PrepareMesh(const RecordHead& head, std::int32_t id) const {
    Object& object = scene.objects[id];
    const auto report = [&](LoadFault::Kind kind, const std::string& what) {
        ReportFault(scene.log, {kind, path, what, -1, id, object.name});
    };
    if (const char* fault = MeshFault(head, object)) {
        DropMesh(object);
        report(LoadFault::Kind::MeshDropped, fault);
        return;
    }
    object.ComputeNormals();
    if (object.texFaces != nullptr) {
        object.ReindexByTexFaces();
    } else if (FillTexVertices(object)) {
        report(LoadFault::Kind::TexVerticesMissing, "triangles name texture vertices that don't exist");
    }
    object.centreVertex = head.centreVertex;
    object.spareVertex = head.spareVertex;
    object.xAxisVertex = head.xAxisVertex;
    object.yAxisVertex = head.yAxisVertex;
    object.zAxisVertex = head.zAxisVertex;
    const std::string wrongMarkers = CheckMarkers(object);
    if (!wrongMarkers.empty()) {
        report(LoadFault::Kind::MarkersReset, "no vertices for these markers: " + wrongMarkers);
    }
    object.ComputeRadius();
}

Damage SceneLoad::ReadRecord(std::int64_t& offset, std::int32_t id) {
    RecordHead head;
    Damage damage = ReadHead(file, offset, head);
    Object& object = scene.objects[id];
    if (damage.text.empty() && !ReadBody(file, head, object)) {
        object = Object();
        damage = {"the file has changed while it was read", head.bodyOffset};
    }
    if (!damage.text.empty()) {
        damage.text.insert(0, "object " + std::to_string(objectTotal) + " \"" + head.name + "\": ");
        return damage;
    }
    offset = head.endOffset;

    object.name = names.objects.Rename(object.name, head.name);
    objectTotal++;
    vertexTotal += head.vertexCount;
    triangleTotal += head.triangleCount;
    PrepareMesh(head, id);
    ApplyObjectAttributes(scene, attributes, id);
    return {};
}

bool SceneLoad::ReadRecords() {
    std::int32_t objectCount = 0;
    std::int64_t offset = sizeof objectCount;
    Damage damage;
    if (!file.Read(&objectCount, 1)) {
        damage = {"the file ends before the object count does", 0};
    } else if (objectCount < 0 || objectCount > file.BytesFrom(offset) / recordHeadSize) {
        damage = CountDamage("object count", objectCount, 0);
    } else {
        const std::int32_t firstId = scene.objectCount;
        scene.AddObjects(objectCount);
        names.objects.TakeNewObjects(scene);
        for (std::int32_t id = firstId; id < scene.objectCount && damage.text.empty(); id++) {
            damage = ReadRecord(offset, id);
        }
    }
    if (damage.text.empty()) {
        return true;
    }
    const std::string text =
        ReportFault(scene.log, {LoadFault::Kind::RecordsLeftOut, path, damage.text, damage.offset});
    MessageBoxA(nullptr, text.c_str(), ":-(", MB_ICONSTOP);
    return false;
}

bool Load(Scene& scene, const std::string& path, KnownNames& names) {
    std::FILE* opened = OpenFile(path.c_str(), "rb");
    if (opened == nullptr) {
        const std::string text = "Tento soubor chybí: "_1250 + path;
        Log::Write(scene.log, text);
        MessageBoxA(nullptr, text.c_str(), ":-(", MB_ICONSTOP);
        return false;
    }
    SceneFile file(opened);
    SceneLoad load{scene, file, path, names, AttributeFile(AttributeFileName(path), names.textures)};
    Log::Write(scene.log, "Nahrává se scéna: "_1250 + path);
    const bool whole = load.ReadRecords();
    ApplyGlobalAttributes(scene, load.attributes);
    Log::Write(scene.log, "Scéna nahráha: "_1250 + std::to_string(load.objectTotal) + " Objektů, "_1250 +
                              std::to_string(load.triangleTotal) + " Polygonů, "_1250 +
                              std::to_string(load.vertexTotal) + " Vertexů."_1250);
    return whole;
}

}  // namespace

std::string AttributeFileName(const std::string& path) {
    const std::size_t bin = path.find("bin");
    if (bin != std::string::npos) {
        return path.substr(0, bin) + "atr";
    }
    const std::size_t separator = path.find_last_of("/\\");
    const std::size_t point = path.find_last_of('.');
    const bool hasExtension =
        point != std::string::npos && (separator == std::string::npos || point > separator);
    return path.substr(0, hasExtension ? point : std::string::npos) + ".atr";
}

bool Scene::LoadMesh(const char* path) {
    KnownNames names;
    return Load(*this, path, names);
}

void Scene::LoadMeshes(const std::vector<std::string>& paths) {
    KnownNames names;
    for (const std::string& path : paths) {
        Load(*this, path, names);
    }
}
