#include <GL/gl.h>

#include "loading/sgi_image.h"
#include "scene/texture.h"

// From an image file to a texture object. A file that can't be read gives a texture object all the same,
// without an image: the scene goes on loading.

namespace {

void MakeTextureObject(Texture& texture) {
    glGenTextures(1, &texture.glName);
    glBindTexture(GL_TEXTURE_2D, texture.glName);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_REPEAT);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_REPEAT);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, texture.magFilter);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, texture.minFilter);
}

void Upload(const Texture& texture, GLint internalFormat, GLenum format) {
    glTexImage2D(GL_TEXTURE_2D, 0, internalFormat, texture.width, texture.height, 0, format,
                 GL_UNSIGNED_BYTE, texture.pixels.get());
}

void Finish(Texture& texture, const char* path) {
    texture.pixels = nullptr;
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    texture.name = path;
}

}  // namespace

void Texture::LoadTga(const char* path) {
    pixels = ReadTga(path, width, height, components);
    MakeTextureObject(*this);
    if (components == 3) {
        Upload(*this, 3, GL_RGB);
    }
    if (components == 4) {
        Upload(*this, 4, GL_RGBA);
    }
    Finish(*this, path);
}

void Texture::LoadRgb(const char* path, Log* log) {
    pixels = ReadRgbTexture(path, width, height, components, log);
    MakeTextureObject(*this);
    // The data are RGBA whatever the file holds; the internal format makes it grey again.
    Upload(*this, components, GL_RGBA);
    Finish(*this, path);
}
