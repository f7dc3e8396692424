#include "loading/object_names.h"

#include "scene/scene.h"

void ObjectNames::TakeNewObjects(const Scene& scene) {
    // For few new ones the table grows by itself, which takes less of the memory that it never gives back.
    if (scene.objectCount / 2 > knownCount) {
        bearers.reserve(static_cast<std::size_t>(scene.objectCount));
    }
    for (; knownCount < scene.objectCount; knownCount++) {
        bearers[scene.objects[knownCount].name]++;
    }
}

std::string ObjectNames::Rename(const std::string& before, const std::string& wanted) {
    std::string after = TakeUnique(wanted);
    const auto old = bearers.find(before);
    old->second--;
    if (old->second == 0) {
        bearers.erase(old);
    }
    return after;
}

std::string ObjectNames::TakeUnique(const std::string& wanted) {
    // The one name that an object may give up is the default of new records. It ends in no digit, so the
    // numbered names after `lastNumbers` can't be meant.
    if (bearers.try_emplace(wanted, 1).second) {
        return wanted;
    }
    std::int32_t& number = lastNumbers[wanted];
    std::string candidate;
    do {
        number++;
        candidate = wanted + std::to_string(number);
    } while (!bearers.try_emplace(candidate, 1).second);
    return candidate;
}
