#include "import_scene/blender_export.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>

namespace {

namespace fs = std::filesystem;

/// Takes the paths of both files from after "--", so that none becomes a part of the script.
constexpr const char* script = R"(
import bpy, sys
source, target = sys.argv[sys.argv.index("--") + 1:]
if source.lower().endswith(".blend"):
    bpy.ops.wm.open_mainfile(filepath=source, load_ui=False, use_scripts=False)
else:
    bpy.ops.wm.read_factory_settings(use_empty=True)
    bpy.ops.wm.usd_import(filepath=source)
bpy.ops.export_scene.gltf(filepath=target, export_format="GLB", export_extras=True, export_cameras=True,
                          export_lights=True, export_apply=True, use_visible=True)
)";

/// Runs Blender without a word from it. Gives its exit code; 127 if there is none.
int RunBlender(const std::string& source, const std::string& target) {
    const pid_t blender = fork();
    if (blender == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        const int nowhere = open("/dev/null", O_RDWR);
        for (const int stream : {0, 1, 2}) {
            dup2(nowhere, stream);
        }
        constexpr unsigned mostSeconds = 300;
        alarm(mostSeconds);
        // Debian's Blender takes the modules of the first python3 in PATH, which can be one without numpy.
        constexpr const char* command =
            "blender=$(command -v blender) || exit 127; PATH=/usr/bin:$PATH exec \"$blender\" \"$@\"";
        execl("/bin/sh", "sh", "-c", command, "blender", "--background", "--factory-startup",
              "--disable-autoexec", "--python-exit-code", "1", "--python-expr", script, "--",
              source.c_str(), target.c_str(), static_cast<char*>(nullptr));
        _exit(127);
    }
    int status = 0;
    if (blender == -1 || waitpid(blender, &status, 0) != blender || !WIFEXITED(status)) {
        return 1;
    }
    return WEXITSTATUS(status);
}

}  // namespace

bool NeedsBlender(const std::string& format) {
    constexpr const char* formats[] = {"blend", "usd", "usda", "usdc", "usdz"};
    return std::find(std::begin(formats), std::end(formats), format) != std::end(formats);
}

std::string ExportByBlender(const std::string& model, const std::string& format) {
    std::string folder = (fs::temp_directory_path() / "import_scene-XXXXXX").string();
    if (mkdtemp(folder.data()) == nullptr) {
        throw std::runtime_error("there can't be a folder in " + fs::temp_directory_path().string());
    }
    std::string target = folder + "/model.glb";
    const int exitCode = RunBlender(fs::absolute(model).string(), target);
    if (exitCode == 0 && fs::exists(target)) {
        return target;
    }
    fs::remove_all(folder);
    throw std::runtime_error(exitCode == 127
                                 ? "." + format +
                                       " files are read by Blender, which isn't installed here; save the "
                                       "model as glTF: in Blender by File > Export > glTF 2.0 (.glb)"
                                 : "Blender makes no glTF of it (not every Blender reads .usd)");
}
