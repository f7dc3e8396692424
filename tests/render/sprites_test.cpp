#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <random>

#include "gl_recorder.h"
#include "render_test.h"

struct SpritesTest : RenderTest {
    /// Draws a frame; the sprites' numbers in the order in which they went out. Each needs a texture of
    /// its own, whose index is the sprite's.
    std::vector<std::int32_t> DrawnOrder() {
        GlRecorder recorder;
        Draw(false);
        std::vector<std::int32_t> order;
        for (const std::string& call : recorder.CallsOf({"glBindTexture"})) {
            const GLuint glName = static_cast<GLuint>(std::stoul(call.substr(call.rfind(' '))));
            order.push_back(static_cast<std::int32_t>(glName) - 1000);
        }
        return order;
    }
    void AddNumberedSprite(Vector position) {
        scene.AddTextures(1);
        const std::int32_t number = scene.textureCount - 1;
        scene.textures[number].glName = static_cast<std::uint32_t>(1000 + number);
        AddSprite(position, 0.0f, 1, number);
    }
};

TEST_F(SpritesTest, ManySpritesKeepTheOrderOfAPlainSearch) {
    AddStandardPlayer();
    std::minstd_rand random;
    for (int i = 0; i < 10000; i++) {
        AddSprite(Vector(static_cast<float>(random() % 40), static_cast<float>(random() % 40), 0), 0.0f, 1,
                  -1);
    }
    std::vector<float> distances;
    distances.reserve(scene.spriteCount);
    for (int i = 0; i < scene.spriteCount; i++) {
        distances.push_back(Vector(0, -eyeDistance, 0).Distance(scene.sprites[i].position));
    }
    std::vector<float> sorted = distances;
    std::ranges::sort(sorted, std::greater<float>());
    std::vector<std::string> expected;
    for (const float distance : sorted) {
        const Vector p = scene.sprites[std::ranges::find(distances, distance) - distances.begin()].position;
        for (int corner = 0; corner < 4; corner++) {
            expected.push_back(Call("glVertex3f", p.x, p.y, p.z));
        }
    }
    GlRecorder recorder;
    Draw(false);
    EXPECT_TRUE(recorder.CallsOf({"glVertex3f"}) == expected);
    EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR});
}

TEST_F(SpritesTest, PositionsThatAreNoNumbersHarmNobody) {
    AddStandardPlayer();
    const float nan = std::numeric_limits<float>::quiet_NaN();
    AddNumberedSprite(Vector(nan, 0, 0));
    AddNumberedSprite(Vector(0, 5, 0));
    AddNumberedSprite(Vector(0, nan, 0));
    AddNumberedSprite(Vector(0, INFINITY, 0));
    AddNumberedSprite(Vector(0, 9, 0));
    EXPECT_EQ(DrawnOrder(), (std::vector{3, 4, 1, 0, 0}));

    scene.objects[0].SetVertex(Vector(nan, nan, nan), 0);
    EXPECT_EQ(DrawnOrder().size(), 5u);
}
