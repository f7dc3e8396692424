#include "import_scene/animations.h"

#include <assimp/scene.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "import_scene/players.h"
#include "platform/files.h"

namespace {

/// Half an hour at 50 frames a second; what is longer is cut.
constexpr int mostKeys = 90000;
constexpr int mostTracks = 1000;

/// Between two keys of a channel, as the time has it.
template <typename Key>
struct Between {
    const Key* from;
    const Key* to;
    float share;
};

template <typename Key>
Between<Key> FindKeys(const Key* keys, unsigned count, double time) {
    const Key* after = std::upper_bound(keys, keys + count, time,
                                        [](double at, const Key& key) { return at < key.mTime; });
    if (after == keys) {
        return {keys, keys, 0.0f};
    }
    if (after == keys + count) {
        return {after - 1, after - 1, 0.0f};
    }
    const Key* before = after - 1;
    const double length = after->mTime - before->mTime;
    return {before, after, length > 0.0 ? static_cast<float>((time - before->mTime) / length) : 0.0f};
}

aiVector3D ValueAt(const aiVectorKey* keys, unsigned count, double time, const aiVector3D& absent) {
    if (count == 0) {
        return absent;
    }
    const Between<aiVectorKey> found = FindKeys(keys, count, time);
    return found.from->mValue + (found.to->mValue - found.from->mValue) * found.share;
}

aiQuaternion ValueAt(const aiQuatKey* keys, unsigned count, double time, const aiQuaternion& absent) {
    if (count == 0) {
        return absent;
    }
    const Between<aiQuatKey> found = FindKeys(keys, count, time);
    aiQuaternion value;
    aiQuaternion::Interpolate(value, found.from->mValue, found.to->mValue, found.share);
    return value.Normalize();
}

aiMatrix4x4 LocalAt(const aiNodeAnim& channel, const aiMatrix4x4& rest, double time) {
    aiVector3D restScale;
    aiQuaternion restTurn;
    aiVector3D restPlace;
    rest.Decompose(restScale, restTurn, restPlace);
    return {ValueAt(channel.mScalingKeys, channel.mNumScalingKeys, time, restScale),
            ValueAt(channel.mRotationKeys, channel.mNumRotationKeys, time, restTurn),
            ValueAt(channel.mPositionKeys, channel.mNumPositionKeys, time, restPlace)};
}

/// Which channel of an animation moves each node; -1 for none.
std::vector<int> ChannelsByNode(const Model& model, const aiAnimation& animation) {
    std::vector<int> channels(model.nodes.size(), -1);
    for (unsigned i = 0; i < animation.mNumChannels; i++) {
        const int node = model.FindNode(animation.mChannels[i]->mNodeName.C_Str());
        if (node != -1) {
            channels[node] = static_cast<int>(i);
        }
    }
    return channels;
}

/// One animation of the model, with what plays it.
struct Animation {
    const Model& model;
    const aiAnimation& source;
    std::vector<int> channels;  ///< by node
    int keyCount = 0;
    double ticksForKey = 1.0;

    Animation(const Model& newModel, const aiAnimation& newSource, int framesPerSecond)
        : model(newModel), source(newSource), channels(ChannelsByNode(newModel, newSource)) {
        const double ticksPerSecond = source.mTicksPerSecond > 0.0 ? source.mTicksPerSecond : 25.0;
        ticksForKey = ticksPerSecond / framesPerSecond;
        const double keys = source.mDuration / ticksForKey;
        keyCount =
            std::isfinite(keys) ? static_cast<int>(std::clamp(keys + 0.5, 0.0, double(mostKeys))) : 0;
    }

    bool Moves(int node) const {
        for (int at = node; at != -1; at = model.nodes[at].parent) {
            if (channels[at] != -1) {
                return true;
            }
        }
        return false;
    }

    aiMatrix4x4 WorldAt(int node, double time) const {
        aiMatrix4x4 transform;
        for (int at = node; at != -1; at = model.nodes[at].parent) {
            const aiMatrix4x4& rest = model.nodes[at].source->mTransformation;
            transform = (channels[at] == -1 ? rest : LocalAt(*source.mChannels[channels[at]], rest, time)) *
                        transform;
        }
        return model.toWorld * transform;
    }
};

/// A turn by an angle about an axis that takes one set of axes to another.
engine::SceneKey KeyBetween(const Pose& before, const Pose& after, const Pose& parent) {
    const auto inParent = [&](const aiVector3D& vector) {
        return engine::Float3{vector * parent.x, vector * parent.y, vector * parent.z};
    };
    engine::SceneKey key;
    key.translation = inParent(after.origin - before.origin);
    // As columns: after = turn * before.
    const aiMatrix3x3 from(before.x.x, before.y.x, before.z.x, before.x.y, before.y.y, before.z.y,
                           before.x.z, before.y.z, before.z.z);
    const aiMatrix3x3 to(after.x.x, after.y.x, after.z.x, after.x.y, after.y.y, after.z.y, after.x.z,
                         after.y.z, after.z.z);
    aiMatrix3x3 back = from;
    const aiQuaternion turn(to * back.Transpose());
    const aiVector3D axis(turn.x, turn.y, turn.z);
    const float sine = axis.Length();
    key.axis = {0.0f, 0.0f, 1.0f};
    if (sine > 1e-7f) {
        key.axis = inParent(axis / sine);
        // The engine turns clockwise about an axis.
        key.angle = -2.0f * std::atan2(sine, turn.w);
    }
    return key;
}

engine::SceneKeyTrack MakeTrack(const Animation& animation, int node, const Pose& parent) {
    engine::SceneKeyTrack track;
    Pose before = animation.model.PoseOf(animation.WorldAt(node, 0.0));
    for (int i = 1; i <= animation.keyCount; i++) {
        const Pose after = animation.model.PoseOf(animation.WorldAt(node, i * animation.ticksForKey));
        track.push_back(KeyBetween(before, after, parent));
        before = after;
    }
    return track;
}

/// The number that an action's name holds for its track: a word for a move, or "track" and a number.
std::optional<int> TrackInName(std::string name) {
    name = LowerCase(name);
    constexpr std::array<const char*, 3> moves{"forward", "backward", "sideways"};
    for (std::size_t i = 0; i < moves.size(); i++) {
        if (name.find(moves[i]) != std::string::npos) {
            return static_cast<int>(i);
        }
    }
    const std::size_t at = name.find("track");
    if (at == std::string::npos) {
        return {};
    }
    const std::size_t digit = name.find_first_of("0123456789", at);
    if (digit == std::string::npos) {
        return {};
    }
    const int number = std::atoi(name.substr(digit, 6).c_str());
    return number < mostTracks ? std::optional<int>(number) : std::nullopt;
}

bool ChangesSize(const aiNodeAnim& channel) {
    for (unsigned i = 1; i < channel.mNumScalingKeys; i++) {
        if (!channel.mScalingKeys[i].mValue.Equal(channel.mScalingKeys[0].mValue, 1e-3f)) {
            return true;
        }
    }
    return false;
}

/// The object that leads the group of another; -1 for none.
int ParentOf(const WorldObject& object, const std::vector<WorldObject>& objects) {
    const std::vector<int>& member = object.properties.groupMember;
    if (member.empty()) {
        return -1;
    }
    for (std::size_t i = 0; i < objects.size(); i++) {
        const std::optional<int> group = objects[i].properties.groupParent;
        if (group && &objects[i] != &object &&
            std::find(member.begin(), member.end(), *group) != member.end()) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

void AddTracksOf(const Animation& animation, int wish, std::vector<WorldObject>& objects,
                 const std::vector<int>& parents, Report& report) {
    for (std::size_t i = 0; i < objects.size(); i++) {
        WorldObject& object = objects[i];
        if (object.node == -1 || !animation.Moves(object.node)) {
            continue;
        }
        const int channel = animation.channels[object.node];
        if (channel != -1 && ChangesSize(*animation.source.mChannels[channel])) {
            report.Warn("changes of size are left out of tracks", object.name);
        }
        const bool leads = object.properties.playerObject || object.properties.groupParent;
        if (parents[i] == -1 && !leads) {
            report.Warn(
                "an animation plays only in a group that a player's object leads (or with --animate)",
                object.name);
            continue;
        }
        const Properties& main =
            object.pieceOf == -1 ? object.properties : objects[object.pieceOf].properties;
        const auto number = static_cast<std::size_t>(main.track.value_or(wish));
        if (object.mesh.keyTracks.size() <= number) {
            object.mesh.keyTracks.resize(number + 1);
        }
        if (!object.mesh.keyTracks[number].empty()) {
            report.Warn("of two animations for one track the later is left out", object.name);
            continue;
        }
        const Pose world;
        object.mesh.keyTracks[number] =
            MakeTrack(animation, object.node, parents[i] == -1 ? world : objects[parents[i]].pose);
    }
}

/// All tracks of a group get the same length, so that they begin anew together, and its leader has them
/// all.
void CompleteTracks(int leader, std::vector<WorldObject>& objects, const std::vector<int>& parents) {
    std::vector<std::size_t> lengths;
    const auto isMember = [&](std::size_t i) {
        return static_cast<int>(i) == leader || parents[i] == leader;
    };
    for (std::size_t i = 0; i < objects.size(); i++) {
        const std::vector<engine::SceneKeyTrack>& tracks = objects[i].mesh.keyTracks;
        for (std::size_t track = 0; isMember(i) && track < tracks.size(); track++) {
            lengths.resize(std::max(lengths.size(), tracks.size()));
            lengths[track] = std::max(lengths[track], tracks[track].size());
        }
    }
    if (lengths.empty()) {
        return;
    }
    const engine::SceneKey still{{}, {0.0f, 0.0f, 1.0f}, 0.0f, {}};
    for (std::size_t i = 0; i < objects.size(); i++) {
        std::vector<engine::SceneKeyTrack>& tracks = objects[i].mesh.keyTracks;
        if (!isMember(i) || (tracks.empty() && static_cast<int>(i) != leader)) {
            continue;
        }
        tracks.resize(lengths.size());
        for (std::size_t track = 0; track < lengths.size(); track++) {
            tracks[track].resize(lengths[track], still);
        }
    }
    // As a member of its own group its tracks are taken back with the others.
    Properties& properties = objects[leader].properties;
    std::vector<int>& member = properties.groupMember;
    if (std::find(member.begin(), member.end(), *properties.groupParent) == member.end()) {
        member.push_back(*properties.groupParent);
    }
}

}  // namespace

std::vector<std::string> AddAnimator(const Model& model, std::vector<WorldObject>& objects,
                                     Report& report) {
    constexpr int groupSize = 50;  // members that the engine moves
    const int player = PlayerCount(objects);
    std::vector<bool> moves(model.nodes.size());
    for (unsigned i = 0; i < model.scene->mNumAnimations; i++) {
        const Animation animation(model, *model.scene->mAnimations[i], 1);
        for (std::size_t node = 0; node < moves.size(); node++) {
            moves[node] = moves[node] || animation.Moves(static_cast<int>(node));
        }
    }
    int members = 0;
    for (WorldObject& object : objects) {
        Properties& properties = object.properties;
        if (object.node == -1 || !moves[object.node] || properties.IsBody() || properties.groupParent ||
            !properties.groupMember.empty()) {
            continue;
        }
        if (++members > groupSize) {
            report.Warn("of all that is animated only " + std::to_string(groupSize) + " objects can move",
                        object.name);
            continue;
        }
        properties.groupMember = {player};
    }
    if (members == 0) {
        return {};
    }
    WorldObject animator;
    animator.name = "Animator";
    animator.mesh.vertices = {{}};
    animator.properties.playerObject = player;
    animator.properties.cameraObject = player;  // without a camera a player can't act
    animator.isBlind = true;
    animator.properties.groupParent = player;  // a walk ends only in the group with the player's number
    animator.properties.collider = true;
    animator.properties.noCollider = true;
    animator.properties.physics = {0.0f, 0.0f, 0.0f};
    objects.push_back(std::move(animator));
    report.Note("its animations play while F is held");
    const std::string number = std::to_string(player);
    return {"*PLAYERCONTROLLER " + number + " 0",
            "*PLAYERKEYBOARDCONTROLS " + number + " 0 0 0 0 " + std::to_string(int{'F'}) + " 0 0 0"};
}

void AddKeyTracks(const Model& model, std::vector<WorldObject>& objects, const Options& options,
                  Report& report) {
    std::vector<int> parents;
    parents.reserve(objects.size());
    for (const WorldObject& object : objects) {
        parents.push_back(ParentOf(object, objects));
    }
    for (unsigned i = 0; i < model.scene->mNumAnimations; i++) {
        const aiAnimation& source = *model.scene->mAnimations[i];
        const Animation animation(model, source, options.framesPerSecond);
        const std::optional<int> named = TrackInName(source.mName.C_Str());
        AddTracksOf(animation, named.value_or(0), objects, parents, report);
    }
    for (std::size_t i = 0; i < objects.size(); i++) {
        if (objects[i].properties.groupParent) {
            CompleteTracks(static_cast<int>(i), objects, parents);
        }
    }
}
