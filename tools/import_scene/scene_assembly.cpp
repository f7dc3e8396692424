#include "import_scene/scene_assembly.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string_view>

#include "import_scene/names.h"
#include "import_scene/players.h"
#include "scene_writer/shapes.h"

namespace {

constexpr std::size_t longestObjectName = 49;
/// A body is 2 from a wall at least, so that this cuts off nothing.
constexpr float nearPlane = 0.3f;
constexpr float leastFarPlane = 500.0f;

std::string NumberText(float value) {
    char digits[128];
    const auto end = std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed).ptr;
    return {digits, end};
}

/// What follows a leader comes before it: then it has made its own turn when it is taken along. Spawn
/// points find a player's object only after it.
int RankOf(const WorldObject& object) {
    if (object.drawnLast) {
        return 4;
    }
    if (object.properties.playerSpawnPoint) {
        return 3;
    }
    if (object.properties.groupParent || object.properties.playerObject) {
        return 2;
    }
    return object.isCamera || !object.properties.groupMember.empty() ? 1 : 0;
}

/// One more vertex that no triangle uses, at a place where it stays when the engine makes one list of
/// vertices and texture vertices. To be done before the markers.
std::int32_t AddLooseVertex(engine::SceneObject& mesh, const aiVector3D& place) {
    std::size_t index = mesh.vertices.size();
    if (!mesh.texFaces.empty()) {
        index = std::max(index, mesh.texVertices.size());
        mesh.texVertices.resize(index + 1);
    }
    mesh.vertices.resize(index + 1, ToFloat3(place));
    return static_cast<std::int32_t>(index);
}

void AddOwnMarkers(const WorldObject& object, engine::SceneObject& mesh) {
    if (!object.usesPose || (!object.properties.Any() && !object.isCamera && mesh.keyTracks.empty())) {
        AddMarkers(mesh, ToFloat3(BoundsOf(mesh).Middle()));
        return;
    }
    AddMarkers(mesh, ToFloat3(object.pose.origin), ToFloat3(object.pose.x), ToFloat3(object.pose.y),
               ToFloat3(object.pose.z));
}

std::string NumberedKey(const char* key, int number) {
    return std::string("*") + key + " " + std::to_string(number);
}

std::vector<std::string> LinesOf(const Properties& properties, std::int32_t eye, std::int32_t look) {
    std::vector<std::string> lines;
    for (const int group : properties.groupMember) {
        lines.push_back(NumberedKey("GROUPMEMBER", group));
    }
    if (properties.groupParent) {
        lines.push_back(NumberedKey("GROUPPARENT", *properties.groupParent));
    }
    if (properties.playerSpawnPoint) {
        lines.push_back(NumberedKey("PLAYERSPAWNPOINT", *properties.playerSpawnPoint));
    }
    if (properties.physics) {
        const auto [gravity, bounce, friction] = *properties.physics;
        lines.push_back("*PHYSICS " + NumberText(gravity) + " " + NumberText(bounce) + " " +
                        NumberText(friction));
    }
    if (properties.cameraObject) {
        lines.push_back(NumberedKey("CAMERAOBJECT", *properties.cameraObject) + " " + std::to_string(eye) +
                        " " + std::to_string(look));
    }
    if (properties.playerObject) {
        lines.push_back(NumberedKey("PLAYEROBJECT", *properties.playerObject));
    }
    if (properties.collider) {
        lines.push_back("*COLLIDER");
    }
    // What has no triangles, or only shows where a player starts, is in nobody's way.
    if (properties.noCollider || properties.playerSpawnPoint) {
        lines.push_back("*NOCOLLIDER");
    }
    if (properties.invisible || properties.playerSpawnPoint) {
        lines.push_back("*INVISIBLE");
    }
    return lines;
}

/// The window in as many parts as there are players with a camera.
struct Viewports {
    int windowWidth;
    int windowHeight;
    int columns = 1;
    int rows = 1;
    int next = 0;

    Viewports(const Options& options, int count)
        : windowWidth(options.windowWidth), windowHeight(options.windowHeight) {
        columns = count > 1 ? static_cast<int>(std::ceil(std::sqrt(static_cast<float>(count)))) : 1;
        rows = std::max(1, (count + columns - 1) / columns);
    }
    std::string TakeFor(int player) {
        const int width = windowWidth / columns;
        const int height = windowHeight / rows;
        const int x = next % columns * width;
        const int y = (rows - 1 - next / columns) * height;
        next++;
        return NumberedKey("PLAYERVIEWPORT", player) + " " + std::to_string(x) + " " + std::to_string(y) +
               " " + std::to_string(width) + " " + std::to_string(height);
    }
};

/// What a line of the settings is about: its key, and for a player's key the player.
std::string_view SubjectOf(std::string_view line) {
    std::size_t end = line.find(' ');
    if (line.starts_with("*PLAYER") && end != std::string_view::npos) {
        end = line.find(' ', end + 1);
    }
    return line.substr(0, end);
}

void PutInPlace(std::vector<std::string>& lines, const std::string& line) {
    const auto isTwin = [&](const std::string& other) { return SubjectOf(other) == SubjectOf(line); };
    const auto twin = std::find_if(lines.begin(), lines.end(), isTwin);
    if (twin == lines.end()) {
        lines.push_back(line);
    } else {
        *twin = line;
    }
}

}  // namespace

AssembledScene AssembleScene(std::vector<WorldObject> objects,
                             const std::vector<engine::SceneLight>& lights,
                             const std::vector<SceneTexture>& textures, const std::string& textureFolder) {
    std::stable_sort(objects.begin(), objects.end(),
                     [](const WorldObject& a, const WorldObject& b) { return RankOf(a) < RankOf(b); });
    AssembledScene scene;
    std::vector<std::string> lightLines;
    lightLines.reserve(lights.size());
    for (const engine::SceneLight& light : lights) {
        lightLines.push_back(engine::LightLine(light));
    }
    scene.attributes = engine::AttributeBlock("GLOBALS", lightLines);
    NameList names(longestObjectName);
    // The engine has blocks and objects of these names itself.
    names.Take("GLOBALS");
    names.Take("NoName");
    for (WorldObject& object : objects) {
        engine::SceneObject mesh = std::move(object.mesh);
        mesh.name = names.Take(object.name);
        if (mesh.name != object.name && !object.name.empty() && object.node != -1) {
            scene.renamed.emplace_back(object.name, mesh.name);
        }
        std::int32_t eye = 0;
        std::int32_t look = 1;
        if (object.isBlind) {
            eye = look = -1;
            AddOwnMarkers(object, mesh);
        } else if (object.properties.cameraObject && !object.isCamera) {
            look = AddLooseVertex(mesh, object.pose.origin - object.pose.y * 10.0f);
            AddOwnMarkers(object, mesh);
            eye = mesh.centreVertex;
        } else {
            AddOwnMarkers(object, mesh);
        }
        std::vector<std::string> lines = LinesOf(object.properties, eye, look);
        if (object.texture != -1) {
            lines.insert(lines.begin(), "*TEXTURE " + textureFolder + textures[object.texture].fileName);
        }
        if (!lines.empty()) {
            scene.attributes += engine::AttributeBlock(mesh.name, lines);
        }
        scene.objects.push_back(std::move(mesh));
    }
    return scene;
}

WorldObject MakeSpriteVeil(std::vector<SceneTexture>& textures, const std::string& prefix) {
    SceneTexture clear{prefix + "veil.tga", engine::Image(2, 2, 4), "", 2, 2, false};
    WorldObject veil;
    veil.name = "SpriteVeil";
    veil.usesPose = false;
    veil.drawnLast = true;
    veil.texture = static_cast<int>(textures.size());
    veil.mesh.vertices = {{}};
    veil.mesh.texVertices = {{}};
    textures.push_back(std::move(clear));
    return veil;
}

std::string MakeSettings(const std::vector<WorldObject>& objects, const std::string& scenePath,
                         const Options& options) {
    Bounds bounds = BoundsOf(objects);
    std::vector<bool> hasCamera(PlayerCount(objects));
    for (const WorldObject& object : objects) {
        if (object.properties.cameraObject && !object.isBlind) {
            hasCamera[*object.properties.cameraObject] = true;
            bounds.Add(ToFloat3(object.pose.origin));
        }
    }
    const float farPlane =
        bounds.IsEmpty() ? leastFarPlane : std::max(leastFarPlane, bounds.Size().Length() * 1.2f);
    std::vector<std::string> lines{
        "*RESOLUTION " + std::to_string(options.windowWidth) + " " + std::to_string(options.windowHeight) +
            " 32",
        NumberedKey("FRAMERATELIMIT", options.framesPerSecond),
        "*NEARCLIPPINGPLANE " + NumberText(nearPlane * std::max(1.0f, farPlane / 10000.0f)),
        NumberedKey("FARCLIPPINGPLANE", static_cast<int>(farPlane)), "*MOUSESENSITIVITY 0.003",
        // At full deflection, 32,767, some 90 degrees a second with 50 frames.
        "*JOYSTICKSENSITIVITY 0.000001", NumberedKey("PLAYERCOUNT", static_cast<int>(hasCamera.size()))};
    Viewports viewports(options, static_cast<int>(std::count(hasCamera.begin(), hasCamera.end(), true)));
    // The mouse for the first, the keyboard for the second, a joystick for the third; others look on.
    constexpr int devices[] = {1, 0, 2, 3};
    for (int player = 0; player < static_cast<int>(hasCamera.size()); player++) {
        lines.push_back(NumberedKey("PLAYERCONTROLLER", player) + " " +
                        std::to_string(devices[std::min(player, 3)]));
        lines.push_back(NumberedKey("PLAYERHEADLIMIT", player) + " 0.3");
        if (hasCamera[player]) {
            lines.push_back(viewports.TakeFor(player));
        }
    }
    for (const std::string& line : options.settingLines) {
        PutInPlace(lines, line);
    }
    lines.push_back("*LOADMESH " + scenePath);
    return engine::SettingsText(lines);
}
