#pragma once
// Writing a model's animations to its animation file (AnimationChunks.h gives the layout).

#include <string_view>

class VChunkStreamProvider;
class VMModel;

// Writes every bone animation, then every vertex animation; the model is numbered first (its
// bones, vertices and materials) and its skeleton's number becomes 0 once written. Nothing else
// changes: vertex deltas are written sorted by vertex number without reordering the model.
// False when the file cannot be made or written whole, the chunk file's last-error text saying
// why; the file is replaced only when it was written whole.
bool SaveAnimations(VMModel& model, std::string_view path, VChunkStreamProvider* streams = nullptr);
