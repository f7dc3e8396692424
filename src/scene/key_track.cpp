#include "scene/key_track.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace {

/// Replaces the array by one of `newCount` values with as many of the first old ones as there are. Null for
/// no values: most tracks of a file may be empty.
template <typename Value>
void ResizeKeys(std::unique_ptr<Value[]>& array, std::int32_t oldCount, std::int32_t newCount) {
    assert(oldCount >= 0 && newCount >= 0);
    std::unique_ptr<Value[]> resized;
    if (newCount > 0) {
        resized = std::make_unique_for_overwrite<Value[]>(static_cast<std::size_t>(newCount));
    }
    std::copy_n(array.get(), std::min(oldCount, newCount), resized.get());
    array = std::move(resized);
}

}  // namespace

KeyTrack::KeyTrack(std::int32_t newKeyCount) {
    Resize(newKeyCount);
}

void KeyTrack::Resize(std::int32_t newKeyCount) {
    ResizeKeys(keyTranslations, keyCount, newKeyCount);
    ResizeKeys(keyAxes, keyCount, newKeyCount);
    ResizeKeys(keyAngles, keyCount, newKeyCount);
    ResizeKeys(keyExtras, keyCount, newKeyCount);
    keyCount = newKeyCount;
}

void KeyTrack::CopyTo(KeyTrack& destination) const {
    if (destination.keyCount != keyCount) {
        destination.Resize(keyCount);
    }
    std::copy_n(keyTranslations.get(), keyCount, destination.keyTranslations.get());
    std::copy_n(keyAxes.get(), keyCount, destination.keyAxes.get());
    std::copy_n(keyAngles.get(), keyCount, destination.keyAngles.get());
    std::copy_n(keyExtras.get(), keyCount, destination.keyExtras.get());
    destination.currentKey = currentKey;
}

void KeyTrackRelease::operator()(KeyTrack* tracks) const {
    std::destroy_n(tracks, count);
    std::allocator<KeyTrack>().deallocate(tracks, static_cast<std::size_t>(count));
}

KeyTracks MakeKeyTracks(std::int32_t count, std::int32_t keyCount) {
    KeyTrack* tracks = std::allocator<KeyTrack>().allocate(static_cast<std::size_t>(count));
    for (std::int32_t track = 0; track < count; track++) {
        std::construct_at(tracks + track, keyCount);
    }
    return KeyTracks(tracks, KeyTrackRelease{count});
}
