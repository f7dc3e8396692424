#include "app/entry.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <new>

#include "app/frame_step.h"
#include "app/free_camera.h"
#include "app/reload.h"
#include "app/world_loading.h"
#include "engine/engine.h"
#include "engine/singletons.h"
#include "platform/display_mode.h"
#include "platform/entry.h"
#include "platform/message_box.h"
#include "platform/run.h"
#include "platform/windows1250.h"
#include "process/film.h"
#include "process/viewpoint.h"
#include "render/gl_state.h"
#include "scene/scene.h"
#include "services/log.h"
#include "services/timer.h"
#include "simulation/player_control.h"

namespace {

constexpr int exitCode = 1;  // of every ending

void RunFrameLoop() {
    while (StepFrame()) {
        if (!FramesAreShown()) {
            continue;
        }
        if (theEngine->safeMode) {
            theScene->RenderFrameSafe(*theEngine);
        } else {
            theScene->RenderFrame(*theEngine);
        }
        UpdateWindow(theEngine->window);
        theTimer->LimitFrameRate();
        if (WorldIsWatched()) {
            ReloadIfChanged();
        }
    }
}

}  // namespace

void OutOfMemoryHandler() {
    static bool entered = false;
    if (entered) {
        std::_Exit(exitCode);  // not even the message found memory
    }
    entered = true;
    constexpr const char* text = "Nedostatek paměti pro operátor new"_1250;
    Log::Write(theLog, text);
    MessageBoxA(nullptr, text, "", MB_OK);
    std::exit(exitCode);
}

void TearDown() {
    ChangeDisplaySettingsA(nullptr, 0);
    joyReleaseCapture(JOYSTICKID1);
    ShowCursor(TRUE);
    ClipCursor(nullptr);
    if (theEngine->glContext != nullptr) {
        wglDeleteContext(theEngine->glContext);
    }
    if (theEngine->deviceContext != nullptr) {
        ReleaseDC(theEngine->window, theEngine->deviceContext);
    }
    PostQuitMessage(0);
    delete theEngine;
    theEngine = nullptr;
    // The record alone: the world's arrays and GL objects go with the process, which is quicker than
    // walking them.
    ::operator delete(theScene);
    theScene = nullptr;
    delete theLog;
    theLog = nullptr;
}

int WinMain(HINSTANCE instance, HINSTANCE previousInstance, char* commandLine, int showCommand) {
    std::set_new_handler(OutOfMemoryHandler);
    theTimer = new Timer;
    theLog = new Log;
    theEngine = new Engine;
    theScene = new Scene;
    thePlayerControl = new PlayerControl;
    theScene->SetTimer(theTimer);
    theEngine->SetLog(theLog);
    theScene->SetLog(theLog);

    // The settings decide the window's size and style, and create the players that scenes refer to.
    theEngine->ReadSettings(settingsFile);
    if (theEngine->fullScreen) {
        theEngine->SwitchToFullScreen();
    }
    theEngine->CreateMainWindow(instance, previousInstance, commandLine, showCommand);
    if (theEngine->glContext == nullptr) {
        PostQuitMessage(0);  // reported already; there is nothing to run in
    }
    InitGlState();
    if (WorldIsWatched()) {
        KeepGlState();
    }
    theScene->ReportGlCapabilities();
    theScene->BuildFont(*theEngine, theScene->fontName);
    LoadWorld();
    if (theViewpoint) {
        const RECT& window = theEngine->windowRect;
        LookFrom(*theScene, *theViewpoint, window.right - window.left, window.bottom - window.top);
    }

    SetFilmPeriod(std::max(theTimer->framePeriod, 1));
    RunFrameLoop();
    return exitCode;
}
