#include "blocks.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

#include "scene_writer/cut_shapes.h"
#include "scene_writer/shapes.h"

namespace {

int Cells(Float3 edge, float cell) {
    return std::max(1, static_cast<int>(std::lround(Length(edge) / cell)));
}

SceneObject Face(Float3 corner, Float3 u, Float3 v, float cell) {
    return engine::MakeGrid("", corner, u, v, Cells(u, cell), Cells(v, cell));
}

/// Where the ray from the middle of the opening leaves the outline of the arch: a wall of straight sides.
Float3 OnOutline(const ArchShape& shape, float angle, float y) {
    const float toSide = shape.outer / std::max(1e-6f, std::fabs(std::cos(angle)));
    const float toTop = (shape.height - shape.springing) / std::max(1e-6f, std::sin(angle));
    const float reach = std::min(toSide, toTop);
    return {shape.middle + reach * std::cos(angle), y, shape.springing + reach * std::sin(angle)};
}

Float3 OnOpening(const ArchShape& shape, float angle, float y) {
    return {shape.middle + shape.opening * std::cos(angle), y,
            shape.springing + shape.opening * std::sin(angle)};
}

/// Angles around the opening, with the corners of the outline among them.
std::vector<float> Angles(const ArchShape& shape) {
    constexpr int steps = 12;
    std::vector<float> angles;
    for (int i = 0; i <= steps; i++) {
        angles.push_back(static_cast<float>(i) * std::numbers::pi_v<float> / steps);
    }
    const float corner = std::atan2(shape.height - shape.springing, shape.outer);
    // The nearest step gives way: no slivers.
    const auto step = static_cast<std::size_t>(std::lround(corner / std::numbers::pi_v<float> * steps));
    angles[step] = corner;
    angles[steps - step] = std::numbers::pi_v<float> - corner;
    return angles;
}

/// A four-sided face, its corners counter-clockwise as seen from the front, cut into two halves across.
void AddQuad(SceneObject& object, Float3 a, Float3 b, Float3 c, Float3 d) {
    SceneObject quad = engine::MakeGrid("", {}, {1.0f, 0.0f, 0.0f}, {0.0f, 1.0f, 0.0f}, 2, 1);
    quad.vertices = {a, Mixed(a, b, 0.5f), b, d, Mixed(d, c, 0.5f), c};
    Append(object, quad);
}

}  // namespace

SceneObject MakeBlock(const std::string& name, Float3 low, Float3 high, float cell, unsigned sides) {
    return engine::MakeCutBox(name, low, high, cell, 0.0f, sides);
}

SceneObject MakeLeanTo(const std::string& name, Float3 low, Float3 high, float topAtLow, float topAtHigh,
                       float cell) {
    SceneObject slab = MakeBlock(name, low, {high.x, high.y, low.z + 1.0f}, cell, allSides & ~west);
    for (Float3& vertex : slab.vertices) {
        if (vertex.z == low.z) {
            continue;
        }
        vertex.z = topAtLow + (topAtHigh - topAtLow) * (vertex.x - low.x) / (high.x - low.x);
    }
    return slab;
}

SceneObject MakeArch(const std::string& name, const ArchShape& shape) {
    SceneObject arch;
    arch.name = name;
    for (const float side : {-1.0f, 1.0f}) {
        const float inner = shape.middle + side * shape.opening;
        const float outer = shape.middle + side * shape.outer;
        Append(arch, MakeBlock("", {std::min(inner, outer), shape.front, 0.0f},
                               {std::max(inner, outer), shape.back, shape.springing}, 3.0f, upright));
        Append(arch, Face({outer, side > 0.0f ? shape.front : shape.back, shape.springing},
                          {0.0f, side * (shape.back - shape.front), 0.0f},
                          {0.0f, 0.0f, shape.height - shape.springing}, 3.0f));
    }
    const float left = shape.middle - shape.outer;
    Append(arch, Face({left, shape.front, shape.height}, {2.0f * shape.outer, 0.0f, 0.0f},
                      {0.0f, shape.back - shape.front, 0.0f}, 3.0f));
    const std::vector<float> angles = Angles(shape);
    for (std::size_t i = 0; i + 1 < angles.size(); i++) {
        const float from = angles[i];
        const float to = angles[i + 1];
        const float front = shape.front;
        const float back = shape.back;
        AddQuad(arch, OnOpening(shape, from, front), OnOutline(shape, from, front),
                OnOutline(shape, to, front), OnOpening(shape, to, front));
        AddQuad(arch, OnOpening(shape, to, back), OnOutline(shape, to, back), OnOutline(shape, from, back),
                OnOpening(shape, from, back));
        AddQuad(arch, OnOpening(shape, from, back), OnOpening(shape, from, front),
                OnOpening(shape, to, front), OnOpening(shape, to, back));
    }
    return arch;
}

SceneObject MakeParapet(const std::string& name, Float3 low, Float3 high) {
    SceneObject parapet = MakeBlock(name, low, {high.x, high.y, high.z - 0.5f}, 3.0f, upright);
    Append(parapet, MakeBlock("", {low.x - 0.2f, low.y - 0.2f, high.z - 0.5f},
                              {high.x + 0.2f, high.y + 0.2f, high.z}, 3.0f));
    return parapet;
}
