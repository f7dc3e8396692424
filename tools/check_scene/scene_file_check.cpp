#include <algorithm>
#include <utility>

#include "check_scene/checks.h"
#include "check_scene/file_kind.h"
#include "platform/files.h"
#include "scene/scene.h"

// What the engine itself reports about scene files, with a place for each.

namespace {

/// Bytes that no object accounts for: the count at the beginning is too small, or two files were joined.
void CheckFileEnd(Findings& findings, const World& world, const SceneSource& source) {
    const std::int32_t last = source.objectEnd - 1;
    std::FILE* opened = OpenFile(source.path.c_str(), "rb");
    if (last < source.firstObject || !world.Of(last).hasRecord || opened == nullptr) {
        return;
    }
    const SceneFile file(opened);
    const std::int64_t end = world.Of(last).head.endOffset;
    if (file.BytesFrom(end) > 0) {
        findings.Warn("bytes-after-end", source.AtByte(end),
                      Counted(file.BytesFrom(end), "byte") + " stand after the last of " +
                          Counted(source.objectEnd - source.firstObject, "object") +
                          ", and aren't read: the count at the beginning may be too small");
    }
}

/// Smallest and largest vertex index of the faces as the file has them.
bool ReadIndexRange(const World& world, std::int32_t id, std::int32_t& least, std::int32_t& most) {
    std::FILE* opened = OpenFile(world.SourceOf(id).path.c_str(), "rb");
    if (opened == nullptr) {
        return false;
    }
    SceneFile file(opened);
    Object object;
    if (!ReadBody(file, world.Of(id).head, object) || object.faceValueCount == 0) {
        return false;
    }
    const auto [smallest, largest] =
        std::minmax_element(object.faces.get(), object.faces.get() + object.faceValueCount);
    least = *smallest;
    most = *largest;
    return true;
}

void CheckFault(Findings& findings, const World& world, const SceneSource& source, LoadFault fault) {
    const std::int64_t byte = std::exchange(fault.byte, -1);  // which is the finding's place
    if (fault.object < 0) {
        findings.Cause("scene-damaged", source.AtByte(byte), fault.Sentence());
        return;
    }
    std::string text = Named(world.scene->objects[fault.object]) + ": " + fault.Sentence();
    std::int32_t least = 0;
    std::int32_t most = 0;
    if (fault.kind == LoadFault::Kind::MeshDropped && ReadIndexRange(world, fault.object, least, most)) {
        const std::int32_t vertexCount = world.Of(fault.object).head.vertexCount;
        text += "; the indices run from " + std::to_string(least) + " to " + std::to_string(most) + " in " +
                std::to_string(vertexCount) + " vertices";
        if (least >= 1 && most == vertexCount) {
            text += ": they seem to count from 1, and have to count from 0";
        }
    }
    findings.Error("record-damaged", world.At(fault.object), text);
}

void CheckScene(Findings& findings, const World& world, const SceneSource& source) {
    if (source.isRepeated) {
        findings.Cause("scene-twice", world.settings.At(source.loadPosition),
                       "*LOADMESH " + source.path +
                           " stands here a second time: each object comes twice, and those find no blocks");
        return;
    }
    if (!source.isThere) {
        findings.Cause("no-scene", world.settings.At(source.loadPosition),
                       "*LOADMESH: there is no file " + world.ShownName(source.path));
        return;
    }
    if (!source.foreignAttributes.empty()) {
        findings.Cause("file-foreign", {world.ShownName(source.attributesPath)},
                       "this is no attribute file; it " + source.foreignAttributes);
        return;
    }
    const bool isDamaged =
        std::ranges::any_of(source.faults, [](const LoadFault& fault) { return fault.object < 0; });
    const std::string foreign = isDamaged ? ForeignKind(source.path, FileUse::Scene) : "";
    if (!foreign.empty()) {
        findings.Cause("file-foreign", source.AtByte(-1), "this is no scene; it " + foreign);
        return;
    }
    for (const LoadFault& fault : source.faults) {
        CheckFault(findings, world, source, fault);
    }
    if (source.objectEnd == source.firstObject && source.faults.empty()) {
        findings.Cause("scene-empty", source.AtByte(-1), "the scene holds no object");
    }
}

}  // namespace

void CheckSceneFiles(Findings& findings, const World& world) {
    for (const SceneSource& source : world.scenes) {
        CheckScene(findings, world, source);
        CheckFileEnd(findings, world, source);
    }
}
