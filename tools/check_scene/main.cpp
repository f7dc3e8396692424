#include <exception>
#include <filesystem>
#include <iostream>
#include <string>

#include "check_scene/checks.h"
#include "check_scene/obj_export.h"
#include "check_scene/plan.h"
#include "check_scene/report.h"
#include "check_scene/walk.h"
#include "check_scene/world.h"
#include "process/options.h"
#include "process/save_file.h"

// Tells an author what is wrong with a world, before the world runs.

namespace {

constexpr const char* beforeOptions =
    R"(usage: check_scene [options] [FOLDER | SETTINGS]

Loads the world of a folder as the engine does, without a display, and tells what is wrong with it:
file:line: error or warning: what it is and what to do. FOLDER is the present one by default; SETTINGS is
a settings file of another name than settings.atr.

)";

constexpr const char* afterOptions = R"(
Exit code: 0 nothing was found, 1 something was, 2 wrong usage.

Examples:
  check_scene                      the world of this folder
  check_scene demo/single          that of another one
  check_scene --list demo/single   what is in it
  check_scene --obj out.obj .      its geometry
  check_scene --picture plan.png . a plan of it
)";

constexpr int clean = 0;
constexpr int found = 1;

struct Options {
    bool list = false;
    bool json = false;
    std::string obj;
    std::string picture;
    std::string world = ".";
};

/// Gives the exit code to end with at once, as everything has been said; below 0: go on.
int ReadOptions(Options& options, int count, char** arguments) {
    const Program program{
        "check_scene",
        beforeOptions,
        {{"list", nullptr,
          "print the world: players, objects with sizes, markers and keys, textures, lights, groups",
          Into(options.list)},
         {"obj", "OUT.obj",
          "write the geometry for other programs, with OUT.mtl and the textures as PNG beside it",
          Into(options.obj)},
         {"picture", "FILE.png", "draw a plan of the world from above, with the findings as numbered marks",
          Into(options.picture)},
         {"json", nullptr, "print the findings as JSON, for editors", Into(options.json)}},
        afterOptions};
    const Arguments rest = ReadArguments(program, count, arguments);
    if (rest.plain.size() > 1) {
        return RefuseArguments(program, "more than one world: " + rest.plain[1]);
    }
    if (!rest.plain.empty()) {
        options.world = rest.plain[0];
    }
    return rest.exitCode;
}

/// Enters the folder of the world, as the engine wants it, and gives the name of the settings there.
std::string Enter(const std::string& given, World& world) {
    const std::filesystem::path path = given;
    const bool isFolder = std::filesystem::is_directory(path);
    const std::filesystem::path folder = isFolder ? path : path.parent_path();
    const std::string shown = folder.lexically_normal().generic_string();
    world.shownFolder = shown.empty() || shown == "." ? "" : shown + (shown.ends_with('/') ? "" : "/");
    if (!folder.empty()) {
        std::filesystem::current_path(folder);
    }
    return isFolder ? "settings.atr" : path.filename().string();
}

/// How many players the settings ask for: more than there can be would only exhaust the memory.
bool HasTooManyPlayers(const World& world) {
    constexpr double most = 10000.0;
    double count = 0.0;
    for (const KeyUse& use : world.settingsKeys) {
        if (use.Is("*PLAYERCOUNT") && use.numbers[0].value > 0.0) {
            count += use.numbers[0].value;
        }
    }
    return count > most;
}

Walks Judge(Findings& findings, World& world) {
    if (HasTooManyPlayers(world)) {
        findings.Error("players-too-many", world.AtSetting("*PLAYERCOUNT"),
                       "so many players exhaust the memory; nothing else was "
                       "looked at");
        return {};
    }
    world.LoadScenes();
    CheckSettings(findings, world);
    CheckSceneFiles(findings, world);
    CheckBlocks(findings, world);
    CheckTextures(findings, world);
    CheckMeshes(findings, world);
    CheckMarkers(findings, world);
    CheckPlayers(findings, world);
    CheckSpawnPoints(findings, world);
    CheckBodies(findings, world);
    CheckSurfaces(findings, world);
    CheckWords(findings, world);
    CheckViews(findings, world);
    CheckGroupLevels(findings, world);
    CheckTrackValues(findings, world);
    CheckLights(findings, world);
    CheckLamps(findings, world);
    CheckGroups(findings, world);
    CheckKeyTracks(findings, world);
    Walks walks = WalkThrough(*world.scene);
    CheckWays(findings, world, walks);
    findings.Sort();
    return walks;
}

int Run(const Options& options) {
    const std::string obj = options.obj.empty() ? "" : std::filesystem::absolute(options.obj).string();
    const std::string picture =
        options.picture.empty() ? "" : std::filesystem::absolute(options.picture).string();
    World world;
    const std::string settings = Enter(options.world, world);
    if (!world.ReadSettings(settings)) {
        std::cerr << world.shownFolder << settings
                  << ": error: can't be opened; the folder of a world holds a settings.atr\n";
        return wrongUsage;
    }
    Findings findings;
    const Walks walks = Judge(findings, world);
    if (options.list) {
        PrintWorld(std::cout, world);
    }
    if (!obj.empty()) {
        const std::string failed = ExportObj(world, obj);
        if (!failed.empty()) {
            std::cerr << failed << ": error: can't be written\n";
            return wrongUsage;
        }
    }
    const std::string failed = picture.empty() ? "" : SaveFile(picture, DrawPlan(world, findings));
    if (!failed.empty()) {
        std::cerr << picture << ": error: can't be written: " << failed << "\n";
        return wrongUsage;
    }
    if (options.json) {
        PrintFindingsAsJson(std::cout, findings);
    } else {
        PrintFindings(std::cout, findings, !picture.empty());
        PrintCost(std::cout, world);
        PrintWays(std::cout, walks);
        const int errors = findings.ErrorCount();
        std::cout << Counted(errors, "error") << ", "
                  << Counted(static_cast<int>(findings.list.size()) - errors, "warning") << "\n";
    }
    return findings.list.empty() ? clean : found;
}

}  // namespace

int main(int argumentCount, char** arguments) {
    Options options;
    const int exitCode = ReadOptions(options, argumentCount, arguments);
    if (exitCode >= 0) {
        return exitCode;
    }
    try {
        return Run(options);
    } catch (const std::exception& failure) {
        std::cerr << "check_scene: error: " << failure.what() << "\n";
        return wrongUsage;
    }
}
