#include "import_scene/materials.h"

#include <assimp/GltfMaterial.h>
#include <assimp/material.h>

#include <algorithm>
#include <cmath>

namespace {

/// The image that gives a material its colour: the kind of it, or none.
aiTextureType ColourTextureType(const aiMaterial& material) {
    for (const aiTextureType type :
         {aiTextureType_BASE_COLOR, aiTextureType_DIFFUSE, aiTextureType_EMISSIVE, aiTextureType_AMBIENT}) {
        if (material.GetTextureCount(type) > 0) {
            return type;
        }
    }
    return aiTextureType_NONE;
}

/// The library turns and shifts about the middle of the picture. For glTF its shift has that taken out
/// already, so that here the format's own numbers are made of it again: about the upper left corner.
aiMatrix3x3 GltfTransform(const aiUVTransform& given) {
    // The library has the angle with the other sign.
    const float sine = std::sin(-given.mRotation);
    const float cosine = std::cos(-given.mRotation);
    const float scaleX = given.mScaling.x;
    const float scaleY = given.mScaling.y;
    const float offsetX = given.mTranslation.x - 0.5f * scaleX * (-cosine + sine + 1.0f);
    const float offsetY = 0.5f * scaleY * (sine + cosine - 1.0f) + 1.0f - scaleY - given.mTranslation.y;
    const aiMatrix3x3 flip(1, 0, 0, 0, -1, 1, 0, 0, 1);
    const aiMatrix3x3 transform(cosine * scaleX, sine * scaleY, offsetX, -sine * scaleX, cosine * scaleY,
                                offsetY, 0, 0, 1);
    return flip * transform * flip;
}

aiMatrix3x3 PlainTransform(const aiUVTransform& given) {
    const float sine = std::sin(given.mRotation);
    const float cosine = std::cos(given.mRotation);
    const aiMatrix3x3 size(given.mScaling.x, 0, 0, 0, given.mScaling.y, 0, 0, 0, 1);
    const aiMatrix3x3 turn(cosine, -sine, 0.5f - 0.5f * cosine + 0.5f * sine, sine, cosine,
                           0.5f - 0.5f * sine - 0.5f * cosine, 0, 0, 1);
    const aiMatrix3x3 shift(1, 0, given.mTranslation.x, 0, 1, given.mTranslation.y, 0, 0, 1);
    return shift * turn * size;
}

Wrap WrapOf(const aiMaterial& material, aiTextureType type, const char* key) {
    int mode = aiTextureMapMode_Wrap;
    material.Get(key, type, 0, mode);
    if (mode == aiTextureMapMode_Mirror) {
        return Wrap::Mirror;
    }
    return mode == aiTextureMapMode_Wrap ? Wrap::Repeat : Wrap::Clamp;
}

void ReadTexture(const Model& model, const aiMaterial& material, aiTextureType type, Surface& surface,
                 TextureList& textures) {
    aiString path;
    unsigned channel = 0;
    if (material.GetTexture(type, 0, &path, nullptr, &channel) != AI_SUCCESS) {
        return;
    }
    surface.channel = channel;
    const Wrap wrapX = WrapOf(material, type, _AI_MATKEY_MAPPINGMODE_U_BASE);
    const Wrap wrapY = WrapOf(material, type, _AI_MATKEY_MAPPINGMODE_V_BASE);
    surface.texture = textures.Add(path.C_Str(), wrapX, wrapY, surface.name);
    if (surface.texture == -1) {
        return;
    }
    aiUVTransform transform;
    if (material.Get(AI_MATKEY_UVTRANSFORM(type, 0), transform) == AI_SUCCESS) {
        surface.toTexture = model.isGltf ? GltfTransform(transform) : PlainTransform(transform);
    }
    // A mirrored image is twice as large as what it was made of.
    const aiMatrix3x3 halved(wrapX == Wrap::Mirror ? 0.5f : 1.0f, 0, 0, 0,
                             wrapY == Wrap::Mirror ? 0.5f : 1.0f, 0, 0, 0, 1);
    surface.toTexture = halved * surface.toTexture;
}

/// Values that fail to be read are left as they are: the library writes to its argument even then.
template <typename Value, typename... Key>
Value Read(const aiMaterial& material, Value absent, Key... key) {
    Value value = absent;
    return material.Get(key..., value) == AI_SUCCESS ? value : absent;
}

aiColor3D Clamped(aiColor3D colour) {
    for (float* part : {&colour.r, &colour.g, &colour.b}) {
        *part = std::isfinite(*part) ? std::clamp(*part, 0.0f, 1.0f) : 1.0f;
    }
    return colour;
}

/// @param wantsImage the model has an image for it, which may be missing
aiColor3D ColourOf(const aiMaterial& material, bool wantsImage, const Surface& surface, Report& report) {
    const aiColor3D white(1.0f, 1.0f, 1.0f);
    const aiColor3D grey(0.8f, 0.8f, 0.8f);
    const aiColor3D diffuse = Read(material, grey, AI_MATKEY_COLOR_DIFFUSE);
    const aiColor4D base =
        Read(material, aiColor4D(diffuse.r, diffuse.g, diffuse.b, 1.0f), AI_MATKEY_BASE_COLOR);
    const aiColor3D colour = Clamped({base.r, base.g, base.b});
    if (surface.texture != -1) {
        // Where there is an image, black means that nobody set a colour.
        return colour.IsBlack() ? white : colour;
    }
    const aiColor3D emission = Clamped(Read(material, aiColor3D(), AI_MATKEY_COLOR_EMISSIVE));
    if (!emission.IsBlack()) {
        report.Warn("a material's own light is added to its colour, and lights nothing else", surface.name);
        return Clamped(colour + emission);
    }
    return wantsImage && colour.IsBlack() ? grey : colour;
}

void TellLosses(const aiMaterial& material, const Surface& surface, Report& report) {
    const aiColor4D base = Read(material, aiColor4D(1.0f, 1.0f, 1.0f, 1.0f), AI_MATKEY_BASE_COLOR);
    const std::string alphaMode = Read(material, aiString("OPAQUE"), AI_MATKEY_GLTF_ALPHAMODE).C_Str();
    if (alphaMode != "OPAQUE" || base.a < 1.0f || Read(material, 1.0f, AI_MATKEY_OPACITY) < 1.0f) {
        report.Warn("objects are drawn solid, whatever the alpha of their material", surface.name);
    }
    if (Read(material, 0.0f, AI_MATKEY_METALLIC_FACTOR) > 0.5f) {
        report.Warn("metal is drawn as its plain colour, since nothing is mirrored", surface.name);
    }
    if (Read(material, 0.0f, AI_MATKEY_TRANSMISSION_FACTOR) > 0.0f) {
        report.Warn("glass is drawn solid, since no light goes through it", surface.name);
    }
}

}  // namespace

float ToDisplay(float amount) {
    return amount <= 0.0031308f ? 12.92f * amount : 1.055f * std::pow(amount, 1.0f / 2.4f) - 0.055f;
}

std::vector<Surface> ReadSurfaces(const Model& model, TextureList& textures, Report& report) {
    std::vector<bool> isUsed(model.scene->mNumMaterials);
    for (unsigned i = 0; i < model.scene->mNumMeshes; i++) {
        const unsigned material = model.scene->mMeshes[i]->mMaterialIndex;
        if (material < isUsed.size()) {
            isUsed[material] = true;
        }
    }
    std::vector<Surface> surfaces;
    for (unsigned i = 0; i < model.scene->mNumMaterials; i++) {
        if (!isUsed[i]) {
            surfaces.emplace_back();
            continue;
        }
        const aiMaterial& material = *model.scene->mMaterials[i];
        Surface surface;
        aiString name;
        if (material.Get(AI_MATKEY_NAME, name) == AI_SUCCESS) {
            surface.name = name.C_Str();
        }
        const aiTextureType type = ColourTextureType(material);
        if (type != aiTextureType_NONE) {
            ReadTexture(model, material, type, surface, textures);
        }
        surface.colour = ColourOf(material, type != aiTextureType_NONE, surface, report);
        if (model.isByBlender && !model.isGltf) {
            for (float* part : {&surface.colour.r, &surface.colour.g, &surface.colour.b}) {
                *part = ToDisplay(*part);
            }
        }
        TellLosses(material, surface, report);
        int twoSided = 0;
        material.Get(AI_MATKEY_TWOSIDED, twoSided);
        surface.twoSided = twoSided != 0;
        surfaces.push_back(surface);
    }
    return surfaces;
}
