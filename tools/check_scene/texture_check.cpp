#include <set>
#include <string>

#include "check_scene/checks.h"
#include "check_scene/image_check.h"
#include "check_scene/stand_ins.h"
#include "platform/files.h"
#include "scene/scene.h"

// Textures: the images, which of them an object really shows, and what it is laid on with.

namespace {

const KeptImage* ImageOf(const Texture& texture) {
    return texture.glName == 0 ? nullptr : &theReports.images[texture.glName - 1];
}

std::string ExtensionAdvice(const std::string& name) {
    for (const char* wrong : {".TGA", ".RGB"}) {
        if (name.find(wrong) != std::string::npos) {
            return std::string("write ") + (wrong[1] == 'T' ? ".tga" : ".rgb") + " in small letters";
        }
    }
    return "the name has to hold .tga or .rgb";
}

/// @param judged the images that have been reported
void CheckTexture(Findings& findings, const World& world, const TextureUse& use,
                  std::set<const KeptImage*>& judged) {
    const Texture& texture = world.scene->textures[use.texture];
    const std::string& wanted = use.key->name;
    const Place place = world.scenes[static_cast<std::size_t>(use.scene)].attributes.At(use.key->position);
    if (wanted.empty()) {
        return;
    }
    if (wanted.find(".rgb") == std::string::npos && wanted.find(".tga") == std::string::npos) {
        findings.Error("image-unreadable", place,
                       "*TEXTURE " + wanted + " gives no image, and every texture that follows is " +
                           "taken for this one and is white, too: " + ExtensionAdvice(wanted));
        return;
    }
    const KeptImage* image = ImageOf(texture);
    if (image == nullptr) {
        return;  // white because of an earlier one, which has been told
    }
    if (texture.name != wanted &&
        ResolveFileName(texture.name.c_str()) != ResolveFileName(wanted.c_str())) {
        findings.Error("image-name-taken", place,
                       "*TEXTURE " + wanted + " shows " + texture.name +
                           ", because that was loaded before and its name lies within; choose names "
                           "of which none holds another");
    }
    if (texture.name == wanted && judged.insert(image).second) {
        if (!image->damage.empty()) {
            findings.Error("image-damaged", place, "*TEXTURE " + wanted + ": " + image->damage);
        }
        bool isError = false;
        const std::string fault = ImageFault(*image, isError);
        if (!fault.empty()) {
            const std::string text = "*TEXTURE " + wanted + ": the image " + fault;
            if (isError) {
                findings.Error("image-unusable", place, text);
            } else {
                findings.Warn("image-flaw", place, text);
            }
        }
    }
}

void CheckCoordinates(Findings& findings, const World& world, std::int32_t id) {
    const Object& object = world.scene->objects[id];
    if (!world.HasMesh(id)) {
        return;
    }
    const bool hasTexture = object.textureIndex >= 0;
    if (hasTexture && object.texVertexValueCount == 0) {
        findings.Error("no-coordinates", world.At(id, "*TEXTURE"),
                       Named(object) + " has no texture coordinates: it is drawn without its texture");
    } else if (!hasTexture && object.texVertexValueCount > 0) {
        findings.Warn("coordinates-unused", world.At(id),
                      Named(object) + " has texture coordinates and no *TEXTURE in a block");
    } else if (hasTexture && world.Of(id).head.texTriangleCount == 0) {
        findings.Warn("coordinates-unplaced", world.At(id),
                      Named(object) +
                          " has texture coordinates, but no texture triangles that "
                          "say where they belong: they go by the vertices' indices");
    }
}

}  // namespace

void CheckTextures(Findings& findings, const World& world) {
    std::set<const KeptImage*> judged;
    for (const TextureUse& use : world.textureUses) {
        CheckTexture(findings, world, use, judged);
    }
    for (std::int32_t id = 0; id < world.scene->objectCount; id++) {
        CheckCoordinates(findings, world, id);
    }
}
