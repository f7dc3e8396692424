#include <GL/gl.h>

#include <cstddef>
#include <cstdint>

// Stands in for OpenGL where it takes memory: reads all that a driver would read, so that the sanitizers
// see an array that is too short. The rest of OpenGL does nothing without a context.

namespace {

struct Array {
    const void* pointer = nullptr;
    std::size_t entrySize = 0;
    bool enabled = false;
};
Array vertexArray;
Array normalArray;
Array colourArray;
Array coordinateArray;
GLuint lastTexture = 0;

void Read(const void* memory, std::size_t size) {
    const auto* bytes = static_cast<const volatile std::uint8_t*>(memory);
    for (std::size_t i = 0; i < size; i++) {
        static_cast<void>(bytes[i]);
    }
}

void ReadEntry(const Array& array, std::size_t index) {
    if (array.enabled) {
        Read(static_cast<const std::uint8_t*>(array.pointer) + index * array.entrySize, array.entrySize);
    }
}

Array& ArrayOf(GLenum name) {
    return name == GL_VERTEX_ARRAY   ? vertexArray
           : name == GL_NORMAL_ARRAY ? normalArray
           : name == GL_COLOR_ARRAY  ? colourArray
                                     : coordinateArray;
}

void SetPointer(Array& array, GLint size, const void* pointer) {
    array.pointer = pointer;
    array.entrySize = static_cast<std::size_t>(size) * sizeof(float);
}

}  // namespace

extern "C" {

void glEnableClientState(GLenum name) {
    ArrayOf(name).enabled = true;
}
void glDisableClientState(GLenum name) {
    ArrayOf(name).enabled = false;
}
void glVertexPointer(GLint size, GLenum, GLsizei, const void* pointer) {
    SetPointer(vertexArray, size, pointer);
}
void glNormalPointer(GLenum, GLsizei, const void* pointer) {
    SetPointer(normalArray, 3, pointer);
}
void glColorPointer(GLint size, GLenum, GLsizei, const void* pointer) {
    SetPointer(colourArray, size, pointer);
}
void glTexCoordPointer(GLint size, GLenum, GLsizei, const void* pointer) {
    SetPointer(coordinateArray, size, pointer);
}

void glDrawElements(GLenum, GLsizei count, GLenum, const void* indices) {
    for (GLsizei i = 0; i < count; i++) {
        const std::size_t index = static_cast<const GLuint*>(indices)[i];
        ReadEntry(vertexArray, index);
        ReadEntry(normalArray, index);
        ReadEntry(colourArray, index);
        ReadEntry(coordinateArray, index);
    }
}

void glTexImage2D(GLenum, GLint, GLint, GLsizei width, GLsizei height, GLint, GLenum format, GLenum,
                  const void* pixels) {
    if (pixels != nullptr && width > 0 && height > 0) {
        Read(pixels, std::size_t{format == GL_RGBA ? 4u : 3u} * static_cast<std::size_t>(width) *
                         static_cast<std::size_t>(height));
    }
}

void glGenTextures(GLsizei count, GLuint* names) {
    for (GLsizei i = 0; i < count; i++) {
        names[i] = ++lastTexture;
    }
}

void glLightfv(GLenum, GLenum name, const GLfloat* values) {
    const bool isColourOrPosition =
        name == GL_AMBIENT || name == GL_DIFFUSE || name == GL_SPECULAR || name == GL_POSITION;
    Read(values, sizeof(float) * (isColourOrPosition ? 4 : name == GL_SPOT_DIRECTION ? 3 : 1));
}

void glCallLists(GLsizei count, GLenum, const void* lists) {
    Read(lists, static_cast<std::size_t>(count));
}
}
