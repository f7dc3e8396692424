#include <cmath>
#include <cstring>
#include <limits>
#include <random>

#include "simulation/plain_collision.h"
#include "simulation/test_world.h"

// The face loop leaves out what can't change its result. Here it runs beside the plain steps on many seeded
// worlds, with an eye on the limits, where leaving out a face by mistake would show.

namespace {

/// The same bits, or both not a number: which one is up to the compiler.
bool Same(float a, float b) {
    return std::memcmp(&a, &b, sizeof a) == 0 || (std::isnan(a) && std::isnan(b));
}

bool Same(Vector a, Vector b) {
    return Same(a.x, b.x) && Same(a.y, b.y) && Same(a.z, b.z);
}

bool Same(const Collider& a, const Collider& b) {
    return Same(a.sweepVelocity, b.sweepVelocity) && Same(a.sweepOrigin, b.sweepOrigin) &&
           Same(a.radii, b.radii) && Same(a.safePosition, b.safePosition) &&
           a.foundCollision == b.foundCollision && a.airborne == b.airborne &&
           a.edgeContact == b.edgeContact && Same(a.nearestDistance, b.nearestDistance) &&
           Same(a.nearestSpherePoint, b.nearestSpherePoint) &&
           Same(a.nearestContactPoint, b.nearestContactPoint) && a.recursionDepth == b.recursionDepth;
}

struct Comparison {
    std::mt19937 generator{20};
    Object body;
    Object obstacle;
    long contacts = 0;

    Comparison() {
        body.MakeCollider();
        obstacle.radius = std::numeric_limits<float>::infinity();
    }
    float Random(float low, float high) {
        return std::uniform_real_distribution<float>(low, high)(generator);
    }
    int Pick(int count) { return std::uniform_int_distribution<int>(0, count - 1)(generator); }
    /// Of a size anywhere between 10 to the powers of `low` and `high`.
    float RandomSize(float low, float high) { return std::pow(10.0f, Random(low, high)); }
    Vector RandomVector(float size) {
        return Vector(Random(-size, size), Random(-size, size), Random(-size, size));
    }
    Vector RandomDirection() {
        Vector result = RandomVector(1.0f);
        result.Normalise();
        return result;
    }
    /// The value or a neighbour of it, a few roundings away.
    float About(float value) {
        const int steps = Pick(9) - 4;
        for (int i = 0; i < std::abs(steps); i++) {
            value = std::nextafter(value, steps < 0 ? -1e30f : 1e30f);
        }
        return value;
    }
    void MakeObstacle(int faceCount) {
        obstacle.ResizeVertices(3 * faceCount);
        obstacle.ResizeFaces(faceCount);
        for (int i = 0; i < 3 * faceCount; i++)
            obstacle.faces[i] = i;
    }
    /// In ellipsoid space.
    void SetCorner(int index, Vector corner) { obstacle.SetVertex(corner * body.collider->radii, index); }
    Vector Corner(int index) { return VertexOf(obstacle, index) / body.collider->radii; }

    void Compare(Vector origin, Vector sweep, const char* what) {
        Collider& collider = *body.collider;
        collider.sweepOrigin = origin;
        collider.sweepVelocity = sweep;
        collider.foundCollision = 0;
        collider.edgeContact = static_cast<std::uint8_t>(Pick(2));
        collider.airborne = 1;
        collider.nearestDistance = -1.0f;
        if (Pick(4) == 0) {
            // An earlier obstacle was met.
            collider.foundCollision = 1;
            collider.nearestDistance = Random(0.0f, sweep.Length());
        }
        const Collider before = collider;
        PlainCollideWithObject(body, obstacle);
        const Collider plain = collider;
        collider = before;
        body.CollideWithObject(obstacle);
        ASSERT_TRUE(Same(plain, collider)) << what;
        contacts += 1 - plain.airborne;
    }
};

TEST(FaceLoop, AgreesWithThePlainStepsInOrdinaryWorlds) {
    Comparison comparison;
    for (int world = 0; world < 2500 && !testing::Test::HasFatalFailure(); world++) {
        comparison.body.collider->radii =
            comparison.Pick(2) == 0 ? Vector(2, 2, 5)
                                    : Vector(comparison.RandomSize(-1, 2), 1, comparison.RandomSize(-1, 2));
        comparison.MakeObstacle(1 + comparison.Pick(60));
        const Vector place = comparison.RandomVector(comparison.RandomSize(-1, 4));
        const float size = comparison.RandomSize(-1.5f, 1.5f);
        const int corners = comparison.obstacle.vertexValueCount / 3;
        const bool flat = comparison.Pick(2) == 0;
        for (int i = 0; i < corners; i++) {
            const Vector around = i % 3 == 0 ? Vector() : comparison.Corner(i - i % 3) - place;
            Vector corner =
                i % 3 == 0 ? comparison.RandomVector(2.5f) : around + comparison.RandomVector(size);
            if (flat) corner.z = 0.0f;
            comparison.SetCorner(i, place + corner);
        }
        for (int sweep = 0; sweep < 5; sweep++) {
            Vector origin = comparison.RandomVector(2.5f);
            if (flat) origin.z = comparison.Random(0.9f, 1.1f);
            comparison.Compare(place + origin, comparison.RandomVector(comparison.RandomSize(-2, 0.5f)),
                               "ordinary");
        }
    }
    // The worlds really are full of contacts.
    EXPECT_GT(comparison.contacts, 3000);
}

TEST(FaceLoop, AgreesWithThePlainStepsAtTheLimits) {
    Comparison comparison;
    comparison.MakeObstacle(2);
    // The second face is the last one of the object, which never goes through the filter.
    for (int corner = 3; corner < 6; corner++)
        comparison.SetCorner(corner, Vector(1e4f, corner, 1.0f));
    for (int world = 0; world < 12000 && !testing::Test::HasFatalFailure(); world++) {
        const Vector place = comparison.RandomVector(comparison.RandomSize(-2, 5));
        const float size = comparison.RandomSize(-1.5f, 1.5f);
        for (int corner = 0; corner < 3; corner++) {
            comparison.SetCorner(corner, place + comparison.RandomVector(size));
        }
        if (comparison.Pick(3) == 0) {
            // A sliver, whose normal may be anything.
            const Vector edge = comparison.Corner(1) - comparison.Corner(0);
            comparison.SetCorner(2, comparison.Corner(0) + edge * comparison.Random(-1, 2) +
                                        comparison.RandomVector(comparison.RandomSize(-8, -1)));
        }
        const Vector a = comparison.Corner(0);
        const Vector b = comparison.Corner(1);
        const Vector c = comparison.Corner(2);
        Vector normal = (b - a).Cross(c - a);
        normal.Normalise();
        const float travel = comparison.RandomSize(-2, 0.5f);
        const Vector direction = comparison.Pick(2) == 0 ? -normal : comparison.RandomDirection();
        const Vector sweep = direction * travel;
        const Vector centroid = (a + b + c) / 3.0f;
        const float radius = std::max({centroid.Distance(a), centroid.Distance(b), centroid.Distance(c)});

        // The sphere that bounds the face, just within reach and just out of it.
        comparison.Compare(
            centroid + comparison.RandomDirection() * comparison.About(radius + travel + 1.0f), sweep,
            "bound");
        // The face at the very end of the sweep, or touched already, or just sunk into.
        const float weight = comparison.Random(-0.2f, 1.2f);
        const Vector onFace = a + (b - a) * weight + (c - a) * comparison.Random(-0.2f, 1.2f - weight);
        comparison.Compare(onFace + normal - direction * comparison.About(travel), sweep, "end of sweep");
        comparison.Compare(onFace + normal * comparison.About(1.0f), sweep, "touch");
        comparison.Compare(onFace + normal * comparison.About(1.0f - travel), sweep, "sunk");
        comparison.Compare(onFace - normal * comparison.About(1.0f), sweep, "from behind");
        const float lowering = comparison.RandomSize(-7, -2);
        const Vector grazing = (b - a) * (travel / b.Distance(a)) - normal * lowering;
        comparison.Compare(onFace + normal * (1.0f + lowering * comparison.Random(0, 1)) - grazing * 0.5f,
                           grazing, "grazing");
        // An edge or a corner, passed at the limit of reach or met at the end of the sweep.
        Vector aside = (b - a).Cross(direction);
        aside.Normalise();
        const Vector onEdge = a + (b - a) * comparison.Random(-0.1f, 1.1f);
        comparison.Compare(onEdge + aside * comparison.About(0.99f) - sweep * comparison.Random(0, 2),
                           sweep, "edge passed");
        comparison.Compare(onEdge - direction * comparison.About(travel + 1.0f), sweep, "edge ahead");
        comparison.Compare(a - direction * comparison.About(travel + 1.0f), sweep, "corner ahead");
    }
    EXPECT_GT(comparison.contacts, 15000);
}

TEST(FaceLoop, AgreesWithThePlainStepsOnDegenerateFaces) {
    Comparison comparison;
    const float odd[] = {0.0f, -0.0f, 1.0f,  -1.0f, 1e-45f,  1e-38f,   1e-23f, -1e-19f, 1e-10f, 1e-6f,
                         1e4f, -1e9f, 1e18f, 1e19f, 3.4e38f, INFINITY, NAN,    0.5f,    1e-3f,  1e6f};
    const auto oddValue = [&comparison, &odd] {
        return odd[comparison.Pick(static_cast<int>(std::size(odd)))];
    };
    for (int world = 0; world < 8000 && !testing::Test::HasFatalFailure(); world++) {
        comparison.MakeObstacle(1 + comparison.Pick(20));
        comparison.body.collider->radii =
            comparison.Pick(10) == 0 ? Vector(oddValue(), oddValue(), oddValue()) : Vector(2, 2, 5);
        const int corners = comparison.obstacle.vertexValueCount / 3;
        for (int i = 0; i < corners; i++) {
            Vector corner = comparison.RandomVector(2.0f);
            switch (comparison.Pick(8)) {
                case 0:  // the same as an earlier corner
                    corner = comparison.Corner(comparison.Pick(i + 1));
                    break;
                case 1:  // on a line with two earlier ones
                    if (i >= 2) {
                        corner = comparison.Corner(i - 1) +
                                 (comparison.Corner(i - 1) - comparison.Corner(i - 2)) *
                                     comparison.Random(-1, 1);
                    }
                    break;
                case 2:
                    (comparison.Pick(3) == 0   ? corner.x
                     : comparison.Pick(2) == 0 ? corner.y
                                               : corner.z) = oddValue();
                    break;
                case 3:  // next to an earlier corner
                    corner = comparison.Corner(comparison.Pick(i + 1)) +
                             comparison.RandomVector(comparison.RandomSize(-30, -3));
                    break;
                case 4:
                    corner = comparison.RandomVector(comparison.RandomSize(-30, 30));
                    break;
                default:
                    break;
            }
            comparison.SetCorner(i, corner);
        }
        Vector origin = comparison.RandomVector(2.0f);
        Vector sweep = comparison.RandomVector(comparison.RandomSize(-3, 1));
        if (comparison.Pick(10) == 0) origin.y = oddValue();
        if (comparison.Pick(10) == 0) sweep.z = oddValue();
        comparison.Compare(origin, sweep, "degenerate");
    }
    EXPECT_GT(comparison.contacts, 1000);
}

}  // namespace
