#include "check_scene/walk.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <set>
#include <tuple>

#include "check_scene/mesh_facts.h"
#include "check_scene/subject.h"
#include "scene/scene.h"
#include "simulation/group_members.h"
#include "simulation/object_bounds.h"

namespace {

constexpr float bodyHeight = 10.0f;
constexpr float halfHeight = 5.0f;
constexpr float leastSide = 4.0f;      ///< of a square: a body's width
constexpr float mostSquares = 450.0f;  ///< about so many lie on the floor, in larger worlds larger ones
constexpr int mostSweeps = 40'000;     ///< of all players together: a tenth of a second or two
constexpr std::int64_t mostTriangles = 300'000;
constexpr float infinity = std::numeric_limits<float>::infinity();

using Cell = std::tuple<int, int, int>;

/// The engine's simulation with one body in it, which is object 0.
struct Walker {
    Scene world;
    Vector position;
    float bottom = 0.0f;  ///< who is below is out of the world
    float gravity = 0.0f;
    float speed = 0.0f;
    int sweeps = 0;

    Collider& Body() { return *world.objects[0].collider; }
    Vector& Velocity() { return world.objects[0].physics->velocity; }
    bool IsOut() const { return !(position.z > bottom); }

    void PlaceAt(Vector place) {
        position = place;
        Velocity() = Vector();
        Body().recursionDepth = 0;
    }
    void Sweep(Vector displacement) {
        sweeps++;
        world.objects[0].SetVertex(position, 0);  // where obstacles are looked for
        position = world.MoveWithCollision(0, position, displacement);
    }
    /// Falls straight down until something holds the body, or nothing does.
    void Settle() {
        Velocity() = Vector();
        float fall = 1.0f;
        while (!IsOut()) {
            const float before = position.z;
            Sweep(Vector(0.0f, 0.0f, -fall));
            if (!(before - position.z >= 0.9f * fall)) {
                return;
            }
            fall *= 2.0f;
        }
    }
    /// Walks as a player who holds the key. Three of the engine's frames are one here, with three times the
    /// speed and the gravity.
    void Press(Vector direction, float distance) {
        constexpr float frames = 3.0f;
        const Vector begin = position;
        const int most = static_cast<int>(2.5f * distance / (speed * frames)) + 1;
        Velocity() = Vector();
        Body().airborne = 0;
        constexpr int patience = 6;
        Vector before = position;
        for (int i = 0; i < most && !IsOut(); i++) {
            if (i % patience == patience - 1) {
                if ((position - before).Length() < 0.1f * patience * speed * frames) {
                    break;  // against a wall
                }
                before = position;
            }
            Vector& velocity = Velocity();
            if (Body().airborne == 0) {
                velocity = velocity + direction;
                if (velocity.Length() > speed * frames) {
                    velocity.SetLength(speed * frames);
                }
            }
            velocity.z -= gravity * 0.1f * frames;
            Sweep(velocity);
            if (std::hypot(position.x - begin.x, position.y - begin.y) >= distance) {
                break;
            }
        }
        Settle();
    }
    /// One square on: over free and level floor in two long strides, else by pressing on.
    void Stride(Vector direction, float distance) {
        const Vector begin = position;
        constexpr int parts = 2;
        constexpr float level = 0.5f;
        for (int part = 0; part < parts; part++) {
            const Vector from = position;
            Sweep(direction * (distance / parts));
            const bool isFree = (position - from).Length() > 0.97f * distance / parts;
            Sweep(Vector(0.0f, 0.0f, -2.0f * level));
            if (!isFree || std::fabs(position.z - begin.z) > level) {
                PlaceAt(begin);
                Press(direction, distance);
                return;
            }
        }
    }
};

/// What stays where it is and stops bodies.
std::vector<std::int32_t> FindObstacles(const Scene& scene) {
    std::set<std::int32_t> members;
    for (std::int32_t group = 0; group < scene.groupCount; group++) {
        ForEachMember(scene, group, [&](std::int32_t id) { members.insert(id); });
    }
    std::vector<std::int32_t> obstacles;
    for (std::int32_t id = 0; id < scene.objectCount; id++) {
        const Object& object = scene.objects[id];
        if (object.collider == nullptr && object.physics == nullptr && object.faceValueCount > 0 &&
            object.attributes[collidableAttribute] != 0 && !members.contains(id)) {
            obstacles.push_back(id);
        }
    }
    return obstacles;
}

/// Where a triangle crosses the middle of a square.
struct Surface {
    float height = 0.0f;
    bool looksUp = false;
    bool isFloor = false;  ///< not too steep for it
};

/// The floor as a net of squares: where triangles look up, nothing hangs lower than a body is high, and
/// there is no solid, whose top would be the next above.
struct FloorNet {
    float side = leastSide;
    Vector low{infinity, infinity, infinity};
    Vector high{-infinity, -infinity, -infinity};
    int columns = 0;
    int rows = 0;
    std::vector<std::vector<Surface>> surfaces;  ///< of each square

    void Measure(const Scene& scene, const std::vector<std::int32_t>& obstacles);
    void Add(const Object& object);
    void AddTriangle(const Vector (&corners)[3]);
    std::vector<Walks::Square> Squares() const;
    Cell CellOf(Vector feet) const {
        return {static_cast<int>(std::floor((feet.x - low.x) / side)),
                static_cast<int>(std::floor((feet.y - low.y) / side)),
                static_cast<int>(std::lround(feet.z / side))};
    }
};

void FloorNet::Measure(const Scene& scene, const std::vector<std::int32_t>& obstacles) {
    for (const std::int32_t id : obstacles) {
        const Object& object = scene.objects[id];
        for (std::int32_t corner = 0; corner < object.faceValueCount; corner++) {
            const Vector vertex = CornerOf(object, corner);
            if (std::isfinite(vertex.x + vertex.y + vertex.z)) {
                Widen(low, high, vertex);
            }
        }
    }
    if (low.x < high.x && low.y < high.y) {
        side = std::max(leastSide, std::sqrt((high.x - low.x) * (high.y - low.y) / mostSquares));
        constexpr int most = 500;  // a long and narrow world has many squares without any floor
        side = std::max(side, std::max(high.x - low.x, high.y - low.y) / most);
        columns = 1 + static_cast<int>((high.x - low.x) / side);
        rows = 1 + static_cast<int>((high.y - low.y) / side);
        surfaces.resize(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows));
    }
}

void FloorNet::AddTriangle(const Vector (&corners)[3]) {
    const auto [a, b, c] = std::tuple(corners[0], corners[1], corners[2]);
    const Vector normal = (b - a).Cross(c - a);
    const float steepness = normal.z / std::max(normal.Length(), 1e-12f);
    constexpr float walkable = 0.7f;
    if (!(std::fabs(steepness) > 0.1f)) {
        return;
    }
    const auto first = [this](float value, float from) {
        return static_cast<int>(std::ceil((value - from) / side - 0.5f));
    };
    const auto last = [this](float value, float from) {
        return static_cast<int>(std::floor((value - from) / side - 0.5f));
    };
    const int right = std::min(columns - 1, last(std::max({a.x, b.x, c.x}), low.x));
    const int top = std::min(rows - 1, last(std::max({a.y, b.y, c.y}), low.y));
    for (int row = std::max(0, first(std::min({a.y, b.y, c.y}), low.y)); row <= top; row++) {
        for (int column = std::max(0, first(std::min({a.x, b.x, c.x}), low.x)); column <= right; column++) {
            const float x = low.x + (static_cast<float>(column) + 0.5f) * side;
            const float y = low.y + (static_cast<float>(row) + 0.5f) * side;
            const float u = ((x - a.x) * (c.y - a.y) - (y - a.y) * (c.x - a.x)) / normal.z;
            const float v = ((b.x - a.x) * (y - a.y) - (b.y - a.y) * (x - a.x)) / normal.z;
            if (u < 0.0f || v < 0.0f || u + v > 1.0f) {
                continue;
            }
            const float height = a.z + u * (b.z - a.z) + v * (c.z - a.z);
            const std::size_t square = static_cast<std::size_t>(row) * static_cast<std::size_t>(columns) +
                                       static_cast<std::size_t>(column);
            surfaces[square].push_back({height, steepness > 0.0f, steepness > walkable});
        }
    }
}

void FloorNet::Add(const Object& object) {
    for (std::int32_t corner = 0; corner + 2 < object.faceValueCount; corner += 3) {
        AddTriangle({CornerOf(object, corner), CornerOf(object, corner + 1), CornerOf(object, corner + 2)});
    }
}

/// Whether the cell, or the one above or below it, is among them.
bool Holds(const std::set<Cell>& cells, Cell cell) {
    const auto [column, row, level] = cell;
    return cells.contains(cell) || cells.contains({column, row, level - 1}) ||
           cells.contains({column, row, level + 1});
}

std::vector<Walks::Square> FloorNet::Squares() const {
    std::vector<Walks::Square> squares;
    std::set<Cell> cells;
    for (std::size_t square = 0; square < surfaces.size(); square++) {
        for (const auto& [height, looksUp, isFloor] : surfaces[square]) {
            Surface next{infinity};
            for (const Surface& other : surfaces[square]) {
                if (other.height > height + 0.01f && other.height < next.height) {
                    next = other;
                }
            }
            const bool isBuried = next.looksUp || next.height < height + 0.95f * bodyHeight;
            const auto column = static_cast<float>(square % static_cast<std::size_t>(columns));
            const auto row = static_cast<float>(square / static_cast<std::size_t>(columns));
            const Vector place(low.x + (column + 0.5f) * side, low.y + (row + 0.5f) * side, height);
            if (isFloor && !isBuried && cells.insert(CellOf(place)).second) {
                squares.push_back({place, false});
            }
        }
    }
    // What is one square wide is the top of a wall, and no floor.
    std::erase_if(squares, [&](const Walks::Square& square) {
        const auto [column, row, level] = CellOf(square.place);
        int neighbours = -1;
        for (int i = 0; i < 9; i++) {
            neighbours += Holds(cells, {column + i % 3 - 1, row + i / 3 - 1, level}) ? 1 : 0;
        }
        return neighbours < 3;
    });
    return squares;
}

void MakeWalker(const Scene& scene, const std::vector<std::int32_t>& obstacles, std::int32_t player,
                Walker& walker) {
    const Object& body = scene.objects[scene.players[player].playerObject];
    if (walker.world.objectCount == 0) {
        walker.world.AddObjects(static_cast<std::int32_t>(obstacles.size()) + 1);
        for (std::size_t i = 0; i < obstacles.size(); i++) {
            scene.objects[obstacles[i]].CopyTo(walker.world.objects[i + 1]);
        }
        walker.world.objects[0].ResizeFaces(0);
        walker.world.objects[0].ResizeVertices(1);
        walker.world.objects[0].MakeCollider();
        walker.world.objects[0].MakePhysics();
        ObjectBounds::Of(walker.world).BeginStep();  // one that never ends: what is around stands still
    }
    body.physics->CopyTo(*walker.world.objects[0].physics);
    walker.gravity = body.physics->gravity;
    walker.speed = scene.players[player].maxSpeed;
}

/// @param reached takes the cells that the player comes to; empty before
Walks::Player Flood(Walker& walker, const FloorNet& net, std::int32_t player, Vector start,
                    std::set<Cell>& reached, bool& isWhole) {
    Walks::Player result{player, 0, false, {}};
    walker.PlaceAt(start);
    walker.Settle();
    std::vector<Vector> open;
    const auto arrive = [&](Vector from) {
        if (walker.IsOut()) {
            result.edge = result.fallsOut ? result.edge : from;
            result.fallsOut = true;
            return;
        }
        const Vector feet = walker.position - Vector(0.0f, 0.0f, halfHeight);
        if (reached.insert(net.CellOf(feet)).second) {
            open.push_back(walker.position);
        }
    };
    arrive(start);
    for (std::size_t next = 0; next < open.size(); next++) {
        for (const auto& [x, y] : {std::pair{1.0f, 0.0f}, {-1.0f, 0.0f}, {0.0f, 1.0f}, {0.0f, -1.0f}}) {
            if (walker.sweeps > mostSweeps) {
                isWhole = false;
                return result;
            }
            const Vector from = open[next];
            const Vector ahead = from + Vector(x, y, 0.0f) * net.side;
            if (reached.contains(net.CellOf(ahead - Vector(0.0f, 0.0f, halfHeight)))) {
                continue;
            }
            walker.PlaceAt(from);
            walker.Stride(Vector(x, y, 0.0f), net.side);
            arrive(from);
        }
    }
    return result;
}

}  // namespace

Walks WalkThrough(const Scene& scene) {
    Walks walks;
    const std::vector<std::int32_t> obstacles = FindObstacles(scene);
    std::int64_t triangles = 0;
    for (const std::int32_t id : obstacles) {
        triangles += scene.objects[id].faceValueCount / 3;
    }
    walks.isTooLarge = triangles > mostTriangles;
    if (triangles == 0 || walks.isTooLarge) {
        return walks;
    }
    FloorNet net;
    net.Measure(scene, obstacles);
    for (const std::int32_t id : obstacles) {
        net.Add(scene.objects[id]);
    }
    walks.side = net.side;
    walks.floor = net.Squares();
    std::set<Cell> reached;  // by the last player
    Walker walker;
    walker.bottom = net.low.z - 2.0f * bodyHeight;
    for (std::int32_t player = 0; player < scene.playerCount; player++) {
        Vector start;
        if (!FindStart(scene, player, start) ||
            scene.objects[scene.players[player].playerObject].collider == nullptr ||
            scene.objects[scene.players[player].playerObject].physics == nullptr) {
            continue;
        }
        MakeWalker(scene, obstacles, player, walker);
        const Cell startCell = net.CellOf(start - Vector(0.0f, 0.0f, halfHeight));
        if (!walks.players.empty() && Holds(reached, startCell)) {
            walks.players.push_back(walks.players.back());  // who starts where another came gets as far
            walks.players.back().index = player;
            continue;
        }
        reached.clear();
        walks.players.push_back(Flood(walker, net, player, start, reached, walks.isWhole));
        for (Walks::Square& square : walks.floor) {
            const bool isReached = Holds(reached, net.CellOf(square.place));
            square.isReached = square.isReached || isReached;
            walks.players.back().reached += isReached ? 1 : 0;
        }
    }
    return walks;
}
