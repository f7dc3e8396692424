#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <numbers>
#include <string>

#include "scene/scene.h"
#include "simulation/player_control.h"

inline constexpr float standing = 5.05f;  ///< height of a body's centre above the level ground under it

/// A demo world, loaded without a window and stepped frame by frame. Its folder is the working directory
/// meanwhile.
struct DemoWorld {
    std::filesystem::path before = std::filesystem::current_path();
    Scene scene;
    PlayerControl control;

    DemoWorld(const std::string& name, int players) {
        std::filesystem::current_path(std::filesystem::path(DEMO_FOLDER) / name);
        scene.AddPlayers(players);
        EXPECT_TRUE(scene.LoadMesh("data\\courtyard.bin"));
        scene.StepWorld();  // the spawn points
    }
    ~DemoWorld() { std::filesystem::current_path(before); }

    Object& Body(int player) { return scene.objects[scene.players[player].playerObject]; }

    static Vector Marker(const Object& object, int vertex) {
        Vector place;
        object.GetVertex(place, vertex);
        return place;
    }
    Vector Place(int player) { return Marker(Body(player), Body(player).centreVertex); }

    /// Radians, counter-clockwise from +x.
    float Heading(int player) {
        const Object& body = Body(player);
        const Vector forward = Marker(body, body.centreVertex) - Marker(body, body.yAxisVertex);
        return std::atan2(forward.y, forward.x);
    }

    void Face(int player, float x, float y) {
        const Vector place = Place(player);
        const float wanted = std::atan2(y - place.y, x - place.x);
        control.TurnPlayer(scene, turnRight,
                           std::remainder(Heading(player) - wanted, 2.0f * std::numbers::pi_v<float>),
                           player);
    }

    /// One frame, in which the player asks for one kind of move, or for none with -1.
    void Step(int player, int move) {
        for (const int action : {moveForward, moveBackward, moveSideways}) {
            if (action == move) {
                control.MovePlayer(scene, action, 1.0f, player);
            } else {
                control.StopPlayerAction(scene, player, action);
            }
        }
        scene.StepWorld();
    }

    void Rest(int player, int frames) {
        for (int i = 0; i < frames; i++) {
            Step(player, -1);
        }
    }

    /// Walks straight towards the place; false if it isn't reached in three times the frames that it takes.
    bool Walk(int player, float x, float y) {
        constexpr float slowest = 0.08f / 3.0f;
        const Vector from = Place(player);
        const int frames = static_cast<int>(std::hypot(x - from.x, y - from.y) / slowest);
        for (int i = 0; i < frames; i++) {
            const Vector place = Place(player);
            if (std::hypot(x - place.x, y - place.y) < 0.5f) {
                return true;
            }
            Face(player, x, y);
            Step(player, moveForward);
        }
        const Vector place = Place(player);
        ADD_FAILURE() << "on the way to " << x << ", " << y << " it stands at " << place.x << ", "
                      << place.y << ", " << place.z;
        return false;
    }

    float FootHeight(int player) { return Place(player).z - standing; }
};
