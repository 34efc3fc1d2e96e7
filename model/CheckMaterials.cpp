#include "model/CheckMaterials.h"

#include "model/ReplaceMaterial.h"
#include "model/VMModel.h"
#include "model/VMWorld.h"

#include <algorithm>
#include <vector>

namespace {

template <class Container>
int DropUnused(Container& container)
{
    std::vector<const VMMaterial*> dropped;
    for (int i = 0; i < container.Materials.Count(); ++i) {
        const VMMaterial* material = container.Materials[i];
        if (material != nullptr && material->UseCount == 0)
            dropped.push_back(material);
    }
    if (dropped.empty())
        return 0;

    // Vertex links do not count as uses, so they may still name a dropped material.
    std::sort(dropped.begin(), dropped.end());
    for (auto* vertex : container.Vertices)
        if (vertex != nullptr && std::binary_search(dropped.begin(), dropped.end(), vertex->MaterialLink))
            vertex->MaterialLink = nullptr;

    for (int i = 0; i < container.Materials.Count(); ++i) {
        const VMMaterial* material = container.Materials[i];
        if (material != nullptr && material->UseCount == 0)
            container.Materials.RemoveLeaveEmpty(i);
    }
    container.Materials.Compact();
    return static_cast<int>(dropped.size());
}

template <class Container>
int MergeEqualMaterials(Container& container)
{
    int merged = 0;
    for (int a = 0; a < container.Materials.Count(); ++a) {
        VMMaterial* kept = container.Materials[a];
        if (kept == nullptr)
            continue;
        int b = a + 1;
        while (b < container.Materials.Count()) {
            VMMaterial* duplicate = container.Materials[b];
            if (duplicate != nullptr && IsSameMaterial(*kept, *duplicate)) {
                ReplaceMaterial(container, duplicate, kept);
                container.Materials.Remove(b);
                ++merged;
            } else {
                ++b;
            }
        }
    }
    return merged;
}

template <class Container>
int CheckContainerMaterials(Container& container)
{
    const int dropped = DropUnused(container);
    return dropped + MergeEqualMaterials(container);
}

} // namespace

int CheckMaterials(VMWorld& world)
{
    return CheckContainerMaterials(world);
}

int CheckMaterials(VMModel& model)
{
    return CheckContainerMaterials(model);
}

int DropUnusedMaterials(VMModel& model)
{
    return DropUnused(model);
}
