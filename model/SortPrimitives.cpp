#include "model/SortPrimitives.h"

#include "model/VMWorld.h"

#include <algorithm>
#include <cstdint>
#include <new>
#include <utility>
#include <vector>

namespace {

using KeyedPrimitive = std::pair<int32_t, VMPrimitive*>;

int32_t SortKey(const VMPrimitive& primitive)
{
    const VMMaterial* material = primitive.Material();
    const uint32_t materialNumber = material != nullptr ? static_cast<uint32_t>(material->Index) : 0u;
    const uint32_t areaNumber = primitive.Owners.IsEmpty() ? 0u : static_cast<uint32_t>(primitive.Owners[0]->Index);
    // Wraps like the 32-bit key it is; the comparison is signed.
    return static_cast<int32_t>(materialNumber + 65536u * areaNumber);
}

template <class T>
void SortByKey(VMOwnedList<T>& list, std::vector<KeyedPrimitive>& scratch)
{
    list.Rearrange([&scratch](std::vector<T*>& records) {
        scratch.clear();
        for (T* record : records)
            scratch.emplace_back(record != nullptr ? SortKey(*record) : INT32_MAX, record);
        std::sort(scratch.begin(), scratch.end(),
                  [](const KeyedPrimitive& a, const KeyedPrimitive& b) { return a.first < b.first; });
        for (size_t i = 0; i < records.size(); ++i)
            records[i] = static_cast<T*>(scratch[i].second);
    });
}

} // namespace

int SortPrimitives(VMWorld& world)
{
    int index = 0;
    for (VMVisArea* area : world.VisAreas) {
        if (area != nullptr)
            area->Index = index;
        ++index;
    }
    index = 0;
    for (VMMaterial* material : world.Materials) {
        if (material != nullptr)
            material->Index = index;
        ++index;
    }

    const int longest = std::max({world.Polygons.Count(), world.TriLists.Count(), world.Patches.Count(),
                                  world.Heightfields.Count()});
    std::vector<KeyedPrimitive> scratch;
    try {
        scratch.reserve(static_cast<size_t>(longest));
    } catch (const std::bad_alloc&) {
        return -301;
    }
    SortByKey(world.Polygons, scratch);
    SortByKey(world.TriLists, scratch);
    SortByKey(world.Patches, scratch);
    SortByKey(world.Heightfields, scratch);
    return 0;
}
