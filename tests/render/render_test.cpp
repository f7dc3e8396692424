#include "render_test.h"
#include "gl_lights/gl_lights.h"

#include <algorithm>
#include <utility>

std::int32_t RenderTest::AddPlayer(Vector eye, Vector look, std::array<int, 4> viewport) {
    scene.AddObjects(1);
    Object& camera = scene.objects[scene.objectCount - 1];
    camera.ResizeFaces(0);
    camera.SetVertex(eye, 0);
    camera.SetVertex(look, 1);
    scene.AddPlayers(1);
    const std::int32_t index = scene.playerCount - 1;
    Player& player = scene.players[index];
    player.cameraObject = scene.objectCount - 1;
    player.eyeVertex = 0;
    player.lookVertex = 1;
    player.viewportX = viewport[0];
    player.viewportY = viewport[1];
    player.viewportWidth = viewport[2];
    player.viewportHeight = viewport[3];
    return index;
}

Object& RenderTest::AddRectangle(float left, float bottom, float right, float top, float y) {
    scene.AddObjects(1);
    Object& object = scene.objects[scene.objectCount - 1];
    object.ResizeVertices(4);
    object.SetVertex(Vector(left, y, bottom), 0);
    object.SetVertex(Vector(right, y, bottom), 1);
    object.SetVertex(Vector(right, y, top), 2);
    object.SetVertex(Vector(left, y, top), 3);
    object.ResizeTexVertices(4);
    std::ranges::copy(std::array{0.0f, 0.0f, 0.0f, 1.0f, 0.0f, 0.0f, 1.0f, 1.0f, 0.0f, 0.0f, 1.0f, 0.0f},
                      object.texVertices.get());
    object.ResizeFaces(2);
    std::ranges::copy(std::array{0, 1, 2, 0, 2, 3}, object.faces.get());
    for (int i = 0; i < 4; i++) {
        std::ranges::copy(std::array{0.0f, -1.0f, 0.0f}, &object.normals[3 * i]);
    }
    return object;
}

std::int32_t RenderTest::AddTexture(const std::array<std::array<std::uint8_t, 4>, 4>& texels) {
    scene.AddTextures(1);
    Texture& texture = scene.textures[scene.textureCount - 1];
    GLuint name = 0;
    glGenTextures(1, &name);
    texture.glName = name;
    glBindTexture(GL_TEXTURE_2D, name);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexImage2D(GL_TEXTURE_2D, 0, 4, 2, 2, 0, GL_RGBA, GL_UNSIGNED_BYTE, texels.data());
    return scene.textureCount - 1;
}

Sprite& RenderTest::AddSprite(Vector position, float size, std::int32_t blendMode,
                              std::int32_t textureIndex) {
    scene.AddSprites(1);
    Sprite& sprite = scene.sprites[scene.spriteCount - 1];
    sprite.position = position;
    sprite.size = size;
    sprite.blendMode = blendMode;
    sprite.textureIndex = textureIndex;
    return sprite;
}

void RenderTest::AddHeadlight() {
    scene.AddLights(1);
    Light& light = scene.lights[scene.lightCount - 1];
    Activate(light);
    const float position[4] = {0.0f, -1.0f, 0.0f, 0.0f};
    SetPosition(light, position);
}

void RenderTest::Draw(bool safe) {
    const HDC deviceContext = std::exchange(engine.deviceContext, nullptr);
    Show(safe);
    engine.deviceContext = deviceContext;
}

Colour RenderTest::Pixel(int x, int y) const {
    std::uint8_t rgb[3] = {};
    glReadPixels(x, y, 1, 1, GL_RGB, GL_UNSIGNED_BYTE, rgb);
    return Colour{rgb[0], rgb[1], rgb[2]};
}

std::vector<std::uint8_t> RenderTest::Picture() const {
    std::vector<std::uint8_t> picture(3 * windowSize * windowSize);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, windowSize, windowSize, GL_RGB, GL_UNSIGNED_BYTE, picture.data());
    return picture;
}

void Paint(Object& object, float r, float g, float b) {
    for (std::int32_t i = 0; i < object.vertexValueCount; i += 3) {
        object.colours[i] = r;
        object.colours[i + 1] = g;
        object.colours[i + 2] = b;
    }
}
