#include "geometry/lightmap/GenerateLightmapUVs.h"

#include "geometry/FixID.h"
#include "geometry/lightmap/CreateUVAtlas.h"
#include "model/VMWorld.h"
#include "report/VGLogger.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <unordered_map>
#include <vector>

namespace {

constexpr int AtlasFailed = -2160;
constexpr int OutOfMemory = -301;
// The atlas keeps this many empty texels between charts.
constexpr int GutterTexels = 5;

// Every polygon a triangle of the world's own vertices with a listed material, and nothing
// else that refers to vertices: the pass rebuilds the vertex list from the polygons alone.
bool CanUnwrap(VMWorld& world)
{
    if (!world.TriLists.IsEmpty() || !world.Patches.IsEmpty() || !world.Heightfields.IsEmpty())
        return false;
    std::unordered_map<const VMMaterial*, int> listed;
    for (const VMMaterial* material : world.Materials)
        listed.emplace(material, 0);
    // A corner is one of the world's vertices when the list holds it at the place its index
    // names; the indices are numbered for the look-up and given back after.
    if (world.Vertices.HasEmptySlots())
        return false;
    std::vector<uint32_t> indices;
    indices.reserve(static_cast<size_t>(world.Vertices.Count()));
    uint32_t place = 0;
    for (VMVertex* vertex : world.Vertices) {
        indices.push_back(vertex->Index);
        vertex->Index = place++;
    }
    const auto owned = [&world](const VMVertex* corner) {
        return corner != nullptr && world.Vertices.Get(static_cast<int>(corner->Index)) == corner;
    };
    bool unwrappable = true;
    for (const VMPolygon* polygon : world.Polygons) {
        if (polygon == nullptr || polygon->CornerCount() != 3 || !listed.contains(polygon->Material()) ||
            !std::all_of(polygon->Corners.begin(), polygon->Corners.end(), owned)) {
            unwrappable = false;
            break;
        }
    }
    place = 0;
    for (VMVertex* vertex : world.Vertices)
        vertex->Index = indices[place++];
    return unwrappable;
}

// One material's share of the old lists: its triangles in world order and their distinct
// vertices in order of first use, each vertex's index field set to its place in that list.
struct MaterialMesh {
    std::vector<VMPolygon*> Triangles;
    std::vector<VMVertex*> Vertices;
    std::vector<float> Positions;
    std::vector<uint32_t> Indices;
};

void Collect(const std::vector<VMPolygon*>& triangles, uint32_t stamp, MaterialMesh& mesh)
{
    mesh.Triangles = triangles;
    for (VMPolygon* triangle : triangles) {
        for (VMVertex* corner : triangle->Corners) {
            if (corner->State != stamp) {
                corner->State = stamp;
                corner->Index = static_cast<uint32_t>(mesh.Vertices.size());
                mesh.Vertices.push_back(corner);
                mesh.Positions.insert(mesh.Positions.end(), std::begin(corner->Position), std::end(corner->Position));
            }
            mesh.Indices.push_back(corner->Index);
        }
    }
}

// The atlas's vertices and triangles join the world; each new triangle takes the place of the
// old one in its vis areas.
int AddUnwrapped(VMWorld& world, VMMaterial* material, const MaterialMesh& mesh, const UVAtlas& atlas)
{
    const int firstVertex = world.Vertices.Count();
    for (size_t v = 0; v < atlas.VertexRemap.size(); ++v) {
        std::unique_ptr<VMVertex> copy = VMWorld::NewVertexCopy(*mesh.Vertices[atlas.VertexRemap[v]]);
        if (!copy)
            return OutOfMemory;
        copy->MergeLink = nullptr;
        // A vertex that two materials shared belonged to whichever claimed it last; each copy
        // belongs to the material whose triangles use it.
        copy->MaterialLink = material;
        copy->SecondUV[0] = atlas.UVs[2 * v];
        copy->SecondUV[1] = atlas.UVs[2 * v + 1];
        if (world.Vertices.Add(std::move(copy)) != 0)
            return OutOfMemory;
    }
    for (size_t t = 0; t < mesh.Triangles.size(); ++t) {
        VMPolygon& old = *mesh.Triangles[t];
        const auto corner = [&](size_t k) { return world.Vertices.Get(firstVertex + static_cast<int>(atlas.Indices[3 * t + k])); };
        std::unique_ptr<VMPolygon> triangle = VMWorld::NewTriangle(corner(0), corner(1), corner(2));
        if (!triangle)
            return OutOfMemory;
        triangle->CopySplitAttributesFrom(old);
        // The owner list shrinks as each area lets the old triangle go.
        while (!old.Owners.IsEmpty())
            old.Owners.Get(0)->ReplacePolygon(old, *triangle);
        if (world.Polygons.Add(std::move(triangle)) != 0)
            return OutOfMemory;
    }
    return 0;
}

void Log(VGLogger* logger, const char* text)
{
    if (logger)
        logger->Print("%s", text);
}

} // namespace

int GenerateLightmapUVs(VMWorld& world, int atlasSize, float maxStretch, VGLogger* logger)
{
    if (world.Polygons.IsEmpty() || world.Vertices.IsEmpty())
        return 0;
    if (!CanUnwrap(world))
        return -1;

    int result = 0;
    try {
        std::vector<std::unique_ptr<VMVertex>> oldVertices = world.Vertices.TakeAll();
        std::vector<std::unique_ptr<VMPolygon>> oldPolygons = world.Polygons.TakeAll();
        for (const auto& vertex : oldVertices)
            vertex->State = 0;
        const int materialCount = world.Materials.Count();
        std::unordered_map<const VMMaterial*, size_t> materialNumber;
        for (int m = 0; m < materialCount; ++m)
            materialNumber.emplace(world.Materials.Get(m), static_cast<size_t>(m));
        std::vector<std::vector<VMPolygon*>> trianglesOf(static_cast<size_t>(materialCount));
        for (const auto& polygon : oldPolygons)
            trianglesOf[materialNumber.at(polygon->Material())].push_back(polygon.get());

        const UVAtlasParams params {atlasSize, maxStretch, GutterTexels};
        for (int m = 0; m < materialCount && result != OutOfMemory; ++m) {
            if (logger)
                logger->Print("Processing material: %s (%i/%i)\r\n", world.Materials.Get(m)->Name.c_str(), m, materialCount);
            MaterialMesh mesh;
            Collect(trianglesOf[static_cast<size_t>(m)], static_cast<uint32_t>(m) + 1, mesh);
            if (mesh.Triangles.empty())
                continue;
            Log(logger, "Creating mesh\r\n");
            Log(logger, "AtlasCreate\n");
            UVAtlas atlas;
            if (CreateUVAtlas(mesh.Positions, mesh.Indices, params, atlas) != 0) {
                if (logger)
                    logger->Warning("AtlasCreate failed! Skipping material!\r\n");
                result = AtlasFailed;
                continue;
            }
            if (AddUnwrapped(world, world.Materials.Get(m), mesh, atlas) != 0)
                result = OutOfMemory;
        }
    } catch (const std::bad_alloc&) {
        result = OutOfMemory;
    }

    world.Enumerate();
    Log(logger, "Done");
    world.HasSecondUV = 1;
    const int links = FixID(world, 0.0f);
    return links == OutOfMemory ? OutOfMemory : result;
}
