#include "scene_writer/attribute_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <initializer_list>

#include "scene_writer/refusal.h"

namespace engine {

namespace {

/// The shortest form that reads back as the same float, and never with an exponent: the scanner would take
/// that for a number of its own.
void AppendNumber(std::string& text, float value) {
    if (!std::isfinite(value)) {
        Refuse(text, "a value is no finite number");
    }
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

constexpr std::ptrdiff_t mostLights = 8;

void DemandKeys(const std::string& subject, const std::vector<std::string>& lines) {
    for (const std::string& line : lines) {
        const std::size_t first = line.find_first_not_of(' ');
        const std::string key = first == std::string::npos ? "" : line.substr(first, 2);
        if (key.size() < 2 || key[0] != '*' || key[1] < 'A' || key[1] > 'Z') {
            Refuse(subject, "\"" + line + "\" is no key: keys begin with an asterisk and a capital letter");
        }
        if (line.find_first_of("{}") != std::string::npos) {
            Refuse(subject, "\"" + line + "\" holds a brace, which ends what is read");
        }
    }
}

}  // namespace

std::string AttributeBlock(const std::string& name, const std::vector<std::string>& lines) {
    DemandKeys("block " + name, lines);
    const auto isLight = [](const std::string& line) { return line.find("*LIGHT ") != std::string::npos; };
    if (std::ranges::count_if(lines, isLight) > mostLights) {
        Refuse("block " + name, "more than eight lights: no more can shine");
    }
    std::string text = name + " {\n";
    for (const std::string& line : lines) {
        text += "    " + line + "\n";
    }
    return text + "}\n";
}

std::string SettingsText(const std::vector<std::string>& lines) {
    DemandKeys("settings", lines);
    std::string text;
    for (const std::string& line : lines) {
        text += line + "\n";
    }
    return text + "}\n";
}

std::string LightLine(const SceneLight& light) {
    if (light.spotCutoff != 180.0f && !(light.spotCutoff >= 0.0f && light.spotCutoff <= 90.0f)) {
        Refuse("*LIGHT",
               "a spot's cutoff is half the angle of its cone, 0 to 90 degrees, or 180 for no spot");
    }
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
