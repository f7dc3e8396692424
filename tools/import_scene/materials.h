#pragma once

#include <assimp/matrix3x3.h>

#include <string>
#include <vector>

#include "import_scene/model.h"
#include "import_scene/textures.h"

/// What the engine can show of a material.
struct Surface {
    std::string name;
    aiColor3D colour{1.0f, 1.0f, 1.0f};  ///< as the model has it; see Model::linearColours
    int texture = -1;                    ///< index in the texture list, or none
    unsigned channel = 0;                ///< which texture coordinates of the mesh
    aiMatrix3x3 toTexture;               ///< from the mesh's texture coordinates to the image's
    bool twoSided = false;
};

/// One surface for each material of the model. The images that they use are put into the list.
std::vector<Surface> ReadSurfaces(const Model& model, TextureList& textures, Report& report);
