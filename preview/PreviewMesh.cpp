#include "preview/PreviewMesh.h"

#include "base/FileSystem.h"
#include "base/Path.h"
#include "base/TextUtil.h"
#include "formats/LoadModel.h"
#include "formats/StaticMeshReader.h"
#include "formats/chunk/LastError.h"
#include "model/VMFace.h"
#include "model/VMMaterial.h"
#include "model/VMModel.h"
#include "model/VMSkinVertex.h"

#include <algorithm>

namespace {

// Texture names are relative to the asset's folder, or (with a leading backslash) to the project
// folder somewhere above it: the first folder upward that holds the name is taken.
std::string FindTexture(const std::string& assetPath, std::string name)
{
    if (name.empty())
        return {};
    if (IsAbsolutePath(name))
        return FileExists(name) ? ToNativePath(name) : std::string();
    if (name.front() == '\\')
        name.erase(0, 1);
    for (std::string folder = DirectoryOf(assetPath); !folder.empty(); folder = DirectoryOf(folder)) {
        const std::string candidate = JoinPath(folder, name);
        if (FileExists(candidate))
            return ToNativePath(candidate);
    }
    return {};
}

PreviewMaterial MaterialFrom(const VMMaterial& material, const std::string& assetPath)
{
    PreviewMaterial preview;
    preview.Name = material.Name;
    preview.TextureName = material.DiffuseTexture;
    for (size_t c = 0; c < 3; ++c)
        preview.Colour[c] = static_cast<uint8_t>(std::min<uint32_t>(material.DiffuseColour[c], 255));
    preview.TextureFile = FindTexture(assetPath, material.DiffuseTexture);
    std::string ignored;
    if (!preview.TextureFile.empty() && !DecodeImageFile(preview.TextureFile, preview.Texture, ignored))
        preview.Texture = {};
    return preview;
}

template <class Vertex>
PreviewCorner CornerFrom(const Vertex& vertex)
{
    PreviewCorner corner;
    std::copy_n(vertex.Position, 3, corner.Position.begin());
    std::copy_n(vertex.Normal, 3, corner.Normal.begin());
    std::copy_n(vertex.BaseUV, 2, corner.UV.begin());
    return corner;
}

bool LoadStaticMesh(const std::string& path, PreviewMesh& mesh)
{
    VStaticMeshFile file;
    if (!ReadStaticMesh(path, file))
        return false;
    for (const auto& material : file.Materials)
        mesh.Materials.push_back(MaterialFrom(*material, path));
    mesh.VertexCount = static_cast<int>(file.Vertices.size());
    mesh.SubmeshCount = static_cast<int>(file.Submeshes.size());
    for (const VStaticMeshSubmesh& submesh : file.Submeshes) {
        const size_t end = static_cast<size_t>(submesh.RenderFirstIndex) + static_cast<size_t>(submesh.RenderIndexCount);
        for (size_t index = static_cast<size_t>(submesh.RenderFirstIndex); index + 3 <= std::min(end, file.Indices.size());
             index += 3) {
            PreviewTriangle triangle;
            triangle.Material = submesh.Material;
            bool inside = true;
            for (size_t k = 0; k < 3; ++k) {
                const uint32_t vertex = file.Indices[index + k];
                inside = inside && vertex < file.Vertices.size();
                if (inside)
                    triangle.Corners[k] = CornerFrom(file.Vertices[vertex]);
            }
            if (inside)
                mesh.Triangles.push_back(triangle);
        }
    }
    return true;
}

bool LoadModelMesh(const std::string& path, PreviewMesh& mesh)
{
    VMModel model;
    if (!LoadModel(model, path))
        return false;
    for (const VMMaterial* material : model.Materials)
        mesh.Materials.push_back(MaterialFrom(*material, path));
    mesh.VertexCount = model.Vertices.Count();
    for (const VMFace* face : model.Faces) {
        if (face->Corners().size() != 3)
            continue;
        PreviewTriangle triangle;
        for (size_t k = 0; k < 3; ++k)
            triangle.Corners[k] = CornerFrom(*face->Corners()[k]);
        triangle.Material = model.Materials.Find(face->Material());
        mesh.Triangles.push_back(triangle);
    }
    return true;
}

} // namespace

bool LoadPreviewMesh(const std::string& path, PreviewMesh& mesh, std::string& error)
{
    mesh = {};
    const std::string extension = ExtensionOf(path);
    bool loaded = false;
    if (EqualsNoCase(extension, ".qmesh"))
        loaded = LoadStaticMesh(path, mesh);
    else if (EqualsNoCase(extension, ".model"))
        loaded = LoadModelMesh(path, mesh);
    else {
        error = "only .qmesh and .model files can be drawn";
        return false;
    }
    if (!loaded)
        error = LastError().Text;
    return loaded;
}
