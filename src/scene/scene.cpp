#include "scene/scene.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "platform/message_box.h"
#include "platform/windows1250.h"

namespace {

/// Counts n more records in, after moving the others into a longer array if need be. There is room to spare
/// in it, half of what is wanted at the most: however many records come one by one, each is moved three
/// times on average. More than indices can name can't be had, which the allocation then finds out.
template <typename Record>
void Append(std::unique_ptr<Record[]>& records, std::int32_t& count, std::int32_t& capacity,
            std::int32_t n) {
    if (n <= 0) {
        return;
    }
    constexpr std::int64_t most = std::numeric_limits<std::int32_t>::max();
    const auto wanted = static_cast<std::int32_t>(std::min(most, std::int64_t{count} + n));
    if (wanted > capacity) {
        const std::int64_t roomy = std::int64_t{capacity} + capacity / 2;
        capacity = static_cast<std::int32_t>(std::min(most, std::max(std::int64_t{wanted}, roomy)));
        auto grown = std::make_unique<Record[]>(static_cast<std::size_t>(capacity));
        // Nothing refers to the old records afterwards, so they may hand over what they own.
        std::move(records.get(), records.get() + count, grown.get());
        records = std::move(grown);
    }
    count = wanted;
}

}  // namespace

void Scene::AddObjects(std::int32_t n) {
    Append(objects, objectCount, objectCapacity, n);
}

void Scene::AddSprites(std::int32_t n) {
    Append(sprites, spriteCount, spriteCapacity, n);
}

void Scene::AddPlayers(std::int32_t n) {
    Append(players, playerCount, playerCapacity, n);
}

void Scene::AddGroups(std::int32_t n) {
    Append(groups, groupCount, groupCapacity, n);
}

void Scene::AddTextures(std::int32_t n) {
    Append(textures, textureCount, textureCapacity, n);
}

void Scene::AddLights(std::int32_t n) {
    Append(lights, lightCount, lightCapacity, n);
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
