#include "loading/object_names.h"

#include "scene/scene.h"

ObjectNames::ObjectNames(const Scene& scene) {
    bearers.reserve(static_cast<std::size_t>(scene.objectCount));
    for (std::int32_t id = 0; id < scene.objectCount; id++) {
        bearers[scene.objects[id].name]++;
    }
}

std::string ObjectNames::MakeUnique(const std::string& name) {
    // The one name that an object may give up is the default of new records. It ends in no digit, so the
    // numbered names behind `lastNumbers` can't be meant.
    if (!bearers.contains(name)) return name;
    std::int32_t& number = lastNumbers[name];
    std::string candidate;
    do {
        number++;
        candidate = name + std::to_string(number);
    } while (bearers.contains(candidate));
    return candidate;
}

void ObjectNames::Rename(const std::string& before, const std::string& after) {
    const auto old = bearers.find(before);
    old->second--;
    if (old->second == 0) bearers.erase(old);
    bearers[after]++;
}
