#include "formats/SaveCollisionMesh.h"

#include "base/Path.h"
#include "base/TextUtil.h"
#include "formats/BuildSubmeshes.h"
#include "formats/ChunkByteWriter.h"
#include "formats/StaticMeshChunks.h"
#include "formats/chunk/LastError.h"
#include "formats/chunk/VChunkedFile.h"
#include "model/VMWorld.h"

#include <algorithm>
#include <new>
#include <unordered_map>

namespace {

constexpr int32_t CollisionBitsMask = 0xFFFF;

bool Collides(const VMPrimitive& primitive)
{
    return (primitive.CollisionFlags & CollisionBitsMask) != 0;
}

// A vertex's final number is its list position; its index field says so right after an
// enumeration, and the map covers a world whose indices have gone stale.
class CornerNumbers {
public:
    explicit CornerNumbers(const VMWorld& world)
        : m_world(world)
    {
    }

    // -1 for a vertex that is not in the world's list.
    int32_t Of(const VMVertex* vertex)
    {
        if (vertex == nullptr)
            return -1;
        if (vertex->Index < static_cast<uint32_t>(m_world.Vertices.Count()) &&
            m_world.Vertices[static_cast<int>(vertex->Index)] == vertex)
            return static_cast<int32_t>(vertex->Index);
        if (m_byAddress.empty()) {
            m_byAddress.reserve(static_cast<size_t>(m_world.Vertices.Count()));
            for (int i = 0; i < m_world.Vertices.Count(); ++i)
                m_byAddress.emplace(m_world.Vertices[i], i);
        }
        const auto found = m_byAddress.find(vertex);
        return found == m_byAddress.end() ? -1 : found->second;
    }

private:
    const VMWorld& m_world;
    std::unordered_map<const VMVertex*, int32_t> m_byAddress;
};

bool CollectWorldIndices(const VMWorld& world, std::vector<int32_t>& indices, std::vector<uint32_t>& objects)
{
    CornerNumbers numbers(world);
    for (const VMPolygon* polygon : world.Polygons) {
        if (polygon == nullptr || !Collides(*polygon))
            continue;
        const int32_t first = numbers.Of(WeldTarget(polygon->Corners.empty() ? nullptr : polygon->Corners[0]));
        for (size_t k = 0; k + 2 < polygon->Corners.size(); ++k) {
            const int32_t second = numbers.Of(WeldTarget(polygon->Corners[k + 1]));
            const int32_t third = numbers.Of(WeldTarget(polygon->Corners[k + 2]));
            if (first < 0 || second < 0 || third < 0)
                return false;
            indices.insert(indices.end(), {first, second, third});
            objects.push_back(polygon->SourceNode);
        }
    }
    for (const VMTriList* triList : world.TriLists) {
        if (triList == nullptr || !Collides(*triList))
            continue;
        for (size_t corner = 0; corner < static_cast<size_t>(triList->TriangleCount()) * 3; ++corner) {
            const int32_t number = numbers.Of(triList->Corners[corner]);
            if (number < 0)
                return false;
            indices.push_back(number);
        }
        objects.insert(objects.end(), static_cast<size_t>(triList->TriangleCount()), triList->SourceNode);
    }
    return true;
}

bool WriteFile(VChunkedFile& file, const VCollisionTriangles& triangles)
{
    if (!file.StartChunk(ChunkCOLM))
        return false;
    {
        ChunkByteWriter out(file);
        out.Put(CollisionMeshTag);
        out.Put(CollisionMeshVersion);
        out.Put(int32_t {0});
        if (!out.Flush())
            return false;
    }
    if (!file.EndChunk() || !file.StartChunk(ChunkVIND))
        return false;
    {
        ChunkByteWriter out(file);
        out.Put(static_cast<int32_t>(triangles.Positions.size() / 3));
        out.Put(static_cast<int32_t>(triangles.Indices.size()));
        out.PutBytes(triangles.Positions.data(), triangles.Positions.size() * sizeof(float));
        out.PutBytes(triangles.Indices.data(), triangles.Indices.size() * sizeof(int32_t));
        if (!out.Flush())
            return false;
    }
    return file.EndChunk();
}

} // namespace

bool CollectCollisionTriangles(const VMWorld& world, VCollisionTriangles& triangles)
{
    triangles = {};
    if (!CollectWorldIndices(world, triangles.Indices, triangles.Objects))
        return false;
    triangles.Positions.reserve(static_cast<size_t>(world.Vertices.Count()) * 3);
    for (const VMVertex* vertex : world.Vertices)
        triangles.Positions.insert(triangles.Positions.end(), vertex->Position, vertex->Position + 3);
    DropUnusedPositions(triangles);
    return true;
}

void DropUnusedPositions(VCollisionTriangles& triangles)
{
    const size_t count = triangles.Positions.size() / 3;
    std::vector<int32_t> newNumber(count, -1);
    for (int32_t index : triangles.Indices)
        newNumber[static_cast<size_t>(index)] = 0;
    int32_t next = 0;
    for (size_t i = 0; i < count; ++i) {
        if (newNumber[i] < 0)
            continue;
        newNumber[i] = next;
        std::copy_n(&triangles.Positions[i * 3], 3, &triangles.Positions[static_cast<size_t>(next) * 3]);
        ++next;
    }
    triangles.Positions.resize(static_cast<size_t>(next) * 3);
    for (int32_t& index : triangles.Indices)
        index = newNumber[static_cast<size_t>(index)];
}

bool SaveCollisionMesh(const VMWorld& world, std::string_view path, const VSaveParams& params)
{
    ClearLastError();
    try {
        VCollisionTriangles triangles;
        if (!CollectCollisionTriangles(world, triangles)) {
            SetLastError(Format("Failed to write file '%s': a primitive refers to a vertex outside the vertex list",
                                ShownPath(path).c_str()));
            return false;
        }
        return SaveCollisionMesh(triangles, path, params);
    } catch (const std::bad_alloc&) {
        SetLastError(Format("Out of memory while writing file '%s'", ShownPath(path).c_str()));
        return false;
    }
}

bool SaveCollisionMesh(const VCollisionTriangles& triangles, std::string_view path, const VSaveParams& params)
{
    ClearLastError();
    const std::string shownPath = ShownPath(path);
    try {
        VChunkedFile file;
        if (!file.Create(path, params.Streams)) {
            SetLastError(Format("Failed to create file '%s'", shownPath.c_str()));
            return false;
        }
        WriteFile(file, triangles);
        if (!file.Close()) {
            SetLastError(Format("Failed to write file '%s'", shownPath.c_str()));
            return false;
        }
    } catch (const std::bad_alloc&) {
        SetLastError(Format("Out of memory while writing file '%s'", shownPath.c_str()));
        return false;
    }
    return true;
}
