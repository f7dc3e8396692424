#pragma once

#include <SDL.h>
#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <string>

#include "app/entry.h"
#include "engine/engine.h"
#include "engine/singletons.h"
#include "platform/entry.h"
#include "platform/run.h"
#include "platform/video.h"
#include "scene/scene.h"
#include "services/log.h"
#include "services/timer.h"
#include "simulation/player_control.h"
#include "support/loaded_libraries.h"
#include "support/temporary_folder.h"
#include "support/virtual_display.h"

/// The engine in this process, started as its program starts it, in a folder and on a display of its own.
/// The frame loop has ended at once: a test takes its place, frame by frame.
struct RunningEngine {
    TemporaryFolder folder;
    VirtualDisplay display;
    HWND window = nullptr;

    explicit RunningEngine(WindowManager manager = WindowManager::None) : display(manager) {}
    ~RunningEngine() {
        if (theEngine != nullptr) {
            FreeWorld();
        }
        DestroyWindow(window);
        MSG message;
        GetMessageA(&message, nullptr, 0, 0);  // the quit message
        UnregisterClassA("Engine", nullptr);
        delete std::exchange(theTimer, nullptr);
        delete std::exchange(thePlayerControl, nullptr);
        KeepLoadedLibraries();
        StopVideo();  // before the display goes
    }
    RunningEngine(const RunningEngine&) = delete;
    RunningEngine& operator=(const RunningEngine&) = delete;

    /// What the engine itself leaves to the end of its process.
    static void FreeWorld() {
        theScene->~Scene();
        new (theScene) Scene;
    }
    /// Returns when the window has the keyboard.
    void Start(const std::string& settings) {
        WriteWholeFile("settings.atr", settings);
        PostQuitMessage(0);
        EXPECT_EQ(WinMain(nullptr, nullptr, nullptr, SW_SHOW), 1);
        window = theEngine->window;
        EXPECT_TRUE(FramesUntil([] { return GetActiveWindow() == theEngine->window; }));
    }
    /// One turn of the frame loop, without waiting. False when the quit message has come.
    bool Frame() {
        MSG message;
        while (PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE) != FALSE) {
            if (theEngine == nullptr) {
                return false;
            }
            GetMessageA(&message, nullptr, 0, 0);
            if (message.message == WM_DESTROY || message.message == WM_CLOSE) {
                FreeWorld();
            }
            DispatchMessageA(&message);
        }
        theEngine->SampleInput();
        theScene->StepWorld();
        if (RunIsOn()) {
            EndRunFrame(0);
        }
        theScene->RenderFrame(*theEngine);
        return true;
    }
    void Frames(int count) {
        while (count-- > 0) {
            Frame();
        }
    }
    template <typename Condition>
    bool FramesUntil(Condition condition) {
        return WaitUntil([&] { return Frame() && condition(); });
    }
};
