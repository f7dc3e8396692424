#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "math/matrix.h"
#include "math/vector.h"
#include "scene/collider.h"
#include "scene/key_track.h"
#include "scene/physics.h"
#include "scene/texture.h"

// Slots of `Object::attributes`; all are -1 by default.
inline constexpr int attributeCount = 10;
inline constexpr int collidableAttribute = 0;  ///< 0: moving objects pass through this one
inline constexpr int invisibleAttribute = 1;   ///< 1: not drawn
inline constexpr int spawnStateAttribute = 2;  ///< `justSpawned` or -1

/// Placed on a spawn point: stands still, without collision and input, until the next world step is over.
inline constexpr std::int32_t justSpawned = 2;

/// One mesh of the world. It has no position and no orientation: it is where its vertices are. Four of
/// them, the markers, stand for its pivot and its axes and move along; motion is requested in
/// `transform` and baked into the vertices once a world step.
///
/// All counts of arrays are counts of scalars, three times the number of elements. The arrays go to
/// OpenGL as they stand.
struct Object {
    std::unique_ptr<float[]> vertices;         ///< x, y, z, in world coordinates, markers included
    std::unique_ptr<float[]> texVertices;      ///< three texture coordinates each; null without
    std::unique_ptr<std::int32_t[]> faces;     ///< vertex indices, three a triangle
    std::unique_ptr<std::int32_t[]> texFaces;  ///< parallel to `faces`; only while loading
    std::unique_ptr<float[]> colours;          ///< red, green, blue, parallel to `vertices`
    std::unique_ptr<float[]> normals;          ///< parallel to `vertices`
    KeyTracks keyTracks;                       ///< null without
    std::unique_ptr<Collider> collider;        ///< not null: a moving body that collides and slides
    std::unique_ptr<Physics> physics;          ///< not null: the object has velocity and gravity
    /// What collision has found out about this mesh, for collision alone to make and to read; null before.
    mutable std::shared_ptr<void> collisionIndex;
    std::int32_t centreVertex = 0;         ///< the pivot, from which `radius` is measured
    std::int32_t xAxisVertex = 0;          ///< one unit along local X; sideways moves run along it
    std::int32_t yAxisVertex = 0;          ///< one unit along local Y; forward is its opposite
    std::int32_t zAxisVertex = 0;          ///< one unit along local Z, the object's up
    std::int32_t spareVertex = 0;          ///< scratch of the group step, a vertex of no triangle
    float radius = 1.0f;                   ///< largest distance of a vertex from the centre vertex
    std::uint32_t meshVersion = 0;         ///< counted up when `vertices` or `faces` are written to
    std::int32_t faceValueCount = 30;      ///< of `faces`
    std::int32_t texFaceValueCount = 0;    ///< of `texFaces`
    std::int32_t vertexValueCount = 30;    ///< of `vertices`, `colours` and `normals` each
    std::int32_t texVertexValueCount = 0;  ///< of `texVertices`
    std::int32_t activeKeyTrack = -1;      ///< track asked to advance this frame, -1 for none
    std::int32_t keyTrackCount = 0;
    std::string name = "NoName";     ///< unique in the scene, at most 199 characters
    std::int32_t textureIndex = -1;  ///< into the scene's textures, -1 for none
    std::int32_t groupParent = -1;   ///< group whose members follow this object, -1 for none
    Matrix transform;                ///< asked for and not yet applied; identity when nothing is
    std::int32_t attributes[attributeCount] = {-1, -1, -1, -1, -1, -1, -1, -1, -1, -1};

    /// Ten vertices at the origin and ten triangles that all use vertex 0.
    Object();

    /// Every operation of this record that writes to `vertices` or `faces` ends here, so that what was
    /// found out about the mesh can be seen to hold no longer. Whoever writes to these arrays directly
    /// calls it afterwards, unless the array itself or `faceValueCount` is another then, which shows.
    void MeshChanged() { meshVersion++; }

    // Resizes take element counts. The first old values stay at their places, as many as fit.

    /// New vertices are at the origin, white, with a zero normal.
    void ResizeVertices(std::int32_t vertexCount);
    void ResizeFaces(std::int32_t triangleCount);         ///< new values are not initialised
    void ResizeTexVertices(std::int32_t texVertexCount);  ///< new values are not initialised
    void ResizeTexFaces(std::int32_t triangleCount);      ///< new values are not initialised
    void ResizeKeyTracks(std::int32_t trackCount);        ///< new tracks have 100 keys
    void MakeCollider();  ///< a fresh default record, whatever there was before
    void MakePhysics();   ///< a fresh default record, whatever there was before
    /// Makes the destination equal to this object, with arrays of its own. Copied onto itself nothing
    /// changes.
    void CopyTo(Object& destination) const;

    // Preparation after loading, in this order.

    /// Smooth normals: for each vertex the unit mean of the unit normals of its triangles. A vertex of no
    /// triangle keeps its normal, brought to unit length.
    void ComputeNormals();
    /// Turns the two index lists of the file into the single one that vertex arrays want: afterwards
    /// entry i of all vertex arrays belongs with entry i of `texVertices`, and four spare entries follow.
    /// Releases `texFaces`. Nothing is done unless these are there, one for each of `faces`, and all
    /// indices lie inside their lists, those of `faces` also below the number of texture vertices + 4.
    void ReindexByTexFaces();
    void ComputeRadius();

    // Motion.

    void GetVertex(Vector& result, std::int32_t index) const;
    void SetVertex(Vector value, std::int32_t index);
    /// The marker axes as columns, not normalised, no translation: turns local vectors into world ones.
    void GetOrientationMatrix(Matrix& result) const;
    /// Adds one key of the track that `activeKeyTrack` names to `transform`, or rewinds the track if it is
    /// exhausted, and clears the request. A track that doesn't exist drops the request.
    /// @param parent the object in whose axes the keys are given; null for world axes
    void AdvanceKeyTrack(const Object* parent);
    /// Adds the inverse of all keys played on the track that `activeKeyTrack` names, seen from the
    /// parent's present axes, and clears the request. A track that doesn't exist drops the request.
    void RewindKeyTrack(const Object* parent);
    /// Bakes `transform` into vertices and normals: rotations turn about the centre vertex, translations
    /// run along the world's axes.
    void ApplyTransform();

    /// Sweeps this body (which must have a collider, set up by `Scene::SlideStep`) against the obstacle and
    /// records the contact in the collider if it is nearer than the one found so far.
    void CollideWithObject(const Object& obstacle);

    /// Whether the vertex exists: an index from a file may name none.
    bool HasVertex(std::int32_t index) const { return index >= 0 && index < vertexValueCount / 3; }
};
