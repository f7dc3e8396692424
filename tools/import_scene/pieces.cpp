#include "import_scene/pieces.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <string>

#include "scene_writer/shapes.h"

namespace {

bool IsMergeable(const WorldObject& object) {
    return object.HasTriangles() && object.mesh.keyTracks.empty() && !object.drawnLast &&
           !object.properties.Any();
}

/// Cuts one mesh in two, again and again, across its longest side, so that both halves have the same number
/// of triangles.
struct Cutter {
    const engine::SceneObject& mesh;
    std::size_t mostTriangles;
    std::vector<aiVector3D> middles;      ///< three times them, which is all the same for sorting
    std::vector<std::int32_t> order;      ///< of the triangles; pieces are runs of it
    std::vector<std::size_t> starts;      ///< of the pieces
    std::vector<std::int32_t> newVertex;  ///< of each vertex in the piece at hand, or -1
    std::vector<std::int32_t> newTexVertex;

    Cutter(const engine::SceneObject& newMesh, std::size_t newMostTriangles)
        : mesh(newMesh),
          mostTriangles(newMostTriangles),
          order(newMesh.faces.size()),
          newVertex(newMesh.vertices.size(), -1),
          newTexVertex(newMesh.texVertices.size(), -1) {
        std::iota(order.begin(), order.end(), 0);
        for (const engine::Int3& face : mesh.faces) {
            aiVector3D sum;
            for (const std::int32_t corner : {face.a, face.b, face.c}) {
                const engine::Float3& place = mesh.vertices[corner];
                sum += aiVector3D(place.x, place.y, place.z);
            }
            middles.push_back(sum);
        }
    }

    unsigned LongestSide(std::size_t from, std::size_t to) const {
        Bounds bounds;
        for (std::size_t i = from; i < to; i++) {
            bounds.Add(ToFloat3(middles[order[i]]));
        }
        const aiVector3D size = bounds.Size();
        if (size.z > size.x && size.z > size.y) {
            return 2;
        }
        return size.y > size.x ? 1 : 0;
    }

    void Cut() {
        std::vector<std::pair<std::size_t, std::size_t>> runs{{0, order.size()}};
        while (!runs.empty()) {
            const auto [from, to] = runs.back();
            runs.pop_back();
            if (to - from <= mostTriangles) {
                starts.push_back(from);
                continue;
            }
            const std::size_t half = from + (to - from) / 2;
            const unsigned side = LongestSide(from, to);
            std::nth_element(
                order.begin() + from, order.begin() + half, order.begin() + to,
                [&](std::int32_t a, std::int32_t b) { return middles[a][side] < middles[b][side]; });
            runs.emplace_back(half, to);
            runs.emplace_back(from, half);
        }
        starts.push_back(order.size());
    }

    std::int32_t Take(std::int32_t index, std::vector<std::int32_t>& numbers,
                      std::vector<std::int32_t>& taken) {
        if (numbers[index] == -1) {
            numbers[index] = static_cast<std::int32_t>(taken.size());
            taken.push_back(index);
        }
        return numbers[index];
    }

    engine::SceneObject Piece(std::size_t from, std::size_t to) {
        engine::SceneObject piece;
        std::vector<std::int32_t> vertices;
        std::vector<std::int32_t> texVertices;
        std::sort(order.begin() + from, order.begin() + to);
        for (std::size_t i = from; i < to; i++) {
            const engine::Int3& face = mesh.faces[order[i]];
            piece.faces.push_back({Take(face.a, newVertex, vertices), Take(face.b, newVertex, vertices),
                                   Take(face.c, newVertex, vertices)});
            if (!mesh.texFaces.empty()) {
                const engine::Int3& texFace = mesh.texFaces[order[i]];
                piece.texFaces.push_back({Take(texFace.a, newTexVertex, texVertices),
                                          Take(texFace.b, newTexVertex, texVertices),
                                          Take(texFace.c, newTexVertex, texVertices)});
            }
        }
        for (const std::int32_t vertex : vertices) {
            piece.vertices.push_back(mesh.vertices[vertex]);
            piece.colours.push_back(mesh.colours[vertex]);
            newVertex[vertex] = -1;
        }
        for (const std::int32_t texVertex : texVertices) {
            piece.texVertices.push_back(mesh.texVertices[texVertex]);
            newTexVertex[texVertex] = -1;
        }
        return piece;
    }
};

void AppendPieces(const WorldObject& whole, int mostTriangles, std::vector<WorldObject>& objects) {
    Cutter cutter(whole.mesh, static_cast<std::size_t>(mostTriangles));
    cutter.Cut();
    for (std::size_t i = 0; i + 1 < cutter.starts.size(); i++) {
        WorldObject piece;
        piece.name = whole.name;
        piece.texture = whole.texture;
        piece.usesPose = false;
        piece.mesh = cutter.Piece(cutter.starts[i], cutter.starts[i + 1]);
        objects.push_back(std::move(piece));
    }
}

}  // namespace

std::vector<WorldObject> MergeScenery(std::vector<WorldObject> objects, int mostTriangles) {
    std::vector<WorldObject> kept;
    std::map<int, WorldObject> byTexture;
    std::vector<int> newIndex(objects.size(), -1);
    for (std::size_t i = 0; i < objects.size(); i++) {
        WorldObject& object = objects[i];
        if (!IsMergeable(object)) {
            newIndex[i] = static_cast<int>(kept.size());
            kept.push_back(std::move(object));
            continue;
        }
        const auto [entry, isNew] = byTexture.try_emplace(object.texture);
        if (isNew) {
            entry->second = std::move(object);
        } else {
            Append(entry->second.mesh, object.mesh);
            object.mesh = {};
        }
    }
    for (WorldObject& object : kept) {
        object.pieceOf = object.pieceOf == -1 ? -1 : newIndex[object.pieceOf];
    }
    for (auto& [texture, whole] : byTexture) {
        AppendPieces(whole, mostTriangles, kept);
        whole.mesh = {};
    }
    return kept;
}
