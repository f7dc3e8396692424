#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#include "platform/run_file.h"
#include "scene_input.h"
#include "scene_writer/bytes.h"
#include "scene_writer/image_file.h"

// Writes what each fuzzer begins with: a folder of valid files for each reader.

int main(int argumentCount, char** arguments) {
    if (argumentCount != 2) {
        std::cerr << "usage: fuzz_seeds FOLDER\n";
        return 2;
    }
    const std::filesystem::path folder = arguments[1];
    const auto write = [&](const std::string& name, const std::string& bytes) {
        engine::WriteBytes((folder / name).string(), bytes);
    };
    write("settings/all",
          "*RESOLUTION 640 480 32 *FONT Arial *REFFERENCESPEED 200 *FRAMERATELIMIT 50 *PLAYERCOUNT 2\n"
          "*PLAYERHEADLIMIT 0 0.3 *PLAYERKEYBOARDCONTROLS 1 1 2 3 4 5 6 7 8 *MOUSESENSITIVITY 0.005\n"
          "*JOYSTICKSENSITIVITY 1e-5 *PLAYERCONTROLLER 0 1 *PLAYERVIEWPORT 0 0 0 640 480\n"
          "*NEARCLIPPINGPLANE 0.5 *FARCLIPPINGPLANE 800 *FULLSCREEN *SAFE *LOADMESH data\\world.bin }");
    write("settings/nested", "{ *PLAYERCOUNT 1 } *SAFETY } *FULLSCREEN");
    write("attributes/hero", heroBlock);
    write("attributes/all", otherBlocks + heroBlock + "Box1 { *GROUPMEMBER 3 *NOCOLLIDER }");

    const auto scene = [](const std::string& text, const std::vector<engine::SceneObject>& objects) {
        return JoinSceneInput({text, SceneFileBytes(objects)});
    };
    write("scene/empty", scene("", {}));
    write("scene/hero", scene(heroBlock, {HeroObject(), FloorObject()}));
    write("scene/all", JoinSceneInput(ValidSceneInput()));

    std::string run = RunHeadBytes("1.0", {{"settings.atr", 7}});
    RunCoder coder;
    for (const RunItem& item :
         {RunItem{RunItemKind::OuterRectangle, {0, 0, 640, 480}}, RunItem{RunItemKind::Message, {256, 38}},
          RunItem{RunItemKind::CursorPlace, {1, 320, 240}}, RunItem{RunItemKind::EndOfFrame, {123456789}},
          RunItem{RunItemKind::TurnTime, {20}}, RunItem{RunItemKind::EndOfFrame, {-1}},
          RunItem{RunItemKind::EndOfRun, {}}}) {
        coder.Append(run, item);
    }
    write("run/two_frames", run);

    for (int channels = 1; channels <= 4; channels++) {
        engine::Image image(4, 2, channels);
        for (std::size_t i = 0; i < image.samples.size(); i++) {
            image.samples[i] = static_cast<std::uint8_t>(i < image.samples.size() / 2 ? 7 : 31 * i);
        }
        const std::string name = std::to_string(channels);
        write("sgi/verbatim" + name, SgiBytes(image, engine::SgiPacking::Verbatim));
        write("sgi/packed" + name, SgiBytes(image, engine::SgiPacking::RunLength));
        if (channels >= 3) {
            write("tga/" + name, TgaBytes(image));
        }
    }
    return 0;
}
