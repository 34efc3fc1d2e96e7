#include "harvest/BoneMatrix.h"

#include "harvest/EngineTransform.h"
#include "report/DebugFile.h"

#include <maya/MFnDependencyNode.h>
#include <maya/MFnMatrixData.h>
#include <maya/MItDependencyGraph.h>
#include <maya/MPlug.h>
#include <maya/MStatus.h>
#include <maya/MString.h>

namespace {

// Slightly negative rather than zero, so that a frame flattened by rounding is not flipped.
constexpr double kLeftHandedDeterminant = -0.001;

// The skin cluster that one "worldMatrix" element feeds, and the "matrix" index it enters by.
bool FindBindingSkinCluster(MPlug& worldMatrix, MObject& skinCluster, unsigned int& influenceIndex)
{
    MStatus status;
    MItDependencyGraph walk(worldMatrix, MFn::kSkinClusterFilter, MItDependencyGraph::kDownstream,
                            MItDependencyGraph::kDepthFirst, MItDependencyGraph::kPlugLevel, &status);
    if (!status)
        return false;
    walk.disablePruningOnFilter();
    for (; !walk.isDone(); walk.next()) {
        const MObject node = walk.thisNode();
        if (node.apiType() != MFn::kSkinClusterFilter)
            continue;
        skinCluster = node;
        influenceIndex = walk.thisPlug().logicalIndex();
        return true;
    }
    return false;
}

bool ReadInverseBindPreMatrix(const MObject& skinCluster, unsigned int influenceIndex, MMatrix& bind)
{
    MStatus status;
    MFnDependencyNode skin(skinCluster, &status);
    if (!status)
        return false;
    const MPlug bindPreMatrix = skin.findPlug(MString("bindPreMatrix"), &status);
    if (!status || bindPreMatrix.isNull())
        return false;
    const MPlug element = bindPreMatrix.elementByLogicalIndex(influenceIndex, &status);
    MObject data;
    if (!status || !element.getValue(data))
        return false;
    MFnMatrixData matrix(data, &status);
    if (!status)
        return false;
    bind = matrix.matrix().inverse();
    return true;
}

}

MMatrix BindMatrix(const MDagPath& joint)
{
    MStatus status;
    MFnDependencyNode node(joint.node(), &status);
    const MPlug worldMatrix = status ? node.findPlug(MString("worldMatrix"), &status) : MPlug();
    if (status && !worldMatrix.isNull()) {
        const unsigned int elements = worldMatrix.numElements();
        for (unsigned int i = 0; i < elements; ++i) {
            MPlug element = worldMatrix.elementByPhysicalIndex(i, &status);
            MObject skinCluster;
            unsigned int influenceIndex = 0;
            if (!status || !FindBindingSkinCluster(element, skinCluster, influenceIndex))
                continue;
            DebugPrint("Using SkinCluster: %s\r\n", MFnDependencyNode(skinCluster).name().asChar());
            MMatrix bind;
            if (ReadInverseBindPreMatrix(skinCluster, influenceIndex, bind))
                return bind;
            break;
        }
    }
    DebugPrint("Using worlspace matrix\r\n");
    return joint.inclusiveMatrix();
}

VMTransform BoneMatrix(const MDagPath& joint, bool useBindMatrix)
{
    VMTransform bone = FrameInEngineAxes(useBindMatrix ? BindMatrix(joint) : joint.inclusiveMatrix());
    OrthonormaliseAxes(bone);
    const float* x = bone.M;
    const float* y = bone.M + 3;
    float* z = bone.M + 6;
    const double determinant = static_cast<double>(x[0]) * (y[1] * z[2] - y[2] * z[1]) -
                               static_cast<double>(x[1]) * (y[0] * z[2] - y[2] * z[0]) +
                               static_cast<double>(x[2]) * (y[0] * z[1] - y[1] * z[0]);
    if (determinant < kLeftHandedDeterminant)
        for (int i = 0; i < 3; ++i)
            z[i] = -z[i];
    return bone;
}
