#include "scene_writer/attribute_text.h"

#include <charconv>
#include <initializer_list>

namespace engine {

namespace {

/// The shortest form that reads back as the same float, and never with an exponent: the scanner would take
/// that for a number of its own.
void AppendNumber(std::string& text, float value) {
    char digits[128];
    const auto end = std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed).ptr;
    text += ' ';
    text.append(digits, end);
}

void AppendNumbers(std::string& text, std::initializer_list<float> values) {
    text += ' ';
    for (const float value : values) {
        AppendNumber(text, value);
    }
}

}  // namespace

std::string AttributeBlock(const std::string& name, const std::vector<std::string>& lines) {
    std::string text = name + " {\n";
    for (const std::string& line : lines) {
        text += "    " + line + "\n";
    }
    return text + "}\n";
}

std::string SettingsText(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines) {
        text += line + "\n";
    }
    return text + "}\n";
}

std::string LightLine(const SceneLight& light) {
    std::string text = "*LIGHT";
    for (const Float4& value : {light.ambient, light.diffuse, light.specular, light.position}) {
        AppendNumbers(text, {value.x, value.y, value.z, value.w});
    }
    AppendNumbers(text, {light.spotDirection.x, light.spotDirection.y, light.spotDirection.z});
    AppendNumbers(text, {light.spotExponent, light.spotCutoff, light.constantAttenuation,
                         light.linearAttenuation, light.quadraticAttenuation});
    return text;
}

}  // namespace engine
