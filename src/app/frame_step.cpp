#include "app/frame_step.h"

#include "app/motion_checksum.h"
#include "engine/engine.h"
#include "engine/singletons.h"
#include "platform/run.h"
#include "scene/scene.h"

namespace {

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

}  // namespace

bool StepFrame() {
    if (!PumpMessages()) {
        return false;
    }
    theEngine->SampleInput();
    theScene->StepWorld();
    if (RunIsOn()) {
        EndRunFrame(MotionChecksum(*theScene));
    }
    return true;
}
