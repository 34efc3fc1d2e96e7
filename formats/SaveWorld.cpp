#include "formats/SaveWorld.h"

#include "base/Path.h"
#include "base/TextUtil.h"
#include "formats/BuildSubmeshes.h"
#include "formats/ChunkByteWriter.h"
#include "formats/MaterialChunk.h"
#include "formats/MeshBuffer.h"
#include "formats/SaveSideFiles.h"
#include "formats/ShadowNeighbours.h"
#include "formats/ShadowPlane.h"
#include "formats/SplitSubmeshes.h"
#include "formats/StaticMeshChunks.h"
#include "formats/StaticMeshLayout.h"
#include "formats/chunk/LastError.h"
#include "formats/chunk/VChunkedFile.h"
#include "model/VMWorld.h"

#include <algorithm>
#include <cstdio>
#include <new>
#include <string>

namespace {

void PutBox(ChunkByteWriter& out, const VMBoundingBox& box)
{
    for (float value : box.Min)
        out.Put(value);
    for (float value : box.Max)
        out.Put(value);
}

bool WriteRenderMesh(VChunkedFile& file, const VMWorld& world, const VStaticMeshLayout& layout)
{
    if (!file.StartChunk(ChunkVMSH))
        return false;
    {
        ChunkByteWriter out(file);
        out.Put(ChunkVMSH);
        out.Put(StaticMeshVersion);
        out.Flush();
    }
    // A failed buffer is abandoned; the chunk file has recorded the failure and refuses the rest.
    WriteMeshBuffer(file, MakeVertexLayout(world.HasSecondUV != 0, world.HasTangents != 0, world.HasColours != 0),
                    layout.Vertices, layout.RenderIndices);
    ChunkByteWriter out(file);
    PutBox(out, world.Bounds);
    out.Put(int32_t {0});
    return out.Flush() && file.EndChunk();
}

bool WriteMaterials(VChunkedFile& file, const VMWorld& world)
{
    bool ok = file.StartChunk(ChunkMTRS) && file.WriteInt(world.Materials.Count());
    for (const VMMaterial* material : world.Materials)
        ok = ok && WriteMaterialChunk(file, *material);
    return ok && file.EndChunk();
}

bool WriteShadowMesh(VChunkedFile& file, const VStaticMeshLayout& layout)
{
    const std::vector<int32_t>& indices = layout.ShadowIndices;
    const std::vector<int32_t> neighbours =
        ComputeShadowNeighbours(indices, static_cast<int32_t>(layout.Vertices.size()));
    if (!file.StartChunk(ChunkSMSH))
        return false;
    {
        ChunkByteWriter out(file);
        out.Put(static_cast<int32_t>(indices.size()));
        out.PutBytes(indices.data(), indices.size() * sizeof(int32_t));
        for (size_t corner = 0; corner + 2 < indices.size(); corner += 3) {
            float plane[4];
            ComputeShadowPlane(layout.Vertices[static_cast<size_t>(indices[corner])]->Position,
                               layout.Vertices[static_cast<size_t>(indices[corner + 1])]->Position,
                               layout.Vertices[static_cast<size_t>(indices[corner + 2])]->Position, plane);
            out.PutBytes(plane, sizeof plane);
        }
        out.PutBytes(neighbours.data(), neighbours.size() * sizeof(int32_t));
        if (!out.Flush())
            return false;
    }
    return file.EndChunk();
}

bool WriteSubmeshes(VChunkedFile& file, const VMWorld& world)
{
    if (!file.StartChunk(ChunkSUBM))
        return false;
    {
        ChunkByteWriter out(file);
        out.Put(static_cast<int32_t>(world.Submeshes.Count()));
        for (const VMSubmesh* submesh : world.Submeshes) {
            const bool sameAsRender = submesh->ShadowIndexCount < 0;
            out.Put(submesh->RenderFirstIndex);
            out.Put(submesh->RenderIndexCount);
            out.Put(sameAsRender ? submesh->RenderFirstIndex : submesh->ShadowFirstIndex);
            out.Put(sameAsRender ? submesh->RenderIndexCount : submesh->ShadowIndexCount);
            out.Put(submesh->RenderFirstVertex);
            out.Put(submesh->RenderLastVertex - submesh->RenderFirstVertex + 1);
            out.Put(sameAsRender ? submesh->RenderFirstVertex : submesh->ShadowFirstVertex);
            out.Put(sameAsRender ? submesh->RenderLastVertex - submesh->RenderFirstVertex + 1
                                 : submesh->ShadowLastVertex - submesh->ShadowFirstVertex + 1);
            PutBox(out, submesh->Box);
            out.Put(static_cast<int32_t>(world.Materials.Find(submesh->Material)));
        }
        if (!out.Flush())
            return false;
    }
    return file.EndChunk();
}

bool WriteGroups(VChunkedFile& file, const VMWorld& world)
{
    const bool anyGroup = std::any_of(world.Submeshes.begin(), world.Submeshes.end(),
                                      [](const VMSubmesh* submesh) { return submesh->Group >= 0; });
    if (!anyGroup)
        return true;
    if (!file.StartChunk(ChunkSMPG))
        return false;
    {
        ChunkByteWriter out(file);
        for (const VMSubmesh* submesh : world.Submeshes)
            out.Put(std::max(submesh->Group, int32_t {0}));
        if (!out.Flush())
            return false;
    }
    return file.EndChunk();
}

void PrintToStandardOutput(const std::string& text)
{
    std::fputs(text.c_str(), stdout);
}

bool WriteStaticMesh(VMWorld& world, std::string_view path, const VSaveParams& params)
{
    VChunkedFile file;
    if (!file.Create(path, params.Streams)) {
        SetLastError(Format("Failed to create file '%s'", ShownPath(path).c_str()));
        return false;
    }
    if (BuildSubmeshes(world) != 0) {
        SetLastError(Format("Failed to write file '%.*s': a primitive refers to a vertex outside the vertex list",
                            static_cast<int>(path.size()), path.data()));
        return false;
    }
    const bool reordered = SplitSubmeshes(world, params.Console ? params.Console : PrintToStandardOutput);
    const VStaticMeshLayout layout = LayOutStaticMesh(world, reordered);

    world.HasTangents = 1;
    WriteRenderMesh(file, world, layout);
    WriteMaterials(file, world);
    WriteShadowMesh(file, layout);
    WriteSubmeshes(file, world);
    WriteGroups(file, world);
    if (!file.Close()) {
        SetLastError(Format("Failed to write file '%s'", ShownPath(path).c_str()));
        return false;
    }
    return true;
}

} // namespace

bool SaveWorld(VMWorld& world, std::string_view path, const VSaveParams& params)
{
    ClearLastError();
    try {
        if (!WriteStaticMesh(world, path, params))
            return false;
    } catch (const std::bad_alloc&) {
        SetLastError(Format("Out of memory while writing file '%s'", ShownPath(path).c_str()));
        return false;
    }
    return SaveSideFiles(world, path, params);
}
