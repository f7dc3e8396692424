#include <algorithm>
#include <cmath>
#include <set>
#include <vector>

#include "check_scene/checks.h"
#include "check_scene/mesh_facts.h"
#include "scene/scene.h"

// Marker vertices, for the objects that move.

namespace {

constexpr float tolerance = 0.01f;

/// What each object does that needs markers.
struct Roles {
    std::set<std::int32_t> members;  ///< of any group
    std::set<std::int32_t> cameras;
    std::set<std::int32_t> bodies;  ///< of players

    explicit Roles(const Scene& scene) {
        for (std::int32_t group = 0; group < scene.groupCount; group++) {
            for (std::int32_t slot = 0; slot < scene.groups[group].capacity; slot++) {
                members.insert(scene.groups[group].ids[slot]);
            }
        }
        for (std::int32_t i = 0; i < scene.playerCount; i++) {
            cameras.insert(scene.players[i].cameraObject);
            bodies.insert(scene.players[i].playerObject);
        }
    }
    const char* NeedOfAxes(const Object& object, std::int32_t id) const {
        if (bodies.contains(id)) {
            return "a player moves it";
        }
        if (cameras.contains(id)) {
            return "a player looks through it";
        }
        return object.groupParent != -1 ? "it leads a group" : nullptr;
    }
};

/// One object while its markers are judged.
struct MarkerCheck {
    Findings& findings;
    const World& world;
    std::int32_t id;

    const Object& Subject() const { return world.scene->objects[id]; }
    void Error(const char* code, const std::string& text) {
        findings.Error(code, world.At(id), Named(Subject()) + text);
    }
    void Warn(const char* code, const std::string& text) {
        findings.Warn(code, world.At(id), Named(Subject()) + text);
    }

    bool CheckPresence(const char* needOfAxes);
    void CheckAxes();
    void CheckOverwritten(bool needsAxes);
    void CheckSpare();
};

bool MarkerCheck::CheckPresence(const char* needOfAxes) {
    const RecordHead& head = world.Of(id).head;
    if (head.centreVertex != 0 || head.xAxisVertex != 0 || head.yAxisVertex != 0 || head.zAxisVertex != 0) {
        return true;
    }
    if (needOfAxes != nullptr) {
        Error("no-markers",
              std::string(": ") + needOfAxes + ", and it has no markers: give it a centre and three axes");
    } else if (Subject().faceValueCount > 0) {
        Warn("no-centre", " moves and has no markers: its centre is vertex 0, wherever that is");
    }
    return false;
}

void MarkerCheck::CheckAxes() {
    const Object& object = Subject();
    const struct {
        const char* name;
        std::int32_t index;
    } markers[] = {{"X", object.xAxisVertex}, {"Y", object.yAxisVertex}, {"Z", object.zAxisVertex}};
    Vector axes[3];
    for (int i = 0; i < 3; i++) {
        axes[i] = VertexOf(object, markers[i].index) - CentreOf(object);
        const float length = axes[i].Length();
        if (!(std::fabs(length - 1.0f) <= tolerance)) {
            Error("axis-length", std::string(": its ") + markers[i].name + " axis marker is " +
                                     Shown(length) + " away from its centre, and has to be 1");
            return;
        }
    }
    for (int i = 0; i < 3; i++) {
        const int next = (i + 1) % 3;
        if (std::fabs(axes[i].Dot(axes[next])) > tolerance) {
            Error("axes-askew", std::string(": its ") + markers[i].name + " and " + markers[next].name +
                                    " axes don't stand at right angles");
            return;
        }
    }
    if (axes[0].Cross(axes[1]).Dot(axes[2]) < 0.0f) {
        Warn("axes-left-handed",
             ": its axes are left-handed: seen with Z towards you, Y has to lie counter-clockwise from X");
    } else if (axes[2].z < 0.5f) {
        Warn("axis-z-aside", ": its Z axis points " + std::string(axes[2].z < -0.5f ? "down" : "aside") +
                                 "; it has to point up for players and cameras");
    }
}

/// In a textured object entries below its texture vertices take what its faces say.
void MarkerCheck::CheckOverwritten(bool needsAxes) {
    const RecordHead& head = world.Of(id).head;
    const Object& object = Subject();
    if (head.texTriangleCount == 0) {
        return;
    }
    const MeshFacts facts(object);
    for (const std::int32_t marker :
         {object.centreVertex, object.xAxisVertex, object.yAxisVertex, object.zAxisVertex}) {
        if (facts.Uses(marker)) {
            const std::string text = ": marker vertex " + std::to_string(marker) +
                                     " is taken by a corner of a triangle; put the markers of a textured "
                                     "object at " +
                                     std::to_string(head.texVertexCount) + " to " +
                                     std::to_string(head.texVertexCount + 3) +
                                     ", after its texture vertices";
            if (needsAxes) {
                Error("marker-overwritten", text);
            } else {
                Warn("marker-overwritten", text);
            }
            return;
        }
    }
}

void MarkerCheck::CheckSpare() {
    const Object& object = Subject();
    const std::int32_t spare = object.spareVertex;
    const std::string start = ": its spare vertex, " + std::to_string(spare) + ", ";
    const std::string end = ": a member of a group is torn by its first move; give it one of its own";
    if (spare == object.centreVertex || spare == object.xAxisVertex || spare == object.yAxisVertex ||
        spare == object.zAxisVertex) {
        Error("spare-is-marker", start + "is another marker" + end);
    } else if (object.HasVertex(spare) && MeshFacts(object).Uses(spare)) {
        Error("spare-is-corner", start + "is a corner of a triangle" + end);
    }
}

}  // namespace

void CheckMarkers(Findings& findings, const World& world) {
    const Roles roles(*world.scene);
    for (std::int32_t id = 0; id < world.scene->objectCount; id++) {
        const Object& object = world.scene->objects[id];
        const char* need = roles.NeedOfAxes(object, id);
        const bool isMember = roles.members.contains(id);
        const bool moves =
            need != nullptr || isMember || object.physics != nullptr || object.collider != nullptr;
        const ObjectSource& source = world.Of(id);
        if (!moves || !source.hasRecord || source.meshDropped || object.vertexValueCount == 0) {
            continue;
        }
        MarkerCheck check{findings, world, id};
        if (!check.CheckPresence(need)) {
            continue;
        }
        if (need != nullptr) {
            check.CheckAxes();
        }
        check.CheckOverwritten(need != nullptr);
        if (isMember) {
            check.CheckSpare();
        }
    }
}

void CheckWorldAxes(Findings& findings, const World& world) {
    const Roles roles(*world.scene);
    std::vector<float> lengths;
    std::size_t lying = 0;
    for (std::int32_t id = 0; id < world.scene->objectCount; id++) {
        const Object& object = world.scene->objects[id];
        if (roles.NeedOfAxes(object, id) != nullptr) {
            const Vector upward = VertexOf(object, object.zAxisVertex) - CentreOf(object);
            lengths.push_back(upward.Length());
            lying += std::fabs(upward.y) > 0.99f * lengths.back() ? 1 : 0;
        }
    }
    if (lengths.size() < 2) {
        return;
    }
    const auto [least, most] = std::ranges::minmax(lengths);
    constexpr float clearly = 1.5f;
    if (least > 0.0f && most < 1.01f * least && std::max(least, 1.0f / least) > clearly) {
        findings.Cause("world-scaled", world.scenes.front().AtByte(-1),
                       "the axes of all players and cameras are " + Shown(least) +
                           " long, and have to be 1: the world seems scaled by that; take it back");
    } else if (lying == lengths.size()) {
        findings.Cause(
            "world-lying", world.scenes.front().AtByte(-1),
            "the Z axes of all players and cameras point along Y: the world lies on its side; turn "
            "it by 90 degrees about X");
    }
}
