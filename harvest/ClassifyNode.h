#pragma once

#include <maya/MDagPath.h>

enum VNodeClass : int {
    NodeClassOther = 0,
    NodeClassJoint = 1,
    NodeClassIntermediate = 2,
    NodeClassNurbsSurface = 3,
    NodeClassMeshShape = 4,
};

// The first of joint, intermediate object, NURBS surface, mesh shape that holds; NodeClassOther
// also when no DAG node function set attaches.
int ClassifyNode(const MDagPath& path);
