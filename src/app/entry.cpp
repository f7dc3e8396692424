#include "app/entry.h"

#include <cstdint>
#include <cstdlib>
#include <new>

#include "app/free_camera.h"
#include "app/motion_checksum.h"
#include "engine/engine.h"
#include "engine/singletons.h"
#include "platform/display_mode.h"
#include "platform/entry.h"
#include "platform/message_box.h"
#include "platform/run.h"
#include "platform/windows1250.h"
#include "process/viewpoint.h"
#include "render/gl_state.h"
#include "scene/scene.h"
#include "services/log.h"
#include "services/timer.h"
#include "simulation/player_control.h"

namespace {

constexpr int exitCode = 1;  // of every ending
constexpr const char* settingsFile = "settings.atr";
constexpr std::int32_t startSpriteCount = 20;
constexpr std::int32_t additiveSprite = 3;

/// The loop's message record. The teardown runs inside the pump and takes the engine's own along, so
/// another one stands in for what the pump still receives then.
MSG& LoopMessage() {
    static MSG lateMessage;
    return theEngine != nullptr ? theEngine->message : lateMessage;
}

/// Dispatches all that waits; false once the quit message has come.
bool PumpMessages() {
    while (PeekMessageA(&LoopMessage(), nullptr, 0, 0, PM_NOREMOVE) != FALSE) {
        if (GetMessageA(&LoopMessage(), nullptr, 0, 0) == FALSE) {
            return false;
        }
        TranslateMessage(&LoopMessage());
        DispatchMessageA(&LoopMessage());
    }
    return true;
}

void RunFrameLoop() {
    while (PumpMessages()) {
        theEngine->SampleInput();
        theScene->StepWorld();
        if (RunIsOn()) {
            EndRunFrame(MotionChecksum(*theScene));
        }
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

void PlaceSprites() {
    // A generator of our own, so that the layout is the same with every C library.
    std::uint32_t state = 1;
    const auto next = [&state] {
        state = state * 214013u + 2531011u;  // linear congruential
        return static_cast<std::int32_t>((state >> 16 & 0x7FFFu) % 10);
    };
    for (std::int32_t i = 0; i < startSpriteCount; i++) {
        Vector& position = theScene->sprites[i].position;
        position.x = static_cast<float>(-next());
        position.y = static_cast<float>(-next());
        position.z = static_cast<float>(next());
    }
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
    theScene->ReportGlCapabilities();
    theScene->BuildFont(*theEngine, theScene->fontName);
    theEngine->LoadMeshes(settingsFile);
    theScene->AddSprites(startSpriteCount);
    PlaceSprites();
    theScene->sprites[additiveSprite].blendMode = 0;
    if (theViewpoint) {
        const RECT& window = theEngine->windowRect;
        LookFrom(*theScene, *theViewpoint, window.right - window.left, window.bottom - window.top);
    }

    RunFrameLoop();
    return exitCode;
}
