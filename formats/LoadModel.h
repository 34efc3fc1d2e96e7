#pragma once
// Reading a model file (ModelChunks.h) back into a VMModel: for the plug-in's model import and
// for "kestrel info".
//
// Every size and count is checked against the chunk that holds it before anything is allocated
// or read, and every vertex, bone and material number against what was read before it. Chunks
// the reader does not know are skipped; so is a bone box chunk (BBBX, or the older BBOX) whose
// bone count differs from the skeleton's. Material chunks of versions 0 to 2 are read.

#include <string_view>

class VChunkStreamProvider;
class VMModel;

// Replaces the model's contents by the file's: skeleton (global transforms from the stored
// inverses, local ones as stored, parents only among earlier bones), bone masks, materials,
// vertices (ID links from their numbers), triangles, weights (through AttachVertex), bone boxes
// and bounds (the radius as the visibility radius, the second box as the collision box); then
// numbers the model. Answers false with the last-error text set ("Failed to open file '%s'" ...
// or "File '%s' is not a readable model file: ...") and an empty model when the file cannot be
// read whole.
bool LoadModel(VMModel& model, std::string_view path, VChunkStreamProvider* provider = nullptr);
