#include <array>
#include <functional>
#include <numeric>
#include <utility>
#include <vector>

#include "simulation/face_index.h"
#include "simulation/plain_step.h"
#include "simulation/random_numbers.h"

// Collision looks only at the faces and objects near a sweep. Here worlds with meshes of many faces, and of
// many objects, run beside a twin in which every sweep asks everything, and both must agree in every bit.

namespace {

bool Same(const Scene& a, const Scene& b) {
    bool same = true;
    for (std::int32_t i = 0; i < a.objectCount; i++) {
        const Object& x = a.objects[i];
        const Object& y = b.objects[i];
        for (std::int32_t vertex = 0; vertex < x.vertexValueCount / 3; vertex++) {
            same &= Same(VertexOf(x, vertex), VertexOf(y, vertex));
        }
        same &= !x.collider ||
                (Same(*x.collider, *y.collider) && Same(x.physics->velocity, y.physics->velocity));
    }
    return same;
}

/// Bodies among meshes of one kind, all in units of the bodies' half-axes, so that bodies of any size fare
/// alike. Two of the same seed are twins.
struct LargeWorld : RandomNumbers {
    Scene scene;
    Vector place;  ///< of the world, in ellipsoid space
    Vector radii{2, 2, 5};
    const std::int32_t shape = Pick(8);
    std::vector<Vector> corners;  ///< of the mesh under construction, in ellipsoid space

    explicit LargeWorld(std::uint32_t seed) : RandomNumbers(seed) {
        if (Chance(3)) {
            radii = RandomRadii();
        }
        if (Chance(3)) {
            place = RandomVector(RandomSize(0, 4));
        }
        scene.AddGroups(1);
        // Some meshes have moved before a body looks at them, some after.
        for (std::int32_t i = Pick(3); i > 0; i--) {
            AddMesh([this] { FillMesh(); });
        }
        for (std::int32_t i = 1 + Pick(5); i > 0; i--) {
            AddBodyOf();
        }
        for (std::int32_t i = 1 + Pick(3); i > 0; i--) {
            AddMesh([this] { FillMesh(); });
        }
        for (std::int32_t i = Chance(3) ? 100 + Pick(100) : 0; i > 0; i--) {
            AddMesh([this] { Box(RandomVector(40) * Vector(1, 1, 0.1f), Vector(1, 1, 2)); });
        }
        // One leads, some follow, some are nobody's obstacle.
        scene.objects[Pick(std::min(3, scene.objectCount))].groupParent = 0;
        for (std::int32_t i = 0; i < scene.objectCount; i++) {
            if (Chance(4)) {
                scene.groups[0].Add(i);
            }
            if (Chance(8)) {
                scene.objects[i].attributes[collidableAttribute] = 0;
            }
        }
    }
    Vector RandomRadii() {
        const float x = RandomSize(-3, 3);
        const float y = RandomSize(-3, 3);
        return Vector(x, y, RandomSize(-3, 3));
    }
    /// Often on a grid, where what is symmetric gives equal distances.
    Vector Somewhere() {
        const Vector at = RandomVector(6) * Vector(1, 1, 0.3f);
        return Chance(2) ? at : Vector(std::round(at.x), std::round(at.y), std::round(at.z));
    }
    void AddBodyOf() {
        const Vector above(0, 0, Chance(3) ? 0.0f : 2.0f);  // or in the midst of it
        Object& object = scene.objects[AddBody(scene, (place + above + Somewhere()) * radii)];
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
        mesh.ResizeVertices(count + 2);
        mesh.ResizeFaces(count / 3);
        std::iota(mesh.faces.get(), mesh.faces.get() + count, 0);
        corners.push_back(corners[0]);
        for (std::int32_t i = 0; i <= count; i++) {
            mesh.SetVertex((place + corners[static_cast<std::size_t>(i)]) * radii, i);
        }
        mesh.centreVertex = count;
        mesh.spareVertex = count + 1;
        mesh.ComputeRadius();
    }
    void Quad(Vector a, Vector b, Vector c, Vector d) { corners.insert(corners.end(), {a, b, c, a, c, d}); }
    void Box(Vector at, Vector size) {
        const auto corner = [&](int bits) {
            return at + size * Vector(static_cast<float>(bits & 1), static_cast<float>(bits >> 1 & 1),
                                      static_cast<float>(bits >> 2));
        };
        for (const auto& [a, b, c, d] : {std::array{0, 2, 3, 1},
                                         {4, 5, 7, 6},
                                         {0, 1, 5, 4},
                                         {2, 6, 7, 3},
                                         {0, 4, 6, 2},
                                         {1, 3, 7, 5}}) {
            Quad(corner(a), corner(b), corner(c), corner(d));
        }
    }
    void FillMesh() {
        const float depth = static_cast<float>(1 + Pick(3)) * 0.5f;
        std::vector<float> heights(17 * 17);
        for (std::size_t i = 0; i < heights.size(); i++) {
            const bool low = shape == 1 ? i / 17 % 2 == 0 : i % 2 == 0;
            heights[i] = shape == 0 ? Random(-1, 1) : low ? -depth : 0.0f;  // hills, grooves, pits
        }
        const auto corner = [&](std::size_t x, std::size_t y) {
            return Vector(static_cast<float>(x) - 8.0f, static_cast<float>(y) - 8.0f, heights[17 * x + y]);
        };
        for (std::size_t i = 0; i < 256 && shape < 3; i++) {
            const std::size_t x = i / 16;
            const std::size_t y = i % 16;
            Quad(corner(x, y), corner(x + 1, y), corner(x + 1, y + 1), corner(x, y + 1));
        }
        for (int i = 0; i < 40 && shape == 3; i++) {
            Box(Somewhere(), Vector(1, 1.5f, 0.5f));
        }
        for (int i = 0; i < 20 && shape == 4; i++) {  // a tower of floors with walls
            Box(Vector(-4, -4, static_cast<float>(i) * 3 - 9), Vector(8, 8, i % 2 == 0 ? 0.5f : 3.0f));
        }
        for (int i = 0; i < 300 && shape > 4; i++) {
            const Vector a = RandomVector(8) * Vector(1, 1, 0.3f);
            const float size = shape == 7 ? RandomSize(-3, 4) : RandomSize(-2, 1);
            Vector b = a + RandomVector(size);
            Vector c = a + RandomVector(shape == 5 ? RandomSize(-8, -1) : size);  // slivers
            if (shape == 6 && Chance(3)) {
                c = Chance(2) ? a : b;
            }
            constexpr float odd[] = {1e-30f, 1e12f, 1e25f, INFINITY, NAN};
            if (shape == 6 && Chance(8)) {
                b.x = odd[Pick(5)];
            }
            corners.insert(corners.end(), {a, b, c});
        }
    }
    /// Something happens to an object between two frames.
    void Disturb() {
        Object& object = scene.objects[Pick(scene.objectCount)];
        const Vector move = RandomVector(0.5f) * radii;
        const std::int32_t kind = Pick(3);
        if (kind == 0) {
            object.transform.Translate(move.x, move.y, move.z);
        }
        if (kind == 1) {
            object.transform.Rotate(Random(-0.3f, 0.3f), 0, 0, 1);
        }
        if (kind == 2) {
            object.SetVertex(CentreOf(object) + move, Pick(object.vertexValueCount / 3));
        }
    }
};

TEST(LargeWorlds, AgreeWithTwinsThatAskEverything) {
    long contacts = 0;
    for (std::uint32_t seed = 1; seed <= 24; seed++) {
        LargeWorld world(seed);
        LargeWorld twin(seed);
        for (int frame = 0; frame < 60; frame++) {
            for (LargeWorld* each : {&world, &twin}) {
                if (each->Chance(4)) {
                    each->Disturb();
                }
            }
            world.scene.StepWorld();
            PlainStepWorld(twin.scene);
            ASSERT_TRUE(Same(world.scene, twin.scene)) << "seed " << seed << ", frame " << frame;
            for (std::int32_t i = 0; i < twin.scene.objectCount; i++) {
                const Object& object = twin.scene.objects[i];
                contacts += object.collider ? 1 - object.collider->airborne : 0;
            }
        }
    }
    EXPECT_GT(contacts, 1000);
}

/// A factor for a distance at the limit of reach: a hair's breadth inside or outside of it, or a hand's.
float AboutOne(RandomNumbers& random) {
    const float off = random.RandomSize(-7, -2);
    return random.Chance(3) ? 1.0f + off : 1.0f - off;
}

/// One sweep against the mesh, which must end as with the plain steps.
void CompareSweep(Object& body, const Object& mesh, Vector origin, Vector sweep, int times = 1) {
    Collider& collider = *body.collider;
    collider.sweepOrigin = origin;
    collider.sweepVelocity = sweep;
    collider.foundCollision = 0;
    collider.nearestDistance = -1.0f;
    const Collider before = collider;
    PlainCollideWithMesh(body, mesh);
    const Collider plain = collider;
    for (int i = 0; i < times; i++) {
        collider = before;
        body.CollideWithObject(mesh);
        ASSERT_TRUE(Same(plain, collider));
    }
}

TEST(LargeWorlds, FindFacesAtTheLimitOfReach) {
    LargeWorld random(3);
    long contacts = 0;
    for (int world = 0; world < 300 && !HasFatalFailure(); world++) {
        Object body;
        body.MakeCollider();
        Vector& radii = body.collider->radii;
        if (random.Chance(2)) {
            radii = random.RandomRadii() * Vector(random.Chance(5) ? -1.0f : 1.0f, 1, 1);
        }
        // Needles, four of a kind, each kind alone far and wide. One comes at them point first.
        constexpr int kinds = 40;
        const Vector place = random.RandomVector(random.RandomSize(0, 6));
        const float travel = random.RandomSize(-2, 1);
        Object mesh;
        mesh.ResizeVertices(3 * kinds);
        mesh.ResizeFaces(4 * kinds);
        mesh.radius = INFINITY;
        Vector points[kinds];
        Vector directions[kinds];
        for (int kind = 0; kind < kinds; kind++) {
            directions[kind] = random.RandomVector(1);
            directions[kind].Normalise();
            points[kind] = place + random.RandomVector(100);
            const Vector along = directions[kind] * random.RandomSize(-2, 1);
            const Vector aside = random.RandomVector(0.01f);
            mesh.SetVertex(points[kind] * radii, 3 * kind);
            mesh.SetVertex((points[kind] + along + aside) * radii, 3 * kind + 1);
            mesh.SetVertex((points[kind] + along - aside) * radii, 3 * kind + 2);
            for (int i = 0; i < 12; i++) {
                mesh.faces[12 * kind + i] = 3 * kind + i % 3;
            }
        }
        for (int sweep = 0; sweep < 3 * kinds && !HasFatalFailure(); sweep++) {
            const Vector way = directions[sweep % kinds];
            CompareSweep(body, mesh, points[sweep % kinds] - way * ((travel + 1) * AboutOne(random)),
                         way * travel);
            contacts += body.collider->foundCollision;
        }
    }
    EXPECT_GT(contacts, 10000);
}

/// One sweep of object 0 in both, the second with the plain steps.
void CompareMove(Scene (&scenes)[2], Vector from, Vector move) {
    for (Scene& scene : scenes) {
        scene.objects[0].SetVertex(from, 0);
    }
    ASSERT_TRUE(Same(scenes[0].MoveWithCollision(0, from, move), PlainMove(scenes[1], 0, from, move)));
    ASSERT_TRUE(Same(scenes[0], scenes[1]));
}

TEST(LargeWorlds, FindObjectsAtTheLimitOfReach) {
    RandomNumbers random(4);
    long contacts = 0;
    for (int world = 0; world < 40; world++) {
        Scene scenes[2];
        const Vector place = random.RandomVector(random.RandomSize(0, 5));
        const std::int32_t count = world % 2 == 0 ? 100 : 40;  // in a tree and on a list
        for (std::int32_t i = 0; i <= count; i++) {
            const Vector at = place + random.RandomVector(300);
            for (Scene& scene : scenes) {
                if (i % 4 == 0) {
                    AddBody(scene, at);
                } else {
                    AddRectangle(scene, at, Vector(1, 0, 0), Vector(0, 1, 0));
                    scene.objects[i].radius = 0.0f;
                }
            }
        }
        for (int sweep = 0; sweep < 300; sweep++) {
            const std::int32_t id = 1 + random.Pick(count);
            // A mesh is met from above, a body's wall from the side; half-axes are 2, 2 and 5.
            const float travel = random.RandomSize(-2, 0.5f);
            Vector away(0, 0, (5.0f + travel) * AboutOne(random));
            Vector move(0, 0, -5.0f * travel);
            if (id % 4 == 0) {
                Vector side = random.RandomVector(1) * Vector(1, 1, 0);
                side.Normalise();
                away = side * ((2.0f + 2.0f * travel) * AboutOne(random)) +
                       random.RandomVector(9) * Vector(0, 0, 1);
                move = side * (-2.0f * travel);
            }
            const Vector shift = random.RandomVector(random.Chance(2) ? 0.0f : 100.0f);
            for (Scene& scene : scenes) {
                scene.objects[id].transform.Translate(shift.x, shift.y, shift.z);
                scene.objects[id].ApplyTransform();
            }
            CompareMove(scenes, CentreOf(scenes[0].objects[id]) + away, move);
            contacts += 1 - scenes[1].objects[0].collider->airborne;
        }
    }
    EXPECT_GT(contacts, 3000);
}

TEST(LargeWorlds, FindWhatNoInequalityHoldsFor) {
    // Half-axes of less than nothing, which all but cancel the way and leave it to rounding what is near.
    RandomNumbers random(5);
    Scene meshes[2];
    for (Scene& scene : meshes) {
        AddBody(scene, Vector());
        AddRectangle(scene, Vector(), Vector(0.2f, 0, 0), Vector(0, 0.2f, 0));
    }
    for (int sweep = 0; sweep < 1000; sweep++) {
        const Vector radii = Vector(-1e6f, -1e6f, -1e6f) + random.RandomVector(0.2f);
        for (Scene& scene : meshes) {
            scene.objects[0].collider->radii = radii;
        }
        CompareMove(meshes, random.RandomVector(0.3f), Vector(0, 0, -1e12f));
    }
    // Walls far away that are met because their height makes NaN of the distance, and one near by because
    // the slope's square, all but too small for a float, comes out half as large again.
    const float slope = 3e-23f;
    for (const float z : {NAN, INFINITY, 3e38f, 0.0f}) {
        Scene bodies[2];
        for (Scene& scene : bodies) {
            AddBody(scene, Vector());
            scene.objects[0].collider->radii.z = 0.5f;
            AddBody(scene, z == 0.0f ? Vector(2, 2e-24f, 0) : Vector(1000, 0, z));
            scene.objects[1].collider->radii.x = 2.0f * (slope / std::sqrt(slope * slope));
            scene.objects[1].collider->radii.y = 0.0f;
        }
        CompareMove(bodies, Vector(), z == 0.0f ? Vector(0, slope, -0.25f) * 0.0625f : Vector(1, 0, 0));
        EXPECT_EQ(bodies[1].objects[0].collider->airborne, 0);
    }
}

TEST(LargeWorlds, SortTheFacesOfALargeMeshBeforeTheFirstSweep) {
    Scene scene;
    scene.AddObjects(3);
    for (std::int32_t id = 0; id < 3; id++) {
        Object& mesh = scene.objects[id];
        mesh.ResizeVertices(1);
        mesh.SetVertex(Vector(), 0);
        mesh.ResizeFaces(FaceIndex::fewestLarge - (id == 1 ? 1 : 0));
        std::fill_n(mesh.faces.get(), mesh.faceValueCount, 0);
        mesh.attributes[collidableAttribute] = id == 2 ? 0 : 1;
    }
    FaceIndex::PrepareLarge(scene);
    EXPECT_EQ(FaceIndex::Of(scene.objects[0])->Memory(), 0) << "nobody is there who could need it";
    const std::int32_t body = AddBody(scene, Vector());
    FaceIndex::PrepareLarge(scene);
    for (std::int32_t id = 0; id < 3; id++) {
        const Object& mesh = scene.objects[id];
        EXPECT_EQ(FaceIndex::Of(mesh)->FindCandidates(mesh, *scene.objects[body].collider, 1.0f) != nullptr,
                  id == 0);
    }
}

TEST(LargeWorlds, SortTheFacesOfAMeshThatHasOftenMovedInVain) {
    Object body;
    body.MakeCollider();
    Object mesh;
    mesh.ResizeVertices(1);
    mesh.SetVertex(Vector(), 0);
    mesh.ResizeFaces(FaceIndex::fewestFaces);
    std::fill_n(mesh.faces.get(), mesh.faceValueCount, 0);
    FaceIndex index;
    for (int i = 0; i < 10; i++) {
        int sweeps = 0;
        while (index.FindCandidates(mesh, *body.collider, 1.0f) == nullptr && sweeps < 2000) {
            sweeps++;
        }
        EXPECT_EQ(sweeps, FaceIndex::buildCost << std::min(i, 6));
        mesh.MeshChanged();
    }
}

TEST(LargeWorlds, FindAMeshHoweverItIsMoved) {
    // Ground of 7200 triangles, far below the body, and a second set of vertices where it meets the body.
    constexpr std::int32_t across = 61;
    Object mesh;
    mesh.ResizeVertices(2 * across * across);
    mesh.ResizeFaces(2 * (across - 1) * (across - 1));
    std::int32_t* corner = mesh.faces.get();
    for (std::int32_t i = 0; i < across * across; i++) {
        const Vector place(static_cast<float>(i % across), static_cast<float>(i / across), -500.0f);
        mesh.SetVertex(place, i);
        mesh.SetVertex(place + Vector(0, 0, 500), across * across + i);
        if (i % across == across - 1 || i / across == across - 1) {
            continue;
        }
        for (const std::int32_t step : {0, 1, across + 1, 0, across + 1, across}) {
            *corner++ = i + step;
        }
    }
    mesh.radius = INFINITY;
    const auto byTransform = [](Object& object, float way) {
        object.transform.Translate(0, 0, way);
        object.ApplyTransform();
    };
    const auto vertexByVertex = [](Object& object, float way) {
        for (std::int32_t i = 0; i < object.vertexValueCount / 3; i++) {
            object.SetVertex(VertexOf(object, i) + Vector(0, 0, way), i);
        }
    };
    const auto asACopy = [&](Object& object, float way) {
        Object other;
        object.CopyTo(other);
        byTransform(other, way);
        other.CopyTo(object);
    };
    const auto inAnotherArray = [&](Object& object, float way) {
        Object other;
        object.CopyTo(other);
        byTransform(other, way);
        std::swap(object.vertices, other.vertices);
    };
    const auto byFaces = [](Object& object, float way) {
        for (std::int32_t i = 0; i < object.faceValueCount; i++) {
            object.faces[i] += across * across * (way > 0.0f ? 1 : -1);
        }
        object.MeshChanged();
    };
    Object body;
    body.MakeCollider();
    const Vector origin = Vector(30.3f, 30.4f, 7.0f) / body.collider->radii;
    using Way = std::function<void(Object&, float)>;
    for (const Way& move :
         {Way(byTransform), Way(vertexByVertex), Way(asACopy), Way(inAnotherArray), Way(byFaces)}) {
        for (const float way : {500.0f, -500.0f}) {
            // Often enough for the faces to be sorted where they are.
            CompareSweep(body, mesh, origin, Vector(0.1f, 0.0f, -1.0f), 200);
            EXPECT_EQ(body.collider->foundCollision, way < 0.0f ? 1 : 0);
            move(mesh, way);
        }
    }
}

TEST(LargeWorlds, FindWhatHasComeInTheSameStep) {
    // A platform takes another along, and each passes below a body that is looked at later. From time to
    // time a third one, below the first, counts as too small to be met.
    for (const std::int32_t others : {0, 150}) {
        Scene scenes[2];
        long contacts = 0;
        for (Scene& scene : scenes) {
            AddBody(scene, Vector(-500, 0, 0));  // looks first, before the platforms move
            for (const float x : {0.0f, 50.0f, 0.0f}) {
                AddRectangle(scene, Vector(x, 0, 0), Vector(20, 0, 0), Vector(0, 20, 0));
            }
            for (const float x : {0.0f, 50.0f}) {
                AddBody(scene, Vector(x, 0, 30));
            }
            for (std::int32_t i = 0; i < others; i++) {
                AddWall(scene, 1000.0f + static_cast<float>(i));
            }
            scene.AddGroups(1);
            scene.objects[1].groupParent = 0;
            scene.groups[0].Add(2);
        }
        for (int frame = 0; frame < 400; frame++) {
            for (Scene& scene : scenes) {
                const float way = frame % 100 == 50 ? 300.0f : frame % 100 == 0 ? -300.0f : 0.0f;
                scene.objects[1].transform.Translate(way, 0.1f, 0);
                scene.objects[3].radius = frame / 20 % 2 == 0 ? 0.0f : 50.0f;
                for (std::int32_t id = 4; id < 6 && frame % 50 == 0; id++) {
                    scene.objects[id].SetVertex(Vector(id == 4 ? 0.0f : 50.0f, 0, 8), 0);
                }
            }
            scenes[0].StepWorld();
            PlainStepWorld(scenes[1]);
            ASSERT_TRUE(Same(scenes[0], scenes[1])) << others << " others, frame " << frame;
            contacts +=
                2 - scenes[1].objects[4].collider->airborne - scenes[1].objects[5].collider->airborne;
        }
        EXPECT_GT(contacts, 100);
    }
}

}  // namespace
