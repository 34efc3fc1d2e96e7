#include "importers/assimp/AssimpContext.h"

#include "base/TextUtil.h"

#include <assimp/mesh.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <map>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace {

using VertexSkin = std::vector<std::pair<int, float>>; // influence column, weight
using VertexMorph = std::vector<MVector>;                // offset per morph target

// The bits of a position in single precision: positions that differ only in the sign of zero or in
// a NaN's payload stay apart, as they did in the byte keys.
struct PositionBits {
    uint32_t Bits[3];
    bool operator==(const PositionBits& other) const
    {
        return Bits[0] == other.Bits[0] && Bits[1] == other.Bits[1] && Bits[2] == other.Bits[2];
    }
};

struct PositionBitsHash {
    size_t operator()(const PositionBits& key) const
    {
        uint64_t hash = (uint64_t(key.Bits[0]) << 32 | key.Bits[1]) * 0x9E3779B97F4A7C15ull;
        hash ^= (hash >> 29) + key.Bits[2] * 0xBF58476D1CE4E5B9ull;
        return static_cast<size_t>(hash ^ (hash >> 32));
    }
};

struct MeshBuilder {
    AssimpContext& Context;
    const aiNode& Node;
    RecordMesh& Mesh;
    MMatrix PointMatrix; // file to Maya, row-vector convention
    // Vertices with neither skin weights nor morph offsets weld by position alone.
    std::unordered_map<PositionBits, int, PositionBitsHash> PlainVertexByPosition;
    std::unordered_map<std::string, int> VertexByKey;
    std::vector<VertexSkin> VertexSkins;
    std::vector<VertexMorph> VertexMorphs;
    size_t MorphTargetCount = 0;
    std::map<int, int> InfluenceColumn; // node index to column
    std::vector<std::unordered_map<uint64_t, int>> UVByValue;
};

template <typename T>
void AppendBytes(std::string& key, const T& value)
{
    char bytes[sizeof(T)];
    std::memcpy(bytes, &value, sizeof(T));
    key.append(bytes, sizeof(T));
}

bool IsFinite(const aiVector3D& p)
{
    return std::isfinite(p.x) && std::isfinite(p.y) && std::isfinite(p.z);
}

// Warned for once per corner, whether or not the corner's vertex was converted before.
void WarnOfNonFinitePoint(MeshBuilder& builder, const aiVector3D& p)
{
    if (!IsFinite(p))
        builder.Context.Result.Warn("Vertex positions that are not numbers are placed at the origin");
}

MPoint ConvertPoint(const MeshBuilder& builder, const aiVector3D& p)
{
    double x = p.x;
    double y = p.y;
    double z = p.z;
    if (!IsFinite(p))
        x = y = z = 0.0;
    const MMatrix& m = builder.PointMatrix;
    return MPoint(x * m[0][0] + y * m[1][0] + z * m[2][0] + m[3][0], x * m[0][1] + y * m[1][1] + z * m[2][1] + m[3][1],
                  x * m[0][2] + y * m[1][2] + z * m[2][2] + m[3][2]);
}

MVector ConvertNormal(const MeshBuilder& builder, const aiVector3D& n)
{
    const MMatrix& m = builder.PointMatrix;
    const MVector converted(n.x * m[0][0] + n.y * m[1][0] + n.z * m[2][0], n.x * m[0][1] + n.y * m[1][1] + n.z * m[2][1],
                            n.x * m[0][2] + n.y * m[1][2] + n.z * m[2][2]);
    const double length = converted.length();
    return std::isfinite(length) && length > 0.0 ? converted / length : MVector(0.0, 1.0, 0.0);
}

// Skin weights of every vertex of one Assimp mesh, by influence column.
std::vector<VertexSkin> ReadBones(MeshBuilder& builder, const aiMesh& mesh)
{
    AssimpContext& context = builder.Context;
    std::vector<VertexSkin> skins(mesh.mNumVertices);
    const aiMatrix4x4 meshWorldInverse = context.FileWorld(builder.Node).Inverse();
    for (unsigned int b = 0; b < mesh.mNumBones; ++b) {
        const aiBone* bone = mesh.mBones[b];
        const int node = bone ? context.FindNode(bone->mName.C_Str()) : -1;
        if (node < 0) {
            context.Result.Warn("Bones without a node of the same name are not imported");
            continue;
        }
        auto [column, added] = builder.InfluenceColumn.emplace(node, static_cast<int>(builder.InfluenceColumn.size()));
        if (added) {
            // The offset matrix takes the mesh's space to the bone's; Maya's bindPreMatrix takes world space to
            // the bone's, so the mesh's world matrix at bind time is undone first.
            const MMatrix bindPre = context.WorldToMaya(bone->mOffsetMatrix * meshWorldInverse);
            builder.Mesh.Skin.Influences.push_back(node);
            builder.Mesh.Skin.BindPreMatrices.push_back(bindPre);
            if (!bindPre.isSingular())
                context.BindWorld.emplace(node, bindPre.inverse());
        }
        for (unsigned int w = 0; w < bone->mNumWeights; ++w) {
            const aiVertexWeight& weight = bone->mWeights[w];
            if (weight.mVertexId >= mesh.mNumVertices || !std::isfinite(weight.mWeight)) {
                context.Result.Warn("Skin weights of vertices that do not exist are ignored");
                continue;
            }
            skins[weight.mVertexId].emplace_back(column->second, weight.mWeight);
        }
    }
    for (VertexSkin& skin : skins)
        std::sort(skin.begin(), skin.end());
    return skins;
}

MVector ConvertOffset(const MeshBuilder& builder, const aiVector3D& d)
{
    if (!IsFinite(d)) {
        builder.Context.Result.Warn("Morph target offsets that are not numbers are set to 0");
        return MVector();
    }
    const MMatrix& m = builder.PointMatrix;
    return MVector(d.x * m[0][0] + d.y * m[1][0] + d.z * m[2][0], d.x * m[0][1] + d.y * m[1][1] + d.z * m[2][1],
                   d.x * m[0][2] + d.y * m[1][2] + d.z * m[2][2]);
}

// How far each morph target moves one vertex of the part; Assimp gives the targets' positions.
VertexMorph ReadMorph(const MeshBuilder& builder, const aiMesh& part, unsigned int source)
{
    VertexMorph morph(builder.MorphTargetCount);
    for (unsigned int t = 0; t < part.mNumAnimMeshes && t < morph.size(); ++t) {
        const aiAnimMesh* target = part.mAnimMeshes[t];
        if (target && target->mVertices && target->mNumVertices == part.mNumVertices)
            morph[t] = ConvertOffset(builder, target->mVertices[source] - part.mVertices[source]);
    }
    return morph;
}

// Corners at the same position with the same skin weights and morph offsets are one Maya vertex.
int WeldedVertex(MeshBuilder& builder, const MPoint& point, const VertexSkin& skin, VertexMorph morph)
{
    const float position[3] = {static_cast<float>(point.x), static_cast<float>(point.y), static_cast<float>(point.z)};
    const int next = static_cast<int>(builder.Mesh.Points.size());
    int welded = next;
    if (skin.empty() && morph.empty()) {
        PositionBits key;
        std::memcpy(key.Bits, position, sizeof position);
        welded = builder.PlainVertexByPosition.emplace(key, next).first->second;
    } else {
        std::string key;
        for (float coordinate : position)
            AppendBytes(key, coordinate);
        for (const auto& [column, weight] : skin) {
            AppendBytes(key, column);
            AppendBytes(key, weight);
        }
        for (const MVector& offset : morph) {
            AppendBytes(key, static_cast<float>(offset.x));
            AppendBytes(key, static_cast<float>(offset.y));
            AppendBytes(key, static_cast<float>(offset.z));
        }
        welded = builder.VertexByKey.emplace(std::move(key), next).first->second;
    }
    if (welded == next) {
        builder.Mesh.Points.push_back(point);
        builder.VertexSkins.push_back(skin);
        builder.VertexMorphs.push_back(std::move(morph));
    }
    return welded;
}

bool IsFiniteUV(const aiVector3D& uv)
{
    return std::isfinite(uv.x) && std::isfinite(uv.y);
}

int UVId(MeshBuilder& builder, size_t set, const aiVector3D& uv)
{
    float u = uv.x;
    float v = uv.y;
    if (!IsFiniteUV(uv))
        u = v = 0.0f;
    uint32_t uBits = 0;
    uint32_t vBits = 0;
    std::memcpy(&uBits, &u, sizeof(u));
    std::memcpy(&vBits, &v, sizeof(v));
    RecordUVSet& uvSet = builder.Mesh.UVSets[set];
    const auto [found, added] =
        builder.UVByValue[set].emplace((uint64_t(uBits) << 32) | vBits, static_cast<int>(uvSet.U.size()));
    if (added) {
        uvSet.U.push_back(u);
        uvSet.V.push_back(v);
    }
    return found->second;
}

void PrepareUVSets(MeshBuilder& builder, const std::vector<const aiMesh*>& parts)
{
    size_t setCount = 0;
    for (const aiMesh* part : parts)
        for (unsigned int c = 0; c < AI_MAX_NUMBER_OF_TEXTURECOORDS; ++c)
            if (part->HasTextureCoords(c))
                setCount = std::max<size_t>(setCount, c + 1);
    builder.Mesh.UVSets.resize(setCount);
    builder.UVByValue.resize(setCount);
    for (size_t set = 0; set < setCount; ++set) {
        RecordUVSet& uvSet = builder.Mesh.UVSets[set];
        for (const aiMesh* part : parts) {
            const unsigned int channel = static_cast<unsigned int>(set);
            if (uvSet.Name.empty() && part->HasTextureCoords(channel) && part->HasTextureCoordsName(channel))
                uvSet.Name = MayaName(part->GetTextureCoordsName(channel)->C_Str(), "");
        }
        if (uvSet.Name.empty())
            uvSet.Name = set == 0 ? "map1" : Format("map%zu", set + 1);
        for (size_t other = 0; other < set; ++other)
            if (EqualsNoCase(builder.Mesh.UVSets[other].Name, uvSet.Name))
                uvSet.Name = Format("map%zu", set + 1);
    }
}

void AddFaces(MeshBuilder& builder, const aiMesh& part, bool withNormals)
{
    AssimpContext& context = builder.Context;
    RecordMesh& mesh = builder.Mesh;
    const std::vector<VertexSkin> skins = ReadBones(builder, part);
    const int material = RecordMaterialFor(context, part.mMaterialIndex);
    std::vector<int> corners;
    // The vertex and UV ids depend only on the source vertex, so each is looked up once: the first corner of
    // a source vertex adds it where a lookup per corner would have.
    const size_t setCount = mesh.UVSets.size();
    std::vector<int> vertexOfSource(part.mNumVertices, -1);
    if (part.mNumBones == 0 && builder.MorphTargetCount == 0)
        builder.PlainVertexByPosition.reserve(builder.PlainVertexByPosition.size() + part.mNumVertices);
    std::vector<int> uvOfSource(part.mNumVertices * setCount, -1);
    for (unsigned int f = 0; f < part.mNumFaces; ++f) {
        const aiFace& face = part.mFaces[f];
        if (face.mNumIndices < 3 || !face.mIndices) {
            context.Result.Warn("Points and lines are not imported");
            continue;
        }
        bool valid = true;
        for (unsigned int c = 0; c < face.mNumIndices; ++c)
            valid = valid && face.mIndices[c] < part.mNumVertices;
        if (!valid) {
            context.Result.Warn("Polygons naming vertices that do not exist are not imported");
            continue;
        }
        corners.clear();
        for (unsigned int c = 0; c < face.mNumIndices; ++c) {
            const unsigned int source = face.mIndices[c];
            WarnOfNonFinitePoint(builder, part.mVertices[source]);
            int& welded = vertexOfSource[source];
            if (welded < 0)
                welded = WeldedVertex(builder, ConvertPoint(builder, part.mVertices[source]), skins[source],
                                      ReadMorph(builder, part, source));
            int vertex = welded;
            // Maya polygons cannot pass through one vertex twice; such corners keep a vertex of their own.
            if (std::find(corners.begin(), corners.end(), vertex) != corners.end()) {
                context.Result.Warn("Polygons passing twice through one point keep a separate vertex for each pass");
                vertex = static_cast<int>(mesh.Points.size());
                mesh.Points.push_back(ConvertPoint(builder, part.mVertices[source]));
                builder.VertexSkins.push_back(skins[source]);
                builder.VertexMorphs.push_back(ReadMorph(builder, part, source));
            }
            corners.push_back(vertex);
            for (size_t set = 0; set < setCount; ++set) {
                const unsigned int channel = static_cast<unsigned int>(set);
                if (!part.HasTextureCoords(channel)) {
                    mesh.UVSets[set].Ids.push_back(-1);
                    continue;
                }
                const aiVector3D& uv = part.mTextureCoords[channel][source];
                if (!IsFiniteUV(uv))
                    context.Result.Warn("Texture coordinates that are not numbers are set to 0");
                int& id = uvOfSource[source * setCount + set];
                if (id < 0)
                    id = UVId(builder, set, uv);
                mesh.UVSets[set].Ids.push_back(id);
            }
            if (withNormals)
                mesh.Normals.push_back(ConvertNormal(builder, part.mNormals[source]));
        }
        mesh.Counts.push_back(static_cast<int>(corners.size()));
        mesh.Connects.insert(mesh.Connects.end(), corners.begin(), corners.end());
        mesh.FaceMaterials.push_back(material);
    }
}

void FillSkinWeights(MeshBuilder& builder)
{
    RecordSkin& skin = builder.Mesh.Skin;
    if (skin.Influences.empty())
        return;
    skin.Weights.assign(builder.Mesh.Points.size(), std::vector<double>(skin.Influences.size(), 0.0));
    for (size_t v = 0; v < builder.VertexSkins.size(); ++v) {
        std::vector<double>& row = skin.Weights[v];
        double total = 0.0;
        for (const auto& [column, weight] : builder.VertexSkins[v]) {
            row[static_cast<size_t>(column)] += weight;
            total += weight;
        }
        // Maya's skin clusters keep each vertex's weights normalised; files written by older tools do not always.
        if (total <= 0.0) {
            builder.Context.Result.Warn("Skinned vertices without weights follow no joint");
        } else if (std::abs(total - 1.0) > 1e-3) {
            builder.Context.Result.Warn("Skin weights that did not add up to one were normalised");
            for (double& weight : row)
                weight /= total;
        }
    }
}

void FillMorphTargets(MeshBuilder& builder, const std::vector<const aiMesh*>& parts)
{
    std::vector<RecordMorphTarget>& targets = builder.Mesh.MorphTargets;
    targets.assign(builder.MorphTargetCount, RecordMorphTarget {});
    for (size_t t = 0; t < targets.size(); ++t) {
        for (const aiMesh* part : parts) {
            if (t < part->mNumAnimMeshes && part->mAnimMeshes[t] && std::isfinite(part->mAnimMeshes[t]->mWeight)) {
                targets[t].Weight = part->mAnimMeshes[t]->mWeight;
                break;
            }
        }
        targets[t].Offsets.reserve(builder.VertexMorphs.size());
        for (const VertexMorph& morph : builder.VertexMorphs)
            targets[t].Offsets.push_back(morph[t]);
    }
}

bool BuildMesh(AssimpContext& context, const aiNode& node, const std::vector<const aiMesh*>& parts, RecordMesh& mesh)
{
    MeshBuilder builder {context, node, mesh, ToMayaMatrix(context.Conversion), {}, {}, {}, {}, 0, {}, {}};
    mesh.Name = MayaName(node.mName.C_Str(), "polySurface");
    bool withNormals = true;
    bool skinned = false;
    for (const aiMesh* part : parts) {
        withNormals = withNormals && part->HasNormals();
        skinned = skinned || part->mNumBones > 0;
        builder.MorphTargetCount = std::max<size_t>(builder.MorphTargetCount, part->mNumAnimMeshes);
    }
    // Maya would put the blend shape before the skin; the stand-in's skin reads the mesh itself.
    if (skinned && builder.MorphTargetCount > 0) {
        context.Result.Warn("Morph targets of skinned meshes are not imported");
        builder.MorphTargetCount = 0;
    }
    PrepareUVSets(builder, parts);
    for (const aiMesh* part : parts)
        AddFaces(builder, *part, withNormals);
    FillSkinWeights(builder);
    FillMorphTargets(builder, parts);
    return !mesh.Counts.empty();
}

} // namespace

void ReadAssimpMeshes(AssimpContext& context)
{
    std::map<std::vector<unsigned int>, int> meshOfParts;
    for (size_t n = 0; n < context.Nodes.size(); ++n) {
        const aiNode& node = *context.Nodes[n];
        std::vector<unsigned int> partIndices;
        std::vector<const aiMesh*> parts;
        for (unsigned int i = 0; i < node.mNumMeshes && node.mMeshes; ++i) {
            const unsigned int index = node.mMeshes[i];
            if (index < context.Scene.mNumMeshes && context.Scene.mMeshes[index]) {
                partIndices.push_back(index);
                parts.push_back(context.Scene.mMeshes[index]);
            }
        }
        if (parts.empty())
            continue;
        // Nodes that name the same meshes share one shape, as Maya's instances do.
        const auto shared = meshOfParts.find(partIndices);
        if (shared != meshOfParts.end()) {
            context.Record.Nodes[n].Mesh = shared->second;
            continue;
        }
        RecordMesh mesh;
        if (!BuildMesh(context, node, parts, mesh)) {
            context.Result.Warn("Meshes without polygons are not imported");
            continue;
        }
        const int index = static_cast<int>(context.Record.Meshes.size());
        context.Record.Meshes.push_back(std::move(mesh));
        context.Record.Nodes[n].Mesh = index;
        meshOfParts.emplace(std::move(partIndices), index);
    }
}
