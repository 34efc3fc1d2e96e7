#include "harvest/CountTriangles.h"

#include "harvest/ClassifyNode.h"
#include "harvest/HarvestState.h"
#include "harvest/IsNodeVisible.h"
#include "harvest/MeshAccess.h"
#include "report/DebugFile.h"
#include "report/LogWindow.h"

#include <maya/MPoint.h>

#include <algorithm>

bool TriangleCounter::VisitNode(const MDagPath& path)
{
    PrecalcStats& stats = m_state.Stats;
    switch (ClassifyNode(path)) {
    case NodeClassJoint:
        if (stats.JointCount == 0)
            stats.FirstJoint = path;
        ++stats.JointCount;
        break;
    case NodeClassMeshShape: {
        const int verticesBefore = stats.VertexCount;
        const int triangles = CountMeshTriangles(m_state, path);
        stats.TriangleCount += std::max(triangles, 0);
        DebugPrint("Mesh: %d faces, %d vertices\r\n", triangles, stats.VertexCount - verticesBefore);
        ++stats.MeshNodeCount;
        break;
    }
    default:
        break;
    }
    return true;
}

int CountMeshTriangles(HarvestState& state, const MDagPath& path)
{
    if (!IsNodeVisible(path))
        return 0;
    MeshAccess access;
    if (!OpenMeshAccess(access, path, true))
        return -1;
    PrecalcStats& stats = state.Stats;
    for (MItMeshVertex& vertices = *access.Vertices; !vertices.isDone(); vertices.next()) {
        const MPoint p = access.WorldPosition();
        const float position[3] = {static_cast<float>(p.x), static_cast<float>(p.y), static_cast<float>(p.z)};
        for (int i = 0; i < 3; ++i) {
            stats.Min[i] = std::min(stats.Min[i], position[i]);
            stats.Max[i] = std::max(stats.Max[i], position[i]);
        }
        ++stats.VertexCount;
    }
    int triangles = 0;
    for (MItMeshPolygon& polygons = *access.Polygons; !polygons.isDone(); polygons.next())
        triangles += static_cast<int>(polygons.polygonVertexCount()) - 2;
    return triangles;
}

int CountTriangles(HarvestState& state)
{
    LogPrint("Precalculation phase...\r\n");
    DebugPrint("\r\n***\r\n*** Precalculation Phase\r\n***\r\n\r\n");
    state.Stats.InPrecalculation = 1;
    TriangleCounter counter(state);
    counter.Iterate(MDagPath(), state.Parameters.SelectionOnly, state.Parameters.Recurse);
    state.Stats.InPrecalculation = 0;
    return 0;
}
