#include "geometry/ResortBones.h"

#include "base/TextUtil.h"
#include "model/VMSkeleton.h"

#include <algorithm>
#include <unordered_set>
#include <vector>

namespace {

bool NameBefore(const VMBone* a, const VMBone* b)
{
    return CompareNoCase(a->Name, b->Name) < 0;
}

void SortByName(VPListT<VMBone>& bones)
{
    std::vector<VMBone*> sorted(bones.begin(), bones.end());
    std::stable_sort(sorted.begin(), sorted.end(), NameBefore);
    for (int i = 0; i < static_cast<int>(sorted.size()); ++i)
        bones.Set(i, sorted[static_cast<size_t>(i)]);
}

// Appends the children of bone as one block, then the blocks below each child in turn.
void AppendSubtree(VMBone* root, std::vector<VMBone*>& order)
{
    std::vector<VMBone*> pending {root};
    while (!pending.empty()) {
        VMBone* bone = pending.back();
        pending.pop_back();
        order.insert(order.end(), bone->Children.begin(), bone->Children.end());
        for (int i = bone->Children.Count() - 1; i >= 0; --i)
            pending.push_back(bone->Children[i]);
    }
}

} // namespace

void ResortBones(VMSkeleton& skeleton)
{
    std::vector<VMBone*> roots;
    for (VMBone* bone : skeleton.Bones) {
        if (bone == nullptr)
            continue;
        SortByName(bone->Children);
        if (bone->Parent == nullptr)
            roots.push_back(bone);
    }
    std::stable_sort(roots.begin(), roots.end(), NameBefore);

    std::vector<VMBone*> order = roots;
    for (VMBone* root : roots)
        AppendSubtree(root, order);

    skeleton.Bones.Rearrange([&](std::vector<VMBone*>& bones) {
        const std::unordered_set<const VMBone*> listed(bones.begin(), bones.end());
        std::unordered_set<const VMBone*> placed;
        std::vector<VMBone*> result;
        result.reserve(bones.size());
        for (VMBone* bone : order) {
            if (listed.count(bone) != 0 && placed.insert(bone).second)
                result.push_back(bone);
        }
        for (VMBone* bone : bones) {
            if (placed.insert(bone).second)
                result.push_back(bone);
        }
        bones.swap(result);
    });
    uint32_t position = 0;
    for (VMBone* bone : skeleton.Bones)
        if (bone != nullptr)
            bone->SortIndex = position++;
}
