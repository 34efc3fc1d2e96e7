#include "importers/WriteMeshScene.h"

#include "base/Path.h"
#include "base/TextUtil.h"

#include <assimp/Exporter.hpp>
#include <assimp/material.h>
#include <assimp/postprocess.h>
#include <assimp/scene.h>

#include <memory>

namespace {

struct SceneFormat {
    const char* Extension;
    const char* ExporterId;
    float MetresPerUnit;
};

constexpr SceneFormat SceneFormats[] {
    {".glb", "glb2", 0.01f},
    // ASCII: the binary FBX that Assimp writes is one its own reader refuses.
    {".fbx", "fbxa", 1.0f},
    {".obj", "obj", 1.0f},
    {".dae", "collada", 0.01f},
};

// The arrays of one mesh, as WriteMeshScene takes them.
struct MeshArrays {
    const std::vector<float>& Points;
    const std::vector<int>& Counts;
    const std::vector<int>& Connects;
};

bool Fits(const MeshArrays& mesh)
{
    if (mesh.Points.size() % 3 != 0 || mesh.Counts.empty())
        return false;
    const size_t points = mesh.Points.size() / 3;
    size_t corners = 0;
    for (const int count : mesh.Counts) {
        if (count < 3)
            return false;
        corners += static_cast<size_t>(count);
    }
    if (corners != mesh.Connects.size())
        return false;
    for (const int corner : mesh.Connects)
        if (corner < 0 || static_cast<size_t>(corner) >= points)
            return false;
    return true;
}

// Assimp's scene owns everything hung on it and frees it with new[]/delete[] pairs.
std::unique_ptr<aiScene> BuildScene(const MeshArrays& mesh, float scale)
{
    auto scene = std::make_unique<aiScene>();
    scene->mRootNode = new aiNode("mesh");
    scene->mRootNode->mNumMeshes = 1;
    scene->mRootNode->mMeshes = new unsigned int[1] {0};
    scene->mNumMaterials = 1;
    scene->mMaterials = new aiMaterial*[1] {new aiMaterial()};
    const aiString materialName("blinn1");
    scene->mMaterials[0]->AddProperty(&materialName, AI_MATKEY_NAME);

    auto* out = new aiMesh();
    scene->mNumMeshes = 1;
    scene->mMeshes = new aiMesh*[1] {out};
    out->mName = "mesh";
    out->mMaterialIndex = 0;
    out->mNumVertices = static_cast<unsigned int>(mesh.Points.size() / 3);
    out->mVertices = new aiVector3D[out->mNumVertices];
    for (unsigned int i = 0; i < out->mNumVertices; ++i)
        out->mVertices[i] = aiVector3D(mesh.Points[3 * i], mesh.Points[3 * i + 1], mesh.Points[3 * i + 2]) * scale;
    out->mNumFaces = static_cast<unsigned int>(mesh.Counts.size());
    out->mFaces = new aiFace[out->mNumFaces];
    size_t next = 0;
    for (unsigned int face = 0; face < out->mNumFaces; ++face) {
        const auto count = static_cast<unsigned int>(mesh.Counts[face]);
        out->mFaces[face].mNumIndices = count;
        out->mFaces[face].mIndices = new unsigned int[count];
        for (unsigned int corner = 0; corner < count; ++corner)
            out->mFaces[face].mIndices[corner] = static_cast<unsigned int>(mesh.Connects[next++]);
        out->mPrimitiveTypes |= count == 3 ? aiPrimitiveType_TRIANGLE : aiPrimitiveType_POLYGON;
    }
    return scene;
}

} // namespace

bool WriteMeshScene(const std::string& path, const std::vector<float>& points, const std::vector<int>& counts,
                    const std::vector<int>& connects, std::string& error)
{
    const MeshArrays mesh {points, counts, connects};
    const SceneFormat* format = nullptr;
    for (const SceneFormat& candidate : SceneFormats)
        if (EqualsNoCase(ExtensionOf(path), candidate.Extension))
            format = &candidate;
    if (!format) {
        error = std::string("scenes are written as ") + MeshSceneExtensions;
        return false;
    }
    if (!Fits(mesh)) {
        error = "the mesh has no polygons or its corners name points it does not have";
        return false;
    }
    const std::unique_ptr<aiScene> scene = BuildScene(mesh, format->MetresPerUnit);
    // glTF and some viewers take triangles only; triangulating keeps every polygon's area.
    Assimp::Exporter exporter;
    if (exporter.Export(scene.get(), format->ExporterId, ToNativePath(path), aiProcess_Triangulate) != aiReturn_SUCCESS) {
        error = exporter.GetErrorString();
        return false;
    }
    return true;
}
