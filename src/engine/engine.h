#pragma once

#include <cstdint>
#include <string>

#include "platform/gl_context.h"
#include "platform/input_devices.h"
#include "platform/message_queue.h"
#include "platform/window.h"

struct Log;

/// What stands between the system and the platform: the settings of display and input, the window with
/// its OpenGL context, and the state of keyboard, mouse and joystick.
struct Engine {
    WNDCLASSA windowClass;
    HWND window = nullptr;
    HDC deviceContext = nullptr;  ///< null again once the window is closed
    HGLRC glContext = nullptr;    ///< null again once the window is closed
    /// First the client size asked for, then the outer rectangle, from the first resize on the client
    /// rectangle. Right and bottom are the width and the height that the settings ask for.
    RECT windowRect{0, 0, 640, 480};
    std::uint8_t colourBits = 16;  ///< of a pixel, for the display mode and the pixel format
    DWORD windowStyle = WS_OVERLAPPEDWINDOW;
    std::string title = "Engine";     ///< names the class and the window
    Log* log = nullptr;               ///< not owned; may be null
    std::uint8_t keyState[256] = {};  ///< one per virtual key code, 1 while down
    bool fullScreen = false;
    float nearPlane = 0.1f;         ///< world units
    float farPlane = 500.0f;        ///< world units
    bool safeMode = false;          ///< draws through the immediate path
    RECT mouseClipRect;             ///< screen coordinates; the cursor isn't really confined to it
    float mouseSensitivity = 0.1f;  ///< radians per pixel
    std::int32_t mouseCentreX = 0;  ///< where the cursor is put back to, in screen coordinates
    std::int32_t mouseCentreY = 0;
    /// 1 while down. The control operations take the three as one array, from the left one on.
    std::uint8_t mouseLeftButton = 0;
    std::uint8_t mouseMiddleButton = 0;
    std::uint8_t mouseRightButton = 0;
    float joystickSensitivity = 0.00001f;  ///< radians per frame and unit of deflection
    JOYINFOEX joystickState;               ///< the last sample
    JOYCAPSA joystickCaps;
    std::uint32_t joystickCentreX = 0;  ///< the rest position
    std::uint32_t joystickCentreY = 0;
    MSG message;  ///< the frame loop's

    Engine();
    /// Writes its log entry and releases nothing: the teardown has done that.
    ~Engine();
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;

    void SetLog(Log* newLog) { log = newLog; }

    // Settings, in settings/.

    /// Applies all keys of the settings file but the scenes. False, and a box, if there is no such file.
    bool ReadSettings(const char* fileName);
    /// Loads the scenes that the settings file names. Needs the OpenGL context and the players.
    bool LoadMeshes(const char* fileName);

    // Window, in app/window.cpp. Failures are reported here and stop nothing.

    /// Asks for the display mode of the settings, before the window exists.
    bool SwitchToFullScreen();
    bool CreateMainWindow(HINSTANCE instance, HINSTANCE previousInstance, char* commandLine,
                          int showCommand);
    bool SetupPixelFormat(HDC context);
    /// Makes the context and the first projection.
    /// @param width,height pixels
    /// @param nearDistance,farDistance of the clipping planes, in world units
    void CreateRenderContext(HDC context, std::int32_t width, std::int32_t height, float nearDistance,
                             float farDistance);
    /// Takes the client size into `windowRect` and the projection.
    void Resize(float nearDistance, float farDistance);

    /// Turns what keyboard, mouse and joystick say into requests for each player; in simulation/.
    void SampleInput();
};
