#include "importers/assimp/ReadAssimpScene.h"

#include "importers/SceneRecordBytes.h"
#include "importers/TransformMath.h"
#include "importers/assimp/AssimpContext.h"
#include "importers/assimp/ChildProcessTrial.h"
#include "importers/assimp/ColladaIndexCheck.h"
#include "importers/assimp/ColladaSkinCheck.h"
#include "importers/assimp/FbxContentCheck.h"

#include "base/FileSystem.h"
#include "base/Number.h"
#include "base/Path.h"
#include "base/TextUtil.h"

#include <assimp/Importer.hpp>
#include <assimp/config.h>
#include <assimp/postprocess.h>
#include <assimp/scene.h>

#include <algorithm>
#include <cmath>
#include <exception>
#include <filesystem>
#include <fstream>
#include <functional>
#include <new>
#include <optional>
#include <string_view>
#include <system_error>

namespace {

// Polygons keep their corner count and vertices stay per corner: the build step welds them the way Maya
// shares vertices, so no post-processing beyond Assimp's own consistency check runs.
constexpr unsigned int kAssimpSteps = aiProcess_ValidateDataStructure;

constexpr const char* kGlbTooShort = "the binary glTF file is shorter than its header says (truncated?)";

struct FbxFrameRate {
    int Mode;
    double FramesPerSecond;
};

// FbxTime::EMode values as FBX files store them in GlobalSettings "TimeMode".
constexpr FbxFrameRate kFbxFrameRates[] = {
    {1, 120.0}, {2, 100.0}, {3, 60.0}, {4, 50.0}, {5, 48.0}, {6, 30.0}, {7, 30.0}, {8, 29.97}, {9, 29.97},
    {10, 25.0}, {11, 24.0}, {12, 1000.0}, {13, 23.976}, {15, 96.0}, {16, 72.0}, {17, 59.94}, {18, 119.88},
};

struct MayaTimeUnit {
    double FramesPerSecond;
    MTime::Unit Unit;
};

constexpr MayaTimeUnit kMayaTimeUnits[] = {
    {15.0, MTime::kGames}, {24.0, MTime::kFilm}, {25.0, MTime::kPALFrame}, {30.0, MTime::kNTSCFrame},
    {48.0, MTime::kShowScan}, {50.0, MTime::kPALField}, {60.0, MTime::kNTSCField}, {1.0, MTime::kSeconds},
    {1000.0, MTime::kMilliseconds}, {2.0, MTime::k2FPS}, {3.0, MTime::k3FPS}, {4.0, MTime::k4FPS},
    {5.0, MTime::k5FPS}, {6.0, MTime::k6FPS}, {8.0, MTime::k8FPS}, {10.0, MTime::k10FPS}, {12.0, MTime::k12FPS},
    {16.0, MTime::k16FPS}, {20.0, MTime::k20FPS}, {40.0, MTime::k40FPS}, {75.0, MTime::k75FPS},
    {80.0, MTime::k80FPS}, {100.0, MTime::k100FPS}, {120.0, MTime::k120FPS}, {125.0, MTime::k125FPS},
    {150.0, MTime::k150FPS}, {200.0, MTime::k200FPS}, {240.0, MTime::k240FPS}, {250.0, MTime::k250FPS},
    {300.0, MTime::k300FPS}, {375.0, MTime::k375FPS}, {400.0, MTime::k400FPS}, {500.0, MTime::k500FPS},
    {600.0, MTime::k600FPS}, {750.0, MTime::k750FPS}, {1200.0, MTime::k1200FPS}, {1500.0, MTime::k1500FPS},
    {2000.0, MTime::k2000FPS}, {3000.0, MTime::k3000FPS}, {6000.0, MTime::k6000FPS},
};

struct MayaDistanceUnit {
    double Centimetres;
    MDistance::Unit Unit;
};

constexpr MayaDistanceUnit kMayaDistanceUnits[] = {
    {1.0, MDistance::kCentimeters}, {100.0, MDistance::kMeters}, {0.1, MDistance::kMillimeters},
    {2.54, MDistance::kInches}, {30.48, MDistance::kFeet}, {91.44, MDistance::kYards},
    {100000.0, MDistance::kKilometers}, {160934.4, MDistance::kMiles},
};

bool MetadataNumber(const aiMetadata* metadata, const char* key, double& value)
{
    if (!metadata)
        return false;
    for (unsigned int i = 0; i < metadata->mNumProperties; ++i) {
        if (std::string_view(metadata->mKeys[i].C_Str()) != key || !metadata->mValues[i].mData)
            continue;
        const aiMetadataEntry& entry = metadata->mValues[i];
        switch (entry.mType) {
        case AI_BOOL: value = *static_cast<const bool*>(entry.mData) ? 1.0 : 0.0; return true;
        case AI_INT32: value = *static_cast<const int32_t*>(entry.mData); return true;
        case AI_UINT64: value = static_cast<double>(*static_cast<const uint64_t*>(entry.mData)); return true;
        case AI_FLOAT: value = *static_cast<const float*>(entry.mData); return std::isfinite(value);
        case AI_DOUBLE: value = *static_cast<const double*>(entry.mData); return std::isfinite(value);
        default: return false;
        }
    }
    return false;
}

int MetadataAxis(const aiMetadata* metadata, const char* axisKey, const char* signKey, int defaultAxis, int& sign)
{
    double axis = defaultAxis;
    double signValue = 1.0;
    MetadataNumber(metadata, axisKey, axis);
    MetadataNumber(metadata, signKey, signValue);
    sign = signValue < 0.0 ? -1 : 1;
    return axis >= 0.0 && axis <= 2.0 ? static_cast<int>(axis) : -1;
}

MTime::Unit TimeUnitFor(double framesPerSecond, bool& exact)
{
    for (const MayaTimeUnit& unit : kMayaTimeUnits) {
        if (std::abs(unit.FramesPerSecond - framesPerSecond) < 1e-3) {
            exact = true;
            return unit.Unit;
        }
    }
    exact = false;
    return MTime::kFilm;
}

// FBX says where its up, front and side axes lie; Maya wants Y up, Z front, X side. The other formats are
// Y up once Assimp has read them (it turns COLLADA's Z-up scenes itself).
void SetUpFbxConversion(AssimpContext& context, double& centimetresPerUnit)
{
    const aiMetadata* metadata = context.Scene.mMetaData;
    int upSign = 1;
    int frontSign = 1;
    int sideSign = 1;
    const int up = MetadataAxis(metadata, "UpAxis", "UpAxisSign", 1, upSign);
    const int front = MetadataAxis(metadata, "FrontAxis", "FrontAxisSign", 2, frontSign);
    const int side = MetadataAxis(metadata, "CoordAxis", "CoordAxisSign", 0, sideSign);
    aiMatrix4x4 axes;
    if (up >= 0 && front >= 0 && side >= 0 && up != front && up != side && front != side) {
        axes = aiMatrix4x4(0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1);
        axes[0][side] = static_cast<ai_real>(sideSign);
        axes[1][up] = static_cast<ai_real>(upSign);
        axes[2][front] = static_cast<ai_real>(frontSign);
    } else {
        context.Result.Warn("The file's axis settings are inconsistent; its axes are taken as they are");
    }
    double unitScale = 1.0;
    if (MetadataNumber(metadata, "UnitScaleFactor", unitScale) && unitScale > 0.0)
        centimetresPerUnit = unitScale;
    context.Conversion = axes;
}

void SetUpConversion(AssimpContext& context)
{
    double centimetresPerUnit = 1.0;
    switch (context.Format) {
    case AssimpFormat::Fbx: SetUpFbxConversion(context, centimetresPerUnit); break;
    case AssimpFormat::Gltf:
    case AssimpFormat::Collada: centimetresPerUnit = 100.0; break;
    case AssimpFormat::Obj:
    case AssimpFormat::None: break;
    }
    aiMatrix4x4 scale;
    aiMatrix4x4::Scaling(aiVector3D(static_cast<ai_real>(centimetresPerUnit)), scale);
    context.Conversion = scale * context.Conversion;
    context.ConversionInverse = context.Conversion;
    context.ConversionInverse.Inverse();
    context.Record.DistanceUnit = MDistance::kCentimeters;
    for (const MayaDistanceUnit& unit : kMayaDistanceUnits)
        if (std::abs(unit.Centimetres - centimetresPerUnit) <= 1e-6 * unit.Centimetres)
            context.Record.DistanceUnit = unit.Unit;
}

void SetUpTime(AssimpContext& context)
{
    double framesPerSecond = 24.0;
    if (context.Format == AssimpFormat::Fbx) {
        double mode = 0.0;
        MetadataNumber(context.Scene.mMetaData, "FrameRate", mode);
        for (const FbxFrameRate& rate : kFbxFrameRates)
            if (rate.Mode == static_cast<int>(mode))
                framesPerSecond = rate.FramesPerSecond;
        double custom = 0.0;
        if (static_cast<int>(mode) == 14 && MetadataNumber(context.Scene.mMetaData, "CustomFrameRate", custom) &&
            custom > 0.0)
            framesPerSecond = custom;
    }
    bool exact = false;
    context.Record.TimeUnit = TimeUnitFor(framesPerSecond, exact);
    if (!exact) {
        context.Result.Warn(Format("The file's frame rate of %s frames per second is not a Maya time unit; "
                                   "the animation is placed on film time (24 frames per second)",
                                   FormatFloat(framesPerSecond, 3).c_str()));
        framesPerSecond = 24.0;
    }
    context.FramesPerSecond = framesPerSecond;
}

bool NamedByAnimationOrBone(const aiScene& scene, const aiString& name)
{
    for (unsigned int a = 0; a < scene.mNumAnimations; ++a) {
        const aiAnimation* animation = scene.mAnimations[a];
        for (unsigned int c = 0; animation && c < animation->mNumChannels; ++c)
            if (animation->mChannels[c] && animation->mChannels[c]->mNodeName == name)
                return true;
    }
    for (unsigned int m = 0; m < scene.mNumMeshes; ++m) {
        const aiMesh* mesh = scene.mMeshes[m];
        for (unsigned int b = 0; mesh && b < mesh->mNumBones; ++b)
            if (mesh->mBones[b] && mesh->mBones[b]->mName == name)
                return true;
    }
    return false;
}

// Assimp adds a top node of its own for every format but glTF, which has one only when the scene has several
// roots, named "ROOT".
bool IsAssimpOwnRoot(const AssimpContext& context, const aiNode& root)
{
    if (root.mNumMeshes > 0 || NamedByAnimationOrBone(context.Scene, root.mName))
        return false;
    if (context.Format == AssimpFormat::Gltf)
        return std::string_view(root.mName.C_Str()) == "ROOT";
    return true;
}

void ReadNodes(AssimpContext& context)
{
    const aiNode* root = context.Scene.mRootNode;
    context.FoldedRoot = IsAssimpOwnRoot(context, *root) ? root : nullptr;
    // Depth first with an explicit stack: a hostile file can nest nodes deeper than the call stack allows.
    std::vector<std::pair<const aiNode*, int>> pending;
    if (context.FoldedRoot) {
        for (unsigned int i = root->mNumChildren; i-- > 0;)
            pending.emplace_back(root->mChildren[i], -1);
    } else {
        pending.emplace_back(root, -1);
    }
    while (!pending.empty()) {
        const auto [node, parent] = pending.back();
        pending.pop_back();
        if (!node || context.NodeIndex.count(node))
            continue;
        const int index = static_cast<int>(context.Record.Nodes.size());
        RecordNode record;
        record.Name = MayaName(node->mName.C_Str(), "transform");
        record.Parent = parent;
        record.Rest = DecomposeTransform(context.LocalToMaya(*node, node->mTransformation));
        ReadCustomProperties(context, node->mMetaData, record);
        context.Record.Nodes.push_back(std::move(record));
        context.Nodes.push_back(node);
        context.NodeIndex[node] = index;
        context.NodeByName.emplace(node->mName.C_Str(), index);
        for (unsigned int i = node->mNumChildren; i-- > 0;)
            pending.emplace_back(node->mChildren[i], index);
    }
}

// Maya's skeletons are joints from the root bone down: the file's bones, the nodes between them, and the
// empty nodes below them (end sites).
void MarkJoints(AssimpContext& context)
{
    std::vector<RecordNode>& nodes = context.Record.Nodes;
    std::vector<bool> bone(nodes.size(), false);
    for (const RecordMesh& mesh : context.Record.Meshes)
        for (int influence : mesh.Skin.Influences)
            bone[static_cast<size_t>(influence)] = true;
    std::vector<bool> boneAbove(nodes.size(), false);
    std::vector<bool> boneBelow(nodes.size(), false);
    for (size_t i = 0; i < nodes.size(); ++i)
        if (nodes[i].Parent >= 0)
            boneAbove[i] = bone[static_cast<size_t>(nodes[i].Parent)] || boneAbove[static_cast<size_t>(nodes[i].Parent)];
    for (size_t i = nodes.size(); i-- > 0;)
        if (nodes[i].Parent >= 0 && (bone[i] || boneBelow[i]))
            boneBelow[static_cast<size_t>(nodes[i].Parent)] = true;
    for (size_t i = 0; i < nodes.size(); ++i) {
        const bool empty = nodes[i].Mesh < 0 && nodes[i].Light < 0 && nodes[i].Kind != RecordNodeKind::Camera;
        if (bone[i] || (boneAbove[i] && (boneBelow[i] || empty)))
            nodes[i].Kind = RecordNodeKind::Joint;
    }
}

// Joints are posed for binding from the inverse bind matrices; joints no skin names stay at rest.
void SetBindPoses(AssimpContext& context)
{
    std::vector<RecordNode>& nodes = context.Record.Nodes;
    for (const auto& [index, world] : context.BindWorld) {
        RecordNode& node = nodes[static_cast<size_t>(index)];
        MMatrix parentWorld;
        if (node.Parent >= 0) {
            const auto parentBind = context.BindWorld.find(node.Parent);
            parentWorld = parentBind != context.BindWorld.end()
                              ? parentBind->second
                              : context.WorldToMaya(context.FileWorld(*context.Nodes[static_cast<size_t>(node.Parent)]));
        }
        node.HasBindPose = true;
        node.Bind = DecomposeTransform(world * parentWorld.inverse());
    }
}

bool ConvertScene(AssimpContext& context)
{
    if (!context.Scene.mRootNode) {
        context.Result.Error = "the file holds no scene";
        return false;
    }
    SetUpConversion(context);
    SetUpTime(context);
    ReadNodes(context);
    ReadLights(context);
    ReadCameras(context);
    ReadAssimpMeshes(context);
    MarkJoints(context);
    SetBindPoses(context);
    ReadAssimpAnimations(context);
    return true;
}

AssimpFormat FormatOfExtension(const std::string& extension, const void* data, size_t size)
{
    const size_t headSize = std::min(size, kAssimpSignatureBytes);
    return DetectAssimpFormat("scene." + extension, std::string_view(static_cast<const char*>(data), headSize));
}

void ConfigureImporter(Assimp::Importer& importer)
{
    // Pivots become Assimp helper nodes when kept; Maya's FBX import folds them into the transform.
    importer.SetPropertyBool(AI_CONFIG_IMPORT_FBX_PRESERVE_PIVOTS, false);
    // Without this, a file holding no mesh (lights only, or a controller Assimp cannot read) comes back with a
    // made-up mesh drawing the node tree, skinned to every node: a skin the file does not have.
    importer.SetPropertyBool(AI_CONFIG_IMPORT_NO_SKELETON_MESHES, true);
}

constexpr const char* kAssimpCrashed = "Assimp crashed reading this file: it is damaged or uses something Assimp cannot read";

// Inputs on which Assimp itself misbehaves instead of failing.
bool PassesAssimpQuirkChecks(AssimpFormat format, std::string_view contents, ImportResult& result)
{
    if (format == AssimpFormat::Fbx && !FbxContentIsWholeBase64(contents)) {
        result.Error = "an embedded file of this ASCII FBX is not whole base64 (truncated?)";
        return false;
    }
    if (format == AssimpFormat::Collada && !ColladaIndexListsAreNumeric(contents)) {
        result.Error = "an index list of this COLLADA file holds something other than numbers";
        return false;
    }
    if (format == AssimpFormat::Collada) {
        if (std::string problem = ColladaSkinProblem(contents); !problem.empty()) {
            result.Error = problem;
            return false;
        }
    }
    return true;
}

bool ReadFileHead(const std::string& path, std::string& head)
{
    std::ifstream file(ToNativePath(path), std::ios::binary);
    if (!file)
        return false;
    head.resize(kAssimpSignatureBytes);
    file.read(head.data(), static_cast<std::streamsize>(head.size()));
    head.resize(static_cast<size_t>(file.gcount()));
    return !file.bad();
}

bool Guarded(ImportResult& result, const std::string& fileName, const std::function<bool()>& step)
{
    try {
        return step();
    } catch (const std::bad_alloc&) {
        result.Error = "'" + fileName + "': not enough memory to read the file";
    } catch (const std::exception& error) {
        result.Error = "'" + fileName + "': " + error.what();
    } catch (...) {
        result.Error = "'" + fileName + "': the file could not be read";
    }
    return false;
}

// Reads through a configured importer and converts what it read into the record.
bool ReadAndConvert(const std::function<const aiScene*(Assimp::Importer&)>& read, AssimpFormat format,
                    const std::string& scenePath, const ImportOptions& options, const std::string& fileName,
                    SceneRecord& record, ImportResult& result)
{
    Assimp::Importer importer;
    ConfigureImporter(importer);
    const aiScene* scene = read(importer);
    if (!scene) {
        result.Error = "'" + fileName + "': " + importer.GetErrorString();
        return false;
    }
    AssimpContext context(*scene, format, scenePath, options, record, result);
    if (!ConvertScene(context)) {
        result.Error = "'" + fileName + "': " + result.Error;
        return false;
    }
    return true;
}

} // namespace

MMatrix ToMayaMatrix(const aiMatrix4x4& m)
{
    MMatrix result;
    for (unsigned int row = 0; row < 4; ++row)
        for (unsigned int column = 0; column < 4; ++column)
            result[row][column] = m[column][row];
    return result;
}

std::string MayaName(const std::string& name, const char* fallback)
{
    std::string result;
    for (char c : name) {
        const bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
        const bool digit = c >= '0' && c <= '9';
        result += letter || digit ? c : '_';
    }
    if (result.empty())
        return fallback;
    if (result.front() >= '0' && result.front() <= '9')
        result.insert(result.begin(), '_');
    return result;
}

MMatrix AssimpContext::LocalToMaya(const aiNode& node, const aiMatrix4x4& local) const
{
    aiMatrix4x4 matrix = local;
    if (FoldedRoot && node.mParent == FoldedRoot)
        matrix = FoldedRoot->mTransformation * local;
    return ToMayaMatrix(Conversion * matrix * ConversionInverse);
}

MMatrix AssimpContext::WorldToMaya(const aiMatrix4x4& world) const
{
    return ToMayaMatrix(Conversion * world * ConversionInverse);
}

aiMatrix4x4 AssimpContext::FileWorld(const aiNode& node) const
{
    aiMatrix4x4 world = node.mTransformation;
    size_t depth = 0;
    for (const aiNode* parent = node.mParent; parent && depth < Nodes.size() + 1; parent = parent->mParent, ++depth)
        world = parent->mTransformation * world;
    return world;
}

bool ReadAssimpFile(const std::string& path, const ImportOptions& options, SceneRecord& record, ImportResult& result)
{
    const std::string fileName = FileNameOf(path);
    return Guarded(result, fileName, [&] {
        std::string head;
        if (!ReadFileHead(path, head)) {
            result.Error = "'" + fileName + "': " + (FileExists(path) ? "the file cannot be read" : "no such file");
            return false;
        }
        const AssimpFormat format = DetectAssimpFormat(path, head);
        if (format == AssimpFormat::None) {
            result.Error = "'" + fileName + "': not a Maya ASCII, FBX, glTF, COLLADA or OBJ file";
            return false;
        }
        std::error_code sizeError;
        const auto fileSize = std::filesystem::file_size(ToNativePath(path), sizeError);
        if (!sizeError && GlbLengthsExceed(head, fileSize)) {
            result.Error = "'" + fileName + "': " + kGlbTooShort;
            return false;
        }
        std::string contents;
        if ((format == AssimpFormat::Fbx || format == AssimpFormat::Collada) && ReadWholeFile(path, contents) &&
            !PassesAssimpQuirkChecks(format, contents, result)) {
            result.Error = "'" + fileName + "': " + result.Error;
            return false;
        }
        // The child reads into its own copies of the record and the answer and hands both back; it writes any
        // embedded textures on its way.
        const std::optional<std::string> packed = RunInChildProcess([&] {
            const bool read = Guarded(result, fileName, [&] {
                return ReadAndConvert(
                    [&](Assimp::Importer& importer) { return importer.ReadFile(ToNativePath(path), kAssimpSteps); },
                    format, path, options, fileName, record, result);
            });
            return PackSceneRecord(read, record, result);
        });
        bool read = false;
        if (!packed || !UnpackSceneRecord(*packed, read, record, result)) {
            result.Error = "'" + fileName + "': " + kAssimpCrashed;
            return false;
        }
        // Assimp passes over what it cannot read, such as a COLLADA morph controller, without a word.
        if (read && format == AssimpFormat::Collada && record.Meshes.empty() &&
            (contents.find("<instance_geometry") != std::string::npos ||
             contents.find("<instance_controller") != std::string::npos))
            result.Warn("Assimp read none of the meshes this file places; the scene has no mesh");
        return read;
    });
}

bool ReadAssimpMemory(const void* data, size_t size, const std::string& extension, SceneRecord& record,
                      ImportResult& result)
{
    const std::string fileName = "scene." + extension;
    return Guarded(result, fileName, [&] {
        const AssimpFormat format = FormatOfExtension(extension, data, size);
        if (format == AssimpFormat::None) {
            result.Error = "'" + fileName + "': not a Maya ASCII, FBX, glTF, COLLADA or OBJ file";
            return false;
        }
        const std::string_view bytes(static_cast<const char*>(data), size);
        if (GlbLengthsExceed(bytes, size)) {
            result.Error = "'" + fileName + "': " + kGlbTooShort;
            return false;
        }
        if (!PassesAssimpQuirkChecks(format, bytes, result)) {
            result.Error = "'" + fileName + "': " + result.Error;
            return false;
        }
        ImportOptions options;
        options.WriteEmbeddedTextures = false;
        return ReadAndConvert(
            [&](Assimp::Importer& importer) {
                return importer.ReadFileFromMemory(data, size, kAssimpSteps, extension.c_str());
            },
            format, std::string(), options, fileName, record, result);
    });
}
