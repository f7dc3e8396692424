#include "scene_writer/shapes.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <utility>

#include "scene_writer/cut_shapes.h"
#include "scene_writer/refusal.h"

namespace engine {

namespace {

/// Refuses shapes that are turned about an axis with too few sides to enclose anything.
void DemandRound(const std::string& name, bool hasSize, int sides) {
    if (!hasSize) {
        Refuse("object \"" + name + "\"", "its radius and its height have to be above 0");
    }
    if (sides < 3) {
        Refuse("object \"" + name + "\"", "it needs 3 sides or more");
    }
}

void DemandAxes(const SceneObject& object, Float3 xAxis, Float3 yAxis, Float3 zAxis) {
    constexpr float tolerance = 0.01f;
    for (const Float3& axis : {xAxis, yAxis, zAxis}) {
        if (!(std::fabs(Dot(axis, axis) - 1.0f) < 2.0f * tolerance)) {
            Refuse(Named(object), "each axis of its markers has to be one unit long");
        }
    }
    if (!(std::fabs(Dot(xAxis, yAxis)) + std::fabs(Dot(yAxis, zAxis)) + std::fabs(Dot(zAxis, xAxis)) <
          tolerance)) {
        Refuse(Named(object), "the axes of its markers have to be at right angles");
    }
}

std::int32_t Count(const std::vector<Float3>& values) {
    return static_cast<std::int32_t>(values.size());
}

/// A vertex with its texture coordinates: in the shapes the two always go together.
void AddVertex(SceneObject& object, Float3 position, float u, float v, float tiles) {
    object.vertices.push_back(position);
    if (tiles != 0.0f) {
        object.texVertices.push_back({u * tiles, v * tiles, 0.0f});
    }
}

void AddFace(SceneObject& object, Int3 face) {
    object.faces.push_back(face);
    if (!object.texVertices.empty()) {
        object.texFaces.push_back(face);
    }
}

Int3 Shifted(Int3 face, std::int32_t by) {
    return {face.a + by, face.b + by, face.c + by};
}

/// Joins the ends of the rows of a grid, one row for each ring, so that no edge is seen at the seam of the
/// texture. A ring without a radius becomes a point; triangles that have no area then, and those between
/// equal rings, go.
void CloseRings(SceneObject& grid, const std::vector<LathePoint>& profile, int sides) {
    const std::vector<Int3> faces = std::exchange(grid.faces, {});
    const std::vector<Int3> texFaces = std::exchange(grid.texFaces, {});
    for (std::size_t i = 0; i < faces.size(); i++) {
        const std::size_t row = i / (2 * static_cast<std::size_t>(sides));
        if (profile[row].radius == profile[row + 1].radius &&
            profile[row].height == profile[row + 1].height) {
            continue;
        }
        Int3 face = faces[i];
        for (std::int32_t* corner : {&face.a, &face.b, &face.c}) {
            const std::int32_t ring = *corner / (sides + 1);
            const std::int32_t first = ring * (sides + 1);
            if (*corner == first + sides || profile[static_cast<std::size_t>(ring)].radius == 0.0f) {
                *corner = first;
            }
        }
        if (face.a == face.b || face.b == face.c || face.c == face.a) {
            continue;
        }
        grid.faces.push_back(face);
        if (!texFaces.empty()) {
            grid.texFaces.push_back(texFaces[i]);
        }
    }
}

/// Texture faces that all use one new texture vertex, for a part that has none among parts that do.
void AddPlainTexFaces(SceneObject& object) {
    const std::int32_t plain = Count(object.texVertices);
    object.texVertices.push_back({});
    object.texFaces.resize(object.faces.size(), {plain, plain, plain});
}

}  // namespace

SceneObject MakeGrid(const std::string& name, Float3 corner, Float3 u, Float3 v, int columns, int rows,
                     float tiles) {
    if (columns < 1 || rows < 1 || !(Length(Cross(u, v)) > 0.0f)) {
        Refuse("object \"" + name + "\"", "a grid needs edges, columns and rows, or it has no triangles");
    }
    SceneObject grid;
    grid.name = name;
    for (int row = 0; row <= rows; row++) {
        for (int column = 0; column <= columns; column++) {
            const float alongU = static_cast<float>(column) / static_cast<float>(columns);
            const float alongV = static_cast<float>(row) / static_cast<float>(rows);
            AddVertex(grid, corner + (u * alongU + v * alongV), alongU, alongV, tiles);
        }
    }
    for (int row = 0; row < rows; row++) {
        for (int column = 0; column < columns; column++) {
            const std::int32_t near = row * (columns + 1) + column;
            const std::int32_t far = near + columns + 1;
            AddFace(grid, {near, near + 1, far + 1});
            AddFace(grid, {near, far + 1, far});
        }
    }
    return grid;
}

SceneObject MakeBox(const std::string& name, Float3 low, Float3 high, float tiles) {
    return MakeCutBox(name, low, high, std::numeric_limits<float>::infinity(), tiles);
}

SceneObject MakeCylinder(const std::string& name, Float3 base, float radius, float height, int sides,
                         float tiles) {
    DemandRound(name, radius > 0.0f && height > 0.0f, sides);
    // A seam in the texture: the last column stands where the first one does.
    SceneObject cylinder = MakeGrid(name, {}, {1.0f, 0.0f, 0.0f}, {0.0f, 0.0f, 1.0f}, sides, 1, tiles);
    for (Float3& vertex : cylinder.vertices) {
        const float angle = vertex.x * 2.0f * std::numbers::pi_v<float>;
        vertex = {radius * std::cos(angle), radius * std::sin(angle), vertex.z * height};
    }
    CloseRings(cylinder, {{radius, 0.0f}, {radius, height}}, sides);
    for (const bool top : {false, true}) {
        SceneObject cap;
        AddVertex(cap, {0.0f, 0.0f, top ? height : 0.0f}, 0.5f, 0.5f, tiles);
        for (int side = 0; side < sides; side++) {
            const Float3 rim = cylinder.vertices[side];
            AddVertex(cap, {rim.x, rim.y, top ? height : 0.0f}, 0.5f + rim.x / radius / 2.0f,
                      0.5f + rim.y / radius / 2.0f, tiles);
        }
        for (int side = 0; side < sides; side++) {
            const std::int32_t here = 1 + side;
            const std::int32_t next = 1 + (side + 1) % sides;
            AddFace(cap, top ? Int3{0, here, next} : Int3{0, next, here});
        }
        Append(cylinder, cap);
    }
    Move(cylinder, base);
    return cylinder;
}

SceneObject MakeBall(const std::string& name, Float3 centre, float radius, int rings, int sides,
                     float tiles) {
    DemandRound(name, radius > 0.0f && rings > 1, sides);
    SceneObject ball = MakeGrid(name, {}, {1.0f, 0.0f, 0.0f}, {0.0f, 0.0f, 1.0f}, sides, rings, tiles);
    for (Float3& vertex : ball.vertices) {
        const float longitude = vertex.x * 2.0f * std::numbers::pi_v<float>;
        const float latitude = (vertex.z - 0.5f) * std::numbers::pi_v<float>;
        vertex = {radius * std::cos(latitude) * std::cos(longitude),
                  radius * std::cos(latitude) * std::sin(longitude), radius * std::sin(latitude)};
    }
    std::vector<LathePoint> profile(static_cast<std::size_t>(rings) + 1, {radius, 0.0f});
    for (std::size_t ring = 0; ring < profile.size(); ring++) {
        profile[ring].height = static_cast<float>(ring);
    }
    profile.front().radius = profile.back().radius = 0.0f;  // the poles
    CloseRings(ball, profile, sides);
    Move(ball, centre);
    return ball;
}

SceneObject MakeLathe(const std::string& name, Float3 base, const std::vector<LathePoint>& profile,
                      int sides, float tiles) {
    DemandRound(name, profile.size() > 1, sides);
    const int rings = static_cast<int>(profile.size()) - 1;
    SceneObject lathe = MakeGrid(name, {}, {1.0f, 0.0f, 0.0f}, {0.0f, 0.0f, 1.0f}, sides, rings, tiles);
    for (int row = 0; row <= rings; row++) {
        for (int column = 0; column <= sides; column++) {
            const float angle =
                2.0f * std::numbers::pi_v<float> * static_cast<float>(column) / static_cast<float>(sides);
            const float radius = profile[row].radius;
            lathe.vertices[row * (sides + 1) + column] = {radius * std::cos(angle),
                                                          radius * std::sin(angle), profile[row].height};
        }
    }
    CloseRings(lathe, profile, sides);
    if (lathe.faces.empty()) {
        Refuse(Named(lathe), "its rings make no triangles");
    }
    Move(lathe, base);
    return lathe;
}

SceneObject MakeCamera(const std::string& name, Float3 eye, Float3 look) {
    SceneObject camera;
    camera.name = name;
    camera.vertices = {eye, look};
    return camera;
}

void Append(SceneObject& object, const SceneObject& part) {
    DemandNoMarkers(object, "Append");
    DemandNoMarkers(part, "Append");
    SceneObject added = part;
    if (object.texFaces.empty() != added.texFaces.empty()) {
        SceneObject& plain = object.texFaces.empty() ? object : added;
        if (!plain.faces.empty()) {
            AddPlainTexFaces(plain);
        }
    }
    const std::int32_t firstVertex = Count(object.vertices);
    const std::int32_t firstTexVertex = Count(object.texVertices);
    object.colours.resize(object.vertices.size(), {1.0f, 1.0f, 1.0f});
    added.colours.resize(added.vertices.size(), {1.0f, 1.0f, 1.0f});
    object.vertices.insert(object.vertices.end(), added.vertices.begin(), added.vertices.end());
    object.colours.insert(object.colours.end(), added.colours.begin(), added.colours.end());
    object.texVertices.insert(object.texVertices.end(), added.texVertices.begin(), added.texVertices.end());
    for (const Int3& face : added.faces) {
        object.faces.push_back(Shifted(face, firstVertex));
    }
    for (const Int3& texFace : added.texFaces) {
        object.texFaces.push_back(Shifted(texFace, firstTexVertex));
    }
}

void Paint(SceneObject& object, Float3 colour) {
    object.colours.assign(object.vertices.size(), colour);
}

void Move(SceneObject& object, Float3 offset) {
    for (Float3& vertex : object.vertices) {
        vertex = vertex + offset;
    }
}

void Stretch(SceneObject& object, Float3 centre, Float3 factors) {
    DemandNoMarkers(object, "Stretch");
    if (!(factors.x > 0.0f && factors.y > 0.0f && factors.z > 0.0f)) {
        Refuse(Named(object), "factors have to be above 0, or its triangles look inwards");
    }
    for (Float3& vertex : object.vertices) {
        vertex = centre + (vertex - centre) * factors;
    }
}

void TurnAboutZ(SceneObject& object, Float3 centre, float angle) {
    const float cosine = std::cos(angle);
    const float sine = std::sin(angle);
    for (Float3& vertex : object.vertices) {
        const float x = vertex.x - centre.x;
        const float y = vertex.y - centre.y;
        vertex.x = centre.x + x * cosine - y * sine;
        vertex.y = centre.y + x * sine + y * cosine;
    }
}

void AddMarkers(SceneObject& object, Float3 centre, Float3 xAxis, Float3 yAxis, Float3 zAxis) {
    DemandNoMarkers(object, "another AddMarkers");
    DemandAxes(object, xAxis, yAxis, zAxis);
    if (object.texFaces.empty()) {
        object.spareVertex = Count(object.vertices);
    } else {
        // Texture faces overwrite the entries that they name, so the spare vertex takes one they don't.
        object.spareVertex = std::max(Count(object.vertices), Count(object.texVertices));
        object.texVertices.resize(static_cast<std::size_t>(object.spareVertex) + 1);
    }
    // Fillers stand on the centre, where they don't make the object any larger.
    object.vertices.resize(static_cast<std::size_t>(object.spareVertex) + 1, centre);
    object.centreVertex = Count(object.vertices);
    object.xAxisVertex = object.centreVertex + 1;
    object.yAxisVertex = object.centreVertex + 2;
    object.zAxisVertex = object.centreVertex + 3;
    object.vertices.push_back(centre);
    object.vertices.push_back(centre + xAxis);
    object.vertices.push_back(centre + yAxis);
    object.vertices.push_back(centre + zAxis);
}

}  // namespace engine
