#include "import_scene/world_object.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "import_scene/materials.h"
#include "import_scene/mesh_conversion.h"

namespace {

/// How far in front of an eye the point is that it looks at. Any distance would do.
constexpr float lookDistance = 10.0f;

/// Axes that look along a direction, the head up as far as that goes.
Pose LookingPose(const aiVector3D& eye, const aiVector3D& direction, const aiVector3D& up) {
    Pose pose;
    pose.origin = eye;
    aiVector3D y = -direction;
    y.NormalizeSafe();
    pose.SetAxes(y, up - y * (y * up));
    return pose;
}

const aiCamera* CameraOf(const Model& model, const ModelNode& node) {
    for (unsigned i = 0; i < model.scene->mNumCameras; i++) {
        if (model.scene->mCameras[i]->mName == node.source->mName) {
            return model.scene->mCameras[i];
        }
    }
    return nullptr;
}

/// Makes the objects, node by node.
struct ObjectMaker {
    Model& model;
    const std::vector<Surface>& surfaces;
    const Options& options;
    Report& report;
    MeshConversion conversion;
    std::vector<int> uses;  ///< of each mesh, by nodes that are still to come
    std::vector<WorldObject> objects;
    std::size_t degenerate = 0;
    std::size_t linesOrPoints = 0;

    void CountUses() {
        uses.resize(model.scene->mNumMeshes);
        for (const ModelNode& node : model.nodes) {
            for (unsigned i = 0; i < node.source->mNumMeshes; i++) {
                if (node.source->mMeshes[i] < uses.size()) {
                    uses[node.source->mMeshes[i]]++;
                }
            }
        }
    }

    void WarnOfLosses(const MeshLosses& losses, int node) {
        degenerate += losses.degenerate;
        linesOrPoints += losses.linesOrPoints;
        if (losses.broken > 0) {
            report.Warn("triangles whose corners don't exist are left out", model.NameForMessages(node));
        }
        if (losses.noCoordinates) {
            report.Warn("a texture without texture coordinates is left out", model.NameForMessages(node));
        }
    }

    void WarnOfMesh(const aiMesh& mesh, int node) {
        if (mesh.HasBones()) {
            report.Warn("armatures are left out, the mesh stands as it was bound",
                        model.NameForMessages(node));
        }
        if (mesh.mNumAnimMeshes > 0) {
            report.Warn("shape keys are left out", model.NameForMessages(node));
        }
    }

    void AddMesh(int node, unsigned meshIndex, const aiMatrix4x4& toWorld, int& pieceOf,
                 Properties& properties) {
        const aiMesh& mesh = *model.scene->mMeshes[meshIndex];
        WarnOfMesh(mesh, node);
        const Surface surface =
            mesh.mMaterialIndex < surfaces.size() ? surfaces[mesh.mMaterialIndex] : Surface();
        MeshLosses losses;
        WorldObject object;
        object.mesh = ConvertMesh(mesh, toWorld, surface, conversion, losses);
        WarnOfLosses(losses, node);
        if (!object.HasTriangles()) {
            return;
        }
        object.name = model.nodes[node].name;
        if (object.name.empty()) {
            object.name = mesh.mName.length > 0 ? mesh.mName.C_Str() : surface.name;
        }
        object.node = node;
        object.texture = object.mesh.texFaces.empty() ? -1 : surface.texture;
        object.pose = model.PoseOf(toWorld);
        object.pieceOf = pieceOf;
        if (pieceOf == -1) {
            pieceOf = static_cast<int>(objects.size());
            object.properties = properties;
        } else {
            object.name += surface.name;
            object.properties.invisible = properties.invisible;
            object.properties.noCollider = properties.noCollider;
        }
        objects.push_back(std::move(object));
    }

    void AddCamera(int node, const aiCamera& camera, const aiMatrix4x4& toWorld,
                   const Properties& properties) {
        const aiMatrix3x3 turn(toWorld);
        // For glTF the library gives the camera the place of its node once more.
        const aiVector3D eye = toWorld * (model.isGltf ? aiVector3D() : camera.mPosition);
        const Pose pose = LookingPose(eye, turn * camera.mLookAt, turn * camera.mUp);
        objects.push_back(MakeCameraObject(pose));
        objects.back().name = model.nodes[node].name;
        objects.back().node = node;
        objects.back().properties = properties;
    }

    void AddEmpty(int node, const aiMatrix4x4& toWorld, const Properties& properties) {
        WorldObject empty;
        empty.name = model.nodes[node].name;
        empty.node = node;
        empty.pose = model.PoseOf(toWorld);
        empty.properties = properties;
        empty.mesh.vertices = {ToFloat3(empty.pose.origin)};
        objects.push_back(std::move(empty));
    }

    void ReleaseMeshes(const ModelNode& node) {
        for (unsigned i = 0; i < node.source->mNumMeshes; i++) {
            const unsigned index = node.source->mMeshes[i];
            if (index < uses.size() && --uses[index] == 0) {
                // The scene's owner gives its meshes away only with the whole scene; an empty one stays.
                delete std::exchange(model.scene->mMeshes[index], new aiMesh);
            }
        }
    }

    void AddNode(int index) {
        const ModelNode& node = model.nodes[index];
        const aiMatrix4x4 toWorld = model.WorldTransform(index);
        Properties properties =
            ReadProperties(node.source->mMetaData, model.NameForMessages(index), report);
        int first = -1;
        for (unsigned i = 0; i < node.source->mNumMeshes; i++) {
            if (node.source->mMeshes[i] < model.scene->mNumMeshes) {
                AddMesh(index, node.source->mMeshes[i], toWorld, first, properties);
            }
        }
        ReleaseMeshes(node);
        if (const aiCamera* camera = CameraOf(model, node)) {
            AddCamera(index, *camera, toWorld, first == -1 ? properties : Properties());
        } else if (first == -1 && properties.Any()) {
            AddEmpty(index, toWorld, properties);
        }
    }

    static WorldObject MakeCameraObject(const Pose& pose);
};

WorldObject ObjectMaker::MakeCameraObject(const Pose& pose) {
    WorldObject camera;
    camera.isCamera = true;
    camera.pose = pose;
    camera.mesh.vertices = {ToFloat3(pose.origin), ToFloat3(pose.origin - pose.y * lookDistance)};
    return camera;
}

}  // namespace

Bounds BoundsOf(const engine::SceneObject& mesh) {
    Bounds bounds;
    for (const engine::Float3& vertex : mesh.vertices) {
        bounds.Add(vertex);
    }
    return bounds;
}

Bounds BoundsOf(const std::vector<WorldObject>& objects) {
    Bounds bounds;
    for (const WorldObject& object : objects) {
        if (object.HasTriangles()) {
            const Bounds own = BoundsOf(object.mesh);
            bounds.Add(ToFloat3(own.low));
            bounds.Add(ToFloat3(own.high));
        }
    }
    return bounds;
}

std::vector<WorldObject> MakeObjects(Model& model, const std::vector<Surface>& surfaces,
                                     const Options& options, Report& report) {
    ObjectMaker maker{model, surfaces, options, report, {options.crease, options.oneSided, model.isGltf},
                      {},    {}};
    maker.CountUses();
    for (int i = 0; i < static_cast<int>(model.nodes.size()); i++) {
        maker.AddNode(i);
    }
    if (maker.linesOrPoints > 0) {
        report.Warn(std::to_string(maker.linesOrPoints) + " lines and points are left out");
    }
    if (maker.degenerate > 0) {
        report.Note(std::to_string(maker.degenerate) + " triangles without an area are left out");
    }
    return std::move(maker.objects);
}
