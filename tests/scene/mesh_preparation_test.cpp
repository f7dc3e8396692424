#include <cstring>
#include <random>
#include <vector>

#include "simulation/test_world.h"

namespace {

void SetMesh(Object& object, const std::vector<Vector>& vertices, const std::vector<std::int32_t>& faces) {
    object.ResizeVertices(static_cast<std::int32_t>(vertices.size()));
    for (std::size_t i = 0; i < vertices.size(); i++) {
        object.SetVertex(vertices[i], static_cast<std::int32_t>(i));
    }
    object.ResizeFaces(static_cast<std::int32_t>(faces.size() / 3));
    std::copy(faces.begin(), faces.end(), object.faces.get());
}

Vector Normal(const Object& object, std::int32_t index) {
    const float* n = object.normals.get() + 3 * index;
    return Vector(n[0], n[1], n[2]);
}

/// What `ComputeNormals` has to give: for each vertex a search through all triangles.
std::vector<Vector> SearchedNormals(const Object& object) {
    std::vector<Vector> result;
    for (std::int32_t vertex = 0; vertex < object.vertexValueCount / 3; vertex++) {
        Vector sum;
        int found = 0;
        for (std::int32_t i = 0; i < object.faceValueCount; i += 3) {
            const std::int32_t* corner = object.faces.get() + i;
            if (corner[0] != vertex && corner[1] != vertex && corner[2] != vertex) {
                continue;
            }
            const Vector a = VertexOf(object, corner[0]);
            const Vector b = VertexOf(object, corner[1]);
            const Vector c = VertexOf(object, corner[2]);
            Vector normal = (a - b).Cross(b - c);
            normal.Normalise();
            sum = sum + normal;
            found++;
        }
        Vector normal = found > 0 ? sum / static_cast<float>(found) : Normal(object, vertex);
        normal.Normalise();
        result.push_back(normal);
    }
    return result;
}

TEST(MeshPreparation, NormalsAreUnitMeansWhateverTheAreas) {
    // A floor and a wall of very different sizes that meet in the edge 0-1.
    Object object;
    SetMesh(object, {{0, 0, 0}, {1, 0, 0}, {0, 100, 0}, {0, 0, 1}}, {0, 1, 2, 1, 0, 3});
    object.ComputeNormals();
    ExpectNear(Normal(object, 2), Vector(0, 0, 1));
    ExpectNear(Normal(object, 3), Vector(0, 1, 0));
    const float half = 0.70710678f;
    ExpectNear(Normal(object, 0), Vector(0, half, half));

    Object folded;
    SetMesh(folded, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {5, 5, 5}}, {0, 1, 2, 0, 2, 1});
    folded.ResizeVertices(12);
    folded.ComputeNormals();
    ExpectNear(Normal(folded, 0), Vector());  // back to back: they cancel
    const float third = 0.57735027f;
    ExpectNear(Normal(folded, 3), Vector(third, third, third));  // (1, 1, 1) of a new object
    ExpectNear(Normal(folded, 11), Vector());                    // none of the first ten
}

TEST(MeshPreparation, NormalsEqualTheSearchBitForBit) {
    std::mt19937 random(7);
    for (int round = 0; round < 300; round++) {
        const auto vertexCount = static_cast<std::int32_t>(random() % 20 + 1);
        std::vector<Vector> vertices;
        for (std::int32_t i = 0; i < vertexCount; i++) {
            const auto coordinate = [&random] { return static_cast<float>(random() % 7) * 0.37f - 1.0f; };
            const float x = coordinate(), y = coordinate(), z = coordinate();
            vertices.emplace_back(x, y, z);
        }
        std::vector<std::int32_t> faces;
        for (std::size_t left = 3 * (random() % 40); left > 0; left--) {
            faces.push_back(static_cast<std::int32_t>(random() % static_cast<unsigned>(vertexCount)));
        }
        Object object;
        SetMesh(object, vertices, faces);
        const std::vector<Vector> expected = SearchedNormals(object);
        object.ComputeNormals();
        ASSERT_EQ(std::memcmp(object.normals.get(), expected.data(), expected.size() * sizeof(Vector)), 0);
    }
}

TEST(MeshPreparation, ReindexingGivesEachTextureVertexItsPosition) {
    // Two triangles over a seam: vertices 1 and 2 have two texture vertices each. Markers follow at 6 to 9.
    Object object;
    SetMesh(object, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}, {0, 0, 0}, {0, 0, 0}, {9, 0, 0}},
            {0, 1, 2, 1, 3, 2});
    object.colours[3 * 3] = 0.5f;
    object.ResizeTexVertices(6);
    object.ResizeTexFaces(2);
    const std::int32_t texFaces[] = {5, 4, 3, 0, 1, 2};
    std::copy(texFaces, texFaces + 6, object.texFaces.get());
    object.ComputeNormals();
    object.ReindexByTexFaces();

    ASSERT_EQ(object.vertexValueCount, 30);  // 6 texture vertices and the 4 spare ones
    const Vector expected[] = {{1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 1, 0}, {1, 0, 0},
                               {0, 0, 0}, {9, 0, 0}, {0, 0, 0}, {0, 0, 0}, {0, 0, 0}};
    for (std::int32_t i = 0; i < 10; i++) {
        ExpectNear(VertexOf(object, i), expected[i], 0.0f);
    }
    EXPECT_EQ(object.colours[3 * 1], 0.5f);
    EXPECT_EQ(object.faces[0], 5);
    EXPECT_EQ(object.texFaces, nullptr);
    EXPECT_EQ(object.texFaceValueCount, 0);
    ExpectNear(Normal(object, 4), Vector(0, 0, 1));

    // Of several corners with one texture vertex the last one wins.
    Object other;
    SetMesh(other, {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}}, {0, 1, 2});
    other.ResizeTexVertices(1);
    other.ResizeTexFaces(1);
    std::fill_n(other.texFaces.get(), 3, 0);
    other.ReindexByTexFaces();
    EXPECT_EQ(other.vertices[0], 2.0f);
}

TEST(MeshPreparation, TheRadiusCountsAllVerticesFromTheCentre) {
    Object object;
    SetMesh(object, {{1, 1, 1}, {1, 1, 3}, {4, 5, 1}}, {});
    object.ComputeRadius();
    EXPECT_EQ(object.radius, 5.0f);
    object.centreVertex = 2;
    object.ComputeRadius();
    EXPECT_NEAR(object.radius, 5.3851648f, 1e-6f);  // the root of 29
    object.ResizeVertices(0);
    object.ComputeRadius();
    EXPECT_EQ(object.radius, 0.0f);
}

}  // namespace
