#include "harvest/ModelMeshExporter.h"

#include "harvest/EngineTransform.h"
#include "harvest/ExportBone.h"
#include "harvest/ExportMesh.h"
#include "harvest/HarvestState.h"
#include "harvest/NodeAttributes.h"
#include "harvest/ShouldSkipNode.h"
#include "model/VMModel.h"
#include "report/DebugFile.h"

#include <maya/MString.h>

#include <cmath>

ModelMeshExporter::ModelMeshExporter(HarvestState& state, VMModel& model, uint32_t flags)
    : m_state(state), m_model(model), m_flags(flags)
{
}

bool ModelMeshExporter::VisitNode(const MDagPath& path)
{
    if (ShouldSkipNode(path))
        return false;
    if (path.hasFn(MFn::kJoint)) {
        if (m_state.Parameters.Options.ExportBones)
            ExportBone(m_state, path, m_model, m_flags);
        return true;
    }
    if (path.hasFn(MFn::kNurbsSurface)) {
        DebugPrint("Skipping NURBS surface\n");
        return true;
    }
    if (path.hasFn(MFn::kMesh) && !path.hasFn(MFn::kTransform)) {
        int32_t exportAs = 0;
        GetNodeIntAttribute(MString("ExportAs"), path, exportAs);
        if (exportAs == 1) {
            ModelBoundsNode(m_state, path);
        } else {
            DebugPrint("Exporting model mesh\r\n");
            ExportMesh(m_state, path, m_model, m_flags);
        }
    }
    return true;
}

void ModelBoundsNode(HarvestState& state, const MDagPath& path)
{
    const VMTransform world = ToEngineTransform(path.inclusiveMatrix());
    const float* p = world.Translation();
    const float unit = static_cast<float>(state.Parameters.UnitFactor);
    ModelBoundsBox& box = state.ModelBounds;
    for (int row = 0; row < 3; ++row) {
        const float a = world.At(row, 0);
        const float b = world.At(row, 1);
        const float c = world.At(row, 2);
        const float half = 0.5f * std::sqrt(a * a + b * b + c * c);
        box.Min[row] = p[row] - half * unit;
        box.Max[row] = p[row] + half * unit;
    }
    box.BoxGiven = 1;
    DebugPrint("Using node '%s' for model bounding box (%f,%f,%f)-(%f,%f,%f)\r\n", path.partialPathName().asChar(),
               box.Min[0], box.Min[1], box.Min[2], box.Max[0], box.Max[1], box.Max[2]);
}

bool GetMeshes(HarvestState& state, VMModel& model, uint32_t flags, const MDagPath& root)
{
    DebugPrint("GetMeshes()\n");
    state.RunningVertexBase = 0;
    state.RunningPolygonCount = 0;
    ModelMeshExporter exporter(state, model, flags);
    exporter.Iterate(root, state.Parameters.SelectionOnly, state.Parameters.Recurse);
    return true;
}
