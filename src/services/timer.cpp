#include "services/timer.h"

#include "platform/clock.h"
#include "platform/run.h"

Timer::Timer() : lastLoopTick(timeGetTime()), lastTick(lastLoopTick) {}

void Timer::TickFrame() {
    const std::uint32_t now = timeGetTime();
    frameTime = static_cast<std::int32_t>(now - lastTick);
    lastTick = now;
}

void Timer::TickLoop() {
    const std::uint32_t now = timeGetTime();
    loopTime = ThroughRun(RunItemKind::TurnTime, [&] {
        return RunValues{static_cast<std::int32_t>(now - lastLoopTick)};
    })[0];  // it is to be seen in the picture
    lastLoopTick = now;
}

void Timer::LimitFrameRate() {
    TickLoop();
    TickFrame();
    if (frameTime < framePeriod) {
        const std::uint32_t start = timeGetTime();
        while (static_cast<std::int32_t>(timeGetTime() - start) < framePeriod - frameTime) {
        }
    }
    // From here the next frame's work is measured, so that the wait doesn't count into it.
    TickFrame();
}

float Timer::ScaleByFrameTime(float value) const {
    if (frameTime == 0 || referenceSpeed == 0) {
        return value;
    }
    return 1.0f / (static_cast<float>(referenceSpeed) / static_cast<float>(frameTime)) * value;
}
