#include "check_scene/obj_export.h"

#include <cstdio>
#include <filesystem>
#include <sstream>

#include "check_scene/stand_ins.h"
#include "process/png_file.h"
#include "scene/scene.h"

namespace {

/// A name that has no blanks, as OBJ wants it.
std::string Word(std::string name) {
    for (char& c : name) {
        if (c == ' ' || c == '\t' || c == '\n' || c == '\\' || c == '/') {
            c = '_';
        }
    }
    return name.empty() ? "NoName" : name;
}

/// The image of a texture; null if there is none.
const KeptImage* ImageOf(const Scene& scene, const Object& object) {
    if (!scene.HasTexture(object.textureIndex) || object.texVertexValueCount == 0) {
        return nullptr;
    }
    const Texture& texture = scene.textures[object.textureIndex];
    const KeptImage* image = texture.glName == 0 ? nullptr : &theReports.images[texture.glName - 1];
    return image == nullptr || image->pixels == nullptr ? nullptr : image;
}

/// "data\wall.tga" becomes "data_wall.tga.png".
std::string PngName(const KeptImage& image) {
    return Word(image.path) + ".png";
}

void WriteTriple(std::ostringstream& out, const char* word, const float* values, int count) {
    out << word;
    for (int i = 0; i < count; i++) {
        out << ' ' << values[i];
    }
}

void WriteObject(std::ostringstream& out, const Scene& scene, const Object& object, std::int64_t& vertices,
                 std::int64_t& texVertices) {
    const KeptImage* image = ImageOf(scene, object);
    const std::int32_t texVertexCount = image == nullptr ? 0 : object.texVertexValueCount / 3;
    out << "o " << Word(object.name) << "\nusemtl " << (image == nullptr ? "plain" : Word(image->path))
        << "\n";
    for (std::int32_t i = 0; i < object.vertexValueCount; i += 3) {
        WriteTriple(out, "v", &object.vertices[i], 3);
        WriteTriple(out, "", &object.colours[i], 3);  // which many programs read
        out << '\n';
    }
    for (std::int32_t i = 0; i < 3 * texVertexCount; i += 3) {
        WriteTriple(out, "vt", &object.texVertices[i], 2);
        out << '\n';
    }
    for (std::int32_t i = 0; i + 2 < object.faceValueCount; i += 3) {
        out << 'f';
        for (int corner = 0; corner < 3; corner++) {
            const std::int32_t index = object.faces[i + corner];
            out << ' ' << vertices + index + 1;
            if (index < texVertexCount) {
                out << '/' << texVertices + index + 1;
            }
        }
        out << '\n';
    }
    vertices += object.vertexValueCount / 3;
    texVertices += texVertexCount;
}

}  // namespace

std::map<std::string, std::string> ObjFiles(const World& world, const std::string& path) {
    const Scene& scene = *world.scene;
    const std::filesystem::path objPath = path;
    const std::filesystem::path mtlPath = std::filesystem::path(path).replace_extension(".mtl");
    std::map<std::string, std::string> files;
    std::ostringstream obj;
    std::ostringstream mtl;
    obj.precision(9);
    obj << "mtllib " << mtlPath.filename().string() << "\n";
    mtl << "newmtl plain\nKd 1 1 1\n";
    std::int64_t vertices = 0;
    std::int64_t texVertices = 0;
    for (std::int32_t id = 0; id < scene.objectCount; id++) {
        const Object& object = scene.objects[id];
        if (!world.HasMesh(id)) {
            continue;
        }
        WriteObject(obj, scene, object, vertices, texVertices);
        const KeptImage* image = ImageOf(scene, object);
        if (image == nullptr) {
            continue;
        }
        std::string& png = files[(objPath.parent_path() / PngName(*image)).string()];
        if (png.empty()) {
            mtl << "newmtl " << Word(image->path) << "\nKd 1 1 1\nmap_Kd " << PngName(*image) << "\n";
            png = PngFile(image->width, image->height, image->pixels.get(), image->bytesPerPixel);
        }
    }
    files[objPath.string()] = obj.str();
    files[mtlPath.string()] = mtl.str();
    return files;
}
