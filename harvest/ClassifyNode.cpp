#include "harvest/ClassifyNode.h"

#include <maya/MFnDagNode.h>
#include <maya/MStatus.h>

int ClassifyNode(const MDagPath& path)
{
    MStatus status;
    MFnDagNode dagNode(path, &status);
    if (!status)
        return NodeClassOther;
    if (path.hasFn(MFn::kJoint))
        return NodeClassJoint;
    if (dagNode.isIntermediateObject())
        return NodeClassIntermediate;
    if (path.hasFn(MFn::kNurbsSurface))
        return NodeClassNurbsSurface;
    if (path.hasFn(MFn::kMesh) && !path.hasFn(MFn::kTransform))
        return NodeClassMeshShape;
    return NodeClassOther;
}
