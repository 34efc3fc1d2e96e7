#pragma once
// The skeleton (SKEL) and bone mask (BMSK) chunks, which the model file and the animation file
// both carry (ModelChunks.h gives their layout), so that an animation file can be read without
// its model.

#include "formats/chunk/VChunkedFile.h"

#include <memory>
#include <vector>

class ChunkByteWriter;
struct VMBoneMask;
struct VMSkeleton;
struct VMTransform;

void PutFloats(ChunkByteWriter& out, const float* values, int count);
// Translation (3 f32), then the rotation as a unit quaternion x, y, z, w (4 f32).
void PutTransform(ChunkByteWriter& out, const VMTransform& transform);

// The skeleton in list order; each bone's parent is named by its number, so the bones must be
// numbered (VMSkeleton::Enumerate) before.
bool WriteSkeletonChunk(VChunkedFile& file, const VMSkeleton& skeleton);
// Writes nothing for an empty list.
bool WriteBoneMaskChunk(VChunkedFile& file, const std::vector<VMBoneMask>& masks);

// Reads the open SKEL chunk into a new skeleton: parents only among earlier bones, global
// transforms from the stored inverses. Null when read; else the problem.
const char* ReadSkeletonChunk(VChunkedFile& file, std::unique_ptr<VMSkeleton>& skeleton);
// Reads the open BMSK chunk, appending its masks. Null when read; else the problem.
const char* ReadBoneMaskChunk(VChunkedFile& file, std::vector<VMBoneMask>& masks);
