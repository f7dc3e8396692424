#include "scene_writer/player_parts.h"

#include <cmath>
#include <numbers>

#include "scene_writer/refusal.h"
#include "scene_writer/shapes.h"

namespace engine {

namespace {

constexpr float eyeHeight = 8.5f;
constexpr int stepFrames = 40;

/// Up and down once, and no further at its end than at its beginning.
SceneKeyTrack NodTrack(float height) {
    SceneKeyTrack track(stepFrames);
    const auto lift = [height](int frame) {
        return height * std::sin(std::numbers::pi_v<float> * static_cast<float>(frame) / stepFrames);
    };
    for (int frame = 0; frame < stepFrames; frame++) {
        track[static_cast<std::size_t>(frame)].translation.z = lift(frame + 1) - lift(frame);
    }
    return track;
}

}  // namespace

SceneParts MakePlayer(const ScenePlayer& player) {
    if (player.index < 0) {
        Refuse("player " + std::to_string(player.index), "players count from 0");
    }
    const std::string number = std::to_string(player.index);
    const Float3 feet = player.feet;
    // Forward is minus the Y axis.
    const Float3 forward{-std::sin(player.heading), std::cos(player.heading), 0.0f};
    const Float3 yAxis{-forward.x, -forward.y, 0.0f};
    const Float3 xAxis{-forward.y, forward.x, 0.0f};
    const Float3 centre{feet.x, feet.y, feet.z + standingHeight};
    const Float3 eye{feet.x, feet.y, feet.z + eyeHeight};

    SceneObject eyes = MakeCamera("Eyes" + number, eye, {eye.x + forward.x, eye.y + forward.y, eye.z});
    AddMarkers(eyes, eye, xAxis, yAxis);
    SceneObject body = MakeBox("Body" + number, {feet.x - 1.2f, feet.y - 0.7f, feet.z + 0.1f},
                               {feet.x + 1.2f, feet.y + 0.7f, feet.z + 9.5f});
    Paint(body, player.colour);
    TurnAboutZ(body, centre, player.heading);
    AddMarkers(body, centre, xAxis, yAxis);
    if (player.nod != 0.0f) {
        eyes.keyTracks.assign(3, NodTrack(player.nod));
        // The body holds still, but its tracks are what shows that a step is under way.
        body.keyTracks.assign(3, SceneKeyTrack(stepFrames));
    }
    const Float3 place{centre.x, centre.y, centre.z + 0.1f};
    SceneObject start = MakeCamera("Start" + number, place, place);
    AddMarkers(start, place);

    SceneParts parts;
    parts.Add(eyes, {"*CAMERAOBJECT " + number + " 0 1", "*GROUPMEMBER " + number, "*NOCOLLIDER"});
    parts.Add(body, {"*PLAYEROBJECT " + number, "*COLLIDER", "*PHYSICS 0.55 0 0.5",
                     "*GROUPMEMBER " + number, "*GROUPPARENT " + number});
    parts.Add(start, {"*PLAYERSPAWNPOINT " + number, "*INVISIBLE", "*NOCOLLIDER"});
    return parts;
}

}  // namespace engine
