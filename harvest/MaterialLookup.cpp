#include "harvest/MaterialLookup.h"

#include "harvest/ExportTexture.h"
#include "harvest/HarvestState.h"
#include "report/DebugFile.h"

#include <maya/MFnDependencyNode.h>
#include <maya/MPlug.h>
#include <maya/MPlugArray.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

MObject FindSetShader(const MObject& shadingSet)
{
    MStatus status;
    MFnDependencyNode set(shadingSet, &status);
    if (status) {
        MPlug surfaceShader = set.findPlug(MString("surfaceShader"), &status);
        MPlugArray sources;
        if (status && !surfaceShader.isNull() && surfaceShader.connectedTo(sources, true, false) &&
            sources.length() == 1)
            return sources[0].node();
    }
    DebugPrint("Error getting shader\r\n");
    return MObject();
}

bool MeshDoubleSidedFlag(const MDagPath& meshPath)
{
    MStatus status;
    MFnDependencyNode node(meshPath.node(), &status);
    MPlug plug;
    if (status)
        plug = node.findPlug(MString("doubleSided"), &status);
    if (!status || plug.isNull()) {
        DebugPrint("No doubleSided\r\n");
        return false;
    }
    int value = 0;
    return plug.getValue(value) && value > 0;
}

VMMaterial* LookupMaterial(HarvestState& state, VMMeshBase& container, const MObject& shader, uint8_t doubleSided)
{
    if (MaterialCacheRecord* record = state.Materials.Find(shader, doubleSided))
        return record->Material;
    MaterialCacheRecord record{shader, doubleSided, nullptr};
    if (!shader.isNull())
        record.Material = ExportTexture(state, container, record);
    state.Materials.Add(shader, doubleSided).Material = record.Material;
    return record.Material;
}
