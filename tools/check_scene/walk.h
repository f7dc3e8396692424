#pragma once

#include <cstdint>
#include <vector>

#include "math/vector.h"

struct Scene;

/// How far players get on foot over a world in which nothing else moves.
struct Walks {
    /// The middle of a square of floor with room for a body above it.
    struct Square {
        Vector place;
        bool isReached = false;  ///< by any player
    };
    struct Player {
        std::int32_t index = 0;
        std::size_t reached = 0;  ///< squares of the floor
        bool fallsOut = false;
        bool fallsWithinWalls = false;  ///< and that between walls, where a floor is missing
        Vector edge;                    ///< body's middle where it begins to fall out of the world
    };
    /// What keeps players from a larger part of the floor.
    struct Barrier {
        Vector place;         ///< on the floor before it
        float step = 0.0f;    ///< height that is to be climbed; 0 where only a smaller body gets through
        double share = 0.0f;  ///< of the floor, beyond it
    };
    float side = 0.0f;  ///< of the squares, in world units
    std::vector<Square> floor;
    std::vector<Player> players;  ///< those who walk
    std::vector<Barrier> barriers;
    bool isWhole = true;      ///< false if a walk was broken off, as it took too many steps
    bool isTooLarge = false;  ///< nobody walks, as the world has too many triangles
};

/// Floods the floor from each player's start with the engine's own sweeps: freely where nothing is in the
/// way, and else frame by frame, pressing on, climbing and falling as a player does. Bodies, members of
/// groups and what they carry are left out: they move, and don't bar a way for ever.
Walks WalkThrough(const Scene& scene);
