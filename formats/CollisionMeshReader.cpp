#include "formats/CollisionMeshReader.h"

#include "base/TextUtil.h"
#include "formats/ChunkReading.h"
#include "formats/StaticMeshChunks.h"
#include "formats/chunk/LastError.h"
#include "formats/chunk/VChunkedFile.h"
#include "model/VMBoundingBox.h"

#include <algorithm>

namespace {

const char* ParseHeader(VChunkedFile& file, VCollisionMeshFile& mesh)
{
    uint32_t tag = 0;
    int32_t reserved = 0;
    if (!ReadChunkValue(file, tag) || tag != CollisionMeshTag || !ReadChunkValue(file, mesh.Version) ||
        !ReadChunkValue(file, reserved))
        return "Unknown collision mesh header";
    return nullptr;
}

const char* ParseTriangles(VChunkedFile& file, VCollisionMeshFile& mesh)
{
    int32_t vertexCount = 0;
    int32_t indexCount = 0;
    if (!ReadChunkValue(file, vertexCount) || !ReadChunkValue(file, indexCount) || indexCount % 3 != 0)
        return "Bad counts";
    if (!ReadChunkArray(file, static_cast<int64_t>(vertexCount) * 3, mesh.Positions) ||
        !ReadChunkArray(file, indexCount, mesh.Indices))
        return "Counts exceed the chunk";
    for (int32_t index : mesh.Indices) {
        if (index < 0 || index >= vertexCount)
            return "Index outside the vertices";
    }
    return nullptr;
}

std::string Parse(VChunkedFile& file, VCollisionMeshFile& mesh)
{
    uint32_t id = 0;
    while (file.OpenChunk(VChunkedFile::AnyChunk, &id)) {
        mesh.Chunks.push_back(id);
        const char* problem = nullptr;
        if (id == ChunkCOLM)
            problem = ParseHeader(file, mesh);
        else if (id == ChunkVIND)
            problem = ParseTriangles(file, mesh);
        if (problem != nullptr)
            return Format("%s in chunk %s", problem, ChunkName(id).c_str());
        if (!file.EndChunk())
            return file.GetMode() == VChunkedFile::Mode::Error ? LastError().Text : "File is truncated";
    }
    if (file.GetMode() == VChunkedFile::Mode::Error)
        return LastError().Text;
    if (!EndedAtMarker(file))
        return "File is truncated";
    for (uint32_t required : {ChunkCOLM, ChunkVIND}) {
        if (std::find(mesh.Chunks.begin(), mesh.Chunks.end(), required) == mesh.Chunks.end())
            return "Missing chunk " + ChunkName(required);
    }
    return {};
}

} // namespace

bool ReadCollisionMesh(std::string_view path, VCollisionMeshFile& mesh, VChunkStreamProvider* provider)
{
    mesh = {};
    return ReadChunkFile(path, provider, "collision mesh", [&](VChunkedFile& file) { return Parse(file, mesh); });
}

std::string DescribeCollisionMesh(const VCollisionMeshFile& mesh)
{
    std::string text = "Collision mesh\nChunks:";
    for (uint32_t id : mesh.Chunks)
        text += " " + ChunkName(id);
    text += Format("\nVersion: %d\nVertices: %zu\nTriangles: %zu\n", mesh.Version, mesh.Positions.size() / 3,
                   mesh.Indices.size() / 3);
    VMBoundingBox box;
    for (size_t i = 0; i + 2 < mesh.Positions.size(); i += 3)
        box.Grow(&mesh.Positions[i]);
    if (!box.IsEmpty())
        text += Format("Bounds: (%g, %g, %g) - (%g, %g, %g)\n", static_cast<double>(box.Min[0]),
                       static_cast<double>(box.Min[1]), static_cast<double>(box.Min[2]), static_cast<double>(box.Max[0]),
                       static_cast<double>(box.Max[1]), static_cast<double>(box.Max[2]));
    return text;
}
