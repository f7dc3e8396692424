#include "process/picture.h"

#include <GL/gl.h>

std::vector<std::uint8_t> ReadPicture(int width, int height) {
    std::vector<std::uint8_t> picture(std::size_t{3} * static_cast<std::size_t>(width) *
                                      static_cast<std::size_t>(height));
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, width, height, GL_RGB, GL_UNSIGNED_BYTE, picture.data());
    glPopClientAttrib();
    return picture;
}
