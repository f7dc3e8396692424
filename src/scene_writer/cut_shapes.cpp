#include "scene_writer/cut_shapes.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "scene_writer/refusal.h"
#include "scene_writer/shapes.h"

namespace engine {

namespace {

int Cells(Float3 edge, float cell) {
    if (!(cell > 0.0f)) {
        Refuse("cut shape", "its cells need a size above 0");
    }
    return std::max(1, static_cast<int>(std::lround(Length(edge) / cell)));
}

/// A side of a shape, seen from where u x v points to.
SceneObject MakeSide(Float3 corner, Float3 u, Float3 v, float cell, float tiles) {
    return MakeGrid("", corner, u, v, Cells(u, cell), Cells(v, cell), tiles);
}

/// An upright side of a wedge, a triangle: strips from the ground up to the slope.
/// @param u along the ground from the low end to the high one
SceneObject MakeFlank(Float3 corner, Float3 u, float height, int columns, float tiles) {
    SceneObject flank = MakeGrid("", corner, u, {0.0f, 0.0f, height}, columns, 1, tiles);
    for (int column = 0; column <= columns; column++) {
        const std::size_t top = flank.vertices.size() / 2 + static_cast<std::size_t>(column);
        const float share = static_cast<float>(column) / static_cast<float>(columns);
        flank.vertices[top].z = corner.z + share * height;
        if (tiles != 0.0f) {
            flank.texVertices[top].y = share * tiles;
        }
    }
    // The strip at the low end has shrunk to one triangle: the other one's corners lie on a line.
    flank.faces.erase(flank.faces.begin() + 1);
    if (tiles != 0.0f) {
        flank.texFaces.erase(flank.texFaces.begin() + 1);
    }
    return flank;
}

/// Turns the triangles of a mesh over.
void TurnOver(SceneObject& mesh) {
    for (Int3& face : mesh.faces) {
        std::swap(face.b, face.c);
    }
    for (Int3& texFace : mesh.texFaces) {
        std::swap(texFace.b, texFace.c);
    }
}

}  // namespace

SceneObject MakeCutBox(const std::string& name, Float3 low, Float3 high, float cell, float tiles,
                       unsigned sides) {
    DemandCorners(name, low, high);
    const Float3 x{high.x - low.x, 0.0f, 0.0f};
    const Float3 y{0.0f, high.y - low.y, 0.0f};
    const Float3 z{0.0f, 0.0f, high.z - low.z};
    SceneObject box;
    box.name = name;
    const auto add = [&](Side side, Float3 corner, Float3 u, Float3 v) {
        if (sides & side) {
            Append(box, MakeSide(corner, u, v, cell, tiles));
        }
    };
    add(top, low + z, x, y);
    add(bottom, low + y, x, y * -1.0f);
    add(south, low, x, z);
    add(north, low + x + y, x * -1.0f, z);
    add(east, low + x, y, z);
    add(west, low + y, y * -1.0f, z);
    return box;
}

SceneObject MakeWedge(const std::string& name, Float3 low, Float3 high, float cell, float tiles) {
    DemandCorners(name, low, high);
    const Float3 x{high.x - low.x, 0.0f, 0.0f};
    const Float3 y{0.0f, high.y - low.y, 0.0f};
    const float height = high.z - low.z;
    const Float3 slope{0.0f, y.y, height};
    const int columns = Cells(slope, cell);
    SceneObject wedge = MakeGrid(name, low, x, slope, Cells(x, cell), columns, tiles);
    Append(wedge, MakeSide({low.x, high.y, low.z}, x, {0.0f, -y.y, 0.0f}, cell, tiles));  // bottom
    Append(wedge, MakeSide({high.x, high.y, low.z}, {-x.x, 0.0f, 0.0f}, {0.0f, 0.0f, height}, cell, tiles));
    Append(wedge, MakeFlank({high.x, low.y, low.z}, y, height, columns, tiles));  // towards +x
    SceneObject flank = MakeFlank(low, y, height, columns, tiles);                // towards -x
    TurnOver(flank);
    Append(wedge, flank);
    return wedge;
}

}  // namespace engine
