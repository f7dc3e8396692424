#include "app/reload.h"

#include <GL/gl.h>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "app/frame_step.h"
#include "app/player_place.h"
#include "app/window_procedure.h"
#include "app/world_loading.h"
#include "engine/engine.h"
#include "engine/singletons.h"
#include "platform/clock.h"
#include "platform/cursor.h"
#include "platform/file_watch.h"
#include "platform/gl_context.h"
#include "platform/key_codes.h"
#include "platform/message_box.h"
#include "platform/run.h"
#include "process/close_request.h"
#include "scene/scene.h"
#include "services/log.h"
#include "services/timer.h"

namespace {

struct Watch {
    bool alwaysFromStart = false;
    bool started = false;
    bool lastOneIsBroken = false;
    bool changedMeanwhile = false;  ///< while the world was loaded
    bool restartKeyWasDown = false;
    std::vector<RunFile> filesTried;  ///< when the world was last loaded, or couldn't be
    pid_t checker = -1;               ///< check_scene, while it may run
};
std::unique_ptr<Watch> watch;  // null: nothing is watched

void WatchFiles() {
    std::vector<std::string> folders = {"."};
    for (const RunFile& file : FilesRead()) {
        const std::string folder = std::filesystem::path(file.name).parent_path().string();
        if (!folder.empty()) {
            folders.push_back(folder);
        }
    }
    WatchFolders(folders, theLog->fileName);
}

/// The program that says what is wrong with a world, as it stands beside this one; empty without it.
std::string CheckProgram() {
    std::error_code ignored;
    const std::filesystem::path here =
        std::filesystem::read_symlink("/proc/self/exe", ignored).parent_path();
    for (const char* name : {"check_scene", "tools/check_scene"}) {
        if (access((here / name).c_str(), X_OK) == 0) {
            return (here / name).string();
        }
    }
    return {};
}

/// Its findings come to the terminal while the play goes on.
void StartCheck() {
    static const std::string program = CheckProgram();
    if (watch->checker > 0 && waitpid(watch->checker, nullptr, WNOHANG) == 0) {
        return;  // the last one still runs
    }
    watch->checker = program.empty() ? -1 : fork();
    if (watch->checker == 0) {
        dup2(STDERR_FILENO, STDOUT_FILENO);
        execl(program.c_str(), program.c_str(), ".", static_cast<char*>(nullptr));
        _exit(2);
    }
}

/// In the place of the old engine comes one that has pressed no key yet, with the same window.
void ReplaceEngine() {
    auto* fresh = new Engine;
    fresh->windowClass = theEngine->windowClass;
    fresh->window = theEngine->window;
    fresh->deviceContext = theEngine->deviceContext;
    fresh->glContext = theEngine->glContext;
    fresh->windowStyle = theEngine->windowStyle;
    fresh->SetLog(theLog);
    theEngine->SetLog(nullptr);  // it isn't the program that ends
    delete theEngine;
    theEngine = fresh;
    delete theTimer;
    theTimer = new Timer;
}

/// The font stays: it belongs to the window.
void ReplaceWorld() {
    for (std::int32_t i = 0; i < theScene->textureCount; i++) {
        glDeleteTextures(1, &theScene->textures[i].glName);
    }
    const std::uint32_t font = theScene->fontListBase;
    delete theScene;
    ReplaceEngine();
    theScene = new Scene;
    theScene->SetTimer(theTimer);
    theScene->SetLog(theLog);
    theScene->fontListBase = font;
    glPopAttrib();
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    theEngine->ReadSettings(settingsFile);
    LoadWorld();
}

/// Tries it in a copy of this process, without OpenGL: some damage ends the process that meets it.
bool LoadsWithoutABox() {
    wglMakeCurrent(nullptr, nullptr);
    const pid_t child = fork();
    if (child == 0) {
        std::atexit([] { _exit(1); });  // what belongs to display and window is the other one's
        RequestClose();                 // no box is shown
        theLog = nullptr;
        const int before = MessageBoxCount();
        ReplaceWorld();
        _exit(MessageBoxCount() == before ? 0 : 1);
    }
    int status = 0;
    const bool ended = child > 0 && waitpid(child, &status, 0) == child;
    wglMakeCurrent(theEngine->deviceContext, theEngine->glContext);
    return ended && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

/// The files of the world that is loaded now are those that count.
void TakeInFilesRead() {
    WatchFiles();
    watch->filesTried = FilesRead();
    watch->changedMeanwhile = FilesNow() != FilesRead();
}

void ReportPlayers() {
    for (std::int32_t i = 0; i < theScene->playerCount; i++) {
        const std::string fault = PlaceFault(*theScene, i);
        if (!fault.empty()) {
            std::fprintf(stderr, "engine: note: player %d %s; F5 begins at the start\n", i, fault.c_str());
        }
    }
}

void Reload(bool fromStart) {
    watch->changedMeanwhile = false;
    watch->lastOneIsBroken = !LoadsWithoutABox();
    if (watch->lastOneIsBroken) {
        std::fputs("engine: note: the world stays as it was until its files are right\n", stderr);
        return;
    }
    const DWORD start = timeGetTime();
    ForgetFilesRead();
    ReplaceWorld();
    TakeInFilesRead();
    if (fromStart) {
        KeepRun();
    }
    CatchUpWithRun();
    // What the engine learned when the window was shown.
    WindowProcedure(theEngine->window, WM_SIZE, 0, 0);
    WindowProcedure(theEngine->window, WM_MOVE, 0, 0);
    int frames = 0;
    for (; RunCatchesUp(); frames++) {
        StepFrame();
    }
    std::fprintf(stderr, "engine: the world is loaded anew, with %d frames in %u ms\n", frames,
                 timeGetTime() - start);
    ForgetCursorPosition();
    if (!fromStart) {
        ReportPlayers();
    }
}

bool RestartIsAsked() {
    const bool down = theEngine->keyState[keyF5] != 0;
    const bool before = std::exchange(watch->restartKeyWasDown, down);
    return down && !before;
}

}  // namespace

void WatchWorld(bool fromStart) {
    watch = std::make_unique<Watch>();
    watch->alwaysFromStart = fromStart;
    KeepRun();
}

bool WorldIsWatched() {
    return watch != nullptr;
}

void KeepGlState() {
    glPushAttrib(GL_ALL_ATTRIB_BITS);
}

void ReloadIfChanged() {
    if (theEngine == nullptr || theEngine->glContext == nullptr) {
        return;
    }
    if (!std::exchange(watch->started, true)) {
        TakeInFilesRead();
    }
    const bool restart = RestartIsAsked();
    if (!restart && !ChangesHaveSettled() && !watch->changedMeanwhile) {
        return;
    }
    WatchFiles();  // before they are read, so that no later change is missed
    const std::vector<RunFile> files = FilesNow();
    if (restart || watch->lastOneIsBroken || files != watch->filesTried) {
        watch->filesTried = files;
        Reload(restart || watch->alwaysFromStart);
        theEngine->keyState[keyF5] = watch->restartKeyWasDown ? 1 : 0;
        StartCheck();
    }
}
