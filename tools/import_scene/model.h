#pragma once

#include <assimp/matrix4x4.h>
#include <assimp/scene.h>

#include <assimp/Importer.hpp>
#include <cmath>
#include <string>
#include <vector>

#include "import_scene/options.h"
#include "import_scene/report.h"
#include "scene_writer/scene_file.h"

/// Where a node stands: its origin, and its own axes, of unit length and square to each other. All in the
/// world, with Z the one that points up where the modelling program says so.
struct Pose {
    aiVector3D origin;
    aiVector3D x{1.0f, 0.0f, 0.0f};
    aiVector3D y{0.0f, 1.0f, 0.0f};
    aiVector3D z{0.0f, 0.0f, 1.0f};

    /// Takes Y and Z from directions that are square to each other, of any length, and X from both.
    /// Directions that make no axes change nothing.
    void SetAxes(aiVector3D newY, aiVector3D newZ);
};

/// One node of the model, with its transform as modelled.
struct ModelNode {
    const aiNode* source = nullptr;
    int parent = -1;      ///< index of a node before this one, or -1
    std::string name;     ///< as the model has it; may be empty
    aiMatrix4x4 toModel;  ///< from the node's space to the model's
};

/// A model as it was read, and how its space becomes the world's.
struct Model {
    Assimp::Importer importer;  ///< owns the scene
    const aiScene* scene = nullptr;
    std::string path;
    std::string format;            ///< extension in small letters, without the point
    std::vector<ModelNode> nodes;  ///< parents first

    aiMatrix4x4 toWorld;       ///< from the model's space
    aiMatrix3x3 axesToNode;    ///< from axes with z up to those that the nodes use
    float scale = 1.0f;        ///< world units for one of the model's
    bool isGltf = false;       ///< whose colours are amounts of light, not what is sent to a screen
    bool isByBlender = false;  ///< whose materials have amounts of light in all formats

    /// Reads the file. Throws std::runtime_error that says why it can't.
    Model(const Options& options, Report& report);

    /// From the space of a node to the world, as modelled.
    aiMatrix4x4 WorldTransform(int node) const;
    Pose PoseOf(const aiMatrix4x4& worldTransform) const;
    /// The first node of that name, or -1.
    int FindNode(const std::string& name) const;
    /// The node's name for messages, or that of what it belongs to.
    std::string NameForMessages(int node) const;
};

inline engine::Float3 ToFloat3(const aiVector3D& vector) {
    return {vector.x, vector.y, vector.z};
}

inline bool IsFinite(const aiVector3D& vector) {
    return std::isfinite(vector.x) && std::isfinite(vector.y) && std::isfinite(vector.z);
}
