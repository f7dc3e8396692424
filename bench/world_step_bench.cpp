#include <benchmark/benchmark.h>

#include "allocations.h"
#include "scene/scene.h"
#include "simulation/player_control.h"
#include "worlds.h"

// The world step. One iteration is one frame; "allocations" is their number in it.

namespace {

constexpr std::int64_t triangleCount = 20000;
constexpr float restHeight = 5.2f;

void Step(benchmark::State& state, Scene& scene, std::int64_t bodies,
          void (*request)(Scene&, std::int64_t frame)) {
    for (int frame = 0; frame < 50; frame++) {  // until all are at rest, where they come to rest at all
        scene.StepWorld();
    }
    const std::int64_t before = AllocationCount();
    std::int64_t frame = 0;
    for (auto _ : state) {
        request(scene, frame++);
        scene.StepWorld();
    }
    const auto frames = static_cast<double>(state.iterations());
    state.counters["allocations"] = static_cast<double>(AllocationCount() - before) / frames;
    state.counters["per body"] = static_cast<double>(bodies);
}

template <typename Action>
void ForEachBody(Scene& scene, Action action) {
    for (std::int32_t i = 0; i < scene.objectCount; i++) {
        if (scene.objects[i].physics != nullptr) {
            action(*scene.objects[i].physics);
        }
    }
}

void StandStill(Scene&, std::int64_t) {}

/// To and fro, so that nobody leaves the ground.
void Walk(Scene& scene, std::int64_t frame) {
    const float speed = frame / 100 % 2 == 0 ? 0.05f : -0.05f;
    ForEachBody(scene, [speed](Physics& physics) {
        physics.velocity.x = speed;
        physics.velocity.y = -speed;
    });
}

/// Up into the air, and down again by gravity in some forty frames.
void Jump(Scene& scene, std::int64_t frame) {
    if (frame % 40 == 0) {
        ForEachBody(scene, [](Physics& physics) { physics.velocity.z = 2.0f; });
    }
}

/// No gravity and high up: nothing but the bound of each object is met.
void Float(Scene& scene, std::int64_t) {
    ForEachBody(scene, [](Physics& physics) {
        physics.gravity = 0.0f;
        physics.velocity = Vector(0.05f, 0.0f, 0.0f);
    });
}

void Bodies(benchmark::State& state, void (*request)(Scene&, std::int64_t frame)) {
    Scene scene;
    MakeWorld(scene, state.range(0), triangleCount, 100, restHeight);
    Step(state, scene, state.range(0), request);
}

void bodies_with_nothing_near(benchmark::State& state) {
    Scene scene;
    MakeWorld(scene, state.range(0), triangleCount, 100, 5000.0f);
    Float(scene, 0);
    Step(state, scene, state.range(0), Float);
    // Each body looks at every other object once.
    state.counters["per pair"] = static_cast<double>(state.range(0) * (scene.objectCount - 1));
}

/// One body at rest on one object of so many triangles: the face loop, three levels of it a frame.
void faces_under_a_body(benchmark::State& state) {
    Scene scene;
    MakeWorld(scene, 1, state.range(0), 1, restHeight);
    Step(state, scene, 1, StandStill);
}

/// The face loop alone: one sweep of a body against one object.
void tested_faces(benchmark::State& state) {
    Scene scene;
    MakeWorld(scene, 1, state.range(0), 1, restHeight);
    Object& body = scene.objects[scene.objectCount - 1];
    Collider& collider = *body.collider;
    Vector centre;
    body.GetVertex(centre, body.centreVertex);
    collider.sweepOrigin = centre / collider.radii;
    collider.sweepVelocity = Vector(0.02f, 0.0f, -0.05f);
    for (auto _ : state) {
        collider.foundCollision = 0;
        collider.nearestDistance = -1.0f;
        body.CollideWithObject(scene.objects[0]);
        benchmark::DoNotOptimize(collider.nearestDistance);
    }
    state.counters["per face"] = scene.objects[0].faceValueCount / 3;
}

/// One parent that turns and moves, and members without a collider, each with a key track that plays.
void group_members(benchmark::State& state) {
    Scene scene;
    MakeWorld(scene, 50, 200, 1, 5000.0f);
    scene.AddGroups(1);
    const std::int32_t parent = 1;
    for (std::int32_t i = 1; i < scene.objectCount; i++) {
        Object& object = scene.objects[i];
        object.collider = nullptr;
        object.physics = nullptr;
        object.ResizeKeyTracks(1);
        scene.groups[0].Add(i);
        for (std::int32_t key = 0; key < 100; key++) {
            object.keyTracks[0].keyAngles[key] = 0.01f;
            object.keyTracks[0].keyAxes[key] = Vector(0, 0, 1);
        }
    }
    scene.objects[parent].groupParent = 0;
    Step(state, scene, 50, [](Scene& world, std::int64_t) {
        world.objects[1].transform.Rotate(0.01f, 0, 0, 1);
        world.objects[1].activeKeyTrack = 0;
    });
}

BENCHMARK_CAPTURE(Bodies, rest, StandStill)->Name("bodies_at_rest")->RangeMultiplier(4)->Range(4, 256);
BENCHMARK_CAPTURE(Bodies, walking, Walk)->Name("bodies_walking")->RangeMultiplier(4)->Range(4, 256);
BENCHMARK_CAPTURE(Bodies, jumping, Jump)->Name("bodies_jumping")->RangeMultiplier(4)->Range(4, 256);
BENCHMARK(bodies_with_nothing_near)->RangeMultiplier(4)->Range(4, 256);
BENCHMARK(faces_under_a_body)->RangeMultiplier(10)->Range(100, 100000);
BENCHMARK(tested_faces)->RangeMultiplier(10)->Range(100, 100000);
BENCHMARK(group_members);

}  // namespace
