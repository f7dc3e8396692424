#pragma once

#include <GL/gl.h>
#include <SDL.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "platform/windows1250.h"
#include "process/close_request.h"
#include "scene/scene.h"
#include "scene_writer/bytes.h"
#include "scene_writer/scene_file.h"
#include "services/log.h"
#include "support/temporary_folder.h"
#include "support/virtual_display.h"

using Lines = std::vector<std::string>;

inline Lines SplitLines(const std::string& text) {
    std::istringstream stream(text);
    Lines lines;
    for (std::string line; std::getline(stream, line);) {
        if (!line.empty()) {
            lines.push_back(line);
        }
    }
    return lines;
}

/// An empty scene with a log, in a folder of its own, on a machine without a display: boxes go to the
/// standard error stream.
struct LoadingTest : testing::Test {
    TemporaryFolder folder;
    Log log;
    Scene scene;
    Lines boxes;   ///< of what was watched last
    Lines logged;  ///< the same, without the time

    LoadingTest() {
        unsetenv("DISPLAY");
        unsetenv("WAYLAND_DISPLAY");
        RequestClose();  // the display that textures need has nobody to close a box
        scene.SetLog(&log);
    }

    /// Does the work, and notes what is said about it.
    template <typename Work>
    auto Watch(Work work) {
        const std::size_t logSize = ReadWholeFile("defaultlog.txt").size();
        testing::internal::CaptureStderr();
        auto result = work();
        boxes = SplitLines(testing::internal::GetCapturedStderr());
        logged.clear();
        const std::string added = ReadWholeFile("defaultlog.txt").substr(logSize);
        for (const std::string& line : SplitLines(Windows1250ToUtf8(added.c_str()))) {
            logged.push_back(line.substr(line.find(' ', line.find(' ') + 1) + 1));
        }
        return result;
    }
    bool Load(const std::string& path) {
        return Watch([&] { return scene.LoadMesh(path.c_str()); });
    }
    bool LoadBytes(const std::string& bytes) {
        engine::WriteBytes("level.bin", bytes);
        return Load("level.bin");
    }
    bool LoadObjects(const std::vector<engine::SceneObject>& objects) {
        return LoadBytes(SceneFileBytes(objects));
    }

    /// The noted lines that hold the text.
    Lines LoggedWith(const std::string& text) const {
        Lines lines;
        std::ranges::copy_if(logged, std::back_inserter(lines),
                             [&](const std::string& line) { return line.find(text) != line.npos; });
        return lines;
    }
    Lines Names() const {
        Lines names;
        for (std::int32_t id = 0; id < scene.objectCount; id++) {
            names.push_back(scene.objects[id].name);
        }
        return names;
    }
};

using Values = std::vector<float>;

inline Values ValuesOf(Vector vector) {
    return {vector.x, vector.y, vector.z};
}
inline Values VertexOf(const Object& object, std::int32_t index) {
    Vector vertex;
    object.GetVertex(vertex, index);
    return ValuesOf(vertex);
}

/// A real window and its OpenGL context, made once and kept to the end of the process: drivers that are
/// unloaded leave memory behind. Boxes still go to the standard error stream.
inline void NeedContext() {
    static VirtualDisplay* display = nullptr;
    if (display != nullptr) {
        return;
    }
    display = new VirtualDisplay;
    ASSERT_EQ(SDL_InitSubSystem(SDL_INIT_VIDEO), 0) << SDL_GetError();
    SDL_Window* window = SDL_CreateWindow("loading", 0, 0, 64, 64, SDL_WINDOW_OPENGL);
    ASSERT_NE(SDL_GL_CreateContext(window), nullptr) << SDL_GetError();
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    unsetenv("DISPLAY");
}
