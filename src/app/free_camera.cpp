#include "app/free_camera.h"

#include <algorithm>

#include "process/viewpoint.h"
#include "scene/scene.h"

void LookFrom(Scene& scene, const Viewpoint& viewpoint, int width, int height) {
    scene.AddObjects(1);
    Object& camera = scene.objects[scene.objectCount - 1];
    camera.ResizeFaces(0);
    camera.ResizeVertices(2);
    std::copy_n(viewpoint.from, 3, camera.vertices.get());
    std::copy_n(viewpoint.to, 3, camera.vertices.get() + 3);

    for (int i = 0; i < scene.playerCount; i++) {
        scene.players[i].viewportWidth = 0;
        scene.players[i].viewportHeight = 0;
    }
    scene.AddPlayers(1);
    Player& viewer = scene.players[scene.playerCount - 1];
    viewer.cameraObject = scene.objectCount - 1;
    viewer.eyeVertex = 0;
    viewer.lookVertex = 1;
    if (viewpoint.from[0] == viewpoint.to[0] && viewpoint.from[1] == viewpoint.to[1]) {
        viewer.up = Vector(0.0f, 1.0f, 0.0f);  // straight up or down, with north above
    }
    viewer.viewportWidth = width;
    viewer.viewportHeight = height;
}
