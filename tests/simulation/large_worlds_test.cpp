#include <cmath>
#include <cstring>
#include <functional>
#include <numeric>

#include "simulation/plain_step.h"
#include "simulation/random_numbers.h"

// Collision looks only at the faces and objects near a sweep. Here worlds with meshes of many faces, and of
// many objects, run beside a twin in which every sweep asks everything, and both must agree in every bit.

namespace {

/// The same bits, or both not a number: which one is up to the compiler.
bool Same(const float* a, const float* b, std::int32_t count) {
    return std::equal(a, a + count, b, [](float x, float y) {
        return std::memcmp(&x, &y, sizeof x) == 0 || (std::isnan(x) && std::isnan(y));
    });
}
bool Same(Vector a, Vector b) {
    return Same(&a.x, &b.x, 3);
}
bool Same(const Collider& a, const Collider& b) {
    return Same(a.sweepVelocity, b.sweepVelocity) && Same(a.sweepOrigin, b.sweepOrigin) &&
           Same(a.safePosition, b.safePosition) && a.foundCollision == b.foundCollision &&
           a.airborne == b.airborne && a.edgeContact == b.edgeContact &&
           Same(&a.nearestDistance, &b.nearestDistance, 1) &&
           Same(a.nearestSpherePoint, b.nearestSpherePoint) &&
           Same(a.nearestContactPoint, b.nearestContactPoint) && a.recursionDepth == b.recursionDepth;
}
bool Same(const Scene& a, const Scene& b) {
    for (std::int32_t i = 0; i < a.objectCount; i++) {
        const Object& x = a.objects[i];
        const Object& y = b.objects[i];
        if (!Same(x.vertices.get(), y.vertices.get(), x.vertexValueCount)) return false;
        if (x.collider && !Same(*x.collider, *y.collider)) return false;
        if (x.physics && !Same(x.physics->velocity, y.physics->velocity)) return false;
    }
    return true;
}

/// A world of bodies and meshes of one kind, all in units of the bodies' half-axes, so that bodies of any
/// size fare alike. Two of the same seed are twins.
struct LargeWorld : RandomNumbers {
    Scene scene;
    Vector place;                 ///< of the world, in ellipsoid space
    Vector radii{2, 2, 5};        ///< of all bodies
    const std::int32_t shape;     ///< of the meshes
    std::vector<Vector> corners;  ///< of the mesh under construction, in ellipsoid space
    float heights[24][24];

    explicit LargeWorld(std::uint32_t seed) : RandomNumbers(seed), shape(Pick(8)) {
        if (Chance(3)) {
            for (float* radius : {&radii.x, &radii.y, &radii.z})
                *radius = RandomSize(-3, 3);
        }
        if (Chance(3)) place = RandomVector(RandomSize(0, 4));
        for (auto& row : heights)
            std::generate_n(row, 24, [this] { return Random(-1, 1); });
        scene.AddGroups(1);
        const std::int32_t bodies = 1 + Pick(5);
        const std::int32_t meshes = 1 + Pick(3);
        const std::int32_t boxes = Chance(3) ? 100 + Pick(100) : 0;
        for (std::int32_t i = 0; i < bodies; i++)
            AddBodyOf(Exact());
        for (std::int32_t i = 0; i < meshes; i++)
            AddMesh([this] { FillMesh(); });
        for (std::int32_t i = 0; i < boxes; i++)
            AddMesh([this] { Box(RandomVector(40) * Vector(1, 1, 0.1f), Vector(1, 1, 2)); });
        // Some lead, some follow, some are nobody's obstacle, some come from elsewhere.
        for (std::int32_t i = 0; i < scene.objectCount; i++) {
            if (Chance(4)) scene.groups[0].Add(i);
            if (Chance(8)) scene.objects[i].attributes[collidableAttribute] = 0;
        }
        if (Chance(2)) scene.objects[Pick(bodies + meshes)].groupParent = 0;
        if (Chance(4)) {
            scene.objects[0].attributes[spawnStateAttribute] = justSpawned;
            scene.objects[0].transform.Translate(radii.x, 0, radii.z);
        }
    }
    /// Often on a grid, where what is symmetric gives equal distances.
    Vector Exact() {
        Vector result = RandomVector(6) * Vector(1, 1, 0.3f);
        if (Chance(2)) {
            for (float* value : {&result.x, &result.y, &result.z})
                *value = std::round(*value);
        }
        return result;
    }
    void AddBodyOf(Vector at) {
        Object& object = scene.objects[AddBody(scene, (place + at) * radii)];
        if (!Chance(3)) object.SetVertex(CentreOf(object) + Vector(0, 0, 2 * radii.z), 0);
        object.collider->radii = radii;
        object.physics->velocity = RandomVector(0.3f) * radii;
        object.physics->gravity = radii.z * Random(0, 0.5f);
        object.physics->bounce = Random(0, 1);
        object.physics->friction = Random(0, 0.5f);
    }
    void AddMesh(const std::function<void()>& fill) {
        scene.AddObjects(1);
        corners.clear();
        fill();
        Object& mesh = scene.objects[scene.objectCount - 1];
        const auto count = static_cast<std::int32_t>(corners.size());
        mesh.ResizeVertices(count + 5);
        mesh.ResizeFaces(count / 3);
        std::iota(mesh.faces.get(), mesh.faces.get() + count, 0);
        for (std::int32_t i = 0; i < count; i++)
            mesh.SetVertex((place + corners[static_cast<std::size_t>(i)]) * radii, i);
        mesh.SetVertex((place + corners[0]) * radii, mesh.centreVertex = count);
        mesh.spareVertex = count + 4;
        mesh.ComputeRadius();
    }
    void Quad(Vector a, Vector b, Vector c, Vector d) { corners.insert(corners.end(), {a, b, c, a, c, d}); }
    void Box(Vector at, Vector size) {
        const auto corner = [&](int bits) {
            return at + size * Vector(static_cast<float>(bits & 1), static_cast<float>(bits >> 1 & 1),
                                      static_cast<float>(bits >> 2));
        };
        for (const auto& [a, b, c, d] :
             {std::array{0, 2, 3, 1}, {4, 5, 7, 6}, {0, 1, 5, 4}, {2, 6, 7, 3}, {0, 4, 6, 2}, {1, 3, 7, 5}})
            Quad(corner(a), corner(b), corner(c), corner(d));
    }
    /// A square of 16 units, by a height at each point of its grid.
    template <typename Height>
    void Ground(Height height) {
        const auto corner = [&](int x, int y) {
            return Vector(static_cast<float>(x - 8), static_cast<float>(y - 8), height(x, y));
        };
        for (int x = 0; x < 16; x++) {
            for (int y = 0; y < 16; y++)
                Quad(corner(x, y), corner(x + 1, y), corner(x + 1, y + 1), corner(x, y + 1));
        }
    }
    void FillMesh() {
        const float odd[] = {0.0f, -0.0f, 1e-30f, 1e5f, 1e12f, 1e25f, INFINITY, NAN};
        const float depth = static_cast<float>(1 + Pick(3)) * 0.5f;
        switch (shape) {
            case 0:
                return Ground([&](int x, int y) { return heights[x][y]; });
            case 1:  // grooves and ridges
                return Ground([&](int x, int) { return x % 2 == 0 ? -depth : 0.0f; });
            case 2:  // pits and peaks
                return Ground([&](int x, int y) { return (x + y) % 2 == 0 ? -depth : 0.0f; });
            case 3:  // boxes, each standing for itself
                for (int i = 0; i < 40; i++)
                    Box(Exact(), Vector(1, 1.5f, 0.5f));
                return;
            case 4:  // a tower of floors with walls
                for (int i = 0; i < 20; i++)
                    Box(Vector(-4, -4, static_cast<float>(i) * 3.0f - 9.0f),
                        Vector(8, 8, i % 2 == 0 ? 0.5f : 3.0f));
                return;
            default:
                break;
        }
        for (int i = 0; i < 300; i++) {
            const Vector a = RandomVector(8) * Vector(1, 1, 0.3f);
            const float size = shape == 7 ? RandomSize(-3, 4) : RandomSize(-2, 1);
            Vector b = a + RandomVector(size);
            Vector c = a + RandomVector(size);
            if (shape == 5) {  // slivers
                const Vector off = RandomVector(RandomSize(-8, -1));
                c = a + (b - a) * Random(-1, 2) + off;
            }
            if (shape == 6) {  // no triangles
                if (Chance(4)) c = Chance(2) ? a : b;
                if (Chance(8)) (Chance(2) ? b.x : c.z) = odd[Pick(8)];
            }
            corners.insert(corners.end(), {a, b, c});
        }
    }
    /// Something happens to the meshes between two frames.
    void Disturb() {
        Object& object = scene.objects[Pick(scene.objectCount)];
        const std::int32_t faces = object.faceValueCount / 3;
        const Vector move = RandomVector(0.5f) * radii;
        const std::int32_t vertex = Pick(object.vertexValueCount / 3);
        switch (Pick(8)) {
            case 0:
                return object.transform.Translate(move.x, move.y, move.z);
            case 1:
                return object.transform.Rotate(Random(-0.3f, 0.3f), 0, 0, 1);
            case 2:
                return object.SetVertex(VertexOf(object, vertex) + move, vertex);
            case 3:
                if (faces > 0) std::swap(object.faces[0], object.faces[3 * Pick(faces)]);
                return object.MeshChanged();
            case 4:
                if (faces > 200) object.ResizeFaces(faces - 1);
                return;
            case 5:
                if (faces > 0)
                    std::swap(object.vertices[0], object.vertices[Pick(object.vertexValueCount)]);
                return object.MeshChanged();
            case 6: {
                Object copy;
                scene.objects[scene.objectCount - 1].CopyTo(copy);
                if (object.collider == nullptr) copy.CopyTo(object);
                return;
            }
            default:
                object.radius *= Random(0.7f, 1.5f);
        }
    }
};

TEST(LargeWorlds, AgreeWithTwinsThatAskEverything) {
    long contacts = 0;
    for (std::uint32_t seed = 1; seed <= 25; seed++) {
        LargeWorld world(seed);
        LargeWorld twin(seed);
        for (int frame = 0; frame < 60; frame++) {
            if (world.Chance(5)) world.Disturb();
            if (twin.Chance(5)) twin.Disturb();
            world.scene.StepWorld();
            PlainStepWorld(twin.scene);
            ASSERT_TRUE(Same(world.scene, twin.scene)) << "seed " << seed << ", frame " << frame;
            for (std::int32_t i = 0; i < twin.scene.objectCount; i++)
                contacts += twin.scene.objects[i].collider && twin.scene.objects[i].collider->airborne == 0;
        }
    }
    EXPECT_GT(contacts, 1000);
}

}  // namespace
