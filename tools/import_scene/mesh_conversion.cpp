#include "import_scene/mesh_conversion.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "import_scene/colour_space.h"
#include "import_scene/creases.h"
#include "import_scene/hash_table.h"

namespace {

/// Normals that differ by less than about half a degree are the same.
constexpr float normalSteps = 100.0f;
/// A triangle whose height is less than this share of its longest side has no area.
constexpr float leastHeight = 1e-6f;

struct VertexKey {
    Float3 position;
    Float3 colour;
    std::uint32_t shading = 0;  ///< equal for corners that are shaded as one
};

struct TextureKey {
    std::int32_t vertex = 0;
    float u = 0.0f;
    float v = 0.0f;
};

std::int32_t& CornerOf(Int3& face, std::size_t corner) {
    return corner == 0 ? face.a : corner == 1 ? face.b : face.c;
}

std::uint32_t NormalKey(const aiVector3D& normal) {
    std::uint32_t key = 0;
    for (const float part : {normal.x, normal.y, normal.z}) {
        const float step = std::isfinite(part) ? std::clamp(part, -1.0f, 1.0f) * normalSteps : 0.0f;
        key = key << 8 | static_cast<std::uint32_t>(step + 128.5f);
    }
    return key;
}

/// Adding zero makes a plus zero of a minus zero, so that equal numbers have equal bits.
Float3 Keyed(const aiVector3D& vector) {
    return {vector.x + 0.0f, vector.y + 0.0f, vector.z + 0.0f};
}

float Displayed(float amount, bool linear) {
    const float bounded = std::isfinite(amount) ? std::clamp(amount, 0.0f, 1.0f) : 1.0f;
    return linear ? ToDisplay(bounded) : bounded;
}

bool HasArea(const aiVector3D& a, const aiVector3D& b, const aiVector3D& c) {
    const float longest =
        std::max({(b - a).SquareLength(), (c - b).SquareLength(), (a - c).SquareLength()});
    const float area = ((b - a) ^ (c - a)).SquareLength();
    return area > leastHeight * leastHeight * longest * longest;
}

/// One mesh while it is converted. Corners are those of its sound triangles, three each, as indices of the
/// mesh's own vertices.
struct Converter {
    const aiMesh& mesh;
    const Surface& surface;
    const MeshConversion& conversion;
    std::vector<aiVector3D> places;  ///< of the mesh's vertices, in the world
    std::vector<std::uint32_t> corners;
    bool textured = false;
    bool coloured = false;

    Converter(const aiMesh& newMesh, const aiMatrix4x4& toWorld, const Surface& newSurface,
              const MeshConversion& newConversion)
        : mesh(newMesh), surface(newSurface), conversion(newConversion), places(newMesh.mNumVertices) {
        for (unsigned i = 0; i < mesh.mNumVertices; i++) {
            places[i] = toWorld * mesh.mVertices[i];
        }
        textured = surface.texture != -1 && surface.channel < AI_MAX_NUMBER_OF_TEXTURECOORDS &&
                   mesh.HasTextureCoords(surface.channel);
        coloured = mesh.HasVertexColors(0);
    }

    void CollectCorners(bool mirrored, MeshLosses& losses) {
        corners.reserve(std::size_t{3} * mesh.mNumFaces);
        for (unsigned i = 0; i < mesh.mNumFaces; i++) {
            const aiFace& face = mesh.mFaces[i];
            if (face.mNumIndices != 3) {
                losses.linesOrPoints += face.mNumIndices != 0 ? 1 : 0;
                continue;
            }
            std::array<unsigned, 3> triangle{face.mIndices[0], face.mIndices[1], face.mIndices[2]};
            if (mirrored) {
                std::swap(triangle[1], triangle[2]);
            }
            if (!std::all_of(triangle.begin(), triangle.end(), [&](unsigned corner) {
                    return corner < mesh.mNumVertices && IsFinite(places[corner]);
                })) {
                losses.broken++;
                continue;
            }
            if (!HasArea(places[triangle[0]], places[triangle[1]], places[triangle[2]])) {
                losses.degenerate++;
                continue;
            }
            corners.insert(corners.end(), triangle.begin(), triangle.end());
        }
    }

    Float3 ColourOf(unsigned vertex) const {
        aiColor3D colour = surface.colour;
        if (coloured) {
            const aiColor4D& own = mesh.mColors[0][vertex];
            colour = {colour.r * own.r, colour.g * own.g, colour.b * own.b};
        }
        const bool linear = conversion.linearColours;
        return {Displayed(colour.r, linear), Displayed(colour.g, linear), Displayed(colour.b, linear)};
    }

    TextureKey TextureOf(std::int32_t vertex, unsigned source) const {
        const aiVector3D& given = mesh.mTextureCoords[surface.channel][source];
        const aiMatrix3x3& to = surface.toTexture;
        const float u = to.a1 * given.x + to.a2 * given.y + to.a3;
        const float v = to.b1 * given.x + to.b2 * given.y + to.b3;
        return {vertex, std::isfinite(u) ? u + 0.0f : 0.0f, std::isfinite(v) ? v + 0.0f : 0.0f};
    }

    /// For each corner a number that says which corners of one place are shaded as one.
    std::vector<std::uint32_t> Creases() const {
        KeyNumbers<Float3> positions(mesh.mNumVertices);
        std::vector<std::uint32_t> positionOfCorner;
        positionOfCorner.reserve(corners.size());
        std::vector<aiVector3D> normals;
        normals.reserve(corners.size() / 3);
        for (std::size_t i = 0; i < corners.size(); i += 3) {
            for (std::size_t corner = i; corner < i + 3; corner++) {
                positionOfCorner.push_back(
                    static_cast<std::uint32_t>(positions.Add(Keyed(places[corners[corner]]))));
            }
            const aiVector3D a = places[corners[i]];
            aiVector3D normal = (places[corners[i + 1]] - a) ^ (places[corners[i + 2]] - a);
            normals.push_back(normal.NormalizeSafe());
        }
        return SmoothGroups(positionOfCorner, normals, positions.keys.size(), conversion.creaseAngle);
    }

    SceneObject Build() const {
        const bool hasNormals = mesh.HasNormals();
        const std::vector<std::uint32_t> creases = hasNormals ? std::vector<std::uint32_t>() : Creases();
        const Float3 plainColour = mesh.mNumVertices > 0 && !coloured ? ColourOf(0) : Float3{};
        KeyNumbers<VertexKey> vertices(mesh.mNumVertices);
        KeyNumbers<TextureKey> texVertices(textured ? mesh.mNumVertices : 0);
        // A vertex of the mesh always gives the same two numbers, as long as its shading is its own.
        std::vector<std::int32_t> vertexOf(hasNormals ? mesh.mNumVertices : 0, -1);
        std::vector<std::int32_t> texVertexOf(textured ? vertexOf.size() : 0, -1);
        SceneObject object;
        object.faces.resize(corners.size() / 3);
        object.texFaces.resize(textured ? corners.size() / 3 : 0);
        for (std::size_t corner = 0; corner < corners.size(); corner++) {
            const unsigned source = corners[corner];
            std::int32_t vertex = hasNormals ? vertexOf[source] : -1;
            std::int32_t texVertex = hasNormals && textured ? texVertexOf[source] : -1;
            if (vertex == -1) {
                const std::uint32_t shading =
                    hasNormals ? NormalKey(mesh.mNormals[source]) : creases[corner];
                vertex = vertices.Add(
                    {Keyed(places[source]), coloured ? ColourOf(source) : plainColour, shading});
                texVertex = textured ? texVertices.Add(TextureOf(vertex, source)) : -1;
                if (hasNormals) {
                    vertexOf[source] = vertex;
                }
                if (hasNormals && textured) {
                    texVertexOf[source] = texVertex;
                }
            }
            CornerOf(object.faces[corner / 3], corner % 3) = vertex;
            if (textured) {
                CornerOf(object.texFaces[corner / 3], corner % 3) = texVertex;
            }
        }
        object.vertices.reserve(vertices.keys.size());
        object.colours.reserve(vertices.keys.size());
        for (const VertexKey& key : vertices.keys) {
            object.vertices.push_back(key.position);
            object.colours.push_back(key.colour);
        }
        object.texVertices.reserve(texVertices.keys.size());
        for (const TextureKey& key : texVertices.keys) {
            object.texVertices.push_back({key.u, key.v, 0.0f});
        }
        return object;
    }
};

/// The same mesh once more, seen from behind.
void AddBackSides(SceneObject& object) {
    const auto vertexCount = static_cast<std::int32_t>(object.vertices.size());
    const auto texVertexCount = static_cast<std::int32_t>(object.texVertices.size());
    const auto twice = [](auto& values) {
        const std::size_t count = values.size();
        values.reserve(2 * count);
        std::copy_n(values.begin(), count, std::back_inserter(values));
    };
    const auto turned = [](std::vector<Int3>& faces, std::int32_t shift) {
        const std::size_t count = faces.size();
        faces.reserve(2 * count);
        for (std::size_t i = 0; i < count; i++) {
            faces.push_back({faces[i].a + shift, faces[i].c + shift, faces[i].b + shift});
        }
    };
    twice(object.vertices);
    twice(object.colours);
    twice(object.texVertices);
    turned(object.faces, vertexCount);
    turned(object.texFaces, texVertexCount);
}

}  // namespace

SceneObject ConvertMesh(const aiMesh& mesh, const aiMatrix4x4& toWorld, const Surface& surface,
                        const MeshConversion& conversion, MeshLosses& losses) {
    Converter converter(mesh, toWorld, surface, conversion);
    converter.CollectCorners(aiMatrix3x3(toWorld).Determinant() < 0.0f, losses);
    losses.noCoordinates = surface.texture != -1 && !converter.textured;
    SceneObject object = converter.Build();
    if (surface.twoSided && !conversion.oneSided) {
        AddBackSides(object);
    }
    return object;
}
