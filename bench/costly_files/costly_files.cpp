#include "costly_files/costly_files.h"

#include <algorithm>
#include <array>
#include <string>

#include "engine/engine.h"
#include "engine/singletons.h"
#include "loading/sgi_image.h"
#include "scene/scene.h"
#include "scene_writer/bytes.h"
#include "scene_writer/scene_file.h"
#include "services/timer.h"

namespace {

/// What an object without a mesh takes in a scene file.
constexpr std::int64_t recordSize = 90;

std::string Repeat(const std::string& text, std::int64_t count) {
    std::string repeated;
    for (std::int64_t i = 0; i < count; i++) {
        repeated += text;
    }
    return repeated;
}

std::string RepeatUpTo(const std::string& text, std::int64_t bytes) {
    return Repeat(text, bytes / static_cast<std::int64_t>(text.size()));
}

engine::SceneObject Named(const std::string& name) {
    engine::SceneObject object;
    object.name = name;
    return object;
}

/// Objects without a mesh, a0, a1 and so on.
std::vector<engine::SceneObject> NumberedObjects(std::int64_t count) {
    std::vector<engine::SceneObject> objects;
    for (std::int64_t i = 0; i < count; i++) {
        objects.push_back(Named("a" + std::to_string(i)));
    }
    return objects;
}

void WriteScene(const std::vector<engine::SceneObject>& objects, const std::string& attributes) {
    engine::WriteBytes("costly.bin", SceneFileBytes(objects));  // whatever is wrong with them
    engine::WriteBytes("costly.atr", attributes);
}

void LoadScene() {
    theScene->LoadMesh("costly.bin");
}

void WriteSettings(const std::string& text) {
    engine::WriteBytes("settings.atr", text + "}");
}

void LoadSettings() {
    theEngine->ReadSettings("settings.atr");
    theEngine->LoadMeshes("settings.atr");
}

/// A block for each object, each within the one before, half of the bytes in the scene file.
template <const char* inside>
void WriteNestedBlocks(std::int64_t bytes) {
    const std::vector<engine::SceneObject> objects = NumberedObjects(bytes / 2 / recordSize);
    std::string text;
    for (const engine::SceneObject& object : objects) {
        text += object.name + " { " + inside + "\n";
    }
    WriteScene(objects, text + Repeat("}", static_cast<std::int64_t>(objects.size())));
}

constexpr char physics[] = "*PHYSICS 1 0.5 0.5";
constexpr char flags[] = "*COLLIDER *NOCOLLIDER *INVISIBLE";
constexpr char players[] = "*PLAYEROBJECT 1 *CAMERAOBJECT 0 1 2";
constexpr char groups[] = "*GROUPMEMBER 3 *GROUPPARENT 2";
constexpr char words[] = "no keys, but 12 numbers";

void WriteUnclosedBlocks(std::int64_t bytes) {
    const std::vector<engine::SceneObject> objects = NumberedObjects(bytes / 2 / recordSize);
    std::string text;
    for (const engine::SceneObject& object : objects) {
        text += object.name + " { *PHYSICS 1\n";
    }
    WriteScene(objects, text);
}

/// Keys that all find the same number, which stands far away and is long.
void WriteKeysBeforeALongNumber(std::int64_t bytes) {
    const std::string keys = RepeatUpTo("*PHYSICS *CAMERAOBJECT ", bytes / 2);
    WriteScene({Named("a"), Named("b")},
               "a { b { " + keys + std::string(static_cast<std::size_t>(bytes / 2), '7') + " } }");
}

void WriteSettingsBeforeALongNumber(std::int64_t bytes) {
    const std::string keys = RepeatUpTo("*RESOLUTION *PLAYERHEADLIMIT *MOUSESENSITIVITY ", bytes / 2);
    WriteSettings(keys + "0." + std::string(static_cast<std::size_t>(bytes / 2), '7'));
}

/// Each of many objects has a key of its own to look for what isn't there.
void WriteNestedBlocksBeforeNothing(std::int64_t bytes) {
    const std::vector<engine::SceneObject> objects = NumberedObjects(bytes / 4 / recordSize);
    std::string text;
    for (const engine::SceneObject& object : objects) {
        text += object.name + "{";
    }
    text += "*LIGHT *TEXTURE " + std::string(static_cast<std::size_t>(bytes / 2), ' ');
    WriteScene(objects, text + Repeat("}", static_cast<std::int64_t>(objects.size())));
}

void WriteKeysWithoutNumbers(std::int64_t bytes) {
    WriteScene({Named("a")}, "a { " + RepeatUpTo("*PHYSICS*CAMERAOBJECT", bytes) + "} GLOBALS {" +
                                 RepeatUpTo("*LIGHT ", bytes / 8) + "}");
}

void WriteSettingsWithoutNumbers(std::int64_t bytes) {
    WriteSettings(RepeatUpTo("*PLAYERVIEWPORT*RESOLUTION*FONT ", bytes));
}

void WriteManyPlayers(std::int64_t bytes) {
    WriteSettings(RepeatUpTo("*PLAYERCOUNT 1\n", bytes));
}

void WriteManyScenes(std::int64_t bytes) {
    WriteScene({Named("a")}, "");
    WriteSettings(RepeatUpTo("*LOADMESH costly.bin\n", bytes / 5));
}

/// Names of blanks and line ends alone, of which there are thousands, and blocks for none or all of them.
void WriteBlankNames(std::int64_t bytes) {
    std::vector<engine::SceneObject> objects;
    for (std::int64_t i = 0; i < bytes / 2 / recordSize; i++) {
        std::string name;
        for (int bit = 0; bit < 16; bit++) {
            name += (i >> bit & 1) != 0 ? '\n' : ' ';
        }
        objects.push_back(Named(name));
    }
    WriteScene(objects, RepeatUpTo("word {\n}  \n\n", bytes / 2));
}

/// Names with a brace in them, each of which has its block.
void WriteBraceNames(std::int64_t bytes) {
    std::vector<engine::SceneObject> objects;
    std::string text;
    for (std::int64_t i = 0; i < bytes / 2 / recordSize; i++) {
        objects.push_back(Named("a{" + std::to_string(i)));
        text += "b{ a{" + std::to_string(i) + "{ }\n";
    }
    std::reverse(objects.begin(), objects.end());
    WriteScene(objects, text);
}

/// Each block is preceded by others' names that end in the same characters.
void WriteEqualEndings(std::int64_t bytes) {
    std::vector<engine::SceneObject> objects = NumberedObjects(20);
    for (std::size_t i = 0; i < objects.size(); i++) {
        objects[i].name = std::string(i + 1, 'a');
    }
    WriteScene(objects, RepeatUpTo(std::string(48, 'a') + " ", bytes) + "{");
}

void WriteBracesOnly(std::int64_t bytes) {
    WriteScene({Named("{"), Named("{{{"), Named("a")}, std::string(static_cast<std::size_t>(bytes), '{'));
}

void WriteEmptyKeyTracks(std::int64_t bytes) {
    engine::SceneObject object = Named("a");
    object.keyTracks.resize(static_cast<std::size_t>(bytes / 4));
    WriteScene({object}, "");
}

void AppendBigEndian(std::string& bytes, std::uint32_t value, int size) {
    for (int shift = 8 * (size - 1); shift >= 0; shift -= 8) {
        bytes += static_cast<char>(value >> shift & 0xFF);
    }
}

std::string ImageHeader(int type, std::uint32_t width, std::uint32_t height, std::uint32_t channels) {
    std::string header = "\x01\xDA";
    for (const std::uint32_t value : {static_cast<std::uint32_t>(type), 3u, width, height, channels}) {
        AppendBigEndian(header, value, 2);
    }
    header.resize(512);
    return header;
}

/// All rows of the image are the same packets, which go on long after the row is full.
void WriteSharedRows(std::int64_t bytes) {
    const auto rows = static_cast<std::uint32_t>(bytes / 64);
    constexpr std::uint32_t width = 50;
    constexpr std::uint32_t packetBytes = 256 * width;
    std::string image = ImageHeader(0x101, width, rows, 4);
    for (const std::uint32_t value : {512 + 2 * 4 * 4 * rows, packetBytes}) {
        for (std::uint32_t row = 0; row < 4 * rows; row++) {
            AppendBigEndian(image, value, 4);
        }
    }
    engine::WriteBytes("costly.rgb", image + RepeatUpTo("\x01\x07", packetBytes));
}

/// A header alone, of an image as large as can be.
void WriteImageHeader(std::int64_t bytes) {
    const auto side = static_cast<std::uint32_t>(std::min<std::int64_t>(bytes / 16, 65535));
    engine::WriteBytes("costly.rgb", ImageHeader(1, side, 16000, 4));
}

void LoadImage() {
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::int32_t components = 0;
    ReadRgbTexture("costly.rgb", width, height, components);
}

}  // namespace

const std::vector<CostlyFiles>& AllCostlyFiles() {
    static const std::vector<CostlyFiles> all = {
        {"many_players", WriteManyPlayers, LoadSettings},
        {"many_scenes", WriteManyScenes, LoadSettings},
        {"nested_words", WriteNestedBlocks<words>, LoadScene},
        {"nested_physics", WriteNestedBlocks<physics>, LoadScene},
        {"nested_flags", WriteNestedBlocks<flags>, LoadScene},
        {"nested_players", WriteNestedBlocks<players>, LoadScene},
        {"nested_groups", WriteNestedBlocks<groups>, LoadScene},
        {"nested_before_nothing", WriteNestedBlocksBeforeNothing, LoadScene},
        {"unclosed_blocks", WriteUnclosedBlocks, LoadScene},
        {"keys_before_a_long_number", WriteKeysBeforeALongNumber, LoadScene},
        {"settings_before_a_long_number", WriteSettingsBeforeALongNumber, LoadSettings},
        {"keys_without_numbers", WriteKeysWithoutNumbers, LoadScene},
        {"settings_without_numbers", WriteSettingsWithoutNumbers, LoadSettings},
        {"blank_names", WriteBlankNames, LoadScene},
        {"brace_names", WriteBraceNames, LoadScene},
        {"equal_endings", WriteEqualEndings, LoadScene},
        {"braces_only", WriteBracesOnly, LoadScene},
        {"empty_key_tracks", WriteEmptyKeyTracks, LoadScene},
        {"shared_rows", WriteSharedRows, LoadImage},
        {"image_header", WriteImageHeader, LoadImage},
    };
    return all;
}
