#include "scene/key_track.h"

#include <algorithm>
#include <utility>

namespace {

/// Replaces the array by one of `newCount` values with as many of the first old ones as there are.
template <typename Value>
void ResizeKeys(std::unique_ptr<Value[]>& array, std::unique_ptr<Value[]> resized, std::int32_t oldCount,
                std::int32_t newCount) {
    std::copy_n(array.get(), std::min(oldCount, newCount), resized.get());
    array = std::move(resized);
}

}  // namespace

KeyTrack::KeyTrack(std::int32_t newKeyCount) {
    Resize(newKeyCount);
}

void KeyTrack::Resize(std::int32_t newKeyCount) {
    const auto count = static_cast<std::size_t>(newKeyCount);
    ResizeKeys(keyTranslations, std::make_unique<Vector[]>(count), keyCount, newKeyCount);
    ResizeKeys(keyAxes, std::make_unique<Vector[]>(count), keyCount, newKeyCount);
    ResizeKeys(keyAngles, std::make_unique_for_overwrite<float[]>(count), keyCount, newKeyCount);
    ResizeKeys(keyExtras, std::make_unique<Vector[]>(count), keyCount, newKeyCount);
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
