#include <GL/gl.h>
#include <GL/glu.h>
#include <benchmark/benchmark.h>

#include <memory>

#include "allocations.h"
#include "engine/engine.h"
#include "paired_times.h"
#include "render/gl_state.h"
#include "scene/scene.h"
#include "services/timer.h"
#include "worlds.h"

// A frame through both paths, each beside a bare loop that does nothing but issue the same OpenGL calls.
// The window is small, so that what is measured is the calls and not the filling of pixels.

namespace {

/// One window for all, made at its first use.
struct View {
    Engine engine;
    Timer timer;
    Scene scene;

    View() {
        WNDCLASSA windowClass;
        windowClass.lpfnWndProc = DefWindowProcA;
        windowClass.lpszClassName = "Benchmark";
        RegisterClassA(&windowClass);
        engine.window = CreateWindowExA(0, "Benchmark", "Benchmark", WS_POPUP, 0, 0, 64, 64, nullptr,
                                        nullptr, nullptr, nullptr);
        engine.windowRect = {0, 0, 64, 64};
        engine.deviceContext = GetDC(engine.window);
        engine.CreateRenderContext(engine.deviceContext, 64, 64, 1.0f, 500.0f);
        ShowWindow(engine.window, SW_SHOW);
        InitGlState();
        scene.SetTimer(&timer);
        scene.BuildFont(engine, scene.fontName);
        MakeWorld(scene, 100, 10000, 100, 6.0f);
        scene.AddSprites(20);
        scene.AddPlayers(1);
        Player& player = scene.players[0];
        player.viewportWidth = player.viewportHeight = 64;
        player.cameraObject = 0;
        player.eyeVertex = 0;
        player.lookVertex = scene.objects[0].vertexValueCount / 3 - 1;
        // The eye stands on the first corner of the ground, lifted to look down on the rest.
        scene.objects[0].vertices[2] += 10.0f;
    }
};

View& TheView() {
    static View view;
    return view;
}

/// The calls of one frame, with the arguments of this scene as the frame has them.
void BareFrameStart(const Scene& scene) {
    const Player& player = scene.players[0];
    const Object& camera = scene.objects[player.cameraObject];
    const float* eye = camera.vertices.get() + 3 * player.eyeVertex;
    const float* look = camera.vertices.get() + 3 * player.lookVertex;
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glViewport(0, 0, 64, 64);
    glPushMatrix();
    gluLookAt(eye[0], eye[1], eye[2], look[0], look[1], look[2], 0, 0, 1);
    glPushMatrix();
    glPushAttrib(GL_TRANSFORM_BIT | GL_VIEWPORT_BIT);
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glLoadIdentity();
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    glLoadIdentity();
    glDepthRange(0, 0);
    glViewport(9, 9, 2, 2);
    glRasterPos4f(0, 0, 0, 1);
    glPopMatrix();
    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
    glPopAttrib();
    glPushAttrib(GL_LIST_BIT);
    glListBase(scene.fontListBase - 32);
    glCallLists(8, GL_UNSIGNED_BYTE, "0.000000");
    glPopAttrib();
}

void BareSprites(const Scene& scene) {
    float m[16];
    glGetFloatv(GL_MODELVIEW_MATRIX, m);
    glEnable(GL_TEXTURE_2D);
    glDisable(GL_LIGHTING);
    for (std::int32_t i = 0; i < scene.spriteCount; i++) {
        if (!glIsEnabled(GL_ALPHA_TEST)) {
            glIsEnabled(GL_BLEND);
            glEnable(GL_ALPHA_TEST);
            glAlphaFunc(GL_GREATER, 0.0f);
        }
        glBegin(GL_QUADS);
        for (int corner = 0; corner < 4; corner++) {
            glTexCoord2f(0, 0);
            glVertex3f(0, 0, 0);
        }
        glEnd();
    }
    glIsEnabled(GL_BLEND);
    glIsEnabled(GL_ALPHA_TEST);
    glDisable(GL_ALPHA_TEST);
    glDisable(GL_TEXTURE_2D);
    glEnable(GL_LIGHTING);
}

void BareFrameEnd(const Engine& engine) {
    glPopMatrix();
    glPopMatrix();
    SwapBuffers(engine.deviceContext);
}

void BareArrays(const View& view) {
    const Scene& scene = view.scene;
    BareFrameStart(scene);
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_NORMAL_ARRAY);
    glEnableClientState(GL_COLOR_ARRAY);
    for (std::int32_t i = 0; i < scene.objectCount; i++) {
        const Object& object = scene.objects[i];
        glIsEnabled(GL_TEXTURE_2D);
        glVertexPointer(3, GL_FLOAT, 0, object.vertices.get());
        glNormalPointer(GL_FLOAT, 0, object.normals.get());
        glColorPointer(3, GL_FLOAT, 0, object.colours.get());
        glDrawElements(GL_TRIANGLES, object.faceValueCount, GL_UNSIGNED_INT, object.faces.get());
    }
    glDisableClientState(GL_VERTEX_ARRAY);
    glDisableClientState(GL_NORMAL_ARRAY);
    glDisableClientState(GL_COLOR_ARRAY);
    BareSprites(scene);
    BareFrameEnd(view.engine);
}

void BareImmediate(const View& view) {
    const Scene& scene = view.scene;
    BareFrameStart(scene);
    for (std::int32_t i = 0; i < scene.objectCount; i++) {
        const Object& object = scene.objects[i];
        glIsEnabled(GL_TEXTURE_2D);
        glBegin(GL_TRIANGLES);
        for (const std::int32_t *corner = object.faces.get(), *end = corner + object.faceValueCount;
             corner != end; corner++) {
            const float* colour = object.colours.get() + 3 * *corner;
            glColor3f(colour[0], colour[1], colour[2]);
            const float* normal = object.normals.get() + 3 * *corner;
            glNormal3f(normal[0], normal[1], normal[2]);
            const float* vertex = object.vertices.get() + 3 * *corner;
            glVertex3f(vertex[0], vertex[1], vertex[2]);
        }
        glEnd();
    }
    BareSprites(scene);
    BareFrameEnd(view.engine);
}

void Frame(benchmark::State& state, void (Scene::*render)(const Engine&), void (*renderBare)(const View&)) {
    View& view = TheView();
    std::int64_t allocations = 0;
    TimeInTurn(
        state, "bare loops", WallTime, [] {},
        [&] {
            const std::int64_t before = AllocationCount();
            (view.scene.*render)(view.engine);
            allocations += AllocationCount() - before;
            return true;
        },
        [&] {
            renderBare(view);
            return true;
        });
    state.counters["allocations"] =
        static_cast<double>(allocations) / static_cast<double>(state.iterations());
}

void frame_arrays(benchmark::State& state) {
    Frame(state, &Scene::RenderFrame, BareArrays);
}
void frame_immediate(benchmark::State& state) {
    Frame(state, &Scene::RenderFrameSafe, BareImmediate);
}

BENCHMARK(frame_arrays)->UseManualTime();
BENCHMARK(frame_immediate)->UseManualTime();

}  // namespace
