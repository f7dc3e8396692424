#pragma once

#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <system_error>

#include "engine/engine.h"
#include "engine/singletons.h"
#include "scene/scene.h"
#include "services/log.h"
#include "services/timer.h"

// What the fuzzers share: a folder of their own to write the bytes into as files, and the singletons that
// the readers expect, without a window.

/// Makes a fresh folder the working directory, once for the process, and gives its path. The library ends
/// fuzzers without cleaning up, so the next one clears away what those before have left.
inline const std::filesystem::path& FuzzFolder() {
    static const std::filesystem::path folder = [] {
        const std::string stem = "engine-fuzz-";
        for (const auto& entry :
             std::filesystem::directory_iterator(std::filesystem::temp_directory_path())) {
            const std::string name = entry.path().filename().string();
            if (name.starts_with(stem) && !std::filesystem::exists("/proc/" + name.substr(stem.size()))) {
                std::error_code error;  // another fuzzer may be clearing it away
                std::filesystem::remove_all(entry.path(), error);
            }
        }
        const std::filesystem::path made =
            std::filesystem::temp_directory_path() / (stem + std::to_string(getpid()));
        std::filesystem::create_directory(made);
        std::filesystem::current_path(made);
        return made;
    }();
    return folder;
}

inline void WriteFuzzFile(const char* name, const char* bytes, std::size_t size) {
    std::ofstream(FuzzFolder() / name, std::ios::binary).write(bytes, static_cast<std::streamsize>(size));
}

/// The singletons, fresh for one input; so is the file of the log.
struct FuzzWorld {
    std::unique_ptr<Log> log = (FuzzFolder(), std::make_unique<Log>());
    std::unique_ptr<Timer> timer = std::make_unique<Timer>();
    std::unique_ptr<Engine> engine = std::make_unique<Engine>();
    std::unique_ptr<Scene> scene = std::make_unique<Scene>();

    FuzzWorld() {
        theLog = log.get();
        theTimer = timer.get();
        theEngine = engine.get();
        theScene = scene.get();
        engine->SetLog(theLog);
        scene->SetLog(theLog);
        scene->SetTimer(theTimer);
    }
    ~FuzzWorld() {
        theLog = nullptr;
        theTimer = nullptr;
        theEngine = nullptr;
        theScene = nullptr;
    }
};

/// Replaces every occurrence: for words that end the process by design.
inline void Defuse(std::string& text, const std::string& word, const std::string& harmless) {
    for (std::size_t at = 0; (at = text.find(word, at)) != std::string::npos; at += harmless.size()) {
        text.replace(at, word.size(), harmless);
    }
}
