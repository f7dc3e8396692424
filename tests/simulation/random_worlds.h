#pragma once

#include <cmath>
#include <cstdint>
#include <random>

#include "simulation/player_control.h"
#include "simulation/test_world.h"

/// A seeded world of terrain, boxes, bodies, groups, key tracks and players. The numbers come straight from
/// the generator, whose sequence every library shares.
struct RandomWorld {
    Scene scene;
    PlayerControl control;
    std::mt19937 generator;

    explicit RandomWorld(std::uint32_t seed) : generator(seed) {}

    std::uint32_t Pick(std::uint32_t count) { return static_cast<std::uint32_t>(generator()) % count; }
    bool Chance(std::uint32_t oneIn) { return Pick(oneIn) == 0; }
    float Random(float low, float high) {
        return low + (high - low) * (static_cast<float>(generator() >> 8) / 16777216.0f);
    }
    Vector RandomVector(float size) {
        const float x = Random(-size, size);
        const float y = Random(-size, size);
        return Vector(x, y, Random(-size, size));
    }

    /// Hills of cells x cells squares around the origin.
    void AddTerrain(std::int32_t cells, float cellSize, float height) {
        scene.AddObjects(1);
        Object& object = scene.objects[scene.objectCount - 1];
        object.ResizeVertices((cells + 1) * (cells + 1));
        object.ResizeFaces(2 * cells * cells);
        std::int32_t value = 0;
        for (std::int32_t y = 0; y <= cells; y++) {
            for (std::int32_t x = 0; x <= cells; x++) {
                const std::int32_t vertex = y * (cells + 1) + x;
                const auto place = [cells, cellSize](std::int32_t i) {
                    return (static_cast<float>(i) - 0.5f * static_cast<float>(cells)) * cellSize;
                };
                object.SetVertex(Vector(place(x), place(y), Random(0, height)), vertex);
                if (x == cells || y == cells) continue;
                for (const std::int32_t corner : {vertex, vertex + 1, vertex + cells + 2, vertex,
                                                  vertex + cells + 2, vertex + cells + 1}) {
                    object.faces[value++] = corner;
                }
            }
        }
        object.centreVertex = (cells / 2) * (cells + 2);
        object.ComputeRadius();
    }

    /// A box seen from outside.
    void AddBox(Vector centre, Vector half) {
        scene.AddObjects(1);
        Object& object = scene.objects[scene.objectCount - 1];
        object.ResizeVertices(9);
        object.ResizeFaces(12);
        for (std::int32_t i = 0; i < 8; i++) {
            const Vector sign((i & 1) ? 1.0f : -1.0f, (i & 2) ? 1.0f : -1.0f, (i & 4) ? 1.0f : -1.0f);
            object.SetVertex(centre + half * sign, i);
        }
        object.SetVertex(centre, 8);
        object.centreVertex = 8;
        const std::int32_t corners[36] = {0, 2, 1, 1, 2, 3, 4, 5, 6, 5, 7, 6, 0, 1, 4, 1, 5, 4,
                                          2, 6, 3, 3, 6, 7, 0, 4, 2, 2, 4, 6, 1, 3, 5, 3, 7, 5};
        std::copy_n(corners, 36, object.faces.get());
        object.ComputeRadius();
    }
};
