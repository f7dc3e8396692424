#include <GL/gl.h>
#include <GL/glu.h>

#include "app/window_procedure.h"
#include "engine/engine.h"
#include "platform/display_mode.h"
#include "platform/message_box.h"
#include "platform/windows1250.h"
#include "services/log.h"

namespace {

constexpr double verticalFieldOfView = 60.0;  // degrees

void Report(Log* log, const char* text, const char* caption, UINT style) {
    Log::Write(log, text);
    MessageBoxA(nullptr, text, caption, style);
}

void LogGlString(Log* log, const char* label, GLenum name) {
    Log::Write(log, label);
    Log::Write(log, glGetString(name));
}

}  // namespace

bool Engine::SwitchToFullScreen() {
    DEVMODEA mode;
    mode.dmSize = 148;
    mode.dmFields = DM_BITSPERPEL | DM_PELSWIDTH | DM_PELSHEIGHT;
    mode.dmPelsWidth = static_cast<DWORD>(windowRect.right);
    mode.dmPelsHeight = static_cast<DWORD>(windowRect.bottom);
    mode.dmBitsPerPel = colourBits;
    if (ChangeDisplaySettingsA(&mode, 0) != DISP_CHANGE_SUCCESSFUL) {
        MessageBoxA(nullptr, "Nemohu přepnout na fullscreen při zvoleném rozlišení"_1250, "", MB_OK);
        return false;
    }
    windowStyle = WS_POPUP;
    return true;
}

bool Engine::CreateMainWindow(HINSTANCE instance, HINSTANCE, char*, int showCommand) {
    windowClass.style = CS_OWNDC;
    windowClass.lpfnWndProc = WindowProcedure;
    windowClass.cbClsExtra = 0;
    windowClass.cbWndExtra = 0;
    windowClass.hInstance = instance;
    windowClass.hIcon = LoadIconA(instance, title.c_str());
    windowClass.hCursor = LoadCursorA(nullptr, IDC_ARROW);
    windowClass.hbrBackground = nullptr;  // the frame loop draws everything: nothing to erase
    windowClass.lpszMenuName = title.c_str();
    windowClass.lpszClassName = title.c_str();
    if (RegisterClassA(&windowClass) == 0) {
        Report(log, "Unable to register CLASS", "", MB_OK);
        return false;
    }
    AdjustWindowRect(&windowRect, windowStyle, FALSE);
    window = CreateWindowExA(0, title.c_str(), title.c_str(), windowStyle, 0, 0,
                             windowRect.right - windowRect.left, windowRect.bottom - windowRect.top,
                             nullptr, nullptr, instance, nullptr);
    if (window == nullptr) {
        Report(log, "Unable to create main window", "", MB_OK);
        return false;
    }
    ShowWindow(window, showCommand);
    UpdateWindow(window);
    SetWindowPos(window, nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE);
    return true;
}

bool Engine::SetupPixelFormat(HDC context) {
    PIXELFORMATDESCRIPTOR descriptor;
    descriptor.nSize = 40;
    descriptor.nVersion = 1;
    descriptor.dwFlags = PFD_DRAW_TO_WINDOW | PFD_SUPPORT_OPENGL | PFD_DOUBLEBUFFER;
    descriptor.iPixelType = PFD_TYPE_RGBA;
    descriptor.cColorBits = colourBits;
    descriptor.cDepthBits = 16;
    descriptor.dwLayerMask = PFD_MAIN_PLANE;
    const int format = ChoosePixelFormat(context, &descriptor);
    if (format == 0) {
        Report(log, "Chyba: ChoosePixelFormat", ":-(", MB_ICONERROR);
        return false;
    }
    if (SetPixelFormat(context, format, &descriptor) == FALSE) {
        Report(log, "Chyba: SetPixelFormat", ":-(", MB_ICONERROR);
        return false;
    }
    if (DescribePixelFormat(context, format, 40, &descriptor) == 0) {
        Report(log, "Chyba: DescribePixelFormat", ":-(", MB_ICONERROR);
        return false;
    }
    return true;
}

void Engine::CreateRenderContext(HDC context, std::int32_t width, std::int32_t height, float nearDistance,
                                 float farDistance) {
    if (!SetupPixelFormat(context)) {
        PostQuitMessage(0);
    }
    glContext = wglCreateContext(context);
    if (glContext == nullptr) {
        Report(log, "Chyba: wglCreateContext", ":-(", MB_ICONERROR);
    }
    wglMakeCurrent(context, glContext);
    GetClientRect(window, &windowRect);
    glMatrixMode(GL_PROJECTION);
    const float aspect = static_cast<float>(width) / static_cast<float>(height);
    gluPerspective(verticalFieldOfView, aspect, nearDistance, farDistance);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    LogGlString(log, "Výrobce GL implementace:"_1250, GL_VENDOR);
    LogGlString(log, "Jméno rendereru:"_1250, GL_RENDERER);
    LogGlString(log, "Číslo verze:"_1250, GL_VERSION);
    LogGlString(log, "Podporované rozšíření OpenGl:"_1250, GL_EXTENSIONS);
}

void Engine::Resize(float nearDistance, float farDistance) {
    GetClientRect(window, &windowRect);
    const float aspect = static_cast<float>(windowRect.right) / static_cast<float>(windowRect.bottom);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    gluPerspective(verticalFieldOfView, aspect, nearDistance, farDistance);
    glMatrixMode(GL_MODELVIEW);
}
