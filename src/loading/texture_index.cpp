#include "loading/texture_index.h"

#include "scene/scene.h"

std::int32_t TextureIndex::Find(const Scene& scene, const std::string& name) {
    for (; knownCount < scene.textureCount; knownCount++) {
        const std::string& known = scene.textures[knownCount].name;
        firstOfName.emplace(known, knownCount);  // which leaves an earlier texture of that name
        lengths.insert(known.size());
    }

    std::int32_t found = -1;
    for (const std::size_t length : lengths) {
        for (std::size_t start = 0; start + length <= name.size(); start++) {
            const auto entry = firstOfName.find(std::string_view(name).substr(start, length));
            if (entry != firstOfName.end() && (found == -1 || entry->second < found)) {
                found = entry->second;
            }
        }
    }
    return found;
}
