#pragma once
// Triangulation of a model's faces, right after harvesting, so that every later pass sees
// triangles only.

class VMModel;

// Replaces every face of more than 3 corners by the triangles of the polygon split rule
// (SplitCorners, corner limit 3), each with the source face's material: the other faces keep
// their order and the triangles follow them, in the order of their source faces. Answers 0, or
// -301 when memory runs out (the faces split so far stay split, the rest whole).
int TessellateFaces(VMModel& model);
