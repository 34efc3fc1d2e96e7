#pragma once
// Translate, rotate (order xyz) and scale of a Maya transform without pivots, whose matrix is [S] [R] [T] in
// Maya's row-vector convention. Shear cannot be expressed and is dropped.

#include "importers/SceneRecord.h"

#include <maya/MMatrix.h>
#include <maya/MVector.h>

MMatrix ComposeTransform(const RecordTransform& transform);
RecordTransform DecomposeTransform(const MMatrix& matrix);
// Of the Euler triples that give the same rotation as euler, the one closest to previous, so that curves through
// successive keys do not jump by a turn or flip through the other solution.
MVector NearestEuler(const MVector& euler, const MVector& previous);
