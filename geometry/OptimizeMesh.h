#pragma once
// Merging skin vertices that are identical in every respect, their animation included. Unlike
// welding nothing moves: two vertices merge only when nothing the engine could see tells them
// apart.
//
// Two vertices are identical when, all with zero tolerance (float equality: -0 equals +0, a NaN
// equals nothing): their positions, base and second UV pairs, normals, tangents and colours are
// equal; they have as many influences and each has exactly the other's (bone, weight) pairs;
// and in every vertex track of every animation both carry equal positions and normals, a vertex
// without an entry in a track counting with its own position and normal.

class VMModel;

// Every vertex identical to an earlier one is merged into the first of them: faces use the
// survivor instead, the vertex's bones and vertex-track entries let it go, and the vertex is
// destroyed; the other vertices keep their order. Then every vertex's weights are normalised,
// the ID links rebuilt (FixModelID) and bones, vertices and materials numbered. Identical
// vertices lie at one position, so any epsVert >= 0 finds them all; a negative or NaN epsVert
// merges nothing. Progress goes to GeometryLog. Answers 0, or -301 when memory runs out before
// anything was merged.
int OptimizeMesh(VMModel& model, float epsVert);
