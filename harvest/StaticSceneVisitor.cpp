#include "harvest/StaticSceneVisitor.h"

#include "harvest/EngineTransform.h"
#include "harvest/ExportLight.h"
#include "harvest/ExportMesh.h"
#include "harvest/ExportPortal.h"
#include "harvest/HarvestState.h"
#include "harvest/NodeAttributes.h"
#include "harvest/ShouldSkipNode.h"
#include "model/VMWorld.h"
#include "report/DebugFile.h"

#include <maya/MString.h>

#include <functional>

bool StaticSceneVisitor::VisitNode(const MDagPath& path)
{
    return !ShouldSkipNode(path) && CollectNode(path);
}

bool StaticSceneVisitor::CollectNode(const MDagPath& path)
{
    const VExportOptions& options = m_state.Parameters.Options;
    if (options.ExportLights && path.hasFn(MFn::kLight) && path.hasFn(MFn::kTransform)) {
        Lights.push_back(path);
        return true;
    }
    if (path.hasFn(MFn::kNurbsSurface)) {
        DebugPrint("Skipping NURBS surface\r\n");
        return true;
    }
    if (path.hasFn(MFn::kMesh) && !path.hasFn(MFn::kTransform)) {
        int32_t exportAs = 0;
        GetNodeIntAttribute(MString("ExportAs"), path, exportAs);
        if (exportAs == 0) {
            DebugPrint("Exporting world mesh\r\n");
            WorldMeshes.push_back(path);
            if (!PlacementTaken && options.CenterMethod == 4) {
                Placement = PlacementFromNode(path);
                PlacementTaken = 1;
            }
        } else if (exportAs == 2) {
            DebugPrint("Exporting as portal\r\n");
            Portals.push_back(path);
        }
    }
    return true;
}

void StaticSceneVisitor::Reset()
{
    std::vector<MDagPath>().swap(WorldMeshes);
    std::vector<MDagPath>().swap(Lights);
    std::vector<MDagPath>().swap(Portals);
}

namespace {

void ExportNodes(const char* countLine, const char* okLine, const char* errorLine,
                 const std::vector<MDagPath>& nodes, const std::function<bool(const MDagPath&)>& exportNode)
{
    DebugPrint(countLine, static_cast<int>(nodes.size()));
    for (size_t i = 0; i < nodes.size(); ++i)
        DebugPrint(exportNode(nodes[i]) ? okLine : errorLine, static_cast<int>(i));
}

}

bool GetMeshes(HarvestState& state, VMWorld& world, const StaticSceneVisitor& visitor)
{
    state.RunningVertexBase = 0;
    state.RunningPolygonCount = 0;
    DebugPrint("GetMeshes()\n");
    ExportNodes("#meshnodes=%i\r\n", "%i. OK.\r\n", "%i.  Error.\r\n", visitor.WorldMeshes,
                [&](const MDagPath& path) { return ExportMesh(state, path, world, 0); });
    ExportNodes("#lights=%i\r\n", "%i  OK.\r\n", "%i  Error.\r\n", visitor.Lights,
                [&](const MDagPath& path) {
                    std::unique_ptr<VMLight> light = ExportLight(path, state.Parameters.Options.LightScale);
                    return light && world.Lights.Add(std::move(light)) == 0;
                });
    ExportNodes("#portals=%i\r\n", "%i  OK.\r\n", "%i  Error.\r\n", visitor.Portals,
                [&](const MDagPath& path) { return ExportPortal(path, world, state.VisBuilder) == 1; });
    return true;
}
