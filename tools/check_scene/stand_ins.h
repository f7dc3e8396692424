#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "loading/load_fault.h"

// What the engine reports and asks for while it loads a world inside this program. Boxes, log, lights of
// OpenGL, texture uploads and joystick have stand-ins here, so that nothing needs a display: no box opens,
// no file is written, no driver is called. Everything else is the engine's own code.

/// An image that the engine has read and would have handed to OpenGL.
struct KeptImage {
    std::string path;  ///< as the attribute file names it
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::int32_t bytesPerPixel = 0;          ///< 3 or 4
    std::unique_ptr<std::uint8_t[]> pixels;  ///< rows from the bottom up; null if it couldn't be read
    std::string trouble;                     ///< what the engine said in a box, or would have; else empty
    std::string damage;                      ///< what it says in the log, though it uses the image
    bool endsEngine = false;                 ///< the engine doesn't live on after this
};

inline constexpr int lightCount = 8;  ///< that every OpenGL has, and most have no more

struct EngineReports {
    std::string box;                ///< the last text, in UTF-8
    std::vector<LoadFault> faults;  ///< of scene files
    std::vector<KeptImage> images;  ///< image i belongs to the textures whose `glName` is i + 1
    bool lightIsOn[8] = {};         ///< as many as every OpenGL has, and most have no more
};

/// Of the world that is being checked.
extern EngineReports theReports;
