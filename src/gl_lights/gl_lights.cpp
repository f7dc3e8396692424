#include "gl_lights/gl_lights.h"

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
void Set(Light& light, GLenum parameter, const float* value, float (&field)[size]) {
    Upload(light, parameter, value);
    for (std::size_t i = 0; i < size; i++) {
        field[i] = value[i];
    }
}

void Set(Light& light, GLenum parameter, float value, float& field) {
    Upload(light, parameter, &value);
    field = value;
}

}  // namespace

void Activate(Light& light) {
    GLint lightLimit = 0;
    glGetIntegerv(GL_MAX_LIGHTS, &lightLimit);
    for (GLint i = 0; i < lightLimit; i++) {
        const GLenum candidate = GL_LIGHT0 + static_cast<GLenum>(i);
        if (glIsEnabled(candidate)) {
            continue;
        }
        glEnable(candidate);
        UploadColour(candidate, GL_AMBIENT, light.ambient);
        UploadColour(candidate, GL_DIFFUSE, light.diffuse);
        UploadColour(candidate, GL_SPECULAR, light.specular);
        glLightfv(candidate, GL_POSITION, light.position);
        glLightfv(candidate, GL_SPOT_CUTOFF, &light.spotCutoff);
        glLightfv(candidate, GL_SPOT_DIRECTION, light.spotDirection);
        glLightfv(candidate, GL_SPOT_EXPONENT, &light.spotExponent);
        glLightfv(candidate, GL_CONSTANT_ATTENUATION, &light.constantAttenuation);
        glLightfv(candidate, GL_LINEAR_ATTENUATION, &light.linearAttenuation);
        glLightfv(candidate, GL_QUADRATIC_ATTENUATION, &light.quadraticAttenuation);
        light.glLight = static_cast<std::int32_t>(candidate);
        return;
    }
}

void Deactivate(Light& light) {
    glDisable(static_cast<GLenum>(light.glLight));
    light.glLight = -1;
}

void SetAmbient(Light& light, const float* value) {
    Set(light, GL_AMBIENT, value, light.ambient);
}

void SetDiffuse(Light& light, const float* value) {
    Set(light, GL_DIFFUSE, value, light.diffuse);
}

void SetSpecular(Light& light, const float* value) {
    Set(light, GL_SPECULAR, value, light.specular);
}

void SetPosition(Light& light, const float* value) {
    Set(light, GL_POSITION, value, light.position);
}

void SetSpotDirection(Light& light, const float* value) {
    Set(light, GL_SPOT_DIRECTION, value, light.spotDirection);
}

void SetSpotExponent(Light& light, float value) {
    Set(light, GL_SPOT_EXPONENT, value, light.spotExponent);
}

void SetSpotCutoff(Light& light, float value) {
    Set(light, GL_SPOT_CUTOFF, value, light.spotCutoff);
}

void SetConstantAttenuation(Light& light, float value) {
    Set(light, GL_CONSTANT_ATTENUATION, value, light.constantAttenuation);
}

void SetLinearAttenuation(Light& light, float value) {
    Set(light, GL_LINEAR_ATTENUATION, value, light.linearAttenuation);
}

void SetQuadraticAttenuation(Light& light, float value) {
    Set(light, GL_QUADRATIC_ATTENUATION, value, light.quadraticAttenuation);
}
