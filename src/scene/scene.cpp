#include "scene/scene.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "platform/message_box.h"
#include "platform/windows1250.h"

namespace {

/// Moves the records into a longer array, all of whose new records are constructed. `capacity` records
/// are allocated, `count` of them in use so far.
template <typename Record>
void Reserve(std::unique_ptr<Record[]>& records, std::int32_t count, std::int32_t capacity) {
    auto grown = std::make_unique<Record[]>(static_cast<std::size_t>(capacity));
    // Nothing refers to the old records afterwards, so they may hand over what they own.
    std::move(records.get(), records.get() + count, grown.get());
    records = std::move(grown);
}

/// Makes room for n more records and counts them in. More than indices can name can't be had, which
/// the allocation then finds out. For an array that grows record by record `capacity` remembers the room
/// there is: doubling it, n additions cost n moves.
template <typename Record>
void Append(std::unique_ptr<Record[]>& records, std::int32_t& count, std::int32_t n,
            std::int32_t* capacity = nullptr) {
    if (n <= 0) {
        return;
    }
    constexpr std::int64_t most = std::numeric_limits<std::int32_t>::max();
    const auto wanted = static_cast<std::int32_t>(std::min(most, std::int64_t{count} + n));
    if (capacity == nullptr) {
        Reserve(records, count, wanted);
    } else if (wanted > *capacity) {
        *capacity = static_cast<std::int32_t>(
            std::min(most, std::max(std::int64_t{wanted}, 2 * std::int64_t{*capacity})));
        Reserve(records, count, *capacity);
    }
    count = wanted;
}

}  // namespace

void Scene::AddObjects(std::int32_t n) {
    Append(objects, objectCount, n);
}

void Scene::AddSprites(std::int32_t n) {
    Append(sprites, spriteCount, n);
}

void Scene::AddPlayers(std::int32_t n) {
    Append(players, playerCount, n);
}

void Scene::AddGroups(std::int32_t n) {
    Append(groups, groupCount, n, &groupCapacity);
}

void Scene::AddTextures(std::int32_t n) {
    Append(textures, textureCount, n, &textureCapacity);
}

void Scene::AddLights(std::int32_t n) {
    Append(lights, lightCount, n, &lightCapacity);
}

std::int32_t Scene::FindObject(const std::string& name) const {
    for (std::int32_t id = 0; id < objectCount; id++) {
        if (objects[id].name == name) {
            return id;
        }
    }
    return -1;
}

Object* Scene::pGetObject(const std::string& name) {
    const std::int32_t id = FindObject(name);
    if (id == -1) {
        MessageBoxA(nullptr, "Objekt hledaný funkcí pGetObject nebyl nalezen."_1250, ":-(", MB_OK);
        return nullptr;
    }
    return &objects[id];
}

std::int32_t Scene::FindTexture(const std::string& name) const {
    for (std::int32_t index = 0; index < textureCount; index++) {
        if (name.find(textures[index].name) != std::string::npos) {
            return index;
        }
    }
    return -1;
}

void Scene::MakeUniqueObjectName(const std::string& name, std::string& result) const {
    std::string candidate = name;
    for (int counter = 1; FindObject(candidate) != -1; counter++) {
        candidate = name + std::to_string(counter);
    }
    result = candidate;
}
