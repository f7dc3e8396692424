#pragma once

#include "scene/light.h"

// What the records of lights do to OpenGL's lights. Position and spot direction are world coordinates,
// turned by the matrix that stands at the moment of the call.

/// Takes the first free GL light and uploads the record. With none free it changes nothing.
void Activate(Light& light);
void Deactivate(Light& light);

// Setters write through to OpenGL and into the record. The colours' fourth value goes to OpenGL and is not
// kept. Without a GL light only the record changes.

void SetAmbient(Light& light, const float* value);        ///< 4 floats
void SetDiffuse(Light& light, const float* value);        ///< 4 floats
void SetSpecular(Light& light, const float* value);       ///< 4 floats
void SetPosition(Light& light, const float* value);       ///< 4 floats
void SetSpotDirection(Light& light, const float* value);  ///< 3 floats
void SetSpotExponent(Light& light, float value);
void SetSpotCutoff(Light& light, float value);
void SetConstantAttenuation(Light& light, float value);
void SetLinearAttenuation(Light& light, float value);
void SetQuadraticAttenuation(Light& light, float value);
