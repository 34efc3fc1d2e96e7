#include "geometry/RemoveDeadBones.h"

#include "model/VMSkeleton.h"

#include <unordered_map>

namespace {

bool IsDead(const VMBone& bone)
{
    return bone.Anchored == 0 && bone.Children.IsEmpty() && bone.Vertices.empty();
}

struct Visit {
    VMBone* Bone;
    bool ChildrenDone;
};

} // namespace

void RemoveDeadBones(VMSkeleton& skeleton, std::vector<std::unique_ptr<VMBone>>& pruned)
{
    std::unordered_map<const VMBone*, int> positions;
    for (int i = 0; i < skeleton.Bones.Count(); ++i)
        positions.emplace(skeleton.Bones[i], i);

    // Post-order with an explicit stack: a rig imported from a file may be one long chain.
    std::vector<Visit> stack;
    for (int i = skeleton.Bones.Count() - 1; i >= 0; --i) {
        VMBone* root = skeleton.Bones[i];
        if (root == nullptr || root->Parent != nullptr)
            continue;
        stack.push_back({root, false});
        while (!stack.empty()) {
            Visit& top = stack.back();
            VMBone* bone = top.Bone;
            if (!top.ChildrenDone) {
                top.ChildrenDone = true;
                // Pushed first to last, so that the last child is pruned first.
                for (VMBone* child : bone->Children)
                    stack.push_back({child, false});
                continue;
            }
            stack.pop_back();
            const auto position = positions.find(bone);
            if (position == positions.end() || !IsDead(*bone))
                continue;
            if (bone->Parent != nullptr)
                bone->Parent->Children.RemoveItem(bone);
            if (skeleton.Root == bone)
                skeleton.Root = nullptr;
            pruned.push_back(skeleton.Bones.TakeLeaveEmpty(position->second));
            positions.erase(position);
        }
    }
    skeleton.Bones.Compact();
}
