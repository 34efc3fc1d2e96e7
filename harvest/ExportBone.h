#pragma once
// One Maya joint into one bone of the model's skeleton. The scene walk visits parents before
// children, so a joint's parent bone exists by the time the joint is exported.

#include <maya/MDagPath.h>

#include <cstdint>

struct HarvestState;
class VMBone;
struct VMSkeleton;
class VMModel;

enum VExportBoneFlags : uint32_t {
    // The bone's matrix is the world matrix the joint was bound with, not its current one.
    ExportBoneBindMatrix = 1,
};

// Makes the bone (named after the joint's node, with its full path) under the bone of the
// nearest ancestor joint; groups and other transforms between joints are passed over. The first
// bone becomes the root. A second joint of an existing name raises "Multiple bones with same
// name" and is made all the same. Answers 0, or -1 when the path is no joint.
int ExportBone(HarvestState& state, const MDagPath& joint, VMModel& model, uint32_t flags);

// The first bone of that name in skeleton order (exact, case-sensitive), null when none.
VMBone* FindBoneByName(const VMSkeleton& skeleton, const char* name);
