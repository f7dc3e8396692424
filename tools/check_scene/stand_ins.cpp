#include "check_scene/stand_ins.h"

#include <GL/gl.h>

#include <cstddef>
#include <cstdio>
#include <utility>

#include "loading/image_memory.h"
#include "loading/sgi_image.h"
#include "platform/files.h"
#include "platform/input_devices.h"
#include "platform/message_box.h"
#include "platform/windows1250.h"
#include "scene/texture.h"
#include "services/log.h"

EngineReports theReports;

namespace {

std::string Utf8(const char* text) {
    char utf8[8192];
    Windows1250ToUtf8(text != nullptr ? text : "", utf8, sizeof utf8);
    return utf8;
}

bool* Light(GLenum name) {
    return name >= GL_LIGHT0 && name < GL_LIGHT0 + lightCount ? &theReports.lightIsOn[name - GL_LIGHT0]
                                                              : nullptr;
}

void Keep(Texture& texture, const char* path, std::int32_t bytesPerPixel, std::string trouble) {
    KeptImage image;
    image.path = path;
    image.width = texture.width;
    image.height = texture.height;
    image.bytesPerPixel = bytesPerPixel;
    image.pixels = std::move(texture.pixels);
    image.trouble = std::move(trouble);
    if (!theReports.faults.empty() && theReports.faults.back().kind == LoadFault::Kind::ImageDamaged) {
        image.damage = theReports.faults.back().Sentence();
        theReports.faults.pop_back();
    }
    theReports.images.push_back(std::move(image));
    texture.pixels = nullptr;
    texture.glName = static_cast<std::uint32_t>(theReports.images.size());
    texture.name = path;
}

/// Why the engine would end at this image; null if it lives on.
const char* DeadlyFault(const char* path) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(OpenFile(path, "rb"), &std::fclose);
    if (file == nullptr) {
        return "there is no such file";
    }
    std::uint8_t header[12] = {};
    const std::size_t read = std::fread(header, 1, sizeof header, file.get());
    const auto field = [&](int offset) { return std::size_t{256} * header[offset] + header[offset + 1]; };
    const std::size_t tableBytes = sizeof(std::uint32_t) * field(8) * field(10);
    if (read == sizeof header && header[2] == 1 && 2 * tableBytes > maxImageMemory) {
        return "its header asks for more memory than any texture takes";
    }
    return nullptr;
}

}  // namespace

int MessageBoxA(HWND, const char* text, const char*, UINT) {
    theReports.box = Utf8(text);
    return 1;
}

Log::Log() = default;
Log::~Log() = default;

bool Log::Write(Log* log, const char*) {
    return log != nullptr;
}

std::string ReportFault(Log*, const LoadFault& fault) {
    theReports.faults.push_back(fault);
    return fault.Sentence();
}

void Texture::LoadTga(const char* path) {
    theReports.box.clear();
    pixels = ReadTga(path, width, height, components);
    Keep(*this, path, components, theReports.box);
}

void Texture::LoadRgb(const char* path, Log* log) {
    if (const char* fault = DeadlyFault(path)) {
        Keep(*this, path, 4, fault);
        theReports.images.back().endsEngine = true;
        return;
    }
    theReports.box.clear();
    pixels = ReadRgbTexture(path, width, height, components, log);
    Keep(*this, path, 4, theReports.box);
}

void glGetIntegerv(GLenum, GLint* value) {
    *value = lightCount;
}

GLboolean glIsEnabled(GLenum name) {
    const bool* light = Light(name);
    return light != nullptr && *light ? GL_TRUE : GL_FALSE;
}

void glEnable(GLenum name) {
    if (bool* light = Light(name)) {
        *light = true;
    }
}

void glDisable(GLenum name) {
    if (bool* light = Light(name)) {
        *light = false;
    }
}

void glLightfv(GLenum, GLenum, const GLfloat*) {}

UINT joyGetPosEx(UINT, JOYINFOEX*) {
    return JOYERR_UNPLUGGED;
}

UINT joyGetDevCapsA(UINT, JOYCAPSA*, UINT) {
    return JOYERR_UNPLUGGED;
}

UINT joySetCapture(HWND, UINT, UINT, BOOL) {
    return JOYERR_NOERROR;
}

UINT joyReleaseCapture(UINT) {
    return JOYERR_NOERROR;
}
