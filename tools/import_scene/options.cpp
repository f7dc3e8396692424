#include "import_scene/options.h"

#include <algorithm>
#include <cstdio>

#include "loading/tga_image.h"
#include "process/options.h"

namespace {

constexpr const char* beforeOptions =
    R"(usage: import_scene MODEL OUT [options]
       import_scene IMAGE OUT.tga [--texture-size N]     (or OUT.rgb)

Makes a scene of a model: OUT.bin, OUT.atr and the textures beside them. The engine is to be started in the
folder above that of OUT, as it finds the textures from there. A model may be glTF (.glb, .gltf), OBJ,
COLLADA, 3DS, PLY, AC3D or anything else that the assimp library reads.

)";

constexpr const char* afterOptions = R"(
Custom properties of nodes become attributes: COLLIDER, NOCOLLIDER, INVISIBLE, PHYSICS, GROUPPARENT,
GROUPMEMBER, PLAYEROBJECT, PLAYERSPAWNPOINT, CAMERAOBJECT, TRACK. docs/from_blender.md says how.

Examples
  import_scene room.glb world/data/room --settings && cd world && engine
  import_scene castle.obj world/data/castle --scale 2 --turn 90 --merge
  import_scene wall.png world/data/wall.tga --texture-size 256

Exit code: 0, 1 if the model can't be read or the scene not be written, 2 if the arguments are wrong.
)";

StoreOption IntoSize(int& size) {
    return [&size, store = Into(size, 2, 512)](const std::string& value) -> std::string {
        const bool fits = store(value).empty() && IsPowerOfTwo(size);
        return fits ? "" : "takes 2, 4, 8, 16, 32, 64, 128, 256 or 512";
    };
}

StoreOption IntoAxis(char& axis) {
    return [&axis](const std::string& value) -> std::string {
        const bool fits = value == "x" || value == "y" || value == "z";
        axis = value.c_str()[0];
        return fits ? "" : "takes x, y or z";
    };
}

StoreOption IntoScale(std::optional<float>& scale) {
    return [&scale](const std::string& value) {
        scale.emplace();
        return Into(*scale, 1e-6f, 1e6f)(value);
    };
}

/// The importer itself counts the players and names the scene.
StoreOption IntoSettings(Options& options) {
    return [&options](const std::string& value) -> std::string {
        const std::string line = (value.starts_with('*') ? "" : "*") + value;
        const std::string key = line.substr(1, line.find(' ') - 1);
        if (key.empty() || key.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ") != std::string::npos ||
            key == "PLAYERCOUNT" || key == "LOADMESH" || line.find_first_of("{}\n") != std::string::npos) {
            return "takes a line of settings.atr, as \"PLAYERCONTROLLER 0 2\", but no PLAYERCOUNT or "
                   "LOADMESH";
        }
        constexpr int mostPixels = 32767;
        if (key == "RESOLUTION" &&
            (std::sscanf(line.c_str(), "*RESOLUTION %d %d", &options.windowWidth, &options.windowHeight) !=
                 2 ||
             std::clamp(options.windowWidth, 1, mostPixels) != options.windowWidth ||
             std::clamp(options.windowHeight, 1, mostPixels) != options.windowHeight)) {
            return "takes width, height and colour bits, as \"RESOLUTION 1280 720 32\"";
        }
        options.settings = true;
        options.settingLines.push_back(line);
        return "";
    };
}

std::vector<Option> Table(Options& options) {
    return {
        {nullptr, nullptr, "Place and size. A person is 10 units high.", nullptr},
        {"scale", "FACTOR",
         "units for one of the model's: 5.5 suits metres. Default: 5.5 for formats in metres\n"
         "(glTF, COLLADA), else 1, or what makes very small and very large models walkable",
         IntoScale(options.scale)},
        {"up", "x|y|z", "the axis that points up, if the format's own is wrong", IntoAxis(options.up)},
        {"turn", "DEGREES", "about the vertical, counter-clockwise as seen from above",
         Into(options.turn, -1e4f, 1e4f)},
        {"move", "X,Y,Z", "in units, after scaling and turning",
         IntoPoint(options.move.x, options.move.y, options.move.z)},
        {nullptr, nullptr, "Meshes", nullptr},
        {"one-sided", nullptr, "no back sides for two-sided materials", Into(options.oneSided)},
        {"crease", "DEGREES", "in a model without normals, edges sharper than this stay hard. Default: 50",
         Into(options.crease, 0.0f, 180.0f)},
        {"merge", nullptr, "joins scenery of one texture and cuts it into compact pieces",
         Into(options.merge)},
        {"piece", "N", "triangles of such a piece, at most. Default: 4000",
         Into(options.piece, 1, 10'000'000)},
        {"images", "FOLDER", "where images are that the model's folder doesn't have", Into(options.images)},
        {"texture-size", "N", "longest side of a texture, a power of two up to 512. Default: 512",
         IntoSize(options.textureSize)},
        {nullptr, nullptr, "World", nullptr},
        {"player", "NAME", "the camera that becomes the player's. Default: the first",
         Into(options.player)},
        {"no-player", nullptr, "adds none; what has PLAYEROBJECT stays one",
         Into(options.addPlayer, false)},
        {"no-floor", nullptr, "lays none where nothing lies below the player",
         Into(options.addFloor, false)},
        {"light-scale", "F", "makes all lamps brighter or darker", Into(options.lightScale, 0.0f, 1e6f)},
        {"fps", "N", "keys a second of animations; the engine plays one a frame. Default: 50",
         Into(options.framesPerSecond, 1, 1000)},
        {"animate", nullptr, "plays animations that no player's group has while F is held",
         Into(options.animate)},
        {"sprites", nullptr, "leaves the engine's twenty small sprites near the origin to be seen",
         Into(options.sprites)},
        {nullptr, nullptr, "Output", nullptr},
        {"settings", nullptr, "also writes a settings.atr that starts, into the folder above OUT's",
         Into(options.settings)},
        {"set", "LINE",
         "--settings with this line in place of the importer's own, as \"RESOLUTION 1280 720 32\"; may be "
         "repeated",
         IntoSettings(options)},
        {"force", nullptr, "writes over files that were changed by hand, or that it hasn't written itself",
         Into(options.force)},
        {"dry-run", nullptr, "reads and reports, and writes nothing", Into(options.dryRun)},
    };
}

}  // namespace

int ReadOptions(Options& options, int argumentCount, char** arguments) {
    const Program program{"import_scene", beforeOptions, Table(options), afterOptions};
    const Arguments rest = ReadArguments(program, argumentCount, arguments);
    if (rest.exitCode >= 0) {
        return rest.exitCode;
    }
    if (rest.plain.size() != 2) {
        return RefuseArguments(program, "a model and the path of the scene are wanted");
    }
    options.input = rest.plain[0];
    options.output = rest.plain[1];
    return -1;
}
