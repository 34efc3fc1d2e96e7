#pragma once
// A skin cluster's weights of one geometry, vertex by vertex.

#include <maya/MDagPath.h>
#include <maya/MFnSkinCluster.h>
#include <maya/MStatus.h>

#include <functional>

// Calls visit with each vertex's index and its weights, one per influence in influenceObjects order. Maya answers
// weights for vertices times influences at once, which for a million vertices and a hundred joints is most of a
// gigabyte, so they are asked for a block of vertices at a time. Stops at the first block Maya refuses and answers
// its status.
MStatus ForEachVertexWeights(const MFnSkinCluster& skin, const MDagPath& geometry,
                             const std::function<void(int vertex, const double* weights, unsigned int count)>& visit);
