#include "harvest/ForEachVertexWeights.h"

#include <maya/MDoubleArray.h>
#include <maya/MFnSingleIndexedComponent.h>
#include <maya/MItGeometry.h>

#include <algorithm>

namespace {

constexpr int kBlockVertices = 4096;

}

MStatus ForEachVertexWeights(const MFnSkinCluster& skin, const MDagPath& geometry,
                             const std::function<void(int vertex, const double* weights, unsigned int count)>& visit)
{
    const int vertexCount = MItGeometry(geometry).count();
    MDoubleArray weights;
    for (int first = 0; first < vertexCount; first += kBlockVertices) {
        const int last = std::min(vertexCount, first + kBlockVertices);
        MFnSingleIndexedComponent fnBlock;
        const MObject block = fnBlock.create(MFn::kMeshVertComponent);
        for (int v = first; v < last; ++v)
            fnBlock.addElement(v);
        unsigned int influenceCount = 0;
        const MStatus status = skin.getWeights(geometry, block, weights, influenceCount);
        if (!status)
            return status;
        for (int v = first; v < last; ++v) {
            const unsigned int offset = static_cast<unsigned int>(v - first) * influenceCount;
            const bool complete = offset + influenceCount <= weights.length() && influenceCount > 0;
            visit(v, complete ? &weights[offset] : nullptr, complete ? influenceCount : 0);
        }
    }
    return MS::kSuccess;
}
