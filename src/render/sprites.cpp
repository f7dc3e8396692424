#include "render/sprites.h"

#include <GL/gl.h>

#include <algorithm>
#include <cassert>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <memory>

#include "scene/scene.h"

namespace {

/// Turns distances sorted from the farthest on into the sprites' indices. Sprites at exactly equal distance
/// all become the lowest index among them.
void FillOrder(const float* distances, const float* sorted, std::int32_t* order, std::int32_t count) {
    for (std::int32_t i = count - 1; i >= 0; i--) {
        const float* place = std::lower_bound(sorted, sorted + count, distances[i], std::greater<float>());
        order[place - sorted] = i;
    }
    for (std::int32_t rank = 1; rank < count; rank++) {
        if (sorted[rank] == sorted[rank - 1]) {
            order[rank] = order[rank - 1];
        }
    }
}

/// Blending and alpha test: at most one of the two is on, and its function is set when it goes on.
void SwitchBlendMode(std::int32_t blendMode) {
    if (blendMode == 0 && !glIsEnabled(GL_BLEND)) {
        if (glIsEnabled(GL_ALPHA_TEST)) {
            glDisable(GL_ALPHA_TEST);
        }
        glEnable(GL_BLEND);
        glBlendFunc(GL_SRC_ALPHA, GL_ONE);
    }
    if (blendMode == 1 && !glIsEnabled(GL_ALPHA_TEST)) {
        if (glIsEnabled(GL_BLEND)) {
            glDisable(GL_BLEND);
        }
        glEnable(GL_ALPHA_TEST);
        glAlphaFunc(GL_GREATER, 0.0f);
    }
}

void SendCorner(float s, float t, Vector position) {
    glTexCoord2f(s, t);
    glVertex3f(position.x, position.y, position.z);
}

}  // namespace

int CompareDistancesDescending(const void* a, const void* b) {
    const float first = *static_cast<const float*>(a);
    const float second = *static_cast<const float*>(b);
    if (first > second) {
        return -1;
    }
    if (first < second) {
        return 1;
    }
    return 0;
}

void Scene::DrawSprites(std::int32_t playerIndex) {
    assert(HasCamera(playerIndex));
    const auto distances = std::make_unique_for_overwrite<float[]>(spriteCount);
    const auto sorted = std::make_unique_for_overwrite<float[]>(spriteCount);
    const auto order = std::make_unique_for_overwrite<std::int32_t[]>(spriteCount);

    const Player& player = players[playerIndex];
    Vector eye;
    objects[player.cameraObject].GetVertex(eye, player.eyeVertex);
    for (std::int32_t i = 0; i < spriteCount; i++) {
        const float distance = eye.Distance(sprites[i].position);
        // What is no number has no place in an order; it couldn't be seen anyway and goes last.
        distances[i] = std::isnan(distance) ? -1.0f : distance;
    }
    std::copy_n(distances.get(), spriteCount, sorted.get());
    std::qsort(sorted.get(), spriteCount, sizeof(float), CompareDistancesDescending);
    FillOrder(distances.get(), sorted.get(), order.get(), spriteCount);

    // The rows of the camera's rotation are its axes in the world.
    float m[16] = {};
    glGetFloatv(GL_MODELVIEW_MATRIX, m);
    const Vector right(m[0], m[4], m[8]);
    const Vector up(m[1], m[5], m[9]);

    glEnable(GL_TEXTURE_2D);
    glDisable(GL_LIGHTING);
    for (std::int32_t rank = 0; rank < spriteCount; rank++) {
        const Sprite& sprite = sprites[order[rank]];
        SwitchBlendMode(sprite.blendMode);
        const Vector position = sprite.position;
        const float halfSize = sprite.size * 0.5f;
        if (HasTexture(sprite.textureIndex)) {
            glBindTexture(GL_TEXTURE_2D, textures[sprite.textureIndex].glName);
        }
        glBegin(GL_QUADS);
        SendCorner(0.0f, 0.0f, position - right * halfSize);
        SendCorner(1.0f, 0.0f, position + right * halfSize);
        SendCorner(1.0f, 1.0f, position + right * halfSize + up * sprite.size);
        SendCorner(0.0f, 1.0f, position - right * halfSize + up * sprite.size);
        glEnd();
    }
    if (glIsEnabled(GL_BLEND)) {
        glDisable(GL_BLEND);
    }
    if (glIsEnabled(GL_ALPHA_TEST)) {
        glDisable(GL_ALPHA_TEST);
    }
    glDisable(GL_TEXTURE_2D);
    glEnable(GL_LIGHTING);
}
