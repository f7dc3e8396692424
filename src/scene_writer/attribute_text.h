#pragma once

#include <string>
#include <vector>

#include "scene_writer/scene_file.h"

namespace engine {

// The texts beside a scene: blocks of attributes, and the settings.

// What would be read as something else throws std::invalid_argument: lines that hold braces or begin with
// no key, more lights than can shine, numbers that are none.

/// One block of an attribute file, named after an object or "GLOBALS", with one line for each key.
std::string AttributeBlock(const std::string& name, const std::vector<std::string>& lines);
/// A settings file: the lines and the brace that ends it.
std::string SettingsText(const std::vector<std::string>& lines);

/// A colour or a position of OpenGL.
struct Float4 {
    float x = 0.0f;
    float y = 0.0f;
    float z = 0.0f;
    float w = 1.0f;
};

struct SceneLight {
    Float4 ambient{0.0f, 0.0f, 0.0f, 1.0f};
    Float4 diffuse{1.0f, 1.0f, 1.0f, 1.0f};
    Float4 specular{1.0f, 1.0f, 1.0f, 1.0f};
    Float4 position{0.0f, 0.0f, 1.0f, 0.0f};  ///< w 0: a direction, w 1: a point
    Float3 spotDirection{0.0f, 0.0f, -1.0f};
    float spotExponent = 0.0f;
    float spotCutoff = 180.0f;  ///< degrees; 180 means no spot
    float constantAttenuation = 1.0f;
    float linearAttenuation = 0.0f;
    float quadraticAttenuation = 0.0f;
};

/// The key of a light, for the block "GLOBALS".
std::string LightLine(const SceneLight& light);

}  // namespace engine
