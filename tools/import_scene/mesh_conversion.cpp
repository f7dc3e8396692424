#include "import_scene/mesh_conversion.h"

#include <meshoptimizer.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "import_scene/creases.h"

namespace {

/// Normals that differ by less than about half a degree are the same.
constexpr float normalSteps = 100.0f;
/// A triangle whose height is less than this share of its longest side has no area.
constexpr float leastHeight = 1e-6f;

struct VertexKey {
    engine::Float3 position;
    engine::Float3 colour;
    std::uint32_t shading = 0;  ///< equal for corners that are shaded as one
};

struct TextureKey {
    std::uint32_t vertex = 0;
    float u = 0.0f;
    float v = 0.0f;
};

using Numbers = std::vector<std::uint32_t>;

/// Leaves one of all equal keys, in the order in which they first come.
/// @return for each key its number among those that are left
template <typename Key>
Numbers NumberKeys(std::vector<Key>& keys) {
    Numbers numbers(keys.size());
    const std::size_t count = meshopt_generateVertexRemap(numbers.data(), nullptr, keys.size(), keys.data(),
                                                          keys.size(), sizeof(Key));
    for (std::size_t i = 0; i < keys.size(); i++) {
        keys[numbers[i]] = keys[i];
    }
    keys.resize(count);
    return numbers;
}

std::vector<engine::Int3> FacesOf(const Numbers& numbers) {
    std::vector<engine::Int3> faces;
    faces.reserve(numbers.size() / 3);
    const auto corner = [&](std::size_t i) { return static_cast<std::int32_t>(numbers[i]); };
    for (std::size_t i = 0; i + 2 < numbers.size(); i += 3) {
        faces.push_back({corner(i), corner(i + 1), corner(i + 2)});
    }
    return faces;
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
engine::Float3 Keyed(const aiVector3D& vector) {
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

    engine::Float3 ColourOf(unsigned vertex) const {
        aiColor3D colour = surface.colour;
        if (coloured) {
            const aiColor4D& own = mesh.mColors[0][vertex];
            colour = {colour.r * own.r, colour.g * own.g, colour.b * own.b};
        }
        const bool linear = conversion.linearColours;
        return {Displayed(colour.r, linear), Displayed(colour.g, linear), Displayed(colour.b, linear)};
    }

    TextureKey TextureOf(std::uint32_t vertex, unsigned source) const {
        const aiVector3D& given = mesh.mTextureCoords[surface.channel][source];
        const aiMatrix3x3& to = surface.toTexture;
        const float u = to.a1 * given.x + to.a2 * given.y + to.a3;
        const float v = to.b1 * given.x + to.b2 * given.y + to.b3;
        return {vertex, std::isfinite(u) ? u + 0.0f : 0.0f, std::isfinite(v) ? v + 0.0f : 0.0f};
    }

    /// For each corner a number that says which corners of one place are shaded as one.
    std::vector<std::uint32_t> Creases() const {
        std::vector<engine::Float3> positions;
        positions.reserve(corners.size());
        std::vector<aiVector3D> normals;
        normals.reserve(corners.size() / 3);
        for (std::size_t i = 0; i < corners.size(); i += 3) {
            for (std::size_t corner = i; corner < i + 3; corner++) {
                positions.push_back(Keyed(places[corners[corner]]));
            }
            const aiVector3D a = places[corners[i]];
            aiVector3D normal = (places[corners[i + 1]] - a) ^ (places[corners[i + 2]] - a);
            normals.push_back(normal.NormalizeSafe());
        }
        const Numbers positionOfCorner = NumberKeys(positions);
        return SmoothGroups(positionOfCorner, normals, positions.size(), conversion.creaseAngle);
    }

    /// What the vertices and texture vertices are, and which of them each corner has.
    struct Numbering {
        std::vector<VertexKey> vertices;
        std::vector<TextureKey> texVertices;
        Numbers vertexOfCorner;
        Numbers texVertexOfCorner;
    };

    VertexKey KeyOf(unsigned source, const engine::Float3& plainColour, std::uint32_t shading) const {
        return {Keyed(places[source]), coloured ? ColourOf(source) : plainColour, shading};
    }

    /// Where the mesh has normals, all corners at one of its vertices are alike: those vertices are
    /// numbered, and most of them are the only ones with their texture coordinates.
    Numbering NumberByVertex(const engine::Float3& plainColour) const {
        constexpr std::uint32_t unused = ~0u;
        Numbers numberOf(mesh.mNumVertices, unused);
        for (const std::uint32_t source : corners) {
            numberOf[source] = 0;
        }
        std::vector<std::uint32_t> used;
        std::vector<VertexKey> keys;
        keys.reserve(mesh.mNumVertices);
        used.reserve(mesh.mNumVertices);
        for (unsigned source = 0; source < mesh.mNumVertices; source++) {
            if (numberOf[source] == 0) {
                numberOf[source] = static_cast<std::uint32_t>(used.size());
                used.push_back(source);
                keys.push_back(KeyOf(source, plainColour, NormalKey(mesh.mNormals[source])));
            }
        }
        const Numbers vertexOf = NumberKeys(keys);
        Numbering numbering;
        Numbers texVertexOf;
        if (textured) {
            numbering.texVertices.reserve(used.size());
            for (std::size_t i = 0; i < used.size(); i++) {
                numbering.texVertices.push_back(TextureOf(vertexOf[i], used[i]));
            }
            // A mesh that has a vertex for each corner has many of them twice.
            if (2 * used.size() > corners.size()) {
                texVertexOf = NumberKeys(numbering.texVertices);
            }
        }
        numbering.vertices = std::move(keys);
        numbering.vertexOfCorner.reserve(corners.size());
        numbering.texVertexOfCorner.reserve(textured ? corners.size() : 0);
        for (const std::uint32_t source : corners) {
            const std::uint32_t number = numberOf[source];
            numbering.vertexOfCorner.push_back(vertexOf[number]);
            if (textured) {
                numbering.texVertexOfCorner.push_back(texVertexOf.empty() ? number : texVertexOf[number]);
            }
        }
        return numbering;
    }

    Numbering NumberByCorner(const engine::Float3& plainColour) const {
        const Numbers creases = Creases();
        Numbering numbering;
        numbering.vertices.reserve(corners.size());
        for (std::size_t corner = 0; corner < corners.size(); corner++) {
            numbering.vertices.push_back(KeyOf(corners[corner], plainColour, creases[corner]));
        }
        numbering.vertexOfCorner = NumberKeys(numbering.vertices);
        if (textured) {
            numbering.texVertices.reserve(corners.size());
            for (std::size_t corner = 0; corner < corners.size(); corner++) {
                numbering.texVertices.push_back(
                    TextureOf(numbering.vertexOfCorner[corner], corners[corner]));
            }
            numbering.texVertexOfCorner = NumberKeys(numbering.texVertices);
        }
        return numbering;
    }

    engine::SceneObject Build() const {
        const engine::Float3 plainColour =
            mesh.mNumVertices > 0 && !coloured ? ColourOf(0) : engine::Float3{};
        const Numbering numbering =
            mesh.HasNormals() ? NumberByVertex(plainColour) : NumberByCorner(plainColour);
        engine::SceneObject object;
        object.faces = FacesOf(numbering.vertexOfCorner);
        object.texFaces = FacesOf(numbering.texVertexOfCorner);
        object.vertices.reserve(numbering.vertices.size());
        object.colours.reserve(numbering.vertices.size());
        for (const VertexKey& key : numbering.vertices) {
            object.vertices.push_back(key.position);
            object.colours.push_back(key.colour);
        }
        object.texVertices.reserve(numbering.texVertices.size());
        for (const TextureKey& key : numbering.texVertices) {
            object.texVertices.push_back({key.u, key.v, 0.0f});
        }
        return object;
    }
};

/// Adds the mesh once more, seen from behind.
void AddBackSides(engine::SceneObject& object) {
    const auto vertexCount = static_cast<std::int32_t>(object.vertices.size());
    const auto texVertexCount = static_cast<std::int32_t>(object.texVertices.size());
    const auto twice = [](auto& values) {
        const std::size_t count = values.size();
        values.reserve(2 * count);
        std::copy_n(values.begin(), count, std::back_inserter(values));
    };
    const auto turned = [](std::vector<engine::Int3>& faces, std::int32_t shift) {
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

engine::SceneObject ConvertMesh(const aiMesh& mesh, const aiMatrix4x4& toWorld, const Surface& surface,
                                const MeshConversion& conversion, MeshLosses& losses) {
    Converter converter(mesh, toWorld, surface, conversion);
    converter.CollectCorners(aiMatrix3x3(toWorld).Determinant() < 0.0f, losses);
    losses.noCoordinates = surface.texture != -1 && !converter.textured;
    engine::SceneObject object = converter.Build();
    if (surface.twoSided && !conversion.oneSided) {
        AddBackSides(object);
    }
    return object;
}
