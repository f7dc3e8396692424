#include "render/gl_state.h"

#include <GL/gl.h>

#include <string>

#include "scene/scene.h"
#include "services/log.h"

namespace {

void ReportInteger(Log* log, GLenum query, const char* label) {
    GLint value = 0;
    glGetIntegerv(query, &value);
    Log::Write(log, label + std::to_string(value));
}

void ReportBoolean(Log* log, GLenum query, const char* label) {
    GLboolean value = GL_FALSE;
    glGetBooleanv(query, &value);
    Log::Write(log, label + std::to_string(value));
}

}  // namespace

void InitGlState() {
    glShadeModel(GL_SMOOTH);
    glPolygonMode(GL_FRONT, GL_FILL);
    glEnable(GL_CULL_FACE);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LESS);
    glEnable(GL_COLOR_MATERIAL);
    glEnable(GL_TEXTURE_2D);
    glEnable(GL_LIGHTING);
    glClearColor(0.2f, 0.2f, 1.0f, 1.0f);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);  // rows of three-byte pixels come without padding
    // Of the default texture object, which sprites show when no texture was ever bound.
    glTexParameterf(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, static_cast<GLfloat>(GL_NEAREST));
    glTexParameterf(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, static_cast<GLfloat>(GL_NEAREST));
    glPointSize(10.0f);
}

void Scene::ReportGlCapabilities() {
    ReportInteger(log, GL_DEPTH_BITS, "Number of Depth bits: ");
    ReportInteger(log, GL_BLUE_BITS, "Number of Blue bits: ");
    ReportInteger(log, GL_GREEN_BITS, "Number of Green bits: ");
    ReportInteger(log, GL_RED_BITS, "Number of Red bits: ");
    ReportInteger(log, GL_ACCUM_BLUE_BITS, "Number of Blue bits in Accumulation Buffer: ");
    ReportInteger(log, GL_ACCUM_GREEN_BITS, "Number of Green bits in Accumulation Buffer: ");
    ReportInteger(log, GL_ACCUM_RED_BITS, "Number of Red bits in Accumulation Buffer: ");
    ReportInteger(log, GL_STENCIL_BITS, "Number of bits in Stencil Buffer: ");
    ReportBoolean(log, GL_DEPTH_TEST, "Depth test: ");
    ReportBoolean(log, GL_CULL_FACE, "Backface cull: ");
    ReportInteger(log, GL_MAX_LIGHTS, "Number of lights supported by implementation: ");
}
