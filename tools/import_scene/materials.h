#pragma once

#include <assimp/matrix3x3.h>

#include <string>
#include <vector>

#include "import_scene/model.h"
#include "import_scene/textures.h"

/// What the engine can show of a material.
struct Surface {
    std::string name;
    aiColor3D colour{1.0f, 1.0f, 1.0f};  ///< as the vertices of the model have theirs
    int texture = -1;                    ///< index in the texture list, or none
    unsigned channel = 0;                ///< which texture coordinates of the mesh
    aiMatrix3x3 toTexture;               ///< from the mesh's texture coordinates to the image's
    bool twoSided = false;
};

/// An amount of light as it is sent to a screen (sRGB), from 0 to 1 both. The engine calculates with the
/// latter.
float ToDisplay(float amount);

/// One surface for each material of the model. The images that they use are put into the list.
std::vector<Surface> ReadSurfaces(const Model& model, TextureList& textures, Report& report);
