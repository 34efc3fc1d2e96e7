#include "geometry/CheckTriList.h"

#include "model/VMTriList.h"
#include "model/VMVertex.h"

#include <cstddef>
#include <vector>

namespace {

bool IsDegenerate(const VMVertex* a, const VMVertex* b, const VMVertex* c)
{
    return a == b || b == c || a == c;
}

bool StripHolds(const std::vector<VMVertex*>& corners, VMTriListKind kind)
{
    bool oddStep = static_cast<uint32_t>(kind) % 2 == 1;
    for (size_t i = 3; i + 2 < corners.size(); i += 3) {
        const VMVertex* const* previous = &corners[i - 3];
        const VMVertex* const* current = &corners[i];
        const bool joined = oddStep ? current[0] == previous[2] && current[1] == previous[1]
                                    : current[0] == previous[0] && current[1] == previous[2];
        if (!joined)
            return false;
        oddStep = !oddStep;
    }
    return true;
}

} // namespace

void DropDegenerateTriangles(VMTriList& triList)
{
    std::vector<VMVertex*>& corners = triList.Corners;
    size_t kept = 0;
    for (size_t i = 0; i + 2 < corners.size(); i += 3) {
        if (IsDegenerate(corners[i], corners[i + 1], corners[i + 2]))
            continue;
        corners[kept] = corners[i];
        corners[kept + 1] = corners[i + 1];
        corners[kept + 2] = corners[i + 2];
        kept += 3;
    }
    corners.resize(kept);
}

int CheckTriList(VMTriList& triList, bool repair)
{
    const int cornerCount = triList.CornerCount();
    if (cornerCount % 3 != 0)
        return TriListCornersNotTriples;
    if (cornerCount > MaxTriListCorners)
        return TriListTooManyCorners;
    if (cornerCount < 3)
        return TriListTooFewCorners;

    if (!triList.IsStrip()) {
        if (repair)
            DropDegenerateTriangles(triList);
        return 0;
    }
    if (StripHolds(triList.Corners, triList.ListKind))
        return 0;
    if (repair) {
        triList.ListKind = VMTriListKind::List;
        DropDegenerateTriangles(triList);
    }
    return TriListBrokenStrip;
}
