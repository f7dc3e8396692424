#include <gtest/gtest.h>

#include <random>

#include "loading/object_names.h"
#include "loading/texture_index.h"
#include "scene/scene.h"
#include "text/attribute_text.h"
#include "text/block_index.h"

// What makes loading fast promises exactly what the plain searches give. Small alphabets make texts in
// which those trip over their own feet.

namespace {

struct RandomText {
    std::mt19937 random{1};

    std::string Make(const std::string& alphabet, unsigned maxLength) {
        std::string text(random() % (maxLength + 1), ' ');
        for (char& c : text) {
            c = alphabet[random() % alphabet.size()];
        }
        return text;
    }
};

TEST(BlockIndex, FindsWhatThePlainSearchFinds) {
    const std::string alphabets[] = {"ab {", "a1{}\n ", "ab{\n", "a{", "aab x{\t", "ab\xC8 {}", " \n{"};
    RandomText random;
    int found = 0;
    int missedAfterItsName = 0;
    for (int round = 0; round < 3000; round++) {
        const std::string& alphabet = alphabets[round % std::size(alphabets)];
        const std::string text = random.Make(alphabet, round % 50 == 0 ? 2000 : 80);
        const BlockIndex index(text);
        for (int i = 0; i < 20; i++) {
            // A word of the text itself is more likely to be there.
            std::string name = random.Make(alphabet, 4);
            if (i % 2 == 0 && !text.empty()) {
                name = text.substr(random.random() % text.size(), random.random() % (i % 4 == 0 ? 20 : 7));
            }
            TextStream plain{text};
            const bool wanted = FindAttributeBlock(name.c_str(), plain);
            const BlockIndex::Block* block = index.Find(name);
            ASSERT_EQ(block != nullptr, wanted) << "[" << name << "] in [" << text << "]";
            if (wanted) {
                ASSERT_EQ(block->brace + 1, plain.position) << "[" << name << "] in [" << text << "]";
                bool closed = false;
                ASSERT_EQ(block->end - block->brace - 1, ReadAttributeBlock(plain, &closed).size()) << text;
                ASSERT_EQ(block->isClosed, closed) << text;
            }
            found += wanted ? 1 : 0;
            missedAfterItsName += !wanted && text.find(name + "{") != std::string::npos ? 1 : 0;
        }
    }
    EXPECT_GT(found, 5000);
    EXPECT_GT(missedAfterItsName, 500) << "the quirks of the search have hardly been met";
}

TEST(TextureIndex, FindsTheTextureThatTheSceneFinds) {
    RandomText random;
    for (int round = 0; round < 200; round++) {
        Scene scene;
        TextureIndex index;
        for (int i = 0; i < 40; i++) {
            const std::string name = random.Make("ab.", 9);
            ASSERT_EQ(index.Find(scene, name), scene.FindTexture(name)) << name;
            scene.AddTextures(1);
            const bool mayBeEmpty = i > 30;
            scene.textures[scene.textureCount - 1].name =
                random.Make("ab.", mayBeEmpty ? 5 : 4) + (mayBeEmpty ? "" : "b");
        }
    }
}

TEST(ObjectNames, GiveWhatTheSceneItselfGives) {
    RandomText random;
    for (int round = 0; round < 50; round++) {
        Scene scene;
        ObjectNames names;
        for (int file = 0; file < 3; file++) {
            const std::int32_t first = scene.objectCount;
            scene.AddObjects(static_cast<std::int32_t>(random.random() % 60));
            names.TakeNewObjects(scene);
            // The last one stays unnamed, as after a damaged file.
            for (std::int32_t id = first; id < scene.objectCount - 1; id++) {
                // A number that is put after one name often makes another.
                const std::string name = random.random() % 8 == 0 ? "NoName" : random.Make("a12", 3);
                std::string expected;
                scene.MakeUniqueObjectName(name, expected);
                scene.objects[id].name = names.Rename(scene.objects[id].name, name);
                ASSERT_EQ(scene.objects[id].name, expected);
            }
        }
    }
}

}  // namespace
