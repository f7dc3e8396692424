#include "process/frame_limit.h"

#include <cassert>

#include "process/close_request.h"
#include "process/picture.h"

namespace {

int limit = 0;  // 0: none
int shown = 0;
std::string file;
std::string failure;  // why the picture isn't written

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
    if (limit == 0 || ++shown != limit) {
        return;
    }
    if (!file.empty()) {
        failure = width > 0 && height > 0 ? SavePicture(file, width, height) : "the window has no pixels";
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
