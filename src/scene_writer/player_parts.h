#pragma once

#include "scene_writer/scene_parts.h"

namespace engine {

/// Height of the centre of a body that stands, above its floor.
inline constexpr float standingHeight = 5.05f;

/// A player who walks: a body, a camera at its eyes that nods while they walk, and a place to start from.
struct ScenePlayer {
    int index = 0;                    ///< as in the settings, from 0
    Float3 feet;                      ///< where the player stands at the beginning
    float heading = 0.0f;             ///< radians from +y, counter-clockwise as seen from above
    Float3 colour{0.3f, 0.4f, 0.6f};  ///< of the body, as other players see it
    float nod = 0.08f;                ///< how far the eyes go up and down with each step; 0 for no tracks
};

/// Makes the objects "Eyes", "Body" and "Start" with the player's index after each name. They form the
/// group of the player's index. The settings still need a *PLAYERCOUNT and the player's *PLAYERVIEWPORT.
SceneParts MakePlayer(const ScenePlayer& player);

}  // namespace engine
