#include "gl_recorder.h"

#include <GL/glu.h>
#include <dlfcn.h>

#include <algorithm>

namespace {

GlRecorder* recorder = nullptr;

}  // namespace

GlRecorder::GlRecorder() {
    recorder = this;
}

GlRecorder::~GlRecorder() {
    recorder = nullptr;
}

std::vector<std::string> GlRecorder::CallsOf(const std::vector<std::string>& names) const {
    std::vector<std::string> result;
    for (const std::string& call : calls) {
        if (std::ranges::count(names, call.substr(0, call.find(' '))) > 0) {
            result.push_back(call);
        }
    }
    return result;
}

namespace {

void Record(const std::string& call) {
    if (recorder != nullptr) {
        recorder->calls.push_back(call);
    }
}

std::string Values(const float* values, int count) {
    std::string result;
    for (int i = 0; i < count; i++) {
        result += Call("", values[i]);
    }
    return result;
}

template <typename Function>
Function* FindReal(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

// Functions whose arguments are all plain values: RECORDED(result, name, (parameters), arguments...)
#define RECORDED(result, name, parameters, ...)                       \
    extern "C" result name parameters {                               \
        static auto* const real = FindReal<result parameters>(#name); \
        Record(Call(#name __VA_OPT__(, ) __VA_ARGS__));               \
        return real(__VA_ARGS__);                                     \
    }

// Functions with a pointer to something that matters more than the address.
#define RECORDED_AS(text, name, parameters, ...)                    \
    extern "C" void name parameters {                               \
        static auto* const real = FindReal<void parameters>(#name); \
        Record(text);                                               \
        real(__VA_ARGS__);                                          \
    }

// By the types of the arguments.
#define RECORDED_0(name) RECORDED(void, name, ())
#define RECORDED_1(name, A) RECORDED(void, name, (A a), a)
#define RECORDED_2(name, A, B) RECORDED(void, name, (A a, B b), a, b)
#define RECORDED_3(name, A, B, C) RECORDED(void, name, (A a, B b, C c), a, b, c)
#define RECORDED_4(name, A, B, C, D) RECORDED(void, name, (A a, B b, C c, D d), a, b, c, d)

// clang-format off
RECORDED_0(glLoadIdentity) RECORDED_0(glPushMatrix) RECORDED_0(glPopMatrix) RECORDED_0(glPopAttrib)
RECORDED_0(glEnd)
RECORDED_1(glShadeModel, GLenum) RECORDED_1(glEnable, GLenum) RECORDED_1(glDisable, GLenum)
RECORDED_1(glDepthFunc, GLenum) RECORDED_1(glMatrixMode, GLenum) RECORDED_1(glBegin, GLenum)
RECORDED_1(glEnableClientState, GLenum) RECORDED_1(glDisableClientState, GLenum)
RECORDED_1(glClear, GLbitfield) RECORDED_1(glPushAttrib, GLbitfield) RECORDED_1(glListBase, GLuint)
RECORDED_1(glPointSize, GLfloat)
RECORDED_2(glPolygonMode, GLenum, GLenum) RECORDED_2(glBlendFunc, GLenum, GLenum)
RECORDED_2(glAlphaFunc, GLenum, GLclampf) RECORDED_2(glPixelStorei, GLenum, GLint)
RECORDED_2(glBindTexture, GLenum, GLuint) RECORDED_2(glDepthRange, GLdouble, GLdouble)
RECORDED_2(glTexCoord2f, GLfloat, GLfloat)
RECORDED_3(glTexParameterf, GLenum, GLenum, GLfloat) RECORDED_3(glTexCoord3f, GLfloat, GLfloat, GLfloat)
RECORDED_3(glColor3f, GLfloat, GLfloat, GLfloat) RECORDED_3(glNormal3f, GLfloat, GLfloat, GLfloat)
RECORDED_3(glVertex3f, GLfloat, GLfloat, GLfloat) RECORDED_3(glNormalPointer, GLenum, GLsizei, const GLvoid*)
RECORDED_4(glClearColor, GLfloat, GLfloat, GLfloat, GLfloat)
RECORDED_4(glRasterPos4f, GLfloat, GLfloat, GLfloat, GLfloat)
RECORDED_4(glViewport, GLint, GLint, GLsizei, GLsizei)
RECORDED_4(glVertexPointer, GLint, GLenum, GLsizei, const GLvoid*)
RECORDED_4(glTexCoordPointer, GLint, GLenum, GLsizei, const GLvoid*)
RECORDED_4(glColorPointer, GLint, GLenum, GLsizei, const GLvoid*)
RECORDED_4(glDrawElements, GLenum, GLsizei, GLenum, const GLvoid*)
RECORDED(GLboolean, glIsEnabled, (GLenum a), a)
RECORDED(void, gluLookAt, (GLdouble a, GLdouble b, GLdouble c, GLdouble d, GLdouble e, GLdouble f, GLdouble g,
                           GLdouble h, GLdouble i), a, b, c, d, e, f, g, h, i)
RECORDED_AS(Call("glGetFloatv", a), glGetFloatv, (GLenum a, GLfloat* b), a, b)
RECORDED_AS(Call("glGetIntegerv", a), glGetIntegerv, (GLenum a, GLint* b), a, b)
RECORDED_AS("glCallLists \"" + std::string(static_cast<const char*>(c), a) + '"', glCallLists,
            (GLsizei a, GLenum b, const GLvoid* c), a, b, c)
RECORDED_AS(Call("glLightfv", a, b) + Values(c, b == GL_SPOT_DIRECTION ? 3 : b <= GL_POSITION ? 4 : 1),
            glLightfv, (GLenum a, GLenum b, const GLfloat* c), a, b, c)
    // clang-format on
