#include "process/frame_limit.h"

#include <GL/gl.h>

#include <cassert>
#include <cstdint>
#include <vector>

#include "process/close_request.h"
#include "process/png_file.h"
#include "process/save_file.h"

namespace {

int limit = 0;  // 0: none
int shown = 0;
std::string file;
std::string failure;  // why the picture isn't written

/// The back buffer as red, green and blue bytes, the bottom row first.
std::vector<std::uint8_t> ReadPicture(int width, int height) {
    std::vector<std::uint8_t> picture(std::size_t{3} * static_cast<std::size_t>(width) *
                                      static_cast<std::size_t>(height));
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, width, height, GL_RGB, GL_UNSIGNED_BYTE, picture.data());
    glPopClientAttrib();
    return picture;
}

}  // namespace

void LimitFrames(int frames, const std::string& screenshot) {
    assert(frames > 0);
    limit = frames;
    file = screenshot;
}

bool FramesAreLimited() {
    return limit > 0;
}

void CountFrame(int width, int height) {
    if (++shown != limit) {
        return;
    }
    if (!file.empty()) {
        failure = width > 0 && height > 0
                      ? SaveFile(file, PngFile(width, height, ReadPicture(width, height).data()))
                      : "the window has no pixels";
    }
    RequestClose();
}

std::string WhatIsUndone() {
    if (shown < limit) {
        return "engine: error: ended after " + std::to_string(shown) + " of " + std::to_string(limit) +
               " frames" + (file.empty() ? "" : ", and no picture was written");
    }
    return failure.empty() ? "" : file + ": error: can't be written: " + failure;
}
