#include "import_scene/options.h"

#include <charconv>
#include <cmath>
#include <stdexcept>
#include <vector>

const char* const helpText =
    R"(usage: import_scene MODEL OUT [options]
       import_scene IMAGE OUT.tga [--texture-size N]     (or OUT.rgb)

Makes a scene of a model: OUT.bin, OUT.atr and the textures beside them. The engine is to be started in the
folder above that of OUT, as it finds the textures from there. A model may be glTF (.glb, .gltf), OBJ,
COLLADA, 3DS, PLY, AC3D or anything else that the assimp library reads.

Place and size. A person is 10 units high.
  --scale FACTOR     units for one of the model's: 5.5 suits metres. Default: 5.5 for formats in metres
                     (glTF, COLLADA), else 1, or what makes very small and very large models walkable
  --up x|y|z         the axis that points up, if the format's own is wrong
  --turn DEGREES     about the vertical, counter-clockwise as seen from above
  --move X,Y,Z       in units, after scaling and turning
Meshes
  --one-sided        no back sides for two-sided materials
  --crease DEGREES   in a model without normals, edges sharper than this stay hard. Default: 50
  --merge            joins scenery of one texture and cuts it into compact pieces
  --piece N          triangles of such a piece, at most. Default: 4000
  --texture-size N   longest side of a texture, a power of two up to 512. Default: 512
World
  --player NAME      the camera that becomes the player's. Default: the first
  --no-player        adds none; what has PLAYEROBJECT stays one
  --no-floor         lays none where nothing lies below the player
  --light-scale F    makes all lamps brighter or darker
  --fps N            keys a second of animations; the engine plays one a frame. Default: 50
  --sprites          leaves the engine's twenty small sprites near the origin to be seen
Output
  --settings         also writes a settings.atr that starts, into the folder above OUT's
  --dry-run          reads and tells, and writes nothing
  --help             this text

Custom properties of nodes become attributes: COLLIDER, NOCOLLIDER, INVISIBLE, PHYSICS, GROUPPARENT,
GROUPMEMBER, PLAYEROBJECT, PLAYERSPAWNPOINT, CAMERAOBJECT, TRACK. docs/from_blender.md tells how.

Examples
  import_scene room.glb world/data/room --settings && cd world && engine
  import_scene castle.obj world/data/castle --scale 2 --turn 90 --merge
  import_scene wall.png world/data/wall.tga --texture-size 256

Exit code: 0, 1 if the model can't be read or the scene not be written, 2 if the arguments are wrong.
)";

namespace {

[[noreturn]] void Refuse(const std::string& text) {
    throw std::invalid_argument(text);
}

/// Goes through the arguments, option by option.
struct Arguments {
    std::vector<std::string> values;
    std::size_t at = 0;

    bool AtEnd() const { return at == values.size(); }
    const std::string& Next() { return values[at++]; }

    const std::string& ValueOf(const std::string& option) {
        if (AtEnd()) {
            Refuse(option + " needs a value");
        }
        return Next();
    }
    float NumberOf(const std::string& option, float least, float most) {
        const std::string text = ValueOf(option);
        float value = 0.0f;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
        if (error != std::errc() || end != text.data() + text.size() ||
            !(value >= least && value <= most)) {
            Refuse(option + ": " + text + " is no number that fits");
        }
        return value;
    }
    int WholeNumberOf(const std::string& option, int least, int most) {
        const float value = NumberOf(option, static_cast<float>(least), static_cast<float>(most));
        if (value != std::floor(value)) {
            Refuse(option + " wants a whole number");
        }
        return static_cast<int>(value);
    }
};

engine::Float3 PointOf(const std::string& option, std::string text) {
    Arguments numbers;
    for (std::size_t comma; (comma = text.find(',')) != std::string::npos; text.erase(0, comma + 1)) {
        numbers.values.push_back(text.substr(0, comma));
    }
    numbers.values.push_back(text);
    if (numbers.values.size() != 3) {
        Refuse(option + " wants three numbers with commas between them, such as 10,0,2.5");
    }
    const float x = numbers.NumberOf(option, -1e6f, 1e6f);
    const float y = numbers.NumberOf(option, -1e6f, 1e6f);
    return {x, y, numbers.NumberOf(option, -1e6f, 1e6f)};
}

int PowerOfTwoOf(Arguments& arguments, const std::string& option) {
    const int size = arguments.WholeNumberOf(option, 2, 512);
    if ((size & (size - 1)) != 0) {
        Refuse(option + " wants 2, 4, 8, 16, 32, 64, 128, 256 or 512");
    }
    return size;
}

char AxisOf(Arguments& arguments, const std::string& option) {
    const std::string axis = arguments.ValueOf(option);
    if (axis != "x" && axis != "y" && axis != "z") {
        Refuse(option + " wants x, y or z");
    }
    return axis[0];
}

void ApplyOption(Options& options, const std::string& option, Arguments& arguments) {
    if (option == "--scale") {
        options.scale = arguments.NumberOf(option, 1e-6f, 1e6f);
    } else if (option == "--up") {
        options.up = AxisOf(arguments, option);
    } else if (option == "--turn") {
        options.turn = arguments.NumberOf(option, -1e4f, 1e4f);
    } else if (option == "--move") {
        options.move = PointOf(option, arguments.ValueOf(option));
    } else if (option == "--one-sided") {
        options.oneSided = true;
    } else if (option == "--crease") {
        options.crease = arguments.NumberOf(option, 0.0f, 180.0f);
    } else if (option == "--merge") {
        options.merge = true;
    } else if (option == "--piece") {
        options.piece = arguments.WholeNumberOf(option, 1, 10'000'000);
    } else if (option == "--texture-size") {
        options.textureSize = PowerOfTwoOf(arguments, option);
    } else if (option == "--player") {
        options.player = arguments.ValueOf(option);
    } else if (option == "--no-player") {
        options.addPlayer = false;
    } else if (option == "--no-floor") {
        options.addFloor = false;
    } else if (option == "--light-scale") {
        options.lightScale = arguments.NumberOf(option, 0.0f, 1e6f);
    } else if (option == "--fps") {
        options.framesPerSecond = arguments.WholeNumberOf(option, 1, 1000);
    } else if (option == "--sprites") {
        options.sprites = true;
    } else if (option == "--settings") {
        options.settings = true;
    } else if (option == "--dry-run") {
        options.dryRun = true;
    } else {
        Refuse("there is no option " + option);
    }
}

}  // namespace

Options ParseOptions(int argumentCount, const char* const* arguments) {
    Options options;
    Arguments rest{{arguments + 1, arguments + argumentCount}};
    std::vector<std::string> paths;
    while (!rest.AtEnd()) {
        const std::string& argument = rest.Next();
        if (argument == "--help" || argument == "-h") {
            options.help = true;
            return options;
        }
        if (argument.starts_with("--")) {
            ApplyOption(options, argument, rest);
        } else {
            paths.push_back(argument);
        }
    }
    if (paths.size() != 2) {
        Refuse("a model and the path of the scene are wanted");
    }
    options.input = paths[0];
    options.output = paths[1];
    return options;
}
