#include "process/picture.h"

#include <GL/gl.h>

#include <cassert>

#include "process/png_file.h"
#include "process/save_file.h"

std::vector<std::uint8_t> ReadPicture(int width, int height) {
    assert(width > 0 && height > 0);
    std::vector<std::uint8_t> picture(std::size_t{3} * static_cast<std::size_t>(width) *
                                      static_cast<std::size_t>(height));
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, width, height, GL_RGB, GL_UNSIGNED_BYTE, picture.data());
    glPopClientAttrib();
    return picture;
}

std::string SavePicture(const std::string& path, int width, int height) {
    return SaveFile(path, PngFile(width, height, ReadPicture(width, height).data()));
}
