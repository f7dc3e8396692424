#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>
#include <map>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <vector>

#include "check_scene/checks.h"
#include "check_scene/file_kind.h"
#include "check_scene/obj_export.h"
#include "check_scene/plan.h"
#include "check_scene/report.h"
#include "check_scene/stand_ins.h"
#include "check_scene/world.h"
#include "process/options.h"
#include "process/save_file.h"

// Says to an author what is wrong with a world, before the world runs.

namespace {

constexpr const char* beforeOptions =
    R"(usage: check_scene [options] [FOLDER | SETTINGS]...

Loads the world of a folder as the engine does, without a display, and says what is wrong with it:
file:line: error or warning: what it is and what to do. FOLDER is the present one by default; SETTINGS is
a settings file of another name than settings.atr.

)";

constexpr const char* afterOptions = R"(
Exit code: 0 no error was found, 1 one was, 2 wrong usage. Colours come on a terminal, unless NO_COLOR is set.

Examples:
  check_scene                      the world of this folder
  check_scene garden               that of another one
  check_scene --list garden        what is in it
  check_scene --obj out.obj .      its geometry
  check_scene --picture plan.png . a plan of it
)";

struct Options {
    bool list = false;
    bool json = false;
    bool quiet = false;
    bool strict = false;
    std::string obj;
    std::string picture;
    std::vector<std::string> worlds;
};

/// Gives the exit code to end with at once, as everything has been said; below 0: go on.
int ReadOptions(Options& options, int count, char** arguments) {
    const Program program{
        "check_scene",
        beforeOptions,
        {{"list", nullptr,
          "print the world: settings, players, objects with sizes, markers and keys, textures, lights, "
          "groups",
          Into(options.list)},
         {"obj", "OUT.obj",
          "write the geometry for other programs, with OUT.mtl and the textures as PNG beside it",
          Into(options.obj)},
         {"picture", "FILE.png", "draw a plan of the world from above, with the findings as numbered marks",
          Into(options.picture)},
         {"json", nullptr, "print the findings as JSON, for editors; with --list the world as well",
          Into(options.json)},
         {"quiet", nullptr, "print the findings only", Into(options.quiet)},
         {"strict", nullptr, "warnings count as errors for the exit code", Into(options.strict)}},
        afterOptions};
    const Arguments rest = ReadArguments(program, count, arguments);
    options.worlds = rest.plain.empty() ? std::vector<std::string>{"."} : rest.plain;
    if (options.worlds.size() > 1 && !(options.obj + options.picture).empty()) {
        return RefuseArguments(program, "--obj and --picture are for one world");
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

/// Where settings are that aren't in their place.
std::string SettingsElsewhere() {
    for (const char* other : {"settings.atr.txt", "data/settings.atr", "settings.txt", "../settings.atr"}) {
        if (std::filesystem::exists(other)) {
            return std::string(", and there is ") + other;
        }
    }
    return {};
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

void Judge(Findings& findings, World& world) {
    if (HasTooManyPlayers(world)) {
        findings.Cause("players-too-many", world.AtSetting("*PLAYERCOUNT"),
                       "so many players exhaust the memory");
        return;
    }
    world.LoadScenes();
    CheckSettings(findings, world);
    CheckSceneFiles(findings, world);
    CheckBlocks(findings, world);
    CheckWorldAxes(findings, world);
    if (!findings.HasCause()) {
        CheckMeshes(findings, world);
    }
    if (findings.HasCause()) {
        findings.Sort();
        return;
    }
    CheckTextures(findings, world);
    CheckMarkers(findings, world);
    CheckPlayers(findings, world);
    CheckSpawnPoints(findings, world);
    CheckBodies(findings, world);
    CheckTwins(findings, world);
    CheckWords(findings, world);
    CheckViews(findings, world);
    CheckLights(findings, world);
    CheckLamps(findings, world);
    CheckGroups(findings, world);
    CheckKeyTracks(findings, world);
    world.walks = WalkThrough(*world.scene);
    CheckWays(findings, world);
    findings.Sort();
}

void Export(const Options& options, const World& world, const Findings& findings) {
    std::map<std::string, std::string> files;
    if (!options.obj.empty()) {
        files = ObjFiles(world, options.obj);
    }
    if (!options.picture.empty()) {
        files[options.picture] = DrawPlan(world, findings);
    }
    for (const auto& [path, bytes] : files) {
        const std::string reason = SaveFile(path, bytes);
        if (!reason.empty()) {
            throw std::runtime_error(std::string(path).append(" can't be written: ").append(reason));
        }
    }
}

bool ColoursAreWanted() {
    const char* refused = std::getenv("NO_COLOR");
    return isatty(STDOUT_FILENO) != 0 && (refused == nullptr || *refused == '\0');
}

void Print(const Options& options, const World& world, const Findings& findings) {
    if (options.list) {
        PrintListing(std::cout, JsonOf(world));
    }
    PrintFindings(std::cout, findings, !options.picture.empty(), ColoursAreWanted());
    if (!options.quiet) {
        PrintCost(std::cout, world);
        for (const std::string& note : findings.notes) {
            std::cout << note << '\n';
        }
        const int errors = findings.ErrorCount();
        std::cout << Counted(errors, "error") << ", "
                  << Counted(static_cast<int>(findings.list.size()) - errors, "warning")
                  << (findings.HasCause() ? "; what else there is shows when this is mended\n" : "\n");
    }
}

/// What all worlds together have given.
struct Outcome {
    int exitCode = 0;
    nlohmann::ordered_json findings = nlohmann::ordered_json::array();
    nlohmann::ordered_json worlds = nlohmann::ordered_json::array();
};

void CheckWorld(const Options& options, const std::string& name, Outcome& outcome) {
    theReports = {};
    World world;
    const std::string settings = Enter(name, world);
    if (std::filesystem::exists(std::filesystem::path(settings).replace_extension(".bin"))) {
        throw std::runtime_error(name + " is no settings file: give the folder of the world");
    }
    Findings findings;
    const std::string foreign = ForeignKind(settings, FileUse::Text);
    if (!foreign.empty()) {
        findings.Cause("file-foreign", {world.shownFolder + settings},
                       "this is no settings file; it " + foreign);
    } else if (!world.ReadSettings(settings)) {
        throw std::runtime_error(world.shownFolder + settings +
                                 " can't be opened; the folder of a world holds a settings.atr" +
                                 SettingsElsewhere());
    }
    if (foreign.empty()) {
        Judge(findings, world);
    }
    if (findings.ErrorCount() > 0 || (options.strict && !findings.list.empty())) {
        outcome.exitCode = std::max(outcome.exitCode, 1);
    }
    Export(options, world, findings);
    if (!options.json) {
        Print(options, world, findings);
        return;
    }
    for (const auto& finding : JsonOf(findings)) {
        outcome.findings.push_back(finding);
    }
    if (options.list) {
        outcome.worlds.push_back(JsonOf(world));
    }
}

int Run(Options& options) {
    for (std::string* path : {&options.obj, &options.picture}) {
        *path = path->empty() ? "" : std::filesystem::absolute(*path).string();
    }
    const std::filesystem::path start = std::filesystem::current_path();
    Outcome outcome;
    for (const std::string& name : options.worlds) {
        try {
            std::filesystem::current_path(start);
            CheckWorld(options, name, outcome);
        } catch (const std::exception& failure) {
            std::cerr << "check_scene: error: " << failure.what() << "\n";
            outcome.exitCode = wrongUsage;
        }
    }
    if (options.json && options.list) {
        std::cout
            << nlohmann::ordered_json{{"findings", outcome.findings}, {"worlds", outcome.worlds}}.dump(2)
            << "\n";
    } else if (options.json) {
        std::cout << outcome.findings.dump(2) << "\n";
    }
    return outcome.exitCode;
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
    } catch (const std::exception& failure) {  // of a folder that has been deleted
        std::cerr << "check_scene: error: " << failure.what() << "\n";
        return wrongUsage;
    }
}
