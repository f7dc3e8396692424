#pragma once

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "engine/engine.h"
#include "engine/singletons.h"
#include "scene/scene.h"
#include "services/log.h"
#include "services/timer.h"

// What the fuzzers share: a folder of their own to write the bytes into as files, and the singletons that
// the readers expect, without a window.

/// Makes a fresh folder the working directory, once for the process, and gives its path.
inline const std::filesystem::path& FuzzFolder() {
    static const std::filesystem::path folder = [] {
        std::string pattern = (std::filesystem::temp_directory_path() / "engine-fuzz-XXXXXX").string();
        const std::filesystem::path made = mkdtemp(pattern.data());
        std::filesystem::current_path(made);
        std::atexit([] { std::filesystem::remove_all(FuzzFolder()); });
        return made;
    }();
    return folder;
}

inline void WriteFuzzFile(const char* name, const char* bytes, std::size_t size) {
    std::ofstream(FuzzFolder() / name, std::ios::binary).write(bytes, static_cast<std::streamsize>(size));
}

/// The singletons, fresh for one input. There is no log: its file would grow for ever.
struct FuzzWorld {
    std::unique_ptr<Timer> timer = std::make_unique<Timer>();
    std::unique_ptr<Engine> engine = std::make_unique<Engine>();
    std::unique_ptr<Scene> scene = std::make_unique<Scene>();

    FuzzWorld() {
        FuzzFolder();
        theTimer = timer.get();
        theEngine = engine.get();
        theScene = scene.get();
        scene->SetTimer(theTimer);
    }
    ~FuzzWorld() {
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
