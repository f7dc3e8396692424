#include "import_scene/players.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "import_scene/standpoint.h"
#include "scene_writer/player_parts.h"
#include "scene_writer/shapes.h"

namespace {

/// A camera that is moved up or down by more than this looks at its subject anew.
constexpr float smallMove = 3.0f;
/// Highest z of a view's direction: the engine's up is z, and its settings limit the head.
constexpr float steepest = 0.85f;
constexpr float floorCell = 8.0f;
/// What is laid around a model: far from the origin places become coarse.
constexpr float widestMargin = 1000.0f;
constexpr int mostFloorCells = 48;
/// Half the vertical field of view, and of what a window of four to three shows across.
constexpr float tangentUp = 0.577f;
constexpr float tangentAcross = 0.77f;
/// Radians from a thing's front to where it is looked at from.
constexpr float besideFront = 0.5f;

/// Points the camera from an eye along a direction, as steep as a head may be, and upright.
void PointCamera(WorldObject& camera, const aiVector3D& eye, aiVector3D direction) {
    direction.NormalizeSafe();
    direction.z = std::clamp(direction.z, -steepest, steepest);
    aiVector3D flat(direction.x, direction.y, 0.0f);
    if (flat.Length() < 1e-4f) {
        flat = {0.0f, 1.0f, 0.0f};
    }
    flat.Normalize();
    direction = flat * std::sqrt(1.0f - direction.z * direction.z) + aiVector3D(0.0f, 0.0f, direction.z);
    camera.pose.origin = eye;
    camera.pose.y = -direction;
    camera.pose.x = aiVector3D(-flat.y, flat.x, 0.0f);
    camera.pose.z = camera.pose.x ^ camera.pose.y;
    camera.mesh.vertices = {ToFloat3(eye), ToFloat3(eye + direction * 10.0f)};
}

/// A grey floor under everything, cut up so that lamps show on it.
WorldObject MakeFloor(const Bounds& around, float height) {
    const float longest = std::max(around.Size().x, around.Size().y);
    const float side = longest + std::min(longest, widestMargin) + 40.0f;
    const int cells = std::clamp(static_cast<int>(side / floorCell), 4, mostFloorCells);
    const aiVector3D middle = around.Middle();
    WorldObject floor;
    floor.name = "LaidFloor";
    floor.usesPose = false;
    floor.mesh = engine::MakeGrid(floor.name, {middle.x - side / 2.0f, middle.y - side / 2.0f, height},
                                  {side, 0.0f, 0.0f}, {0.0f, side, 0.0f}, cells, cells);
    Paint(floor.mesh, {0.5f, 0.52f, 0.5f});
    return floor;
}

/// Finds and makes what a player needs.
struct PlayerMaker {
    const Model& model;
    std::vector<WorldObject>& objects;
    GroupIds& groups;
    const Options& options;
    Report& report;

    template <typename Condition>
    int Find(Condition condition) const {
        const auto found = std::find_if(objects.begin(), objects.end(), condition);
        return found == objects.end() ? -1 : static_cast<int>(found - objects.begin());
    }

    /// The camera for player 0: the one asked for, else the first that belongs to nobody.
    int ChooseCamera() const {
        if (!options.player.empty()) {
            const int found = Find([&](const WorldObject& object) {
                return object.isCamera && object.name == options.player;
            });
            if (found != -1) {
                return found;
            }
            report.Warn("there is no camera " + options.player + ", the first is taken");
        }
        return Find(
            [](const WorldObject& object) { return object.isCamera && !object.properties.cameraObject; });
    }

    bool IsBelow(int node, int above) const {
        for (int at = node; at != -1; at = model.nodes[at].parent) {
            if (at == above) {
                return true;
            }
        }
        return false;
    }

    void Join(int camera, int body, int player) {
        Properties& leader = objects[body].properties;
        if (!leader.groupParent) {
            leader.groupParent = groups.Take(player);
        }
        std::vector<int>& member = objects[camera].properties.groupMember;
        if (member.empty()) {
            member.push_back(*leader.groupParent);
        }
        objects[camera].properties.cameraObject = player;
    }

    /// Upright, and turned as the camera is.
    void TurnBody(int body, int camera) {
        aiVector3D x = objects[camera].pose.x;
        x.z = 0.0f;
        if (x.Length() > 1e-3f) {
            Pose& pose = objects[body].pose;
            pose.x = x.Normalize();
            pose.z = {0.0f, 0.0f, 1.0f};
            pose.y = pose.z ^ pose.x;
        }
    }

    /// A player's object without a camera: one that hangs below its node, else any for the first player.
    void GiveCamera(int body, int player) {
        int camera = Find([&](const WorldObject& object) {
            return object.isCamera && !object.properties.cameraObject && objects[body].node != -1 &&
                   IsBelow(object.node, objects[body].node);
        });
        if (camera == -1 && player == 0) {
            camera = ChooseCamera();
        }
        if (camera != -1) {
            Join(camera, body, player);
            PointCamera(objects[camera], objects[camera].pose.origin, -objects[camera].pose.y);
            // What has no face goes where its camera looks.
            if (!objects[body].HasTriangles()) {
                TurnBody(body, camera);
            }
            return;
        }
        // Without a camera a player can't act.
        objects[body].properties.cameraObject = player;
        objects[body].isBlind = true;
        if (player == 0) {
            report.Warn("player 0 has no camera, so nothing will be seen", objects[body].name);
        }
    }

    /// In the model if that is a place to be in, else from outside, with the whole of it in view.
    int AddFirstCamera() {
        WorldObject camera;
        camera.name = "PlayerCamera";
        camera.isCamera = true;
        if (const std::optional<Standpoint> inside = FindStandpoint(objects)) {
            PointCamera(camera, inside->eye, inside->direction);
        } else {
            PointInFront(camera);
        }
        objects.push_back(std::move(camera));
        return static_cast<int>(objects.size()) - 1;
    }

    /// Whether the model is a sheet more than a body, and its faces are seen from the side of larger y:
    /// what they enclose has areas to all sides that cancel out.
    bool LooksAway() const {
        aiVector3D sum;
        float total = 0.0f;
        for (const WorldObject& object : objects) {
            const auto at = [&](std::int32_t vertex) {
                const engine::Float3& place = object.mesh.vertices[vertex];
                return aiVector3D(place.x, place.y, place.z);
            };
            for (const engine::Int3& face : object.mesh.faces) {
                const aiVector3D area = (at(face.b) - at(face.a)) ^ (at(face.c) - at(face.a));
                sum += area;
                total += area.Length();
            }
        }
        return sum.y > 0.5f * total;
    }

    void PointInFront(WorldObject& camera) const {
        Bounds bounds = BoundsOf(objects);
        if (bounds.IsEmpty()) {
            bounds.Add({});
        }
        // The ball around it fits into the picture at some two times its radius. From beside its front:
        // seen square on, a box is a rectangle.
        const aiVector3D middle = bounds.Middle();
        const float radius = bounds.Size().Length() * 0.5f;
        const float height = bounds.low.z + standing + eyeAboveCentre;
        const float aside =
            std::sqrt(std::max(0.0f, 4.4f * radius * radius - (height - middle.z) * (height - middle.z)));
        const float distance = std::max(aside, radius + 2.0f * bodyReach);
        const aiVector3D eye(middle.x + std::sin(besideFront) * distance,
                             middle.y + (LooksAway() ? distance : -distance) * std::cos(besideFront),
                             height);
        PointCamera(camera, eye, middle - eye);
    }

    /// Under the whole model, and under the eyes at the point.
    void LayFloor(const aiVector3D& point) {
        Bounds around = BoundsOf(objects);
        // A little lower, so that the model's own ground is not drawn in one plane with it.
        float height = around.IsEmpty() ? 0.0f : around.low.z - 0.2f;
        if (point.z <= height) {
            height = point.z - standing - eyeAboveCentre;
        }
        around.Add(ToFloat3(point));
        objects.push_back(MakeFloor(around, height));
        report.Note(
            "nothing lies below the player: a floor is laid at the model's lowest point (--no-floor)");
    }

    std::optional<float> FloorFor(const aiVector3D& point) {
        std::optional<float> floor = FloorBelow(objects, point);
        if (!floor && options.addFloor) {
            LayFloor(point);
            floor = FloorBelow(objects, point);
        }
        return floor;
    }

    /// A player that is placed has its first frame to itself: what the mouse did before doesn't turn its
    /// head.
    void AddSpawnPoint(const aiVector3D& place) {
        WorldObject start;
        start.name = "PlayerStart";
        start.pose.origin = place;
        start.mesh.vertices = {ToFloat3(place)};
        start.properties.playerSpawnPoint = 0;
        objects.push_back(std::move(start));
    }

    /// Whether a walker's body below this eye is in nothing solid. An eye amid a model without a floor
    /// would be set down below it.
    bool HasRoom(aiVector3D eye) const {
        if (const std::optional<float> floor = FloorBelow(objects, eye)) {
            eye.z = *floor + standing + eyeAboveCentre;
        } else if (options.addFloor && BoundsOf(objects).Holds(eye)) {
            return false;
        }
        return IsFree(objects, eye);
    }

    /// Whether anything is in the camera's picture, by a few rays from its middle outward.
    bool SeesSomething(const Pose& camera) const {
        for (const float across : {0.0f, -0.5f, 0.5f, -1.0f, 1.0f}) {
            for (const float up : {0.0f, -0.5f, 0.5f, -1.0f, 1.0f}) {
                const aiVector3D direction =
                    camera.x * (across * tangentAcross) + camera.z * (up * tangentUp) - camera.y;
                if (FirstHit(objects, camera.origin, direction)) {
                    return true;
                }
            }
        }
        return false;
    }

    /// The body of a walker, with its eyes at the camera or, if there is a floor, where eyes are above it.
    void AddBody(int camera) {
        const aiVector3D eye = objects[camera].pose.origin;
        const aiVector3D direction = -objects[camera].pose.y;
        aiVector3D newEye = eye;
        const bool spawns =
            Find([](const WorldObject& object) { return object.properties.playerSpawnPoint == 0; }) != -1;
        if (const std::optional<float> floor = spawns ? std::nullopt : FloorFor(eye)) {
            newEye.z = *floor + standing + eyeAboveCentre;
        }
        aiVector3D newDirection = direction;
        if (std::fabs(newEye.z - eye.z) > smallMove) {
            const Bounds bounds = BoundsOf(objects);
            const float toMiddle = (bounds.Middle() - eye) * direction;
            const float distance =
                FirstHit(objects, eye, direction).value_or(Hit{std::max(toMiddle, 10.0f)}).distance;
            newDirection = eye + direction * distance - newEye;
        }
        PointCamera(objects[camera], newEye, newDirection);

        WorldObject body;
        body.name = "PlayerBody";
        body.pose.origin = newEye - aiVector3D(0.0f, 0.0f, eyeAboveCentre);
        body.mesh.vertices = {ToFloat3(body.pose.origin)};
        body.properties.collider = true;
        body.properties.physics = {1.0f, 0.0f, 0.5f};
        body.properties.playerObject = 0;
        objects.push_back(std::move(body));
        const int index = static_cast<int>(objects.size()) - 1;
        TurnBody(index, camera);
        objects[camera].properties.groupMember.clear();
        Join(camera, index, 0);
        if (!spawns) {
            AddSpawnPoint(objects[index].pose.origin);
        }
    }

    void SetDownSpawnPoints() {
        // By index, as a floor may be laid meanwhile.
        for (std::size_t i = 0; i < objects.size(); i++) {
            if (!objects[i].properties.playerSpawnPoint || objects[i].HasTriangles()) {
                continue;
            }
            // An empty that was put onto the floor may be a little within it.
            aiVector3D above = objects[i].pose.origin;
            above.z += 1.0f;
            if (const std::optional<float> floor = FloorFor(above)) {
                objects[i].mesh.vertices[0].z = *floor + standing;
            }
        }
    }
};

}  // namespace

void AddPlayers(const Model& model, std::vector<WorldObject>& objects, GroupIds& groups,
                const Options& options, Report& report) {
    PlayerMaker maker{model, objects, groups, options, report};
    const int count = PlayerCount(objects);
    bool hasFirst = false;
    for (int player = 0; player < count; player++) {
        const int body =
            maker.Find([&](const WorldObject& object) { return object.properties.playerObject == player; });
        if (body == -1) {
            continue;
        }
        hasFirst |= player == 0;
        if (maker.Find([&](const WorldObject& object) {
                return object.properties.cameraObject == player;
            }) == -1) {
            maker.GiveCamera(body, player);
        }
        if (objects[body].properties.groupParent.value_or(player) != player) {
            report.Warn("a walk ends only in the group with the player's number", objects[body].name);
        }
    }
    maker.SetDownSpawnPoints();
    if (!hasFirst && options.addPlayer) {
        int camera =
            maker.Find([](const WorldObject& object) { return object.properties.cameraObject == 0; });
        if (camera == -1 || !objects[camera].isCamera) {
            camera = maker.ChooseCamera();
            if (camera != -1 && options.player.empty() &&
                (!maker.HasRoom(objects[camera].pose.origin) ||
                 !maker.SeesSomething(objects[camera].pose))) {
                report.Note(
                    "the model's camera " + objects[camera].name +
                    " sees nothing, or is in something solid or too near to it: another one is made "
                    "(--player NAME)");
                camera = -1;
            }
        }
        maker.AddBody(camera == -1 ? maker.AddFirstCamera() : camera);
    }
}

int PlayerCount(const std::vector<WorldObject>& objects) {
    int count = 0;
    for (const WorldObject& object : objects) {
        for (const std::optional<int>& player :
             {object.properties.playerObject, object.properties.cameraObject,
              object.properties.playerSpawnPoint}) {
            count = std::max(count, player.value_or(-1) + 1);
        }
    }
    return count;
}
