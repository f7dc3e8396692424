#include "scene/light.h"

#include <GL/gl.h>

#include <cstddef>

namespace {

void UploadColour(GLenum glLight, GLenum parameter, const float (&colour)[3]) {
    const float withAlpha[4] = {colour[0], colour[1], colour[2], 1.0f};
    glLightfv(glLight, parameter, withAlpha);
}

/// With no GL light held the name is none that OpenGL knows, and it ignores the call.
void Upload(const Light& light, GLenum parameter, const float* value) {
    glLightfv(static_cast<GLenum>(light.glLight), parameter, value);
}

/// Takes as many values as the field holds; they may be the field's own.
template <std::size_t size>
void Store(const float* value, float (&field)[size]) {
    for (std::size_t i = 0; i < size; i++) {
        field[i] = value[i];
    }
}

}  // namespace

void Light::Activate() {
    GLint lightLimit = 0;
    glGetIntegerv(GL_MAX_LIGHTS, &lightLimit);
    for (GLint i = 0; i < lightLimit; i++) {
        const GLenum candidate = GL_LIGHT0 + static_cast<GLenum>(i);
        if (glIsEnabled(candidate)) {
            continue;
        }
        glEnable(candidate);
        UploadColour(candidate, GL_AMBIENT, ambient);
        UploadColour(candidate, GL_DIFFUSE, diffuse);
        UploadColour(candidate, GL_SPECULAR, specular);
        glLightfv(candidate, GL_POSITION, position);
        glLightfv(candidate, GL_SPOT_CUTOFF, &spotCutoff);
        glLightfv(candidate, GL_SPOT_DIRECTION, spotDirection);
        glLightfv(candidate, GL_SPOT_EXPONENT, &spotExponent);
        glLightfv(candidate, GL_CONSTANT_ATTENUATION, &constantAttenuation);
        glLightfv(candidate, GL_LINEAR_ATTENUATION, &linearAttenuation);
        glLightfv(candidate, GL_QUADRATIC_ATTENUATION, &quadraticAttenuation);
        glLight = static_cast<std::int32_t>(candidate);
        return;
    }
}

void Light::Deactivate() {
    glDisable(static_cast<GLenum>(glLight));
    glLight = -1;
}

void Light::SetAmbient(const float* value) {
    Upload(*this, GL_AMBIENT, value);
    Store(value, ambient);
}

void Light::SetDiffuse(const float* value) {
    Upload(*this, GL_DIFFUSE, value);
    Store(value, diffuse);
}

void Light::SetSpecular(const float* value) {
    Upload(*this, GL_SPECULAR, value);
    Store(value, specular);
}

void Light::SetPosition(const float* value) {
    Upload(*this, GL_POSITION, value);
    Store(value, position);
}

void Light::SetSpotDirection(const float* value) {
    Upload(*this, GL_SPOT_DIRECTION, value);
    Store(value, spotDirection);
}

void Light::SetSpotExponent(float value) {
    Upload(*this, GL_SPOT_EXPONENT, &value);
    spotExponent = value;
}

void Light::SetSpotCutoff(float value) {
    Upload(*this, GL_SPOT_CUTOFF, &value);
    spotCutoff = value;
}

void Light::SetConstantAttenuation(float value) {
    Upload(*this, GL_CONSTANT_ATTENUATION, &value);
    constantAttenuation = value;
}

void Light::SetLinearAttenuation(float value) {
    Upload(*this, GL_LINEAR_ATTENUATION, &value);
    linearAttenuation = value;
}

void Light::SetQuadraticAttenuation(float value) {
    Upload(*this, GL_QUADRATIC_ATTENUATION, &value);
    quadraticAttenuation = value;
}
