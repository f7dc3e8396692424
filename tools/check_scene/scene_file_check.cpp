#include <algorithm>
#include <cstdlib>

#include "check_scene/checks.h"
#include "platform/files.h"
#include "scene/scene.h"

// What the engine itself reports about scene files, with a place for each.

namespace {

/// The byte that the engine names in a text; -1 without.
std::int64_t ByteIn(const std::string& text) {
    const std::string before = "(at byte ";
    const std::size_t found = text.find(before);
    return found == std::string::npos ? -1 : std::atoll(text.c_str() + found + before.size());
}

/// The text without the place, which stands in front of it already.
std::string WithoutPlace(std::string text, const std::string& path) {
    if (text.starts_with(path + ": ")) {
        text.erase(0, path.size() + 2);
    }
    const std::size_t byte = text.find(" (at byte ");
    const std::size_t end = text.find(')', byte);
    if (byte != std::string::npos && end != std::string::npos) {
        text.erase(byte, end + 1 - byte);
    }
    return text;
}

void CheckScene(Findings& findings, const World& world, const SceneSource& source) {
    if (!source.isThere) {
        findings.Error("no-scene", world.settings.At(source.loadPosition),
                       "*LOADMESH: there is no file " + world.ShownName(source.path));
        return;
    }
    for (const std::string& box : source.boxes) {
        if (box.starts_with(source.path)) {
            findings.Error("scene-damaged", source.AtByte(ByteIn(box)), WithoutPlace(box, source.path));
        }
    }
    if (source.objectEnd == source.firstObject && source.boxes.empty()) {
        findings.Warn("scene-empty", source.AtByte(-1), "the scene holds no object");
    }
}

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

void CheckReports(Findings& findings, const World& world, std::int32_t id) {
    const ObjectSource& source = world.Of(id);
    for (const std::string& report : source.reports) {
        std::string text = Named(world.scene->objects[id]) + ": " + report;
        std::int32_t least = 0;
        std::int32_t most = 0;
        if (source.meshDropped && ReadIndexRange(world, id, least, most)) {
            text += "; the indices run from " + std::to_string(least) + " to " + std::to_string(most) +
                    " in " + std::to_string(source.head.vertexCount) + " vertices";
            if (least >= 1 && most == source.head.vertexCount) {
                text += ": they seem to count from 1, and have to count from 0";
            }
        }
        findings.Error("record-damaged", world.At(id), text);
    }
}

}  // namespace

void CheckSceneFiles(Findings& findings, const World& world) {
    for (const SceneSource& source : world.scenes) {
        CheckScene(findings, world, source);
        CheckFileEnd(findings, world, source);
    }
    for (std::int32_t id = 0; id < world.scene->objectCount; id++) {
        CheckReports(findings, world, id);
    }
}
