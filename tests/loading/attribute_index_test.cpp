#include <gtest/gtest.h>

#include <random>

#include "loading/block_index.h"
#include "loading/texture_index.h"
#include "scene/scene.h"
#include "settings/attribute_text.h"

// Both indices promise exactly what the plain searches give. Small alphabets make texts in which those
// searches trip over their own feet.

namespace {

struct RandomText {
    std::mt19937 random;

    explicit RandomText(unsigned seed) : random(seed) {}
    std::string Make(const std::string& alphabet, unsigned maxLength) {
        std::string text(random() % (maxLength + 1), ' ');
        for (char& c : text) {
            c = alphabet[random() % alphabet.size()];
        }
        return text;
    }
};

TEST(BlockIndex, FindsWhatThePlainSearchFinds) {
    const std::string alphabets[] = {"ab {", "a1{}\n ", "ab{\n", "a{", "aab x{\t", "ab\xC8 {}"};
    RandomText random(1);
    int found = 0;
    int missedBehindItsName = 0;
    for (int round = 0; round < 3000; round++) {
        const std::string& alphabet = alphabets[round % std::size(alphabets)];
        const std::string text = random.Make(alphabet, 80);
        const BlockIndex index(text);
        for (int i = 0; i < 20; i++) {
            // A word of the text itself is more likely to be there.
            std::string name = random.Make(alphabet, 4);
            if (i % 2 == 0 && !text.empty()) {
                name = text.substr(random.random() % text.size(), random.random() % (i % 4 == 0 ? 20 : 7));
            }
            TextStream plain{text};
            TextStream indexed{text, 5};
            const bool wanted = FindAttributeBlock(name.c_str(), plain);
            ASSERT_EQ(index.Find(name.c_str(), indexed), wanted) << "[" << name << "] in [" << text << "]";
            ASSERT_EQ(indexed.position, plain.position) << "[" << name << "] in [" << text << "]";
            found += wanted ? 1 : 0;
            missedBehindItsName += !wanted && text.find(name + "{") != std::string::npos ? 1 : 0;
        }
    }
    EXPECT_GT(found, 5000);
    EXPECT_GT(missedBehindItsName, 500) << "the quirks of the search have hardly been met";
}

TEST(TextureIndex, FindsTheTextureThatTheSceneFinds) {
    RandomText random(2);
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

}  // namespace
