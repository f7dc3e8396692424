#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "engine/engine.h"
#include "engine/singletons.h"
#include "memory_files.h"
#include "scene/scene.h"
#include "services/log.h"
#include "services/timer.h"

// What the fuzzers share: the singletons that the readers expect, without a window.

/// The singletons, fresh for one input.
struct FuzzWorld {
    std::unique_ptr<Log> log = std::make_unique<Log>();
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
