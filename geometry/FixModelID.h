#pragma once
// ID vertices of a model: skin vertices at one position are linked to the first of them, so
// that the model file can tell the engine which corners are one point of the surface.

class VMModel;

// Numbers the bones, vertices and materials by list position, clears every ID link, then links
// each vertex whose position equals exactly (float equality, so never for NaN) that of a
// lower-numbered vertex to the lowest-numbered such vertex; that first vertex keeps a null link.
// Answers 0, or -301 when memory runs out (the links are then all clear).
int FixModelID(VMModel& model);
