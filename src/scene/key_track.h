#pragma once

#include <cstdint>
#include <memory>

#include "math/vector.h"

/// An animation of small relative moves, one key a frame. All four arrays hold `keyCount` entries; without
/// keys they are null.
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

/// Releases what `MakeKeyTracks` has made.
struct KeyTrackRelease {
    std::int32_t count = 0;

    void operator()(KeyTrack* tracks) const;
};
using KeyTracks = std::unique_ptr<KeyTrack[], KeyTrackRelease>;

/// Tracks of `keyCount` keys each: where they are filled at once, those of a default track would be made
/// for nothing, and a thousand empty ones would ask for megabytes.
KeyTracks MakeKeyTracks(std::int32_t count, std::int32_t keyCount);
