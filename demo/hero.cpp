#include "hero.h"

#include <numbers>

#include "scene_writer/player_parts.h"
#include "scene_writer/shapes.h"

// The figure is modelled at the origin, facing -y as its own Y axis demands, with its feet at height 0. It
// is turned to its heading and put down there; the spawn point brings it to its place.

namespace {

constexpr Float3 bodyCentre{0.0f, 0.0f, engine::standingHeight};
constexpr Float3 skin{0.86f, 0.66f, 0.52f};
constexpr Float3 hair{0.3f, 0.2f, 0.12f};
constexpr Float3 leather{0.28f, 0.19f, 0.13f};

constexpr int stepFrames = 56;  ///< frames of two steps
constexpr float pi = std::numbers::pi_v<float>;

/// A point of the swing: 0 at its beginning, its middle and its end.
float Swing(int frame) {
    return std::sin(2.0f * pi * static_cast<float>(frame) / stepFrames);
}

/// Small turns about one axis that add up to a swing to either side and back: so the track ends where it
/// began, and rewinding it is not seen.
engine::SceneKeyTrack SwingTrack(Float3 axis, float angle) {
    engine::SceneKeyTrack track;
    for (int frame = 0; frame < stepFrames; frame++) {
        engine::SceneKey key;
        key.axis = axis;
        key.angle = angle * (Swing(frame + 1) - Swing(frame));
        track.push_back(key);
    }
    return track;
}

/// Two small nods up and down, one for each step.
engine::SceneKeyTrack NodTrack(float height) {
    engine::SceneKeyTrack track;
    const auto lift = [height](int frame) { return height * std::fabs(Swing(frame)); };
    for (int frame = 0; frame < stepFrames; frame++) {
        engine::SceneKey key;
        key.translation = {0.0f, 0.0f, lift(frame + 1) - lift(frame)};
        track.push_back(key);
    }
    return track;
}

/// Tracks for walking forward, backward and sideways. In the parent's axes: X points to the figure's left.
std::vector<engine::SceneKeyTrack> LimbTracks(float angle) {
    return {SwingTrack({1.0f, 0.0f, 0.0f}, angle), SwingTrack({1.0f, 0.0f, 0.0f}, -0.7f * angle),
            SwingTrack({0.0f, 1.0f, 0.0f}, 0.4f * angle)};
}

SceneObject MakeLimb(const std::vector<engine::LathePoint>& profile, Float3 top, Float3 colour) {
    SceneObject limb = engine::MakeLathe("", top, profile, 8);
    Paint(limb, colour);
    return limb;
}

SceneObject MakeLeg(const Hero& hero, float side) {
    const Float3 hip{0.52f * side, 0.0f, 4.4f};
    SceneObject leg = MakeLimb({{0.0f, -3.9f}, {0.34f, -3.8f}, {0.4f, -2.0f}, {0.5f, -0.3f}, {0.0f, 0.3f}},
                               hip, hero.trousers);
    SceneObject shoe = engine::MakeBall("", {hip.x, -0.25f, 0.32f}, 0.5f, 5, 8);
    Stretch(shoe, {hip.x, -0.25f, 0.0f}, {0.85f, 1.6f, 0.9f});
    Paint(shoe, leather);
    Append(leg, shoe);
    return leg;
}

SceneObject MakeArm(const Hero& hero, float side) {
    const Float3 shoulder{1.22f * side, 0.0f, 7.15f};
    SceneObject arm =
        MakeLimb({{0.0f, -2.2f}, {0.24f, -2.1f}, {0.28f, -1.2f}, {0.36f, -0.2f}, {0.0f, 0.35f}}, shoulder,
                 hero.shirt);
    SceneObject hand = engine::MakeBall("", {shoulder.x, 0.0f, shoulder.z - 2.5f}, 0.3f, 5, 7);
    Paint(hand, skin);
    Append(arm, hand);
    return arm;
}

SceneObject MakeTorso(const Hero& hero) {
    SceneObject torso = MakeLimb({{0.0f, 3.9f}, {0.95f, 4.2f}, {0.98f, 4.7f}}, {}, hero.trousers);
    Append(torso, MakeLimb({{1.0f, 4.65f}, {1.0f, 4.9f}}, {}, leather));
    Append(torso, MakeLimb({{0.96f, 4.85f}, {0.92f, 5.6f}, {1.12f, 6.7f}, {1.05f, 7.3f}, {0.45f, 7.65f}},
                           {}, hero.shirt));
    Stretch(torso, {}, {1.0f, 0.62f, 1.0f});
    Append(torso, MakeLimb({{0.4f, 7.5f}, {0.38f, 8.0f}}, {}, skin));
    return torso;
}

/// The first two vertices are the eye and what it looks at. The eye is inside the face, whose front the
/// player doesn't see from there.
SceneObject MakeHead() {
    constexpr Float3 middle{0.0f, 0.0f, 8.45f};
    SceneObject head = engine::MakeCamera("", {0.0f, -0.6f, 8.55f}, {0.0f, -1.6f, 8.5f});
    SceneObject face = engine::MakeBall("", middle, 0.78f, 8, 10);
    Stretch(face, middle, {0.9f, 1.0f, 1.12f});
    Paint(face, skin);
    Append(head, face);
    SceneObject scalp = engine::MakeBall("", middle + Float3{0.0f, 0.16f, 0.16f}, 0.8f, 8, 10);
    Stretch(scalp, middle, {0.96f, 1.0f, 1.08f});
    Paint(scalp, hair);
    Append(head, scalp);
    for (const float side : {-1.0f, 1.0f}) {
        SceneObject eye = engine::MakeBall("", {0.27f * side, -0.66f, 8.56f}, 0.12f, 4, 6);
        Paint(eye, {0.1f, 0.1f, 0.12f});
        Append(head, eye);
    }
    SceneObject nose = engine::MakeBall("", {0.0f, -0.8f, 8.36f}, 0.11f, 4, 6);
    Paint(nose, skin * 0.95f);
    Append(head, nose);
    SceneObject mouth = engine::MakeBall("", {0.0f, -0.68f, 8.08f}, 0.16f, 4, 6);
    Stretch(mouth, {0.0f, -0.68f, 8.08f}, {1.2f, 0.6f, 0.3f});
    Paint(mouth, {0.55f, 0.25f, 0.22f});
    Append(head, mouth);
    return head;
}

}  // namespace

void AddHero(World& world, const Hero& hero) {
    const std::string number = std::to_string(hero.player);
    const float turn = hero.heading + pi;  // it was modelled facing south
    const Float3 xAxis{std::cos(turn), std::sin(turn), 0.0f};
    const Float3 yAxis{-std::sin(turn), std::cos(turn), 0.0f};
    const auto put = [&](SceneObject part, const std::string& name, Float3 pivot,
                         std::vector<engine::SceneKeyTrack> tracks, std::vector<std::string> attributes) {
        part.name = name + number;
        part.keyTracks = std::move(tracks);
        TurnAboutZ(part, {}, turn);
        const Float3 turnedPivot{pivot.x * xAxis.x + pivot.y * yAxis.x,
                                 pivot.x * xAxis.y + pivot.y * yAxis.y, pivot.z};
        AddMarkers(part, turnedPivot, xAxis, yAxis);
        world.Add(std::move(part), Role::Moving, std::move(attributes));
    };

    // The members come before the body: so each has done its own motion by the time the body takes it
    // along. The number of the group must be the player's. Members are no obstacles, or the body would bump
    // into its own legs.
    const std::vector<std::string> member{"*GROUPMEMBER " + number, "*NOCOLLIDER"};
    for (const float side : {-1.0f, 1.0f}) {
        const std::string which = side > 0.0f ? "Left" : "Right";
        put(MakeLeg(hero, side), which + "Leg", {0.52f * side, 0.0f, 4.4f}, LimbTracks(0.55f * side),
            member);
        put(MakeArm(hero, side), which + "Arm", {1.22f * side, 0.0f, 7.15f}, LimbTracks(-0.4f * side),
            member);
    }
    std::vector<std::string> camera = member;
    camera.push_back("*CAMERAOBJECT " + number + " 0 1");
    put(MakeHead(), "Head", {0.0f, 0.0f, 8.2f}, {NodTrack(0.1f), NodTrack(0.1f), NodTrack(0.05f)}, camera);

    // A gravity of more than 0.5 brings a walker back to the ground in every frame, which makes the walk
    // smooth. The body's own tracks hold still, but they are what shows that a step is under way. It stands
    // on its own list, so that they are rewound together with the limbs'.
    const engine::SceneKeyTrack still(stepFrames);
    put(MakeTorso(hero), "Hero", bodyCentre, {still, still, still},
        {"*GROUPMEMBER " + number, "*GROUPPARENT " + number, "*PLAYEROBJECT " + number, "*COLLIDER",
         "*PHYSICS 0.55 0 0.5"});

    // After the body, since it looks for the player's object. Its first vertex is the place of the centre.
    SceneObject spawn =
        engine::MakeCamera("Start" + number, hero.start + bodyCentre, hero.start + bodyCentre);
    AddMarkers(spawn, hero.start + bodyCentre);
    world.Add(spawn, Role::Moving, {"*PLAYERSPAWNPOINT " + number, "*INVISIBLE", "*NOCOLLIDER"});
}
