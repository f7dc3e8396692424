#include <algorithm>
#include <bit>
#include <cstdio>
#include <cstring>
#include <limits>
#include <memory>
#include <string>
#include <utility>

#include "loading/attribute_file.h"
#include "loading/object_names.h"
#include "platform/files.h"
#include "platform/message_box.h"
#include "platform/windows1250.h"
#include "scene/scene.h"
#include "services/log.h"

// The binary mesh file of a scene: a count, and that many records, back to back. Everything in it is
// little-endian and 4 bytes wide but the names. Nothing marks a damaged file, so every count is held
// against what is left of the file before memory is taken for it.

namespace {

// Places in the head of a record.
constexpr std::int64_t headSize = 90;
constexpr std::int64_t nameSize = 50;
constexpr std::int64_t vertexCountOffset = 50;
constexpr std::int64_t triangleCountOffset = 54;
constexpr std::int64_t centreVertexOffset = 58;
constexpr std::int64_t spareVertexOffset = 62;
constexpr std::int64_t xAxisVertexOffset = 66;
constexpr std::int64_t yAxisVertexOffset = 70;
constexpr std::int64_t zAxisVertexOffset = 74;
constexpr std::int64_t texVertexCountOffset = 78;
constexpr std::int64_t texTriangleCountOffset = 82;
constexpr std::int64_t keyTrackCountOffset = 86;

constexpr std::int64_t tripleSize = 12;
constexpr std::int64_t keySize = 40;
constexpr std::int64_t valuesPerKey = keySize / 4;
constexpr std::int64_t countSize = 4;
/// Entries behind the texture vertices of an object, once it has a single index list.
constexpr std::int32_t spareEntries = 4;
/// More elements than this can't be counted in scalars.
constexpr std::int32_t maxElementCount = std::numeric_limits<std::int32_t>::max() / 3 - spareEntries;

/// Values of the file become those of the machine.
template <typename Value>
void ToHostOrder(Value* values, std::size_t count) {
    if constexpr (std::endian::native == std::endian::big) {
        for (std::size_t i = 0; i < count; i++) {
            auto* bytes = reinterpret_cast<std::uint8_t*>(values + i);
            std::reverse(bytes, bytes + sizeof(Value));
        }
    }
}

std::int32_t Int32At(const char* bytes) {
    std::int32_t value;
    std::memcpy(&value, bytes, sizeof value);
    ToHostOrder(&value, 1);
    return value;
}

/// The open file. Its size is that of the moment it was opened; reads tell if it has shrunk since.
struct SceneFile {
    std::FILE* file;
    std::int64_t size = 0;
    std::int64_t position = 0;  ///< of the next byte to read

    explicit SceneFile(std::FILE* newFile) : file(newFile) {
        std::setvbuf(file, nullptr, _IOFBF, std::size_t{1} << 16);
        if (std::fseek(file, 0, SEEK_END) == 0) size = std::max(std::ftell(file), 0L);
        std::rewind(file);
    }
    ~SceneFile() { std::fclose(file); }
    SceneFile(const SceneFile&) = delete;
    SceneFile& operator=(const SceneFile&) = delete;

    std::int64_t BytesFrom(std::int64_t offset) const { return size - offset; }
    bool Seek(std::int64_t offset) {
        if (offset == position) return true;
        position = offset;
        return std::fseek(file, offset, SEEK_SET) == 0;
    }
    bool ReadBytes(void* bytes, std::size_t count) {
        position += static_cast<std::int64_t>(count);
        return count == 0 || std::fread(bytes, 1, count, file) == count;
    }
    template <typename Value>
    bool Read(Value* values, std::int64_t count) {
        static_assert(sizeof(Value) == 4);
        const auto valueCount = static_cast<std::size_t>(count);
        if (!ReadBytes(values, valueCount * sizeof(Value))) return false;
        ToHostOrder(values, valueCount);
        return true;
    }
};

struct RecordHead {
    std::string name;  ///< as the file has it, not yet unique
    std::int32_t vertexCount = 0;
    std::int32_t triangleCount = 0;
    std::int32_t centreVertex = 0;
    std::int32_t spareVertex = 0;
    std::int32_t xAxisVertex = 0;
    std::int32_t yAxisVertex = 0;
    std::int32_t zAxisVertex = 0;
    std::int32_t texVertexCount = 0;
    std::int32_t texTriangleCount = 0;
    std::int32_t keyTrackCount = 0;
    std::int64_t bodyOffset = 0;  ///< from the start of the file
    std::int64_t endOffset = 0;   ///< of the next record
};

/// What is wrong, and at which place of the file. An empty text means nothing is.
struct Damage {
    std::string text;
    std::int64_t offset = 0;
};

Damage CountDamage(const char* what, std::int32_t count, std::int64_t offset) {
    const char* why = count < 0 ? " is negative" : " is more than the rest of the file holds";
    return {what + (" " + std::to_string(count)) + why, offset};
}

/// Walks over the sections of the record, up to its key tracks.
Damage FindKeyTracks(const SceneFile& file, const RecordHead& head, std::int64_t offset,
                     std::int64_t& keyTracks) {
    const struct {
        const char* what;
        std::int32_t count;
        std::int64_t elementSize;
        std::int64_t fieldOffset;
    } sections[] = {
        {"vertex count", head.vertexCount, 2 * tripleSize, vertexCountOffset},  // colours included
        {"triangle count", head.triangleCount, tripleSize, triangleCountOffset},
        {"texture vertex count", head.texVertexCount, tripleSize, texVertexCountOffset},
        {"texture triangle count", head.texTriangleCount, tripleSize, texTriangleCountOffset},
        {"key track count", head.keyTrackCount, countSize, keyTrackCountOffset},
    };
    std::int64_t end = head.bodyOffset;
    for (const auto& section : sections) {
        keyTracks = end;
        end += section.elementSize * std::max(section.count, 0);
        if (section.count < 0 || section.count > maxElementCount || end > file.size) {
            return CountDamage(section.what, section.count, offset + section.fieldOffset);
        }
    }
    return {};
}

/// Walks over the key tracks: how long one is stands in front of it.
Damage FindEnd(SceneFile& file, std::int32_t keyTrackCount, std::int64_t& end) {
    for (std::int32_t track = 0; track < keyTrackCount; track++) {
        std::int32_t keyCount = 0;
        if (file.BytesFrom(end) < countSize || !file.Seek(end) || !file.Read(&keyCount, 1)) {
            return {"the file ends before key track " + std::to_string(track), end};
        }
        const std::int64_t countOffset = end;
        end += countSize + keySize * std::max(keyCount, 0);
        if (keyCount < 0 || end > file.size) return CountDamage("key count", keyCount, countOffset);
    }
    return {};
}

/// Reads the head of the record at the offset, and makes sure that the whole record is there.
Damage ReadHead(SceneFile& file, std::int64_t offset, RecordHead& head) {
    char bytes[headSize];
    if (file.BytesFrom(offset) < headSize || !file.Seek(offset) || !file.ReadBytes(bytes, headSize)) {
        return {"the file ends before the object's head does", offset};
    }
    head.name.assign(bytes, std::find(bytes, bytes + nameSize - 1, '\0'));
    head.vertexCount = Int32At(bytes + vertexCountOffset);
    head.triangleCount = Int32At(bytes + triangleCountOffset);
    head.centreVertex = Int32At(bytes + centreVertexOffset);
    head.spareVertex = Int32At(bytes + spareVertexOffset);
    head.xAxisVertex = Int32At(bytes + xAxisVertexOffset);
    head.yAxisVertex = Int32At(bytes + yAxisVertexOffset);
    head.zAxisVertex = Int32At(bytes + zAxisVertexOffset);
    head.texVertexCount = Int32At(bytes + texVertexCountOffset);
    head.texTriangleCount = Int32At(bytes + texTriangleCountOffset);
    head.keyTrackCount = Int32At(bytes + keyTrackCountOffset);
    head.bodyOffset = offset + headSize;
    const Damage damage = FindKeyTracks(file, head, offset, head.endOffset);
    return damage.text.empty() ? FindEnd(file, head.keyTrackCount, head.endOffset) : damage;
}

/// @param end of the record, beyond which no track may run
bool ReadKeyTrack(SceneFile& file, std::int64_t end, KeyTrack& track) {
    std::int32_t keyCount = 0;
    if (!file.Read(&keyCount, 1) || keyCount < 0 || keySize * keyCount > end - file.position) return false;
    track.Resize(keyCount);
    float keys[256][valuesPerKey];
    std::int32_t done = 0;
    while (done < keyCount) {
        const std::int32_t count = std::min<std::int32_t>(std::size(keys), keyCount - done);
        if (!file.Read(&keys[0][0], count * valuesPerKey)) return false;
        for (std::int32_t i = 0; i < count; i++, done++) {
            const float* key = keys[i];
            track.keyTranslations[done] = Vector(key[0], key[1], key[2]);
            track.keyAxes[done] = Vector(key[3], key[4], key[5]);
            track.keyAngles[done] = key[6];
            track.keyExtras[done] = Vector(key[7], key[8], key[9]);
        }
    }
    return true;
}

/// Arrays of the object for the record's mesh, to be read into. Only the normals begin with values, since
/// those of vertices without a triangle stay: as the object's own resizes leave them.
void MakeArrays(const RecordHead& head, Object& object) {
    const std::size_t vertexValues = 3 * static_cast<std::size_t>(head.vertexCount);
    const std::size_t faceValues = 3 * static_cast<std::size_t>(head.triangleCount);
    const std::size_t texVertexValues = 3 * static_cast<std::size_t>(head.texVertexCount);
    const std::size_t texFaceValues = 3 * static_cast<std::size_t>(head.texTriangleCount);
    const std::size_t oldNormals =
        std::min(vertexValues, static_cast<std::size_t>(object.vertexValueCount));

    auto normals = std::make_unique_for_overwrite<float[]>(vertexValues);
    std::copy_n(object.normals.get(), oldNormals, normals.get());
    std::fill(normals.get() + oldNormals, normals.get() + vertexValues, 0.0f);
    object.normals = std::move(normals);
    object.vertices = std::make_unique_for_overwrite<float[]>(vertexValues);
    object.colours = std::make_unique_for_overwrite<float[]>(vertexValues);
    object.faces = std::make_unique_for_overwrite<std::int32_t[]>(faceValues);
    if (texVertexValues != 0) object.texVertices = std::make_unique_for_overwrite<float[]>(texVertexValues);
    if (texFaceValues != 0) object.texFaces = std::make_unique_for_overwrite<std::int32_t[]>(texFaceValues);
    object.vertexValueCount = static_cast<std::int32_t>(vertexValues);
    object.faceValueCount = static_cast<std::int32_t>(faceValues);
    object.texVertexValueCount = static_cast<std::int32_t>(texVertexValues);
    object.texFaceValueCount = static_cast<std::int32_t>(texFaceValues);
}

/// Reads the body of a record whose head is known to be good. False if the file has changed meanwhile.
bool ReadBody(SceneFile& file, const RecordHead& head, Object& object) {
    MakeArrays(head, object);
    if (!file.Seek(head.bodyOffset) || !file.Read(object.vertices.get(), object.vertexValueCount) ||
        !file.Read(object.faces.get(), object.faceValueCount) ||
        !file.Read(object.texVertices.get(), object.texVertexValueCount) ||
        !file.Read(object.texFaces.get(), object.texFaceValueCount) ||
        !file.Read(object.colours.get(), object.vertexValueCount)) {
        return false;
    }
    if (head.keyTrackCount != 0) object.ResizeKeyTracks(head.keyTrackCount);
    for (std::int32_t track = 0; track < head.keyTrackCount; track++) {
        if (!ReadKeyTrack(file, head.endOffset, object.keyTracks[track])) return false;
    }
    return true;
}

/// Whether all indices name one of `count` entries.
bool AreIndicesBelow(const std::int32_t* indices, std::int32_t indexCount, std::int32_t count) {
    std::uint32_t largest = 0;  // a negative index comes out larger than any other
    for (std::int32_t i = 0; i < indexCount; i++) {
        largest = std::max(largest, static_cast<std::uint32_t>(indices[i]));
    }
    return indexCount == 0 || largest < static_cast<std::uint32_t>(count);
}

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
        if (object.HasVertex(marker.index) || marker.index == 0) continue;
        wrong +=
            (wrong.empty() ? "" : ", ") + std::string(marker.name) + " " + std::to_string(marker.index);
        marker.index = 0;
    }
    return wrong;
}

/// The attribute file stands beside the binary one, whose name says "bin" once, by its extension or by a
/// folder: there its name ends, with "atr".
std::string AttributeFileName(const std::string& path) {
    const std::size_t bin = path.find("bin");
    if (bin != std::string::npos) return path.substr(0, bin) + "atr";
    const std::size_t separator = path.find_last_of("/\\");
    const std::size_t point = path.find_last_of('.');
    const bool hasExtension =
        point != std::string::npos && (separator == std::string::npos || point > separator);
    return path.substr(0, hasExtension ? point : std::string::npos) + ".atr";
}

/// One load while it runs.
struct SceneLoad {
    Scene& scene;
    SceneFile& file;
    std::string path;
    AttributeFile attributes;
    std::int32_t objectTotal = 0;
    std::int64_t triangleTotal = 0;
    std::int64_t vertexTotal = 0;

    /// @param id of the record's object, for which memory is there already
    Damage ReadRecord(std::int64_t& offset, std::int32_t id, ObjectNames& names);
    void PrepareMesh(const RecordHead& head, Object& object) const;
    /// @return false if the file turned out to be damaged, which is told
    bool ReadRecords();
    void Tell(const std::string& objectName, const std::string& text) const;
};

void SceneLoad::Tell(const std::string& objectName, const std::string& text) const {
    Log::Write(scene.log, path + ": object \"" + objectName + "\": " + text);
}

void SceneLoad::PrepareMesh(const RecordHead& head, Object& object) const {
    if (const char* fault = MeshFault(head, object)) {
        DropMesh(object);
        Tell(object.name, fault + std::string("; it gets the mesh of a new object"));
        return;
    }
    object.ComputeNormals();
    if (object.texFaces != nullptr) object.ReindexByTexFaces();
    object.centreVertex = head.centreVertex;
    object.spareVertex = head.spareVertex;
    object.xAxisVertex = head.xAxisVertex;
    object.yAxisVertex = head.yAxisVertex;
    object.zAxisVertex = head.zAxisVertex;
    const std::string wrongMarkers = CheckMarkers(object);
    if (!wrongMarkers.empty()) Tell(object.name, "no vertices for these markers: " + wrongMarkers);
    object.ComputeRadius();
}

Damage SceneLoad::ReadRecord(std::int64_t& offset, std::int32_t id, ObjectNames& names) {
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

    const std::string name = names.MakeUnique(head.name);
    names.Rename(object.name, name);
    object.name = name;
    objectTotal++;
    vertexTotal += head.vertexCount;
    triangleTotal += head.triangleCount;
    PrepareMesh(head, object);
    ApplyObjectAttributes(scene, attributes, id);
    return {};
}

bool SceneLoad::ReadRecords() {
    std::int32_t objectCount = 0;
    std::int64_t offset = sizeof objectCount;
    Damage damage;
    if (!file.Read(&objectCount, 1)) {
        damage = {"the file ends before the object count does", 0};
    } else if (objectCount < 0 || objectCount > file.BytesFrom(offset) / headSize) {
        damage = CountDamage("object count", objectCount, 0);
    } else {
        const std::int32_t firstId = scene.objectCount;
        scene.AddObjects(objectCount);
        ObjectNames names(scene);
        for (std::int32_t id = firstId; id < scene.objectCount && damage.text.empty(); id++) {
            damage = ReadRecord(offset, id, names);
        }
    }
    if (damage.text.empty()) return true;
    const std::string text = path + ": " + damage.text + " (at byte " + std::to_string(damage.offset) +
                             "); this and what follows is left out";
    Log::Write(scene.log, text);
    MessageBoxA(nullptr, text.c_str(), ":-(", MB_ICONSTOP);
    return false;
}

}  // namespace

bool Scene::LoadMesh(const char* path) {
    std::FILE* opened = OpenFile(path, "rb");
    if (opened == nullptr) {
        const std::string text = "Tento soubor chybí: "_1250 + std::string(path);
        Log::Write(log, text);
        MessageBoxA(nullptr, text.c_str(), ":-(", MB_ICONSTOP);
        return false;
    }
    SceneFile file(opened);
    SceneLoad load{*this, file, path, AttributeFile(AttributeFileName(path).c_str())};
    Log::Write(log, "Nahrává se scéna: "_1250 + std::string(path));
    const bool whole = load.ReadRecords();
    ApplyGlobalAttributes(*this, load.attributes);
    Log::Write(log, "Scéna nahráha: "_1250 + std::to_string(load.objectTotal) + " Objektů, "_1250 +
                        std::to_string(load.triangleTotal) + " Polygonů, "_1250 +
                        std::to_string(load.vertexTotal) + " Vertexů."_1250);
    return whole;
}
