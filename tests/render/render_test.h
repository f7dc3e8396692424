#pragma once

#include <GL/gl.h>

#include <array>
#include <cstdint>
#include <ostream>
#include <vector>

#include "support/running_engine.h"

struct Colour {
    int red = 0;
    int green = 0;
    int blue = 0;

    bool operator==(const Colour&) const = default;
};
inline std::ostream& operator<<(std::ostream& stream, Colour colour) {
    return stream << '(' << colour.red << ", " << colour.green << ", " << colour.blue << ')';
}

inline constexpr Colour clearColour{51, 51, 255};
inline constexpr Colour white{255, 255, 255};
inline constexpr Colour red{255, 0, 0};
inline constexpr Colour green{0, 255, 0};

/// A real window of 200 by 200 pixels on a virtual display, with a fresh context in the engine's fixed
/// state for each test. The standard camera stands at (0, -17.32, 0) and looks along +y: at y = 0 the
/// world's x and z run to the right and up, ten pixels a unit, with (0, 0, 0) in the middle.
struct RenderTest : testing::Test {
    static constexpr int windowSize = 200;
    static constexpr float eyeDistance = 17.3205f;

    struct EmptyWorld : RunningEngine {
        EmptyWorld() {
            Start("*RESOLUTION 200 200 24 }");
            theScene->spriteCount = 0;
        }
    } running;
    Engine& engine = *theEngine;
    Timer& timer = *theTimer;
    Scene& scene = *theScene;

    /// A player with the whole window, or this viewport of it, and a camera object of its own.
    std::int32_t AddPlayer(Vector eye, Vector look,
                           std::array<int, 4> viewport = {0, 0, windowSize, windowSize});
    void AddStandardPlayer() { AddPlayer(Vector(0, -eyeDistance, 0), Vector(0, 0, 0)); }
    /// An upright white rectangle at depth y that faces the standard camera, with texture coordinates from
    /// (0, 0) at its lower left corner to (1, 1).
    Object& AddRectangle(float left, float bottom, float right, float top, float y = 0.0f);
    /// A texture of 2 by 2 texels, RGBA, from the lower left one on.
    std::int32_t AddTexture(const std::array<std::array<std::uint8_t, 4>, 4>& texels);
    std::int32_t AddPlainTexture(std::array<std::uint8_t, 4> texel) {
        return AddTexture({texel, texel, texel, texel});
    }
    Sprite& AddSprite(Vector position, float size, std::int32_t blendMode, std::int32_t textureIndex);
    /// A light that shines along +y, as the standard camera looks: what faces the camera is fully lit.
    void AddHeadlight();

    /// Draws a frame and shows it.
    void Show(bool safe) { safe ? scene.RenderFrameSafe(engine) : scene.RenderFrame(engine); }
    /// Draws a frame and keeps it in the back buffer, where it can be read: what that holds after it was
    /// shown is not defined.
    void Draw(bool safe);

    /// What the frame has at a pixel, counted from the window's lower left corner.
    Colour Pixel(int x, int y) const;
    /// The whole frame, RGB, rows from the bottom.
    std::vector<std::uint8_t> Picture() const;
};

void Paint(Object& object, float r, float g, float b);
