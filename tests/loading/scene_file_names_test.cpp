#include <gtest/gtest.h>

#include <random>

#include "loading/object_names.h"
#include "scene/scene.h"

namespace {

// Names of one or two letters out of few, digits among them, so that a number that is put behind one name
// often makes another.
std::string RandomName(std::mt19937& random) {
    if (random() % 8 == 0) return "NoName";
    std::string name;
    for (std::uint32_t length = random() % 4; length > 0; length--) {
        name += "a12"[random() % 3];
    }
    return name;
}

TEST(ObjectNames, GiveWhatTheSceneItselfGives) {
    std::mt19937 random(1);
    for (int round = 0; round < 50; round++) {
        Scene scene;
        for (int file = 0; file < 3; file++) {
            const std::int32_t first = scene.objectCount;
            scene.AddObjects(static_cast<std::int32_t>(random() % 60));
            ObjectNames names(scene);
            // The last one stays unnamed, as after a damaged file.
            for (std::int32_t id = first; id < scene.objectCount - 1; id++) {
                const std::string name = RandomName(random);
                std::string expected;
                scene.MakeUniqueObjectName(name, expected);
                scene.objects[id].name = names.Rename(scene.objects[id].name, name);
                ASSERT_EQ(scene.objects[id].name, expected);
            }
        }
    }
}

}  // namespace
