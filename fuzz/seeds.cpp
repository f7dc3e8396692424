#include <filesystem>
#include <iostream>
#include <string>

#include "scene_writer/bytes.h"
#include "scene_writer/image_file.h"
#include "scene_writer/scene_file.h"
#include "scene_writer/shapes.h"

// Writes what each fuzzer begins with: a folder of valid files for each reader.

namespace {

const std::string heroBlock =
    "Hero {\n*PLAYEROBJECT 0\n*CAMERAOBJECT 0 0 1\n*COLLIDER\n*PHYSICS 1.0 0.5 0.5\n*GROUPPARENT 0\n}\n";
const std::string otherBlocks =
    "Box\n\n{ *GROUPMEMBER 0 *TEXTURE wall.tga }\nStart { *PLAYERSPAWNPOINT 0 *INVISIBLE *NOCOLLIDER }\n"
    "GLOBALS { *TEXTURE sky.tga *LIGHT 0.2 0.2 0.2 1  1 1 1 1  1 1 1 1  0 0 50 1  0 0 -1  0 180  1 0 0 }\n";

/// The length of the text, the text, the scene: as the fuzzer of scenes takes its input.
std::string SceneInput(const std::string& text, const std::vector<SceneObject>& objects) {
    std::string input;
    input += static_cast<char>(text.size() & 255);
    input += static_cast<char>(text.size() >> 8);
    return input + text + SceneFileBytes(objects);
}

SceneObject Hero() {
    SceneObject hero = MakeBox("Hero", {-2, -2, 1}, {2, 2, 11});
    AddMarkers(hero, {0, 0, 6});
    hero.keyTracks = {{{{0.1f, 0, 0}, {1, 0, 0}, 0.1f, {}}, {{-0.1f, 0, 0}, {1, 0, 0}, -0.1f, {}}}, {}};
    return hero;
}

SceneObject Box() {
    SceneObject box = MakeBox("Box", {3, 3, 0}, {4, 4, 1}, 1.0f);
    AddMarkers(box, {3.5f, 3.5f, 0.5f});
    return box;
}

}  // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount != 2) {
        std::cerr << "usage: fuzz_seeds FOLDER\n";
        return 2;
    }
    const std::filesystem::path folder = arguments[1];
    const auto write = [&](const std::string& name, const std::string& bytes) {
        WriteBytes((folder / name).string(), bytes);
    };
    write("settings/all",
          "*RESOLUTION 640 480 32 *FONT Arial *REFFERENCESPEED 200 *FRAMERATELIMIT 50 *PLAYERCOUNT 2\n"
          "*PLAYERHEADLIMIT 0 0.3 *PLAYERKEYBOARDCONTROLS 1 1 2 3 4 5 6 7 8 *MOUSESENSITIVITY 0.005\n"
          "*JOYSTICKSENSITIVITY 1e-5 *PLAYERCONTROLLER 0 1 *PLAYERVIEWPORT 0 0 0 640 480\n"
          "*NEARCLIPPINGPLANE 0.5 *FARCLIPPINGPLANE 800 *FULLSCREEN *SAFE *LOADMESH data\\world.bin }");
    write("settings/nested", "{ *PLAYERCOUNT 1 } *SAFETY } *FULLSCREEN");
    write("attributes/hero", heroBlock);
    write("attributes/all", otherBlocks + heroBlock + "Box1 { *GROUPMEMBER 3 *NOCOLLIDER }");

    SceneObject floor = MakeGrid("Floor", {-20, -20, 0}, {40, 0, 0}, {0, 40, 0}, 2, 2);
    AddMarkers(floor, {0, 0, 0});
    const SceneObject start = MakeCamera("Start", {5, 5, 6}, {5, 5, 7});
    write("scene/empty", SceneInput("", {}));
    write("scene/hero", SceneInput(heroBlock, {Hero(), floor}));
    write("scene/all", SceneInput(heroBlock + otherBlocks, {Hero(), floor, Box(), Box(), start}));

    for (int channels = 1; channels <= 4; channels++) {
        Image image(4, 2, channels);
        for (std::size_t i = 0; i < image.samples.size(); i++) {
            image.samples[i] = static_cast<std::uint8_t>(i < image.samples.size() / 2 ? 7 : 31 * i);
        }
        const std::string name = std::to_string(channels);
        write("sgi/verbatim" + name, SgiBytes(image, SgiPacking::Verbatim));
        write("sgi/packed" + name, SgiBytes(image, SgiPacking::RunLength));
        if (channels >= 3) {
            write("tga/" + name, TgaBytes(image));
        }
    }
    return 0;
}
