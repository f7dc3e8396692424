#include <GL/gl.h>
#include <GL/glu.h>

#include <cassert>

#include "engine/engine.h"
#include "platform/gl_context.h"
#include "render/overlay_text.h"
#include "scene/scene.h"
#include "services/timer.h"

namespace {

void BindTexture(const Texture& texture) {
    if (!glIsEnabled(GL_TEXTURE_2D)) {
        glEnable(GL_TEXTURE_2D);
    }
    glBindTexture(GL_TEXTURE_2D, texture.glName);
}

void SwitchTexturingOff() {
    if (glIsEnabled(GL_TEXTURE_2D)) {
        glDisable(GL_TEXTURE_2D);
    }
}

/// One call per object, over the arrays as they stand in memory.
void DrawObjectsFromArrays(const Scene& scene) {
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_NORMAL_ARRAY);
    glEnableClientState(GL_COLOR_ARRAY);
    for (std::int32_t i = 0; i < scene.objectCount; i++) {
        const Object& object = scene.objects[i];
        if (object.attributes[invisibleAttribute] == 1) {
            continue;
        }
        const bool textured = scene.HasTexture(object.textureIndex) && object.texVertices;
        if (textured) {
            glEnableClientState(GL_TEXTURE_COORD_ARRAY);
            BindTexture(scene.textures[object.textureIndex]);
        } else {
            SwitchTexturingOff();
        }
        glVertexPointer(3, GL_FLOAT, 0, object.vertices.get());
        if (textured) {
            glTexCoordPointer(3, GL_FLOAT, 0, object.texVertices.get());
        }
        glNormalPointer(GL_FLOAT, 0, object.normals.get());
        glColorPointer(3, GL_FLOAT, 0, object.colours.get());
        glDrawElements(GL_TRIANGLES, object.faceValueCount, GL_UNSIGNED_INT, object.faces.get());
        if (textured) {
            glDisableClientState(GL_TEXTURE_COORD_ARRAY);
        }
    }
    glDisableClientState(GL_VERTEX_ARRAY);
    glDisableClientState(GL_NORMAL_ARRAY);
    glDisableClientState(GL_COLOR_ARRAY);
}

void DrawObjectsByCorners(const Scene& scene) {
    for (std::int32_t i = 0; i < scene.objectCount; i++) {
        const Object& object = scene.objects[i];
        if (object.attributes[invisibleAttribute] == 1) {
            continue;
        }
        const bool textured = scene.HasTexture(object.textureIndex);
        if (textured) {
            BindTexture(scene.textures[object.textureIndex]);
        } else {
            SwitchTexturingOff();
        }
        const bool hasCoordinates = textured && object.texVertices;
        const std::int32_t cornerCount = object.faceValueCount / 3 * 3;
        glBegin(GL_TRIANGLES);
        for (std::int32_t corner = 0; corner < cornerCount; corner++) {
            const std::int32_t first = object.faces[corner] * 3;
            if (hasCoordinates) {
                const float* coordinates = &object.texVertices[first];
                glTexCoord3f(coordinates[0], coordinates[1], coordinates[2]);
            }
            const float* colour = &object.colours[first];
            glColor3f(colour[0], colour[1], colour[2]);
            const float* normal = &object.normals[first];
            glNormal3f(normal[0], normal[1], normal[2]);
            const float* vertex = &object.vertices[first];
            glVertex3f(vertex[0], vertex[1], vertex[2]);
        }
        glEnd();
    }
}

/// Looks from one vertex of the camera object to another, so the camera goes wherever the mesh goes.
void ApplyCamera(const Scene& scene, const Player& player) {
    const Object& camera = scene.objects[player.cameraObject];
    Vector eye;
    Vector centre;
    camera.GetVertex(eye, player.eyeVertex);
    camera.GetVertex(centre, player.lookVertex);
    gluLookAt(eye.x, eye.y, eye.z, centre.x, centre.y, centre.z, player.up.x, player.up.y, player.up.z);
}

/// OpenGL keeps lights in eye space: the world's lights have to be placed again after every camera.
void PlaceLights(const Scene& scene) {
    for (std::int32_t i = 0; i < scene.lightCount; i++) {
        const GLenum glLight = GL_LIGHT0 + static_cast<GLenum>(i);
        glLightfv(glLight, GL_SPOT_DIRECTION, scene.lights[i].spotDirection);
        glLightfv(glLight, GL_POSITION, scene.lights[i].position);
    }
}

/// The frame that both paths share; they differ in how the objects go out.
void DrawFrame(Scene& scene, const Engine& engine, void (*drawObjects)(const Scene&)) {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    for (std::int32_t i = 0; i < scene.playerCount; i++) {
        if (!scene.HasCamera(i)) {
            continue;
        }
        const Player& player = scene.players[i];
        glViewport(player.viewportX, player.viewportY, player.viewportWidth, player.viewportHeight);
        glPushMatrix();
        ApplyCamera(scene, player);
        glPushMatrix();
        PlaceLights(scene);
        const std::int32_t loopTime = scene.timer->loopTime;
        const std::int32_t framesPerSecond = loopTime == 0 ? 0 : 1000 / loopTime;
        SetWindowRasterPos2f(10.0f, 10.0f);
        scene.PrintText("%f", static_cast<double>(framesPerSecond));
        drawObjects(scene);
        scene.DrawSprites(i);
        glPopMatrix();
        glPopMatrix();
    }
    SwapBuffers(engine.deviceContext);
}

}  // namespace

bool Scene::HasCamera(std::int32_t playerIndex) const {
    assert(playerIndex >= 0 && playerIndex < playerCount);
    const Player& player = players[playerIndex];
    if (player.cameraObject < 0 || player.cameraObject >= objectCount) {
        return false;
    }
    const Object& camera = objects[player.cameraObject];
    return camera.HasVertex(player.eyeVertex) && camera.HasVertex(player.lookVertex);
}

void Scene::RenderFrame(const Engine& engine) {
    DrawFrame(*this, engine, DrawObjectsFromArrays);
}

void Scene::RenderFrameSafe(const Engine& engine) {
    DrawFrame(*this, engine, DrawObjectsByCorners);
}
