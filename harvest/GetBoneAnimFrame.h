#pragma once
// The skeleton's pose at Maya's current time, as one frame of a bone animation.

#include "model/VMAnimFrame.h"

#include <memory>
#include <string>
#include <unordered_map>

struct HarvestState;
class VMBone;
struct VMSkeleton;

class BonePoseSampler {
public:
    // Looks the model's bones up once by their joints' full path names, so that every frame costs
    // one walk of the scene and not one per bone.
    BonePoseSampler(const HarvestState& state, const VMSkeleton* skeleton);

    // GetBoneAnimFrame: walks the DAG breadth first and, with ExportBones on, gives every joint
    // that has a bone (intermediate objects passed over) its current world matrix in engine axes,
    // orthonormal and right-handed, under the bone's number; then closes the frame, which makes
    // the local transforms. Room is made for 256 bones, or for all of a larger skeleton. Null
    // when the DAG cannot be walked.
    std::unique_ptr<VMAnimFrame> Sample() const;

private:
    std::unordered_map<std::string, VMBone*> m_bones;
    bool m_exportBones = false;
    int m_capacity = VMAnimFrame::SampledCapacity;
};

// The frame's transforms become the posed transforms of the bones it holds.
void PoseBones(const VMAnimFrame& frame);
