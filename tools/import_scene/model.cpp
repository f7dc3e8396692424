#include "import_scene/model.h"

#include <assimp/commonMetaData.h>
#include <assimp/config.h>
#include <assimp/postprocess.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <numbers>
#include <stdexcept>
#include <string_view>

#include "import_scene/blender_export.h"
#include "platform/files.h"

namespace {

constexpr float unitsForOneMetre = 5.5f;
/// Longest sides between which a model without known units is taken as it is.
constexpr float smallestModel = 5.0f;
constexpr float largestModel = 5000.0f;
/// How many times more there must be to stand on for the other axis to be up: in formats from programs of
/// all kinds, and in one that came with a convention, though it says nothing.
constexpr float doubtful = 1.2f;
constexpr float certain = 3.0f;
/// What others are brought to.
constexpr float usualModel = 60.0f;

std::string ExtensionOf(const std::string& path) {
    const std::string extension = LowerCase(std::filesystem::path(path).extension().string());
    return extension.empty() ? extension : extension.substr(1);
}

bool IsOneOf(const std::string& format, std::initializer_list<const char*> formats) {
    return std::find(formats.begin(), formats.end(), format) != formats.end();
}

/// A whole number of the file's head; absent if it has none.
int HeadNumber(const aiScene& scene, const char* key, int absent) {
    std::int32_t value = 0;
    return scene.mMetaData != nullptr && scene.mMetaData->Get(key, value) ? value : absent;
}

/// Blender writes the amounts of light that it calculates with into formats that mean what is displayed.
bool IsByBlender(const aiScene& scene, const std::string& path) {
    for (const char* key : {AI_METADATA_SOURCE_GENERATOR, "generator"}) {
        aiString generator;
        if (scene.mMetaData != nullptr && scene.mMetaData->Get(key, generator) &&
            std::string_view(generator.C_Str()).find("Blender") != std::string_view::npos) {
            return true;
        }
    }
    std::string comment;
    std::getline(std::ifstream(path), comment);
    return comment.starts_with("# Blender");
}

/// Turns the axis that points up into z, and keeps the handedness.
aiMatrix3x3 UpToZ(char up, bool zPointsDown) {
    if (up == 'x') {
        return {0, 0, 1, 0, 1, 0, 1, 0, 0};
    }
    if (up == 'y') {
        return {1, 0, 0, 0, 0, -1, 0, 1, 0};
    }
    return zPointsDown ? aiMatrix3x3{1, 0, 0, 0, -1, 0, 0, 0, -1} : aiMatrix3x3{};
}

/// Units for one of the model's, or 0 if the format doesn't say.
float KnownScale(const std::string& format, const aiScene& scene) {
    if (IsOneOf(format, {"gltf", "glb", "dae"})) {
        return unitsForOneMetre;
    }
    float centimetres = 0.0f;
    if (format == "fbx" && scene.mMetaData != nullptr &&
        scene.mMetaData->Get("UnitScaleFactor", centimetres) && centimetres > 0.0f) {
        return centimetres * 0.01f * unitsForOneMetre;
    }
    return 0.0f;
}

/// The library takes such a text for an empty or a malformed one.
void RefuseUtf16(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    char mark[2] = {};
    file.read(mark, 2);
    const std::string start(mark, 2);
    if (start == "\xFF\xFE" || start == "\xFE\xFF") {
        throw std::runtime_error("it is a text in UTF-16: save it as UTF-8");
    }
}

/// Parents before children, without recursion: models come from anywhere and may be deep.
std::vector<ModelNode> FlattenNodes(const aiNode* root) {
    std::vector<ModelNode> nodes;
    if (root == nullptr) {
        return nodes;
    }
    nodes.push_back({root, -1, root->mName.C_Str(), root->mTransformation});
    for (std::size_t i = 0; i < nodes.size(); i++) {
        const aiNode* source = nodes[i].source;
        const aiMatrix4x4 toModel = nodes[i].toModel;
        for (unsigned child = 0; child < source->mNumChildren; child++) {
            if (const aiNode* next = source->mChildren[child]) {  // null in some models of the format RAW
                nodes.push_back(
                    {next, static_cast<int>(i), next->mName.C_Str(), toModel * next->mTransformation});
            }
        }
    }
    return nodes;
}

/// Calls with each mesh and where its vertices are in the model, as often as nodes have it.
template <typename Action>
void ForEachMesh(const Model& model, Action action) {
    for (const ModelNode& node : model.nodes) {
        for (unsigned i = 0; i < node.source->mNumMeshes; i++) {
            if (node.source->mMeshes[i] < model.scene->mNumMeshes) {
                action(*model.scene->mMeshes[node.source->mMeshes[i]], node.toModel);
            }
        }
    }
}

/// A box around the model, in its own units.
struct ModelBox {
    aiVector3D low{1e30f};
    aiVector3D high{-1e30f};

    explicit ModelBox(const Model& model) {
        ForEachMesh(model, [&](const aiMesh& mesh, const aiMatrix4x4& toModel) {
            for (unsigned vertex = 0; vertex < mesh.mNumVertices; vertex++) {
                const aiVector3D place = toModel * mesh.mVertices[vertex];
                for (unsigned axis = 0; axis < 3 && IsFinite(place); axis++) {
                    low[axis] = std::min(low[axis], place[axis]);
                    high[axis] = std::max(high[axis], place[axis]);
                }
            }
        });
    }
    /// 0 without a vertex.
    float LongestSide() const {
        const aiVector3D size = high - low;
        return std::max({size.x, size.y, size.z, 0.0f});
    }
};

/// Formats with a left-handed space, whose z the library mirrors.
bool ZPointsDown(const std::string& format) {
    return IsOneOf(format, {"x", "hmp"});
}

/// What a model stands on if that axis points up, or down: twice the surface that lies in the lowest
/// twentieth, as seen from below, and a little for a broad side, as few vertices touch the ground of what
/// has legs.
float FootArea(const Model& model, const ModelBox& box, unsigned axis, bool isDown) {
    constexpr float ofBroadSide = 0.04f;
    const aiVector3D size = box.high - box.low;
    const float slab = 0.05f * size[axis];
    float area = ofBroadSide * size[(axis + 1) % 3] * size[(axis + 2) % 3];
    ForEachMesh(model, [&](const aiMesh& mesh, const aiMatrix4x4& toModel) {
        for (unsigned i = 0; i < mesh.mNumFaces; i++) {
            const aiFace& face = mesh.mFaces[i];
            const bool isTriangle = face.mNumIndices == 3 &&
                                    std::all_of(face.mIndices, face.mIndices + 3, [&](unsigned corner) {
                                        return corner < mesh.mNumVertices;
                                    });
            if (!isTriangle) {
                continue;
            }
            const aiVector3D a = toModel * mesh.mVertices[face.mIndices[0]];
            const aiVector3D b = toModel * mesh.mVertices[face.mIndices[1]];
            const aiVector3D c = toModel * mesh.mVertices[face.mIndices[2]];
            const bool isLow = isDown ? std::min({a[axis], b[axis], c[axis]}) >= box.high[axis] - slab
                                      : std::max({a[axis], b[axis], c[axis]}) <= box.low[axis] + slab;
            area += isLow ? std::fabs(((b - a) ^ (c - a))[axis]) : 0.0f;
        }
    });
    return area;
}

char UpAxis(const Model& model, Report& report) {
    if (model.format == "fbx") {
        constexpr const char* axes = "xyz";
        return axes[std::clamp(HeadNumber(*model.scene, "UpAxis", 1), 0, 2)];
    }
    // Formats without a convention come mostly from programs in which z is up.
    const bool isMostlyZ =
        IsOneOf(model.format, {"ply", "stl", "off", "dxf", "raw", "hmp", "cob", "smd", "q3o"});
    if (!isMostlyZ && model.format != "x") {
        return 'y';
    }
    const ModelBox box(model);
    const float footY = FootArea(model, box, 1, false);
    const float footZ = FootArea(model, box, 2, ZPointsDown(model.format));
    const bool isZ = isMostlyZ ? footY <= doubtful * footZ : footZ > certain * footY;
    report.Note(std::string("the format doesn't say what is up: taken with --up ") +
                (isZ ? "z; y" : "y; z") + " if it lies on a side");
    return isZ ? 'z' : 'y';
}

/// Units count for worlds. A lone thing of another size than a person can look at is brought to one that he
/// can, and so is a model without units.
float ChooseScale(const Model& model, const Options& options, Report& report) {
    if (options.scale) {
        return *options.scale;
    }
    const float known = KnownScale(model.format, *model.scene);
    const float trueScale = known != 0.0f ? known : 1.0f;
    const float side = ModelBox(model).LongestSide() * trueScale;
    const bool isTooLarge = known == 0.0f && side > largestModel;
    const bool isTooSmall = side < smallestModel && model.scene->mNumCameras == 0;
    if (side == 0.0f || (!isTooLarge && !isTooSmall)) {
        return trueScale;
    }
    const float scale = trueScale * usualModel / side;
    report.Note("its longest side is " + std::to_string(side) + " units long: taken with --scale " +
                std::to_string(scale) + "; " + std::to_string(trueScale) + " leaves it as it is");
    return scale;
}

aiMatrix4x4 WorldMatrix(const Options& options, const aiMatrix3x3& upToZ, float scale) {
    aiMatrix4x4 size;
    aiMatrix4x4::Scaling(aiVector3D(scale), size);
    aiMatrix4x4 turn;
    aiMatrix4x4::RotationZ(options.turn * std::numbers::pi_v<float> / 180.0f, turn);
    aiMatrix4x4 move;
    aiMatrix4x4::Translation({options.move.x, options.move.y, options.move.z}, move);
    return move * turn * size * aiMatrix4x4(upToZ);
}

}  // namespace

Model::Model(const Options& options, Report& report)
    : path(options.input), format(ExtensionOf(options.input)) {
    if (!std::filesystem::is_regular_file(path)) {
        throw std::runtime_error("there is no such file");
    }
    if (std::filesystem::file_size(path) == 0) {
        throw std::runtime_error("the file is empty");
    }
    importer.SetPropertyBool(AI_CONFIG_IMPORT_FBX_PRESERVE_PIVOTS, false);
    // Numbers for packed images, which may all have the same name.
    importer.SetPropertyBool(AI_CONFIG_IMPORT_FBX_EMBEDDED_TEXTURES_LEGACY_NAMING, true);
    std::string readPath = path;
    if (NeedsBlender(format)) {
        readPath = ExportByBlender(path, format);
        format = ExtensionOf(readPath);
    } else if (IsOneOf(format, {"obj", "dae"})) {
        RefuseUtf16(path);
    }
    scene = importer.ReadFile(readPath, aiProcess_Triangulate);
    if (readPath != path) {
        std::filesystem::remove_all(std::filesystem::path(readPath).parent_path());
    }
    if (scene == nullptr) {
        throw std::runtime_error(std::string("it can't be read as a model: ") + importer.GetErrorString());
    }
    nodes = FlattenNodes(scene->mRootNode);
    isGltf = IsOneOf(format, {"gltf", "glb"});
    isByBlender = IsByBlender(*scene, path);

    const aiMatrix3x3 upToZ =
        UpToZ(options.up != 0 ? options.up : UpAxis(*this, report), ZPointsDown(format));
    // Where the library turns the whole model by the root node, the nodes below have z up already.
    if (!IsOneOf(format, {"dae", "3ds", "ase", "blend"})) {
        axesToNode = upToZ;
        axesToNode.Transpose();
    }
    scale = ChooseScale(*this, options, report);
    toWorld = WorldMatrix(options, upToZ, scale);
}

void Pose::SetAxes(aiVector3D newY, aiVector3D newZ) {
    newY.NormalizeSafe();
    newZ.NormalizeSafe();
    const aiVector3D newX = newY ^ newZ;
    if (IsFinite(newX) && newX.SquareLength() > 0.5f) {
        x = newX;
        y = newY;
        z = newZ;
    }
}

aiMatrix4x4 Model::WorldTransform(int node) const {
    return toWorld * nodes[node].toModel;
}

Pose Model::PoseOf(const aiMatrix4x4& worldTransform) const {
    const aiMatrix3x3 toAxes = aiMatrix3x3(worldTransform) * axesToNode;
    Pose pose;
    pose.origin = {worldTransform.a4, worldTransform.b4, worldTransform.c4};
    if (!IsFinite(pose.origin)) {
        pose.origin = {};
    }
    // Z stays, Y is made square to it, and X follows: a mirrored node gets axes that are not.
    const aiVector3D y = toAxes * aiVector3D(0.0f, 1.0f, 0.0f);
    aiVector3D z = toAxes * aiVector3D(0.0f, 0.0f, 1.0f);
    z.NormalizeSafe();
    pose.SetAxes(y - z * (y * z), z);
    return pose;
}

int Model::FindNode(const std::string& name) const {
    const auto found =
        std::find_if(nodes.begin(), nodes.end(), [&](const ModelNode& node) { return node.name == name; });
    return found == nodes.end() ? -1 : static_cast<int>(found - nodes.begin());
}

std::string Model::NameForMessages(int node) const {
    for (int at = node; at != -1; at = nodes[at].parent) {
        if (!nodes[at].name.empty()) {
            return nodes[at].name;
        }
    }
    return "(no name)";
}
