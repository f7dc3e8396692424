#include <cstring>
#include <vector>

#include "simulation/random_numbers.h"
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
            if (std::count(corner, corner + 3, vertex) == 0) {
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

TEST(MeshPreparation, NormalsEqualTheSearchBitForBit) {
    RandomNumbers random(7);
    for (int round = 0; round < 300; round++) {
        const std::int32_t vertexCount = 1 + random.Pick(20);
        std::vector<Vector> vertices;
        for (std::int32_t i = 0; i < vertexCount; i++) {
            const auto coordinate = [&random] { return static_cast<float>(random.Pick(7)) * 0.37f - 1.0f; };
            const float x = coordinate(), y = coordinate(), z = coordinate();
            vertices.emplace_back(x, y, z);
        }
        std::vector<std::int32_t> faces;
        for (std::int32_t left = 3 * random.Pick(40); left > 0; left--) {
            faces.push_back(random.Pick(vertexCount));
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
        EXPECT_EQ(object.colours[3 * i], i == 1 ? 0.5f : 1.0f);
    }
    EXPECT_TRUE(std::equal(texFaces, texFaces + 6, object.faces.get()));
    EXPECT_EQ(object.texFaces, nullptr);
    EXPECT_EQ(object.texFaceValueCount, 0);
    ExpectNear(Normal(object, 4), Vector(0, 0, 1));
    ExpectNear(Normal(object, 8), Vector());

    // Of several corners with one texture vertex the last one wins.
    SetMesh(object, {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}}, {0, 1, 2});
    object.ResizeTexVertices(1);
    object.ResizeTexFaces(1);
    std::fill_n(object.texFaces.get(), 3, 0);
    object.ReindexByTexFaces();
    EXPECT_EQ(object.vertices[0], 2.0f);
}

TEST(MeshPreparation, TheRadiusCountsAllVerticesFromTheCentre) {
    Object object;
    SetMesh(object, {{1, 1, 1}, {1, 1, 3}, {4, 5, 1}}, {});
    object.ComputeRadius();
    EXPECT_EQ(object.radius, 5.0f);
    object.centreVertex = 2;
    object.ComputeRadius();
    EXPECT_FLOAT_EQ(object.radius, std::sqrt(29.0f));
    object.ResizeVertices(0);
    object.ComputeRadius();
    EXPECT_EQ(object.radius, 0.0f);
}

}  // namespace
