#include <GL/gl.h>

#include <cmath>

#include "support/running_engine.h"

namespace {

/// A field of view of 60 degrees from the lower to the upper edge.
void ExpectProjection(float width, float height, float nearPlane, float farPlane) {
    float m[16] = {};
    glGetFloatv(GL_PROJECTION_MATRIX, m);
    const float y = std::sqrt(3.0f);  // the cotangent of 30 degrees
    const float range = nearPlane - farPlane;
    const float expected[16] = {y * height / width,
                                0,
                                0,
                                0,
                                0,
                                y,
                                0,
                                0,
                                0,
                                0,
                                (farPlane + nearPlane) / range,
                                -1,
                                0,
                                0,
                                2 * farPlane * nearPlane / range,
                                0};
    for (int i = 0; i < 16; i++) {
        EXPECT_NEAR(m[i], expected[i], 1e-3f) << i;
    }
}

TEST(Start, PutsEverythingInItsPlaceAndTheEndTakesItBack) {
    RunningEngine running;
    running.Start("}");
    const Engine& engine = *theEngine;
    const Scene& scene = *theScene;
    ExpectProjection(640, 480, 0.1f, 500);
    GLboolean doubleBuffered = GL_FALSE;
    glGetBooleanv(GL_DOUBLEBUFFER, &doubleBuffered);
    EXPECT_TRUE(doubleBuffered);
    GLint matrixMode = 0;
    glGetIntegerv(GL_MATRIX_MODE, &matrixMode);
    EXPECT_EQ(matrixMode, GL_MODELVIEW);
    EXPECT_TRUE(glIsEnabled(GL_CULL_FACE) && glIsEnabled(GL_LIGHTING));
    EXPECT_TRUE(glIsList(scene.fontListBase + 95));

    // Twenty sprites of one unit, at -x, -y and z below ten. The fourth one is added to the picture.
    std::string places;
    for (std::int32_t i = 0; i < scene.spriteCount; i++) {
        const Sprite& sprite = scene.sprites[i];
        for (const float coordinate : {-sprite.position.x, -sprite.position.y, sprite.position.z}) {
            places += std::to_string(static_cast<int>(coordinate));
        }
        EXPECT_EQ(sprite.blendMode, i == 3 ? 0 : 1);
        EXPECT_EQ(sprite.size, 1.0f);
        EXPECT_EQ(sprite.textureIndex, -1);
    }
    EXPECT_EQ(places, "174094882455171152761423221685761892795431233411387427793198");

    // The mouse rests in the middle of the window without its frame, which is 10 and on top 25 wide.
    EXPECT_EQ(SDL_ShowCursor(SDL_QUERY), SDL_DISABLE);
    EXPECT_EQ(std::pair(engine.mouseCentreX, engine.mouseCentreY), std::pair(320, 247));
    EXPECT_EQ(std::pair(engine.joystickCentreX, engine.joystickCentreY), std::pair(32767u, 32767u));
    EXPECT_EQ(engine.joystickState.dwXpos + engine.joystickState.dwYpos, 65534u);
    EXPECT_EQ(std::tuple(engine.mouseSensitivity, engine.joystickSensitivity), std::tuple(0.1f, 0.00001f));
    EXPECT_EQ(engine.windowClass.style, CS_OWNDC);
    const std::string window = running.display.WaitForWindow("Engine");
    running.display.Xdotool("windowmove " + window + " 50 60 windowsize " + window + " 500 300");
    EXPECT_TRUE(
        running.FramesUntil([&] { return engine.windowRect.right == 500 && engine.mouseCentreX == 300; }));
    EXPECT_EQ(engine.mouseCentreY, (60 + 25 + 60 + 300 - 10) / 2);
    ExpectProjection(500, 300, 0.1f, 500);

    running.display.Xdotool("keydown Escape");
    EXPECT_TRUE(WaitUntil([&] { return !running.Frame(); }));
    EXPECT_TRUE(theScene == nullptr && theLog == nullptr);
    EXPECT_EQ(SDL_ShowCursor(SDL_QUERY), SDL_ENABLE);
    EXPECT_EQ(SDL_GL_GetCurrentContext(), nullptr);
    const std::string log = ReadWholeFile("defaultlog.txt");
    EXPECT_LT(log.find(" Destructing Engine\n"), log.find(" Logging ended...\n\n"));
}

TEST(Start, TakesWhatTheSettingsSay) {
    RunningEngine running;
    running.Start("*RESOLUTION 300 200 32 *NEARCLIPPINGPLANE 2 *FARCLIPPINGPLANE 400 *FRAMERATELIMIT 20 }");
    ExpectProjection(300, 200, 2, 400);
    EXPECT_EQ(theTimer->framePeriod, 50);
    EXPECT_EQ(theScene->timer, theTimer);
    // Closing the window by its button, or another program, ends it as well.
    PostMessageA(theEngine->window, WM_CLOSE, 0, 0);
    EXPECT_TRUE(WaitUntil([&] { return !running.Frame(); }));
}

}  // namespace
