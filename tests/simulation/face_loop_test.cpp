#include <cmath>
#include <numeric>

#include "simulation/plain_collision.h"
#include "simulation/random_numbers.h"

// The face loop leaves out what can't change its result. Here it runs beside the plain steps on many seeded
// worlds, with an eye on the limits, where leaving out a face by mistake would show.

namespace {

struct FaceLoop : testing::Test, RandomNumbers {
    Object body;
    Object obstacle;
    long contacts = 0;

    FaceLoop() : RandomNumbers(20) {
        body.MakeCollider();
        obstacle.radius = INFINITY;
    }
    /// The value or a neighbour of it, a few roundings away.
    float About(float value) {
        const int steps = Pick(9) - 4;
        for (int i = 0; i < std::abs(steps); i++) {
            value = std::nextafter(value, steps < 0 ? -1e30f : 1e30f);
        }
        return value;
    }
    void MakeObstacle(std::int32_t faceCount) {
        obstacle.ResizeVertices(3 * faceCount);
        obstacle.ResizeFaces(faceCount);
        std::iota(obstacle.faces.get(), obstacle.faces.get() + 3 * faceCount, 0);
    }
    Vector Direction() {
        Vector result = RandomVector(1.0f);
        result.Normalise();
        return result;
    }
    /// In ellipsoid space.
    void SetCorner(int index, Vector corner) { obstacle.SetVertex(corner * body.collider->radii, index); }
    Vector Corner(int index) { return VertexOf(obstacle, index) / body.collider->radii; }

    void Compare(Vector origin, Vector sweep, const char* what) {
        Collider& collider = *body.collider;
        collider.sweepOrigin = origin;
        collider.sweepVelocity = sweep;
        collider.edgeContact = static_cast<std::uint8_t>(Pick(2));
        collider.airborne = 1;
        // Sometimes an earlier obstacle was met.
        collider.foundCollision = Chance(4) ? 1 : 0;
        collider.nearestDistance = collider.foundCollision ? Random(0.0f, sweep.Length()) : -1.0f;
        const Collider before = collider;
        PlainCollideWithMesh(body, obstacle);
        const Collider plain = collider;
        collider = before;
        body.CollideWithObject(obstacle);
        ASSERT_TRUE(Same(plain, collider)) << what;
        contacts += 1 - plain.airborne;
    }
};

TEST_F(FaceLoop, AgreesWithThePlainStepsAtTheLimits) {
    MakeObstacle(2);
    // The second face is the last one of the object, which never goes through the filter.
    for (int corner = 3; corner < 6; corner++) {
        SetCorner(corner, Vector(1e4f, corner, 1.0f));
    }
    for (int world = 0; world < 12000 && !HasFatalFailure(); world++) {
        const Vector place = RandomVector(RandomSize(-2, 5));
        const float size = RandomSize(-1.5f, 1.5f);
        for (int corner = 0; corner < 3; corner++) {
            SetCorner(corner, place + RandomVector(size));
        }
        if (Chance(3)) {
            // A sliver, whose normal may be anything.
            const Vector edge = Corner(1) - Corner(0);
            SetCorner(2, Corner(0) + edge * Random(-1, 2) + RandomVector(RandomSize(-8, -1)));
        }
        const Vector a = Corner(0);
        const Vector b = Corner(1);
        const Vector c = Corner(2);
        Vector normal = (b - a).Cross(c - a);
        normal.Normalise();
        const float travel = RandomSize(-2, 0.5f);
        const Vector direction = Chance(2) ? -normal : Direction();
        const Vector sweep = direction * travel;
        const Vector centroid = (a + b + c) / 3.0f;
        const float radius = std::max({centroid.Distance(a), centroid.Distance(b), centroid.Distance(c)});

        // The sphere that bounds the face, just within reach and just out of it.
        Compare(centroid + Direction() * About(radius + travel + 1.0f), sweep, "bound");
        // The face at the very end of the sweep, or touched already, or just sunk into.
        const float weight = Random(-0.2f, 1.2f);
        const Vector onFace = a + (b - a) * weight + (c - a) * Random(-0.2f, 1.2f - weight);
        Compare(onFace + normal - direction * About(travel), sweep, "end of sweep");
        Compare(onFace + normal * About(1.0f), sweep, "touch");
        Compare(onFace + normal * About(1.0f - travel), sweep, "sunk");
        Compare(onFace - normal * About(1.0f), sweep, "from behind");
        const float lowering = RandomSize(-7, -2);
        const Vector grazing = (b - a) * (travel / b.Distance(a)) - normal * lowering;
        Compare(onFace + normal * (1.0f + lowering * Random(0, 1)) - grazing * 0.5f, grazing, "grazing");
        // An edge or a corner, passed at the limit of reach or met at the end of the sweep.
        Vector aside = (b - a).Cross(direction);
        aside.Normalise();
        const Vector onEdge = a + (b - a) * Random(-0.1f, 1.1f);
        Compare(onEdge + aside * About(0.99f) - sweep * Random(0, 2), sweep, "edge passed");
        Compare(onEdge - direction * About(travel + 1.0f), sweep, "edge ahead");
        Compare(a - direction * About(travel + 1.0f), sweep, "corner ahead");
    }
    EXPECT_GT(contacts, 15000);
}

TEST_F(FaceLoop, AgreesWithThePlainStepsOverFineGround) {
    // Cells of two faces, of which the sphere's foot and its contact are in few.
    constexpr int across = 6;
    MakeObstacle(2 * across * across);
    for (int world = 0; world < 1000 && !HasFatalFailure(); world++) {
        const Vector place = RandomVector(RandomSize(-2, 4));
        const float cell = RandomSize(-2, 0.5f);
        const float unevenness = cell * RandomSize(-5, 0);
        float heights[across + 1][across + 1];
        for (auto& row : heights) {
            for (float& height : row) {
                height = Random(-unevenness, unevenness);
            }
        }
        for (int face = 0; face < 2 * across * across; face++) {
            constexpr int steps[2][3][2] = {{{0, 0}, {1, 0}, {1, 1}}, {{0, 0}, {1, 1}, {0, 1}}};
            for (int corner = 0; corner < 3; corner++) {
                const int x = face / 2 % across + steps[face % 2][corner][0];
                const int y = face / 2 / across + steps[face % 2][corner][1];
                SetCorner(3 * face + corner, place + Vector(cell * static_cast<float>(x),
                                                            cell * static_cast<float>(y), heights[x][y]));
            }
        }
        for (int sweep = 0; sweep < 4; sweep++) {
            // Above the net or beside it, near a line of it as often as not.
            const auto along = [&] {
                return cell * (Chance(2) ? static_cast<float>(Pick(across + 1)) + Random(-0.02f, 0.02f)
                                         : Random(-1, across + 1));
            };
            const float x = along();
            const Vector origin =
                place + Vector(x, Chance(2) ? x : along(), 1.0f + Random(-1, 1) * RandomSize(-5, 0));
            const float travel = RandomSize(-2.5f, 0.2f);
            Vector direction = Direction();
            direction.z *= RandomSize(-5, 0);
            direction.Normalise();
            Compare(origin, direction * travel, "fine ground");
            Compare(origin, Vector(0, 0, -travel), "fall");
        }
    }
    EXPECT_GT(contacts, 2500);
}

TEST_F(FaceLoop, AgreesWithThePlainStepsOnDegenerateFaces) {
    const float odd[20] = {0.0f, -0.0f, 1.0f,  -1.0f, 1e-45f,  1e-38f,   1e-23f, -1e-19f, 1e-10f, 1e-6f,
                           1e4f, -1e9f, 1e18f, 1e19f, 3.4e38f, INFINITY, NAN,    0.5f,    1e-3f,  1e6f};
    const auto oddValue = [this, &odd] { return odd[Pick(20)]; };
    for (int world = 0; world < 8000 && !HasFatalFailure(); world++) {
        MakeObstacle(1 + Pick(20));
        body.collider->radii = Chance(10) ? Vector(oddValue(), oddValue(), oddValue()) : Vector(2, 2, 5);
        const int corners = obstacle.vertexValueCount / 3;
        for (int i = 0; i < corners; i++) {
            Vector corner = RandomVector(2.0f);
            const Vector earlier = Corner(Pick(i + 1));
            const int kind = Pick(8);
            if (kind == 0) {
                corner = earlier;
            }
            if (kind == 1 && i >= 2) {
                corner = Corner(i - 1) + (Corner(i - 1) - Corner(i - 2)) * Random(-1, 1);
            }
            if (kind == 2) {
                (Chance(3) ? corner.x : Chance(2) ? corner.y : corner.z) = oddValue();
            }
            if (kind == 3) {
                corner = earlier + RandomVector(RandomSize(-30, -3));
            }
            if (kind == 4) {
                corner = RandomVector(RandomSize(-30, 30));
            }
            if (kind == 5 && i % 3 == 2) {
                SetCorner(i - 1, RandomVector(RandomSize(9, 10)));
                corner = RandomVector(RandomSize(9, 10));
            }
            SetCorner(i, corner);
        }
        Vector origin = RandomVector(2.0f);
        Vector sweep = RandomVector(RandomSize(-3, 1));
        if (Chance(10)) {
            origin.y = oddValue();
        }
        if (Chance(10)) {
            sweep.z = oddValue();
        }
        Compare(origin, sweep, "degenerate");
    }
    EXPECT_GT(contacts, 1000);
}

}  // namespace
