#include "render/overlay_text.h"

#include <GL/gl.h>

#include <cstdarg>
#include <cstdio>
#include <cstring>

#include "engine/engine.h"
#include "platform/fonts.h"
#include "platform/message_box.h"
#include "scene/scene.h"
#include "services/log.h"

namespace {

// The characters that have a display list.
constexpr GLuint firstCharacter = 32;
constexpr GLsizei characterCount = 96;

void ReportError(Log* log, const char* text) {
    Log::Write(log, text);
    MessageBoxA(nullptr, text, ":-(", MB_ICONSTOP);
}

}  // namespace

void Scene::BuildFont(const Engine& engine, std::string& name) {
    fontListBase = glGenLists(characterCount);
    const HFONT font = CreateFontA(-10, 0, 0, 0, FW_BOLD, 0, 0, 0, ANSI_CHARSET, OUT_TT_PRECIS,
                                   CLIP_DEFAULT_PRECIS, ANTIALIASED_QUALITY, 0, name.c_str());
    if (font == nullptr) {
        ReportError(log, "Error: CreateFont");
    }
    if (SelectObject(engine.deviceContext, font) == nullptr) {
        ReportError(log, "Error: Select Object in BuildFont");
    }
    if (!wglUseFontBitmapsA(engine.deviceContext, firstCharacter, characterCount, fontListBase)) {
        Log::Write(log, "wglUseFontBitmaps failed");
        return;
    }
    name += ": Font built succesfully";
    Log::Write(log, name);
}

void Scene::PrintText(const char* format, ...) const {
    if (format == nullptr) {
        return;
    }
    char text[256] = "";
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);

    glPushAttrib(GL_LIST_BIT);
    glListBase(fontListBase - firstCharacter);
    glCallLists(static_cast<GLsizei>(std::strlen(text)), GL_UNSIGNED_BYTE, text);
    glPopAttrib();
}

void Scene::ReleaseFont() {
    glDeleteLists(fontListBase, characterCount);
}

void SetWindowRasterPos4f(float x, float y, float z, float w) {
    glPushAttrib(GL_TRANSFORM_BIT | GL_VIEWPORT_BIT);
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glLoadIdentity();
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    glLoadIdentity();

    // Whatever the raster position's z is, it lands at this depth.
    glDepthRange(static_cast<double>(z), static_cast<double>(z));
    // Two pixels across, one unit of normalised coordinates is one pixel.
    const int ix = static_cast<int>(x);
    const int iy = static_cast<int>(y);
    glViewport(ix - 1, iy - 1, 2, 2);
    glRasterPos4f(x - static_cast<float>(ix), y - static_cast<float>(iy), 0.0f, w);

    glPopMatrix();
    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
    glPopAttrib();
}

void SetWindowRasterPos2f(float x, float y) {
    SetWindowRasterPos4f(x, y, 0.0f, 1.0f);
}
