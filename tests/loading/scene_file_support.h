#pragma once

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "platform/windows1250.h"
#include "scene/scene.h"
#include "scene_writer/attribute_text.h"
#include "scene_writer/bytes.h"
#include "scene_writer/shapes.h"
#include "services/log.h"
#include "support/temporary_folder.h"

using Lines = std::vector<std::string>;

inline Lines SplitLines(const std::string& text) {
    std::istringstream stream(text);
    Lines lines;
    for (std::string line; std::getline(stream, line);) {
        if (!line.empty()) lines.push_back(line);
    }
    return lines;
}

/// An empty scene with a log, in a folder of its own, on a machine without a display: boxes go to the
/// standard error stream.
struct SceneFileTest : testing::Test {
    TemporaryFolder folder;
    Log log;
    Scene scene;
    Lines boxes;   ///< of the last load
    Lines logged;  ///< by the last load, without the time

    SceneFileTest() {
        unsetenv("DISPLAY");
        unsetenv("WAYLAND_DISPLAY");
        scene.SetLog(&log);
    }

    bool Load(const std::string& path) {
        const std::size_t logSize = ReadWholeFile("defaultlog.txt").size();
        testing::internal::CaptureStderr();
        const bool result = scene.LoadMesh(path.c_str());
        boxes = SplitLines(testing::internal::GetCapturedStderr());
        logged.clear();
        const std::string added = ReadWholeFile("defaultlog.txt").substr(logSize);
        for (const std::string& line : SplitLines(Windows1250ToUtf8(added.c_str()))) {
            logged.push_back(line.substr(line.find(' ', line.find(' ') + 1) + 1));
        }
        return result;
    }
    bool LoadBytes(const std::string& bytes) {
        WriteBytes("level.bin", bytes);
        return Load("level.bin");
    }
    bool LoadObjects(const std::vector<SceneObject>& objects) { return LoadBytes(SceneFileBytes(objects)); }

    /// The lines of the last load that hold the text.
    Lines LoggedWith(const std::string& text) const {
        Lines lines;
        for (const std::string& line : logged) {
            if (line.find(text) != std::string::npos) lines.push_back(line);
        }
        return lines;
    }
    Vector Vertex(std::int32_t id, std::int32_t index) const {
        Vector vertex;
        scene.objects[id].GetVertex(vertex, index);
        return vertex;
    }
    Lines Names() const {
        Lines names;
        for (std::int32_t id = 0; id < scene.objectCount; id++) {
            names.push_back(scene.objects[id].name);
        }
        return names;
    }
};

inline void ExpectVector(Vector value, float x, float y, float z) {
    EXPECT_EQ(value.x, x);
    EXPECT_EQ(value.y, y);
    EXPECT_EQ(value.z, z);
}

/// Whether the object has the mesh of a fresh one: ten vertices at the origin, ten triangles of vertex 0.
inline void ExpectDefaultMesh(const Object& object) {
    ASSERT_EQ(object.vertexValueCount, 30);
    ASSERT_EQ(object.faceValueCount, 30);
    EXPECT_EQ(object.texVertexValueCount, 0);
    EXPECT_EQ(object.texFaceValueCount, 0);
    EXPECT_EQ(object.texVertices, nullptr);
    EXPECT_EQ(object.texFaces, nullptr);
    for (int i = 0; i < 30; i++) {
        EXPECT_EQ(object.vertices[i], 0.0f);
        EXPECT_EQ(object.colours[i], 1.0f);
        EXPECT_EQ(object.faces[i], 0);
    }
}
