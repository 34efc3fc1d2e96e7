#include "geometry/StitchStrips.h"

#include "model/VMTriList.h"

namespace {

int JointCorners(const VMTriList& strip) { return strip.TriangleCount() % 2 == 0 ? 12 : 15; }

void AppendJoint(VMTriList& a, const VMTriList& b)
{
    std::vector<VMVertex*>& corners = a.Corners;
    const size_t n = corners.size();
    VMVertex* const b0 = b.Corners[0];
    VMVertex* const b1 = b.Corners[1];
    if (a.TriangleCount() % 2 == 0) {
        VMVertex* const third = corners[n - 3];
        VMVertex* const last = corners[n - 1];
        corners.insert(corners.end(), {third, last, last, last, last, b0, last, b0, b0, b0, b0, b1});
    } else {
        VMVertex* const secondLast = corners[n - 2];
        VMVertex* const last = corners[n - 1];
        corners.insert(corners.end(), {last, secondLast, secondLast, last, secondLast, secondLast, secondLast,
                                       secondLast, b0, secondLast, b0, b0, b0, b0, b1});
    }
    corners.insert(corners.end(), b.Corners.begin(), b.Corners.end());
}

} // namespace

void StitchStrips(std::vector<std::unique_ptr<VMTriList>> triLists, int minStripCorners,
                  std::vector<std::unique_ptr<VMTriList>>& stitched, std::vector<std::unique_ptr<VMTriList>>& rest)
{
    std::unique_ptr<VMTriList> building;
    bool stopped = false;
    for (std::unique_ptr<VMTriList>& triList : triLists) {
        if (stopped || triList->ListKind != VMTriListKind::StripOddStart) {
            rest.push_back(std::move(triList));
            continue;
        }
        if (triList->CornerCount() < minStripCorners) {
            stopped = true;
            rest.push_back(std::move(triList));
            continue;
        }
        if (building
            && building->CornerCount() + triList->CornerCount() + JointCorners(*building) < MaxJoinedCorners) {
            AppendJoint(*building, *triList);
            continue;
        }
        if (building)
            stitched.push_back(std::move(building));
        building = std::move(triList);
    }
    if (building)
        stitched.push_back(std::move(building));
}
