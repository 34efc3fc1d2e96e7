#include "harvest/ShouldSkipNode.h"

#include "harvest/IsNodeVisible.h"
#include "harvest/NodeAttributes.h"
#include "report/DebugFile.h"

#include <maya/MFnDagNode.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

#include <cstdint>

namespace {

void LogNodeHeader(const MDagPath& path)
{
    const MObject node = path.node();
    DebugPrint("<Node: %s=%s\r\n", GetNodeName(node).c_str(), node.apiTypeStr());
    DebugPrint("hasFn( ");
    static constexpr struct {
        MFn::Type Type;
        const char* Name;
    } kReported[] = {
        {MFn::kTransform, "kTransform "}, {MFn::kJoint, "kJoint "},
        {MFn::kMesh, "kMesh "},           {MFn::kLight, "kLight "},
        {MFn::kNurbsSurface, "kNurbsSurface "}, {MFn::kNurbsCurve, "kNurbsCurve "},
    };
    for (const auto& fn : kReported)
        if (path.hasFn(fn.Type))
            DebugPrint("%s", fn.Name);
    DebugPrint(")\r\n");
}

bool IsIntermediate(const MDagPath& path)
{
    MStatus status;
    MFnDagNode dagNode(path, &status);
    return status && dagNode.isIntermediateObject();
}

}

bool ShouldSkipNode(const MDagPath& path)
{
    LogNodeHeader(path);

    // A transform's flag covers its subtree through the walk; only a shape falls back to its
    // transform, so a shape can be exported alone by clearing its own flag.
    int32_t exportSkip = 0;
    if (path.hasFn(MFn::kTransform))
        GetOwnIntAttribute(MString("ExportSkip"), path, exportSkip);
    else
        GetNodeIntAttribute(MString("ExportSkip"), path, exportSkip);
    if (exportSkip != 0) {
        DebugPrint("Skipping ignored object>\r\n");
        return true;
    }
    if (IsIntermediate(path)) {
        DebugPrint("Skipping intermediate object>\r\n");
        return true;
    }
    if (!IsNodeVisible(path)) {
        DebugPrint("Skipping invisible object>\r\n");
        return true;
    }
    DebugPrint(">\r\n");
    return false;
}
