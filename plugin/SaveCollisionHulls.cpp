#include "plugin/SaveCollisionHulls.h"

#include "formats/SaveCollisionMesh.h"
#include "geometry/CollisionHulls.h"
#include "harvest/MeshNodeTable.h"
#include "report/KestrelReportMessage.h"
#include "report/VIssueKind.h"

#include <new>

bool SaveCollisionHulls(const VMWorld& world, const MeshNodeTable& nodes, const std::string& path,
                        const VSaveParams& params)
{
    VCollisionTriangles triangles;
    try {
        // A world the plain collision file refuses is refused with the same words.
        if (!CollectCollisionTriangles(world, triangles))
            return SaveCollisionMesh(world, path, params);
        for (uint32_t object : ReplaceByConvexHulls(triangles.Positions, triangles.Indices, triangles.Objects)) {
            // Source node numbers count the mesh-node table from 1.
            const int entry = static_cast<int>(object) - 1;
            ModuleReport().AddIssue(IssueCollisionObjectWithoutVolume,
                                    entry >= 0 && entry < nodes.Count() ? nodes[entry].Name : std::string());
        }
        DropUnusedPositions(triangles);
    } catch (const std::bad_alloc&) {
        ModuleReport().AddIssue(IssueOutOfMemory, "SaveCollisionMesh: convex hulls");
        return false;
    }
    return SaveCollisionMesh(triangles, path, params);
}
