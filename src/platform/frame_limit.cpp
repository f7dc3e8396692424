#include "platform/frame_limit.h"

#include <GL/gl.h>

#include <cstdint>
#include <cstdio>
#include <vector>

#include "platform/close_request.h"
#include "platform/png_file.h"

namespace {

int limit = 0;  // 0: none
int shown = 0;
std::string file;
bool written = false;

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
        written = WritePngFile(file.c_str(), width, height, ReadPicture(width, height).data());
    }
    RequestClose();
}

bool LimitIsReached() {
    if (shown < limit) {
        std::fprintf(stderr, "engine: error: ended after %d of %d frames%s\n", shown, limit,
                     file.empty() ? "" : ", and no picture was written");
        return false;
    }
    if (!file.empty() && !written) {
        std::fprintf(stderr, "%s: error: can't be written; is the folder there, and is it yours?\n",
                     file.c_str());
        return false;
    }
    return true;
}
