#include "app/window_procedure.h"

#include "app/entry.h"
#include "engine/engine.h"
#include "engine/singletons.h"

namespace {

void OnCreate(Engine& engine, HWND window) {
    engine.deviceContext = GetDC(window);
    engine.window = window;  // its creator hasn't returned yet
    engine.CreateRenderContext(engine.deviceContext, engine.windowRect.right, engine.windowRect.bottom,
                               engine.nearPlane, engine.farPlane);
    ShowCursor(FALSE);
}

void OnMove(Engine& engine, HWND window) {
    RECT& rect = engine.mouseClipRect;
    GetWindowRect(window, &rect);
    rect.left += 10;
    rect.top += 25;
    rect.right -= 10;
    rect.bottom -= 10;
    engine.mouseCentreX = (rect.left + rect.right) / 2;
    engine.mouseCentreY = (rect.top + rect.bottom) / 2;
}

void OnPaint(HWND window) {
    PAINTSTRUCT paint;
    BeginPaint(window, &paint);
    EndPaint(window, &paint);
}

void OnClose(Engine& engine, HWND window) {
    if (engine.glContext != nullptr) {
        wglDeleteContext(engine.glContext);
    }
    if (engine.deviceContext != nullptr) {
        ReleaseDC(window, engine.deviceContext);
    }
    engine.glContext = nullptr;
    engine.deviceContext = nullptr;
    DestroyWindow(window);
}

}  // namespace

LRESULT WindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (theEngine == nullptr) {
        return DefWindowProcA(window, message, wParam, lParam);
    }
    Engine& engine = *theEngine;
    switch (message) {
        case WM_CREATE:
            OnCreate(engine, window);
            return 1;
        case WM_DESTROY:
            TearDown();
            return 1;
        case WM_MOVE:
            OnMove(engine, window);
            return 1;
        case WM_SIZE:
            engine.Resize(engine.nearPlane, engine.farPlane);
            return 1;
        case WM_ACTIVATE:
            return 1;
        case WM_PAINT:
            OnPaint(window);
            return 1;
        case WM_CLOSE:
            OnClose(engine, window);
            return 1;
        case WM_KEYDOWN:
            engine.keyState[wParam & 255] = 1;
            return 1;
        case WM_KEYUP:
            engine.keyState[wParam & 255] = 0;
            return 1;
        case WM_LBUTTONDOWN:
            engine.mouseLeftButton = 1;
            return 1;
        case WM_LBUTTONUP:
            engine.mouseLeftButton = 0;
            return 1;
        case WM_RBUTTONDOWN:
            engine.mouseRightButton = 1;
            return 1;
        case WM_RBUTTONUP:
            engine.mouseRightButton = 0;
            return 1;
        case WM_MBUTTONDOWN:
            engine.mouseMiddleButton = 1;
            return 1;
        case WM_MBUTTONUP:
            engine.mouseMiddleButton = 0;
            return 1;
        default:
            return DefWindowProcA(window, message, wParam, lParam);
    }
}
