#pragma once

#include <GL/gl.h>

#include <sstream>
#include <string>
#include <vector>

// The OpenGL calls that the engine makes, written down on their way to the library: the test program
// defines the functions itself and hands each call on.

template <typename... Arguments>
std::string Call(const char* name, Arguments... arguments) {
    std::ostringstream text;
    text << name;
    ((text << ' ' << +arguments), ...);
    return text.str();
}

/// Records from its construction on, as long as it lives. One at a time.
struct GlRecorder {
    std::vector<std::string> calls;

    GlRecorder();
    ~GlRecorder();
    GlRecorder(const GlRecorder&) = delete;
    GlRecorder& operator=(const GlRecorder&) = delete;

    /// The recorded calls whose function is one of these, in order.
    std::vector<std::string> CallsOf(const std::vector<std::string>& names) const;
};
