#pragma once

#include <cstdint>

/// Fixes the speed of the whole system: the world advances one step a frame whatever the time, and this
/// lets the frames through. All times are milliseconds.
struct Timer {
    std::uint32_t lastLoopTick;         ///< the clock at the last `TickLoop`, at first at construction
    std::int32_t loopTime = 0;          ///< one whole turn of the loop, the wait included
    std::uint32_t lastTick;             ///< the clock at the last `TickFrame`, at first at construction
    std::int32_t frameTime = 0;         ///< between the last two `TickFrame` calls
    std::int32_t referenceSpeed = 200;  ///< the frame time at which `ScaleByFrameTime` changes nothing
    std::int32_t framePeriod = 100;     ///< the shortest frame; 0 never waits

    Timer();
    void TickFrame();
    void TickLoop();
    /// The end of a frame: waits, holding the thread, until the frame has lasted `framePeriod`. A frame
    /// that took longer is not made up for later.
    void LimitFrameRate();
    /// @return value * frameTime / referenceSpeed, or the value itself if one of the two is 0.
    float ScaleByFrameTime(float value) const;
};
