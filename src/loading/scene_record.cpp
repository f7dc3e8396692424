#include "loading/scene_record.h"

#include <cstring>
#include <limits>
#include <memory>
#include <utility>

namespace {

// A head begins with the name. Ten numbers follow, in the order in which `ReadHead` takes them.
constexpr std::int64_t nameSize = 50;

constexpr std::int64_t tripleSize = 12;
constexpr std::int64_t keySize = 40;
constexpr std::int64_t valuesPerKey = keySize / 4;
constexpr std::int64_t countSize = 4;
/// More elements than this can't be counted in scalars.
constexpr std::int32_t maxElementCount = std::numeric_limits<std::int32_t>::max() / 3 - spareEntries;

/// Walks over the sections of the record, up to its key tracks.
Damage FindKeyTracks(const SceneFile& file, const RecordHead& head, std::int64_t offset,
                     std::int64_t& keyTracks) {
    const struct {
        const char* what;
        std::int32_t count;
        std::int64_t elementSize;
        std::int64_t number;  ///< which one of the head's ten it is
    } sections[] = {
        {"vertex count", head.vertexCount, 2 * tripleSize, 0},  // colours included
        {"triangle count", head.triangleCount, tripleSize, 1},
        {"texture vertex count", head.texVertexCount, tripleSize, 7},
        {"texture triangle count", head.texTriangleCount, tripleSize, 8},
        {"key track count", head.keyTrackCount, countSize, 9},
    };
    std::int64_t end = head.bodyOffset;
    for (const auto& section : sections) {
        keyTracks = end;
        end += section.elementSize * std::max(section.count, 0);
        if (section.count < 0 || section.count > maxElementCount || end > file.size) {
            return CountDamage(section.what, section.count, offset + nameSize + 4 * section.number);
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
        if (keyCount < 0 || end > file.size) {
            return CountDamage("key count", keyCount, countOffset);
        }
    }
    return {};
}

/// @param end of the record, beyond which no track may run
bool ReadKeyTrack(SceneFile& file, std::int64_t end, KeyTrack& track) {
    std::int32_t keyCount = 0;
    if (!file.Read(&keyCount, 1) || keyCount < 0 || keySize * keyCount > end - file.position) {
        return false;
    }
    track.Resize(keyCount);
    float keys[256][valuesPerKey];
    std::int32_t done = 0;
    while (done < keyCount) {
        const std::int32_t count = std::min<std::int32_t>(std::size(keys), keyCount - done);
        if (!file.Read(&keys[0][0], count * valuesPerKey)) {
            return false;
        }
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
    if (texVertexValues != 0) {
        object.texVertices = std::make_unique_for_overwrite<float[]>(texVertexValues);
    }
    if (texFaceValues != 0) {
        object.texFaces = std::make_unique_for_overwrite<std::int32_t[]>(texFaceValues);
    }
    object.vertexValueCount = static_cast<std::int32_t>(vertexValues);
    object.faceValueCount = static_cast<std::int32_t>(faceValues);
    object.texVertexValueCount = static_cast<std::int32_t>(texVertexValues);
    object.texFaceValueCount = static_cast<std::int32_t>(texFaceValues);
}

}  // namespace

Damage CountDamage(const char* what, std::int32_t count, std::int64_t offset) {
    const char* why = count < 0 ? " is negative" : " is more than the rest of the file holds";
    return {what + (" " + std::to_string(count)) + why, offset};
}

Damage ReadHead(SceneFile& file, std::int64_t offset, RecordHead& head) {
    char bytes[recordHeadSize];
    if (file.BytesFrom(offset) < recordHeadSize || !file.Seek(offset) ||
        !file.ReadBytes(bytes, recordHeadSize)) {
        return {"the file ends before the object's head does", offset};
    }
    head.name.assign(bytes, std::find(bytes, bytes + nameSize - 1, '\0'));
    const char* place = bytes + nameSize;
    for (std::int32_t* number : {&head.vertexCount, &head.triangleCount, &head.centreVertex,
                                 &head.spareVertex, &head.xAxisVertex, &head.yAxisVertex, &head.zAxisVertex,
                                 &head.texVertexCount, &head.texTriangleCount, &head.keyTrackCount}) {
        std::memcpy(number, place, sizeof *number);
        ToHostOrder(number, 1);
        place += sizeof *number;
    }
    head.bodyOffset = offset + recordHeadSize;
    Damage damage = FindKeyTracks(file, head, offset, head.endOffset);
    return damage.text.empty() ? FindEnd(file, head.keyTrackCount, head.endOffset) : damage;
}

bool ReadBody(SceneFile& file, const RecordHead& head, Object& object) {
    MakeArrays(head, object);
    if (!file.Seek(head.bodyOffset) || !file.Read(object.vertices.get(), object.vertexValueCount) ||
        !file.Read(object.faces.get(), object.faceValueCount) ||
        !file.Read(object.texVertices.get(), object.texVertexValueCount) ||
        !file.Read(object.texFaces.get(), object.texFaceValueCount) ||
        !file.Read(object.colours.get(), object.vertexValueCount)) {
        return false;
    }
    if (head.keyTrackCount != 0) {
        object.keyTracks = MakeKeyTracks(head.keyTrackCount, 0);
        object.keyTrackCount = head.keyTrackCount;
    }
    for (std::int32_t track = 0; track < head.keyTrackCount; track++) {
        if (!ReadKeyTrack(file, head.endOffset, object.keyTracks[track])) {
            return false;
        }
    }
    return true;
}
