#include "check_scene/plan.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <tuple>
#include <utility>
#include <vector>

#include "check_scene/canvas.h"
#include "check_scene/mesh_facts.h"
#include "check_scene/stand_ins.h"
#include "check_scene/subject.h"
#include "process/png_file.h"
#include "scene/scene.h"
#include "simulation/group_members.h"

namespace {

constexpr int longestSide = 1000;  ///< of the picture without its margin, in pixels
constexpr int margin = 30;
constexpr float markRadius = 9.0f;
constexpr Colour paper{250, 250, 246};
constexpr Colour outline{120, 120, 120};
constexpr Colour passable{190, 190, 190};  ///< outline of what lets bodies through
constexpr Colour bodyColour{200, 110, 20};
constexpr Colour playerColour{20, 60, 200};
constexpr Colour lampColour{230, 180, 0};
constexpr Colour groupColour{150, 60, 170};
constexpr Colour errorColour{200, 20, 20};
constexpr Colour warningColour{190, 100, 0};
constexpr Colour unreachedColour{200, 90, 90};
constexpr Colour white{255, 255, 255};
constexpr Colour ink{40, 40, 40};

/// What is seen first from above, pixel by pixel.
struct Layer {
    std::vector<float> heights;
    std::vector<Colour> colours;

    explicit Layer(std::size_t size)
        : heights(size, -std::numeric_limits<float>::infinity()), colours(size) {}
};

/// The plan while it is drawn.
struct Plan {
    const World& world;
    Vector low;
    Vector high;
    float scale = 1.0f;  ///< pixels for one unit
    Canvas canvas{1, 1, paper};
    std::map<std::pair<int, int>, int> marksAt;  ///< how many stand at a place already

    explicit Plan(const World& newWorld) : world(newWorld) {}
    const Scene& TheScene() const { return *world.scene; }
    float X(float x) const { return margin + (x - low.x) * scale; }
    float Y(float y) const { return margin + (y - low.y) * scale; }

    void Measure();
    void Fill();
    void FillTriangle(Layer& layer, const Vector (&corners)[3], Colour colour) const;
    void DrawOutlines();
    void DrawGroups();
    void DrawLamps();
    void DrawUnreached();
    void DrawBodies();
    void DrawFindings(const Findings& findings);
};

/// What takes part in the picture's size and its outlines.
bool IsDrawn(const Object& object) {
    return object.faceValueCount > 0 && object.vertexValueCount > 0;
}

void Plan::Measure() {
    constexpr float infinity = std::numeric_limits<float>::infinity();
    low = Vector(infinity, infinity, infinity);
    high = -low;
    for (const bool solidOnly : {true, false}) {  // a sky would leave nothing of the rest
        for (std::int32_t id = 0; id < TheScene().objectCount; id++) {
            const Object& object = TheScene().objects[id];
            if (!IsDrawn(object) || (solidOnly && object.attributes[collidableAttribute] == 0)) {
                continue;
            }
            const MeshFacts facts(object);
            if (std::isfinite(facts.low.x + facts.low.y + facts.high.x + facts.high.y)) {
                Widen(low, high, facts.low);
                Widen(low, high, facts.high);
            }
        }
        if (low.x < high.x && low.y < high.y) {
            break;
        }
    }
    if (!(low.x < high.x && low.y < high.y)) {
        low = Vector(-10.0f, -10.0f, 0.0f);
        high = Vector(10.0f, 10.0f, 0.0f);
    }
    const Vector size = high - low;
    scale = longestSide / std::max(size.x, size.y);
    canvas = Canvas(2 * margin + static_cast<int>(size.x * scale),
                    2 * margin + static_cast<int>(size.y * scale), paper);
}

/// The mean colour of each texture, or white.
std::vector<Vector> MeanColours(const Scene& scene) {
    std::vector<Vector> means(static_cast<std::size_t>(scene.textureCount), Vector(1.0f, 1.0f, 1.0f));
    for (std::int32_t i = 0; i < scene.textureCount; i++) {
        const std::uint32_t image = scene.textures[i].glName;
        if (image == 0 || theReports.images[image - 1].pixels == nullptr) {
            continue;
        }
        const KeptImage& kept = theReports.images[image - 1];
        double sums[3] = {};
        const std::int64_t count = std::int64_t{kept.width} * kept.height;
        for (std::int64_t pixel = 0; pixel < count; pixel++) {
            for (int part = 0; part < 3; part++) {
                sums[part] += kept.pixels[static_cast<std::size_t>(pixel * kept.bytesPerPixel + part)];
            }
        }
        const double full = 255.0 * static_cast<double>(std::max<std::int64_t>(count, 1));
        means[static_cast<std::size_t>(i)] =
            Vector(static_cast<float>(sums[0] / full), static_cast<float>(sums[1] / full),
                   static_cast<float>(sums[2] / full));
    }
    return means;
}

std::uint8_t Byte(float share) {
    return static_cast<std::uint8_t>(std::lround(255.0f * std::clamp(share, 0.0f, 1.0f)));
}

void Plan::FillTriangle(Layer& layer, const Vector (&corners)[3], Colour colour) const {
    const auto [a, b, c] = std::tuple(corners[0], corners[1], corners[2]);
    const float area = (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
    const int left = std::max(0, static_cast<int>(std::min({a.x, b.x, c.x})));
    const int right = std::min(canvas.width - 1, static_cast<int>(std::max({a.x, b.x, c.x})));
    const int bottom = std::max(0, static_cast<int>(std::min({a.y, b.y, c.y})));
    const int top = std::min(canvas.height - 1, static_cast<int>(std::max({a.y, b.y, c.y})));
    for (int y = bottom; y <= top; y++) {
        for (int x = left; x <= right; x++) {
            const float px = static_cast<float>(x) + 0.5f;
            const float py = static_cast<float>(y) + 0.5f;
            const float u = ((px - a.x) * (c.y - a.y) - (py - a.y) * (c.x - a.x)) / area;
            const float v = ((b.x - a.x) * (py - a.y) - (b.y - a.y) * (px - a.x)) / area;
            const float height = a.z + u * (b.z - a.z) + v * (c.z - a.z);
            const std::size_t pixel = static_cast<std::size_t>(y) * static_cast<std::size_t>(canvas.width) +
                                      static_cast<std::size_t>(x);
            if (u >= 0.0f && v >= 0.0f && u + v <= 1.0f && height > layer.heights[pixel]) {
                layer.heights[pixel] = height;
                layer.colours[pixel] = colour;
            }
        }
    }
}

/// Above the heads of all players; infinity without any.
float HeadHeight(const Scene& scene) {
    float height = -std::numeric_limits<float>::infinity();
    for (std::int32_t i = 0; i < scene.playerCount; i++) {
        Vector start;
        if (FindStart(scene, i, start)) {
            height = std::max(height, start.z + 5.0f);
        }
    }
    return std::isfinite(height) ? height : std::numeric_limits<float>::infinity();
}

void Plan::Fill() {
    const float cut = HeadHeight(TheScene());
    const std::size_t size = canvas.pixels.size() / 3;
    Layer ground(size);
    Layer roofs(size);
    const std::vector<Vector> means = MeanColours(TheScene());
    for (std::int32_t id = 0; id < TheScene().objectCount; id++) {
        const Object& object = TheScene().objects[id];
        const Vector mean = object.textureIndex >= 0 ? means[static_cast<std::size_t>(object.textureIndex)]
                                                     : Vector(1.0f, 1.0f, 1.0f);
        for (std::int32_t corner = 0; corner + 2 < object.faceValueCount; corner += 3) {
            Vector corners[3];
            for (int i = 0; i < 3; i++) {
                corners[i] = CornerOf(object, corner + i);
            }
            const Vector normal = (corners[1] - corners[0]).Cross(corners[2] - corners[0]);
            const float upward = normal.z / std::max(normal.Length(), 1e-12f);
            if (!(upward > 0.01f)) {
                continue;
            }
            const float* colour = &object.colours[3 * static_cast<std::size_t>(object.faces[corner])];
            const auto shade = [upward](float part) {
                return Byte(0.35f + 0.65f * part * (0.4f + 0.6f * upward));
            };
            const float lowest = std::min({corners[0].z, corners[1].z, corners[2].z});
            for (Vector& vertex : corners) {
                vertex = Vector(X(vertex.x), Y(vertex.y), vertex.z);
            }
            FillTriangle(lowest > cut ? roofs : ground, corners,
                         {shade(colour[0] * mean.x), shade(colour[1] * mean.y), shade(colour[2] * mean.z)});
        }
    }
    for (std::size_t pixel = 0; pixel < size; pixel++) {
        const int x = static_cast<int>(pixel) % canvas.width;
        const int y = static_cast<int>(pixel) / canvas.width;
        const bool hasGround = std::isfinite(ground.heights[pixel]);
        Colour colour = hasGround ? ground.colours[pixel] : paper;
        if (std::isfinite(roofs.heights[pixel])) {
            const Colour roof = roofs.colours[pixel];
            const auto half = [](int below, int above) {
                return static_cast<std::uint8_t>((below + above) / 2);
            };
            colour = {half(colour.red, roof.red), half(colour.green, roof.green),
                      half(colour.blue, roof.blue)};
        }
        canvas.Set(x, y, colour);
    }
}

/// The convex hull of the object as seen from above, counter-clockwise.
std::vector<std::pair<float, float>> HullOf(const Object& object) {
    std::vector<std::pair<float, float>> points;
    for (std::int32_t corner = 0; corner < object.faceValueCount; corner++) {
        const Vector vertex = CornerOf(object, corner);
        points.emplace_back(vertex.x, vertex.y);
    }
    std::ranges::sort(points);
    std::vector<std::pair<float, float>> hull;
    for (int pass = 0; pass < 2; pass++) {
        const std::size_t start = hull.size();
        for (const auto& point : points) {
            const auto turnsRight = [&] {
                const auto& [ax, ay] = hull[hull.size() - 2];
                const auto& [bx, by] = hull.back();
                return (bx - ax) * (point.second - ay) - (by - ay) * (point.first - ax) <= 0.0f;
            };
            while (hull.size() >= start + 2 && turnsRight()) {
                hull.pop_back();
            }
            hull.push_back(point);
        }
        hull.pop_back();
        std::ranges::reverse(points);
    }
    return hull;
}

void Plan::DrawOutlines() {
    for (std::int32_t id = 0; id < TheScene().objectCount; id++) {
        const Object& object = TheScene().objects[id];
        if (!IsDrawn(object)) {
            continue;
        }
        const auto hull = HullOf(object);
        const Colour colour = object.attributes[collidableAttribute] == 0 ? passable : outline;
        for (std::size_t i = 0; i < hull.size(); i++) {
            const auto& [x0, y0] = hull[i];
            const auto& [x1, y1] = hull[(i + 1) % hull.size()];
            canvas.Line(X(x0), Y(y0), X(x1), Y(y1), colour);
        }
    }
}

void Plan::DrawGroups() {
    for (std::int32_t leader = 0; leader < TheScene().objectCount; leader++) {
        const Vector from = PlaceOf(world, leader);
        ForEachMember(TheScene(), TheScene().objects[leader].groupParent, [&](std::int32_t member) {
            const Vector shift = ShiftOf(TheScene().objects[leader]);  // takes its members along
            const Vector to = PlaceOf(world, member) + (member == leader ? Vector() : shift);
            canvas.Line(X(from.x), Y(from.y), X(to.x), Y(to.y), groupColour);
        });
    }
}

/// How far a lamp gives a tenth of full light, in world units.
float Reach(const Light& light) {
    constexpr float wanted = 10.0f;
    const float most = wanted * *std::ranges::max_element(light.diffuse) - light.constantAttenuation;
    const float linear = light.linearAttenuation;
    const float quadratic = light.quadraticAttenuation;
    if (most <= 0.0f) {
        return 0.0f;
    }
    if (quadratic > 0.0f) {
        return (std::sqrt(linear * linear + 4.0f * quadratic * most) - linear) / (2.0f * quadratic);
    }
    return linear > 0.0f ? most / linear : std::numeric_limits<float>::infinity();
}

void Plan::DrawLamps() {
    for (std::int32_t i = 0; i < TheScene().lightCount; i++) {
        const Light& light = TheScene().lights[i];
        if (light.position[3] == 0.0f) {
            continue;
        }
        const float x = X(light.position[0]);
        const float y = Y(light.position[1]);
        canvas.Circle(x, y, 5.0f, lampColour, true);
        const float reach = Reach(light);
        if (std::isfinite(reach)) {
            canvas.Circle(x, y, reach * scale, lampColour);
        }
    }
}

/// A cross on each square of floor that no player gets to, but for roofs and the tops of walls.
void Plan::DrawUnreached() {
    if (world.walks.players.empty() || !world.walks.isWhole) {
        return;
    }
    constexpr float highStep = 5.0f;
    float highest = low.z;
    for (const Walks::Square& square : world.walks.floor) {
        highest = square.isReached ? std::max(highest, square.place.z + highStep) : highest;
    }
    const float half = 0.25f * world.walks.side * scale;
    for (const Walks::Square& square : world.walks.floor) {
        if (square.isReached || square.place.z > highest) {
            continue;
        }
        const float x = X(square.place.x);
        const float y = Y(square.place.y);
        canvas.Line(x - half, y - half, x + half, y + half, unreachedColour);
        canvas.Line(x - half, y + half, x + half, y - half, unreachedColour);
    }
}

void Plan::DrawBodies() {
    const Scene& scene = TheScene();
    for (std::int32_t id = 0; id < scene.objectCount; id++) {
        if (scene.objects[id].collider != nullptr && !StandsStill(scene.objects[id])) {
            const Vector place = PlaceOf(world, id);
            canvas.Circle(X(place.x), Y(place.y), 2.0f * scale, bodyColour);
        }
    }
    for (std::int32_t i = 0; i < scene.playerCount; i++) {
        Vector start;
        if (!FindStart(scene, i, start)) {
            continue;
        }
        canvas.Circle(X(start.x), Y(start.y), markRadius, playerColour, true);
        if (scene.HasCamera(i)) {
            const Object& camera = scene.objects[scene.players[i].cameraObject];
            Vector view = VertexOf(camera, scene.players[i].lookVertex) -
                          VertexOf(camera, scene.players[i].eyeVertex);
            view.z = 0.0f;
            view.Normalise();
            const float tipX = X(start.x) + 4.0f * markRadius * view.x;
            const float tipY = Y(start.y) + 4.0f * markRadius * view.y;
            canvas.Line(X(start.x), Y(start.y), tipX, tipY, playerColour);
            for (const float side : {-1.0f, 1.0f}) {
                canvas.Line(tipX, tipY, tipX - markRadius * (view.x - 0.5f * side * view.y),
                            tipY - markRadius * (view.y + 0.5f * side * view.x), playerColour);
            }
        }
        canvas.Number(X(start.x), Y(start.y), i, white);
    }
}

void Plan::DrawFindings(const Findings& findings) {
    int number = 0;
    for (const Finding& finding : findings.list) {
        number++;
        Vector place;
        if (!FindSubject(world, finding, place)) {
            continue;
        }
        float x = std::clamp(X(place.x), markRadius, static_cast<float>(canvas.width) - markRadius);
        const float y = std::clamp(Y(place.y), markRadius, static_cast<float>(canvas.height) - markRadius);
        x += 2.0f * markRadius * static_cast<float>(marksAt[{static_cast<int>(x), static_cast<int>(y)}]++);
        canvas.Circle(x, y, markRadius + 1.0f, white, true);
        canvas.Circle(x, y, markRadius, finding.isError ? errorColour : warningColour, true);
        canvas.Number(x, y, number, white);
    }
}

}  // namespace

std::string DrawPlan(const World& world, const Findings& findings) {
    Plan plan(world);
    plan.Measure();
    plan.Fill();
    plan.DrawOutlines();
    plan.DrawGroups();
    plan.DrawLamps();
    plan.DrawUnreached();
    plan.DrawBodies();
    plan.DrawFindings(findings);
    // A measure: a person's height.
    constexpr float measure = 10.0f;
    plan.canvas.Line(margin, margin / 2.0f, margin + measure * plan.scale, margin / 2.0f, ink);
    plan.canvas.Number(margin + measure * plan.scale + 15.0f, margin / 2.0f, static_cast<int>(measure),
                       ink);
    return PngFile(plan.canvas.width, plan.canvas.height, plan.canvas.pixels.data());
}
