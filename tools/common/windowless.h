#pragma once

#include "engine/engine.h"
#include "engine/singletons.h"
#include "scene/scene.h"
#include "services/log.h"
#include "services/timer.h"

/// The engine's singletons without a window and without player control, for programs that only load worlds.
struct Windowless {
    Log log;
    Timer timer;
    Engine engine;
    Scene scene;

    Windowless() {
        theLog = &log;
        theTimer = &timer;
        theEngine = &engine;
        theScene = &scene;
        engine.SetLog(theLog);
        scene.SetLog(theLog);
        scene.SetTimer(&timer);
    }
    Windowless(const Windowless&) = delete;
    Windowless& operator=(const Windowless&) = delete;
    ~Windowless() {
        theLog = nullptr;
        theTimer = nullptr;
        theEngine = nullptr;
        theScene = nullptr;
    }
};
