#pragma once

#include <cstdint>
#include <memory>

#include "math/vector.h"

/// An animation of small relative moves, one key a frame. All four arrays hold `keyCount` entries.
struct KeyTrack {
    std::int32_t keyCount = 0;
    std::int32_t currentKey = 0;  ///< next key to apply: 0 at rest, `keyCount` when exhausted
    std::unique_ptr<Vector[]> keyTranslations;
    std::unique_ptr<Vector[]> keyAxes;
    std::unique_ptr<float[]> keyAngles;   ///< radians; not initialised
    std::unique_ptr<Vector[]> keyExtras;  ///< read from the file and kept; playback doesn't use it

    KeyTrack() : KeyTrack(100) {}
    explicit KeyTrack(std::int32_t newKeyCount);
    /// Keeps as many keys as fit; new ones are zero, their angles not initialised. Not for a track that
    /// is being played: `currentKey` stays.
    void Resize(std::int32_t newKeyCount);
    void CopyTo(KeyTrack& destination) const;
};
