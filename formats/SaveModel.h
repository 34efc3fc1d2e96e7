#pragma once
// Writing a skinned model to its model file (ModelChunks.h gives the layout).

#include "formats/SaveParams.h"

#include <string_view>

class VMModel;

// Writes the model, then its side files with the same path and flags (SaveSideFiles). The
// model is numbered (bones, vertices, materials) and otherwise left as it is: its vertices'
// tangents are written as they stand (ComputeModelTangents makes them for a model that has
// none), each vertex's influences strongest first. An empty box is written as the box of the
// vertex positions, an empty collision box as the box. Flag SaveFlagPosedModel writes each vertex
// posed by its bones' posed world transforms. Clears the last-error text first; on failure sets
// it ("Failed to create file '%s'" when the file cannot be made) and answers false. The file is
// replaced only when it was written whole.
bool SaveModel(VMModel& model, std::string_view path, const VSaveParams& params);
