#include "textures.h"

#include <algorithm>
#include <array>
#include <numbers>

#include "noise.h"
#include "scene_writer/float3.h"
#include "scene_writer/image_file.h"

using engine::Float3;
using engine::Image;
using engine::Mixed;

// The engine picks the nearest texel where a texture shrinks, so strong contrast from texel to texel would
// flicker in the distance. All patterns here are soft for that reason.

namespace {

std::uint8_t Byte(float value) {
    return static_cast<std::uint8_t>(std::clamp(value, 0.0f, 1.0f) * 255.0f + 0.5f);
}

void SetColour(Image& image, int x, int y, Float3 colour) {
    image.At(x, y, 0) = Byte(colour.x);
    image.At(x, y, 1) = Byte(colour.y);
    image.At(x, y, 2) = Byte(colour.z);
}

/// Draws an image from a function of the pixel.
template <typename Painter>
Image PaintColours(int size, Painter painter) {
    Image image(size, size, 3);
    for (int y = 0; y < size; y++) {
        for (int x = 0; x < size; x++) {
            SetColour(image, x, y, painter(x, y));
        }
    }
    return image;
}

template <typename Painter>
Image PaintGreys(int size, Painter painter) {
    Image image(size, size, 1);
    for (int y = 0; y < size; y++) {
        for (int x = 0; x < size; x++) {
            image.At(x, y, 0) = Byte(painter(x, y));
        }
    }
    return image;
}

/// `Clouds` over an image, with `cells` grains along each side.
float CloudsAt(int x, int y, int size, int cells, int seed) {
    const float scale = static_cast<float>(cells) / static_cast<float>(size);
    return Clouds(static_cast<float>(x) * scale, static_cast<float>(y) * scale, cells, seed);
}

/// One stone of a wall: which one it is, and how far the pixel lies from its border.
struct Stone {
    int column = 0;
    int row = 0;
    float border = 0.0f;  ///< pixels
};

/// Courses of stones, every other one moved by half a stone.
Stone StoneAt(int x, int y, int size, int columns, int rows) {
    const int width = size / columns;
    const int height = size / rows;
    const int row = y / height;
    const int moved = (x + (row % 2 == 0 ? 0 : width / 2)) % size;
    const int inX = moved % width;
    const int inY = y % height;
    const int border = std::min(std::min(inX, width - 1 - inX), std::min(inY, height - 1 - inY));
    return {moved / width, row, static_cast<float>(border)};
}

Image Grass() {
    constexpr int size = 256;
    Image image = PaintColours(size, [](int x, int y) {
        const float patches = CloudsAt(x, y, size, 5, 1);
        const float blades = CloudsAt(x, y, size, 40, 2);
        const Float3 green = Mixed({0.27f, 0.4f, 0.15f}, {0.42f, 0.53f, 0.22f}, patches);
        return green * (0.82f + 0.34f * blades);
    });
    for (int flower = 0; flower < 26; flower++) {
        const int x = static_cast<int>(Random(flower, 0, 7) * (size - 2));
        const int y = static_cast<int>(Random(flower, 1, 7) * (size - 2));
        const Float3 petals = flower % 3 == 0 ? Float3{0.82f, 0.76f, 0.35f} : Float3{0.78f, 0.8f, 0.68f};
        for (int pixel = 0; pixel < 4; pixel++) {
            SetColour(image, x + pixel % 2, y + pixel / 2, petals);
        }
    }
    return image;
}

Image Brick() {
    constexpr int size = 256;
    return PaintColours(size, [](int x, int y) {
        const Stone brick = StoneAt(x, y, size, 4, 8);
        const float grain = CloudsAt(x, y, size, 48, 3);
        if (brick.border < 2.0f) {
            return Float3{0.6f, 0.56f, 0.5f} * (0.85f + 0.2f * grain);
        }
        const float tone = Random(brick.column, brick.row, 4);
        const Float3 colour = Mixed({0.52f, 0.27f, 0.2f}, {0.66f, 0.38f, 0.27f}, tone);
        const float edge = brick.border < 4.0f ? 0.92f : 1.0f;
        return colour * (edge * (0.82f + 0.3f * grain));
    });
}

/// Grey: the vertex colours of what bears it give the tint.
Image Ashlar() {
    constexpr int size = 256;
    return PaintGreys(size, [](int x, int y) {
        const Stone block = StoneAt(x, y, size, 2, 4);
        const float grain = 0.86f + 0.24f * CloudsAt(x, y, size, 24, 5);
        if (block.border < 2.0f) {
            return 0.56f * grain;
        }
        const float tone = 0.74f + 0.12f * Random(block.column, block.row, 6);
        return (block.border < 4.0f ? 0.93f : 1.0f) * tone * grain;
    });
}

/// Grey, fine-grained: for plain surfaces of any tint.
Image Plaster() {
    constexpr int size = 128;
    return PaintGreys(size, [](int x, int y) {
        return 0.74f + 0.16f * CloudsAt(x, y, size, 6, 8) + 0.1f * CloudsAt(x, y, size, 32, 9);
    });
}

/// Rounded stones: each pixel belongs to the nearest of a jittered lattice of points.
Image Cobbles() {
    constexpr int size = 256;
    constexpr int cells = 8;
    constexpr float cellSize = static_cast<float>(size) / cells;
    return PaintColours(size, [](int x, int y) {
        float nearest = 1e9f;
        float second = 1e9f;
        float tone = 0.0f;
        for (int i = -1; i <= cells; i++) {
            for (int j = -1; j <= cells; j++) {
                const int column = (i + cells) % cells;
                const int row = (j + cells) % cells;
                const float pointX =
                    (static_cast<float>(i) + 0.2f + 0.6f * Random(column, row, 11)) * cellSize;
                const float pointY =
                    (static_cast<float>(j) + 0.2f + 0.6f * Random(column, row, 12)) * cellSize;
                const float distance =
                    std::hypot(static_cast<float>(x) - pointX, static_cast<float>(y) - pointY);
                if (distance < nearest) {
                    second = nearest;
                    nearest = distance;
                    tone = Random(column, row, 13);
                } else {
                    second = std::min(second, distance);
                }
            }
        }
        const float grain = 0.88f + 0.2f * CloudsAt(x, y, size, 32, 14);
        const float joint = std::clamp((second - nearest) / 6.0f, 0.0f, 1.0f);
        const Float3 stone = Mixed({0.5f, 0.47f, 0.43f}, {0.64f, 0.6f, 0.53f}, tone);
        return Mixed({0.36f, 0.35f, 0.28f}, stone, joint) * grain;
    });
}

/// Upright planks with grain along them.
Image Planks() {
    constexpr int size = 128;
    constexpr int planks = 4;
    return PaintColours(size, [](int x, int y) {
        const int plank = x / (size / planks);
        const int inPlank = x % (size / planks);
        const float along = static_cast<float>(y) * 4.0f / size;
        const float across = static_cast<float>(x) * 32.0f / size;
        const float grain = Noise(across, along, 32, 20 + plank);
        const Float3 wood = Mixed({0.43f, 0.29f, 0.17f}, {0.6f, 0.43f, 0.26f},
                                  0.35f * Random(plank, 0, 21) + 0.65f * grain);
        return wood * (inPlank < 2 ? 0.62f : 1.0f);
    });
}

/// One side of a crate: planks in a frame, with a board across.
Image CrateSide() {
    constexpr int size = 128;
    const Image planks = Planks();
    return PaintColours(size, [&planks](int x, int y) {
        const int border = std::min(std::min(x, size - 1 - x), std::min(y, size - 1 - y));
        const int fromDiagonal = std::abs(x - y);
        const Float3 plank{planks.At(x, y, 0) / 255.0f, planks.At(x, y, 1) / 255.0f,
                           planks.At(x, y, 2) / 255.0f};
        const float grain = 0.85f + 0.3f * CloudsAt(x, y, size, 16, 23);
        if (border < 3) {
            return Float3{0.4f, 0.28f, 0.16f} * grain;
        }
        if (border < 16) {
            return Float3{0.68f, 0.5f, 0.31f} * grain;
        }
        if (border < 19) {
            return plank * 0.55f;
        }
        if (fromDiagonal < 11) {
            return Float3{0.64f, 0.47f, 0.28f} * grain;
        }
        if (fromDiagonal < 14) {
            return plank * 0.6f;
        }
        return plank * 0.9f;
    });
}

/// Rows of round clay tiles, the lower row under the upper one.
Image RoofTiles() {
    constexpr int size = 128;
    constexpr int columns = 8;
    constexpr int rows = 4;
    return PaintColours(size, [](int x, int y) {
        const int row = y / (size / rows);
        const float inColumn = static_cast<float>(x % (size / columns)) * columns / size;
        const float inRow = static_cast<float>(y % (size / rows)) * rows / size;
        const float round = 0.72f + 0.3f * std::sin(inColumn * std::numbers::pi_v<float>);
        const float overlap = inRow > 0.88f ? 0.72f : 1.0f;
        const float tone = Random(x / (size / columns), row, 31);
        const Float3 clay = Mixed({0.6f, 0.32f, 0.22f}, {0.75f, 0.45f, 0.3f}, tone);
        return clay * (round * overlap * (0.9f + 0.2f * CloudsAt(x, y, size, 32, 32)));
    });
}

/// Grey stripes from pole to pole; the balls bring their own colour.
Image Stripes() {
    constexpr int size = 64;
    return PaintGreys(size, [](int x, int y) {
        if (y < 5 || y > size - 6) {
            return 0.95f;
        }
        return x / (size / 8) % 2 == 0 ? 1.0f : 0.55f;
    });
}

/// Foliage over the whole square; the alpha channel cuts one leaf out of it. Objects show the square, and
/// what is drawn with an alpha test shows the leaf.
Image Leaf() {
    constexpr int size = 64;
    Image image(size, size, 4);
    for (int y = 0; y < size; y++) {
        for (int x = 0; x < size; x++) {
            const float across = (static_cast<float>(x) + 0.5f) / size * 2.0f - 1.0f;
            const float along = (static_cast<float>(y) + 0.5f) / size;
            const float width = 0.62f * std::sin(std::pow(along, 0.8f) * std::numbers::pi_v<float>);
            const bool inside = along > 0.12f ? std::fabs(across) < width : std::fabs(across) < 0.06f;
            const float foliage = CloudsAt(x, y, size, 8, 41);
            Float3 colour = Mixed({0.2f, 0.33f, 0.1f}, {0.55f, 0.62f, 0.2f}, foliage);
            const float vein = std::fabs(std::sin((along - std::fabs(across) * 0.7f) * 22.0f));
            if (inside) {
                colour = colour * (vein < 0.2f || std::fabs(across) < 0.05f ? 1.2f : 1.0f);
            }
            SetColour(image, x, y, colour);
            image.At(x, y, 3) = inside ? 255 : 0;
        }
    }
    return image;
}

}  // namespace

void WriteTextures(const std::string& folder) {
    const std::string data = folder + "/data/";
    WriteTga(data + "grass.tga", Grass());
    WriteTga(data + "tiles.tga", RoofTiles());
    WriteTga(data + "leaf.tga", Leaf());
    WriteSgi(data + "brick.rgb", Brick(), engine::SgiPacking::Verbatim);
    WriteSgi(data + "cobbles.rgb", Cobbles(), engine::SgiPacking::RunLength);
    WriteSgi(data + "planks.rgb", Planks(), engine::SgiPacking::RunLength);
    WriteSgi(data + "crate.rgb", CrateSide(), engine::SgiPacking::RunLength);
    WriteSgi(data + "ashlar.rgb", Ashlar(), engine::SgiPacking::RunLength);
    WriteSgi(data + "plaster.rgb", Plaster(), engine::SgiPacking::Verbatim);
    WriteSgi(data + "stripes.rgb", Stripes(), engine::SgiPacking::RunLength);
}
